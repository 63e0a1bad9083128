#include "check/WorkPace.h"

namespace {

constexpr double RememberedSeconds = 8;
constexpr double LeastSeconds = 1;

} // namespace

void WorkPace::Note(double seconds, std::uint64_t doneBytes) {
    moments_.push_back({seconds, doneBytes});
    while (moments_.size() > 2 && seconds - moments_[1].seconds >= RememberedSeconds) moments_.pop_front();
}

std::optional<double> WorkPace::BytesPerSecond() const {
    if (moments_.empty()) return std::nullopt;
    const double seconds = moments_.back().seconds - moments_.front().seconds;
    if (seconds < LeastSeconds) return std::nullopt;
    return static_cast<double>(moments_.back().bytes - moments_.front().bytes) / seconds;
}

std::optional<double> WorkPace::SecondsLeft(std::uint64_t totalBytes) const {
    const auto speed = BytesPerSecond();
    if (!speed || *speed <= 0) return std::nullopt;
    const std::uint64_t done = moments_.back().bytes;
    return done < totalBytes ? static_cast<double>(totalBytes - done) / *speed : 0;
}
