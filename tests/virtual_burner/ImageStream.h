#pragma once

#include "ComObject.h"
#include "ImageLayout.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <cstring>

/// By which this server knows its own images.
inline constexpr GUID OwnImageId = {0x6f1d7ad2, 0x3b52, 0x4a57, {0x9c, 0x0e, 0x2b, 0x54, 0x86, 0x1f, 0x70, 0x13}};

/// An image read from its pieces, in whatever order it is asked for.
class ImageStream : public ComObject<IStream> {
  public:
    /// `startSector` is where on the disc the image belongs.
    ImageStream(ImagePlan plan, std::uint32_t startSector) : plan_(std::move(plan)), startSector_(startSector) {}
    LONG StartSector() const { return static_cast<LONG>(startSector_); }

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG sizeBytes, ULONG* readBytes) override {
        auto* target = static_cast<std::uint8_t*>(buffer);
        const std::uint64_t left = plan_.sectors * Mastering::SectorBytes - position_;
        const auto wanted = static_cast<ULONG>(std::min<std::uint64_t>(sizeBytes, left));
        ULONG done = 0;
        HRESULT result = S_OK;
        while (done < wanted && SUCCEEDED(result)) {
            const ULONG count = ReadSome(target + done, wanted - done, result);
            done += count;
            position_ += count;
        }
        if (readBytes) *readBytes = done;
        if (FAILED(result)) return result;
        return done < sizeBytes ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER distance, DWORD origin, ULARGE_INTEGER* newPosition) override {
        if (origin != STREAM_SEEK_SET || distance.QuadPart < 0) return STG_E_INVALIDFUNCTION;
        position_ = static_cast<std::uint64_t>(distance.QuadPart);
        if (newPosition) newPosition->QuadPart = position_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD) override {
        if (!status) return STG_E_INVALIDPOINTER;
        *status = {};
        status->type = STGTY_STREAM;
        status->cbSize.QuadPart = plan_.sectors * Mastering::SectorBytes;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

  private:
    void* Other(REFIID id) override {
        return id == IID_ISequentialStream || id == OwnImageId ? static_cast<IStream*>(this) : nullptr;
    }

    /// Reads up to the next border between pieces.
    ULONG ReadSome(std::uint8_t* target, ULONG sizeBytes, HRESULT& result) {
        const auto next = std::upper_bound(
            plan_.pieces.begin(), plan_.pieces.end(), position_,
            [](std::uint64_t position, const ImagePlan::Piece& piece) { return position < piece.offset; });
        const std::uint64_t border = next == plan_.pieces.end() ? plan_.sectors * Mastering::SectorBytes : next->offset;
        const ImagePlan::Piece* piece = next == plan_.pieces.begin() ? nullptr : &*std::prev(next);
        const std::uint64_t inside = piece ? position_ - piece->offset : 0;
        if (!piece || inside >= piece->sizeBytes) {
            const auto count = static_cast<ULONG>(std::min<std::uint64_t>(sizeBytes, border - position_));
            std::memset(target, 0, count);
            return count;
        }
        const auto count = static_cast<ULONG>(std::min<std::uint64_t>(sizeBytes, piece->sizeBytes - inside));
        if (!piece->stream) {
            std::memcpy(target, piece->bytes.data() + inside, count);
            return count;
        }
        LARGE_INTEGER place{};
        place.QuadPart = static_cast<LONGLONG>(inside);
        ULONG got = 0;
        result = piece->stream->Seek(place, STREAM_SEEK_SET, nullptr);
        if (SUCCEEDED(result)) result = piece->stream->Read(target, count, &got);
        if (SUCCEEDED(result) && got == 0) result = static_cast<HRESULT>(Mastering::ImageReadFailure);
        return got;
    }

    ImagePlan plan_;
    std::uint32_t startSector_;
    std::uint64_t position_ = 0;
};

/// Where on the disc an image belongs; 0 for a stream of other makers.
inline LONG StartSectorOf(IStream* stream) {
    void* own = nullptr;
    if (FAILED(stream->QueryInterface(OwnImageId, &own))) return 0;
    const ComPointer<IStream> image(static_cast<IStream*>(own));
    return static_cast<ImageStream*>(image.Get())->StartSector();
}
