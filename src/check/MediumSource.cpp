#include "check/MediumSource.h"

#include "check/MediumLost.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace {

/// A device that fails in so many pieces one after another is taken for one that has gone.
constexpr int MostGapsInARow = 256;
constexpr std::size_t GapBytes = 32768;

} // namespace

MediumSource::MediumSource(InputFile& file, std::size_t pieceBytes, std::function<void(std::size_t)> onBytes)
    : file_(file), piece_(static_cast<std::size_t>(std::min<std::uint64_t>(pieceBytes, file.SizeBytes() + 1))),
      onBytes_(std::move(onBytes)) {}

std::string_view MediumSource::Next() {
    if (onBytes_) onBytes_(0);
    const std::uint64_t size = file_.SizeBytes();
    const std::uint64_t left = place_ < size ? size - place_ : 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, piece_.size()));
    std::size_t length = 0;
    try {
        if (wanted > 0) length = ReadPiece(wanted);
    } catch (const RuntimeError& error) {
        throw MediumLost{error};
    }
    place_ += length;
    if (onBytes_ && length > 0) onBytes_(length);
    return {piece_.data(), length};
}

std::size_t MediumSource::ReadPiece(std::size_t length) {
    try {
        const std::size_t filled = file_.ReadAt(place_, {piece_.data(), length});
        gapsInARow_ = 0;
        return filled;
    } catch (const RuntimeError& error) {
        if (error.Number() != static_cast<std::int32_t>(ErrorNumber::DeviceIoError)) throw;
    }
    return ReadWithGaps(length);
}

bool MediumSource::Seek(std::uint64_t place) {
    place_ = place;
    return true;
}

std::size_t MediumSource::ReadWithGaps(std::size_t length) {
    for (std::size_t at = 0; at < length; at += GapBytes) {
        const std::span<char> gap(piece_.data() + at, std::min(GapBytes, length - at));
        try {
            const std::size_t filled = file_.ReadAt(place_ + at, gap);
            gapsInARow_ = 0;
            if (filled < gap.size()) return at + filled;
        } catch (const RuntimeError& error) {
            if (error.Number() != static_cast<std::int32_t>(ErrorNumber::DeviceIoError)) throw;
            if (++gapsInARow_ > MostGapsInARow) throw;
            std::fill(gap.begin(), gap.end(), '\0');
            unreadableBytes_ += gap.size();
        }
    }
    return length;
}
