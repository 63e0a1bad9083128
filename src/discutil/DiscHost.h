#pragma once

#include "core/Medium.h"
#include "platform/discs/DiscWriter.h"

#include <string>

/// The backup window as the disc windows that it opens see it.
class DiscHost {
  public:
    virtual ~DiscHost() = default;
    virtual Medium MediaType() const = 0;
    /// The drive that the backup goes to, for USB media.
    virtual const std::wstring& Drive() const = 0;
    /// The figure of the required space as it is shown.
    virtual std::wstring RequiredSpaceText() const = 0;
    /// The kind of the disc as text.
    virtual std::wstring DiscMediaTypeString() const = 0;
    /// The writer component; null when the medium has none.
    virtual DiscWriter* Writer() = 0;
    virtual void RefreshDiscInfo() = 0;
    /// True while an erase runs.
    virtual bool EffacementEnCour() const = 0;
    virtual void SetEffacementEnCour(bool isErasing) = 0;
};
