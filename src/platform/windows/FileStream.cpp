#include "platform/windows/FileStream.h"

#include "platform/windows/UniqueHandle.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

namespace {

struct SourceFile {
    UniqueFile handle;
    std::wstring name;
    ULONGLONG sizeBytes = 0;
    FILETIME modified{};
};

class FileStream : public IStream {
  public:
    FileStream(std::shared_ptr<const SourceFile> file, ULONGLONG position)
        : file_(std::move(file)), position_(position) {}
    virtual ~FileStream() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        const bool isKnown = id == InterfaceId<IUnknown> || id == InterfaceId<IStream> || id == IID_ISequentialStream;
        *object = isKnown ? static_cast<IStream*>(this) : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG sizeBytes, ULONG* readBytes) override {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(position_);
        place.OffsetHigh = static_cast<DWORD>(position_ >> 32);
        DWORD count = 0;
        HRESULT result = S_OK;
        if (position_ < file_->sizeBytes && !ReadFile(file_->handle.Get(), buffer, sizeBytes, &count, &place)) {
            const DWORD error = GetLastError();
            if (error != ERROR_HANDLE_EOF) result = HRESULT_FROM_WIN32(error);
        }
        position_ += count;
        if (readBytes) *readBytes = count;
        return SUCCEEDED(result) && count < sizeBytes ? S_FALSE : result;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER distance, DWORD origin, ULARGE_INTEGER* newPosition) override {
        LONGLONG start = 0;
        if (origin == STREAM_SEEK_CUR) start = static_cast<LONGLONG>(position_);
        if (origin == STREAM_SEEK_END) start = static_cast<LONGLONG>(file_->sizeBytes);
        if (start + distance.QuadPart < 0) return STG_E_INVALIDFUNCTION;
        position_ = static_cast<ULONGLONG>(start + distance.QuadPart);
        if (newPosition) newPosition->QuadPart = position_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER sizeBytes, ULARGE_INTEGER* readBytes,
                                     ULARGE_INTEGER* writtenBytes) override {
        if (!target) return STG_E_INVALIDPOINTER;
        std::vector<std::byte> buffer(256 * 1024);
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
            const std::size_t sizeBytes = (file_->name.size() + 1) * sizeof(wchar_t);
            status->pwcsName = static_cast<wchar_t*>(CoTaskMemAlloc(sizeBytes));
            if (!status->pwcsName) return STG_E_INSUFFICIENTMEMORY;
            std::copy_n(file_->name.c_str(), file_->name.size() + 1, status->pwcsName);
        }
        status->type = STGTY_STREAM;
        status->cbSize.QuadPart = file_->sizeBytes;
        status->mtime = file_->modified;
        status->grfMode = STGM_READ | STGM_SHARE_DENY_WRITE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override {
        if (!clone) return STG_E_INVALIDPOINTER;
        *clone = new FileStream(file_, position_);
        return S_OK;
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
    std::shared_ptr<const SourceFile> file_;
    ULONGLONG position_;
    std::atomic<ULONG> references_{1};
};

} // namespace

ComPointer<IStream> OpenFileStream(const std::wstring& path, HRESULT& result) {
    auto file = std::make_shared<SourceFile>();
    file->name = path;
    file->handle.Reset(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER sizeBytes{};
    if (!file->handle || !GetFileSizeEx(file->handle.Get(), &sizeBytes) ||
        !GetFileTime(file->handle.Get(), nullptr, nullptr, &file->modified)) {
        result = HRESULT_FROM_WIN32(GetLastError());
        return {};
    }
    file->sizeBytes = static_cast<ULONGLONG>(sizeBytes.QuadPart);
    result = S_OK;
    return ComPointer<IStream>(new FileStream(std::move(file), 0));
}
