#pragma once

#include "check/ZipReader.h"
#include "platform/FileStore.h"

#include <functional>
#include <vector>

/// The bytes of a medium's archive. Places that the device cannot read come as zeros and are counted, so that what
/// lies behind them is still reached; throws `MediumLost` for a device that has gone.
class MediumSource final : public ZipSource {
  public:
    /// `onBytes` is called with the size of each piece before it is given out; it may throw `Stopped`.
    MediumSource(InputFile& file, std::size_t pieceBytes, std::function<void(std::size_t)> onBytes = {});

    std::string_view Next() override;
    bool Seek(std::uint64_t place) override;
    std::uint64_t Place() const override { return place_; }
    std::uint64_t SizeBytes() const override { return file_.SizeBytes(); }
    std::uint64_t UnreadableBytes() const { return unreadableBytes_; }

  private:
    std::size_t ReadPiece(std::size_t length);
    std::size_t ReadWithGaps(std::size_t length);

    InputFile& file_;
    std::vector<char> piece_;
    std::function<void(std::size_t)> onBytes_;
    std::uint64_t place_ = 0;
    std::uint64_t unreadableBytes_ = 0;
    int gapsInARow_ = 0;
};
