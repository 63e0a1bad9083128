#include "platform/windows/discs/FileStream.h"

#include "platform/windows/discs/CountedObject.h"
#include "win32/UniqueHandle.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

HRESULT LastResult() {
    return HRESULT_FROM_WIN32(GetLastError());
}

class FileStream : public CountedObject<IStream> {
  public:
    explicit FileStream(std::wstring path) : path_(std::move(path)) {}

    /// Each stream has a handle of its own, and with it a position of its own.
    HRESULT Open() {
        handle_.Reset(CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
        LARGE_INTEGER sizeBytes{};
        if (!handle_ || !GetFileSizeEx(handle_.Get(), &sizeBytes) ||
            !GetFileTime(handle_.Get(), nullptr, nullptr, &modified_))
            return LastResult();
        sizeBytes_ = static_cast<ULONGLONG>(sizeBytes.QuadPart);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG sizeBytes, ULONG* readBytes) override {
        DWORD count = 0;
        const HRESULT result = ReadFile(handle_.Get(), buffer, sizeBytes, &count, nullptr) ? S_OK : LastResult();
        if (readBytes) *readBytes = count;
        return SUCCEEDED(result) && count < sizeBytes ? S_FALSE : result;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER distance, DWORD origin, ULARGE_INTEGER* newPosition) override {
        LARGE_INTEGER position{};
        // The origins of streams and of files have the same numbers.
        if (!SetFilePointerEx(handle_.Get(), distance, &position, origin)) return STG_E_INVALIDFUNCTION;
        if (newPosition) newPosition->QuadPart = static_cast<ULONGLONG>(position.QuadPart);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER sizeBytes, ULARGE_INTEGER* readBytes,
                                     ULARGE_INTEGER* writtenBytes) override {
        if (!target) return STG_E_INVALIDPOINTER;
        std::vector<std::byte> buffer(std::size_t{256} << 10);
        ULONGLONG readSoFar = 0;
        ULONGLONG writtenSoFar = 0;
        HRESULT result = S_OK;
        while (readSoFar < sizeBytes.QuadPart) {
            ULONG count = 0;
            const ULONGLONG left = sizeBytes.QuadPart - readSoFar;
            result = Read(buffer.data(), static_cast<ULONG>(std::min<ULONGLONG>(buffer.size(), left)), &count);
            if (FAILED(result) || count == 0) break;
            readSoFar += count;
            ULONG written = 0;
            result = target->Write(buffer.data(), count, &written);
            writtenSoFar += written;
            if (FAILED(result) || written < count) break;
        }
        if (readBytes) readBytes->QuadPart = readSoFar;
        if (writtenBytes) writtenBytes->QuadPart = writtenSoFar;
        return FAILED(result) ? result : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD flags) override {
        if (!status) return STG_E_INVALIDPOINTER;
        *status = {};
        if (!(flags & STATFLAG_NONAME)) {
            const std::size_t sizeBytes = (path_.size() + 1) * sizeof(wchar_t);
            status->pwcsName = static_cast<wchar_t*>(CoTaskMemAlloc(sizeBytes));
            if (!status->pwcsName) return STG_E_INSUFFICIENTMEMORY;
            std::copy_n(path_.c_str(), path_.size() + 1, status->pwcsName);
        }
        status->type = STGTY_STREAM;
        status->cbSize.QuadPart = sizeBytes_;
        status->mtime = modified_;
        status->grfMode = STGM_READ | STGM_SHARE_DENY_WRITE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override {
        if (!clone) return STG_E_INVALIDPOINTER;
        *clone = nullptr;
        auto* copy = new FileStream(path_);
        const ComPointer<IStream> owner(copy);
        LARGE_INTEGER position{};
        HRESULT result = copy->Open();
        if (SUCCEEDED(result) && !SetFilePointerEx(handle_.Get(), {}, &position, FILE_CURRENT)) result = LastResult();
        if (SUCCEEDED(result)) result = copy->Seek(position, STREAM_SEEK_SET, nullptr);
        if (SUCCEEDED(result)) {
            copy->AddRef();
            *clone = copy;
        }
        return result;
    }

    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }

  private:
    void* Other(REFIID id) override { return id == IID_ISequentialStream ? static_cast<IStream*>(this) : nullptr; }

    std::wstring path_;
    UniqueFile handle_;
    ULONGLONG sizeBytes_ = 0;
    FILETIME modified_{};
};

} // namespace

ComPointer<IStream> OpenFileStream(const std::wstring& path, HRESULT& result) {
    auto* stream = new FileStream(path);
    ComPointer<IStream> owner(stream);
    result = stream->Open();
    if (FAILED(result)) owner.Reset();
    return owner;
}
