#pragma once

#include "restore/InsertedMedium.h"
#include "restore/RestoreRows.h"

#include <vector>

/// What was ticked on the media that the window showed, for those that come back: a loose plug, or a disk that was
/// pulled out and put in again, must not tick what the user had unticked.
class TickMemory {
  public:
    /// Remembers the rows' ticks under their medium; nothing to do for rows that cannot be ticked. Of very many media
    /// the oldest are forgotten.
    void Keep(const InsertedMedium::Print& medium, const RestoreRows& rows);
    /// Ticks the rows as they were when their medium was last shown. Gives whether it ever was.
    bool GiveBack(const InsertedMedium::Print& medium, RestoreRows& rows) const;
    void Clear() { kept_.clear(); }

  private:
    struct Ticks {
        InsertedMedium::Print medium;
        std::vector<bool> ticks;
    };

    std::vector<Ticks> kept_;
};
