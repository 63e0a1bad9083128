#pragma once

#include <cstdint>
#include <deque>
#include <optional>

/// How fast a long work gets on, by what it did in the last seconds.
class WorkPace {
  public:
    /// Takes how much is done after so many seconds. Both never go back.
    void Note(double seconds, std::uint64_t doneBytes);
    /// Nothing until there is enough to tell it by.
    std::optional<double> BytesPerSecond() const;
    /// Nothing while nothing gets done.
    std::optional<double> SecondsLeft(std::uint64_t totalBytes) const;

  private:
    struct Moment {
        double seconds = 0;
        std::uint64_t bytes = 0;
    };

    std::deque<Moment> moments_;
};
