#include "check/ZipReader.h"

#include "platform/CodePages.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <utility>

namespace {

/// 1 January 1970 in units of 100 nanoseconds since 1601.
constexpr std::uint64_t UnixEpoch = 116444736000000000;
constexpr std::uint64_t TicksPerSecond = 10000000;
constexpr unsigned Utf8CodePage = 65001;
/// How the library speaks of a wrong and of a missing one, with a small and a capital letter before it.
constexpr std::string_view AboutPassphrase = "assphrase";

struct FreeArchive {
    void operator()(archive* reader) const { archive_read_free(reader); }
};

std::uint64_t MomentOf(std::int64_t secondsSince1970) {
    return secondsSince1970 <= 0 ? 0 : UnixEpoch + static_cast<std::uint64_t>(secondsSince1970) * TicksPerSecond;
}

std::wstring NameOf(archive_entry* entry) {
    std::wstring name;
    if (const wchar_t* wide = archive_entry_pathname_w(entry)) {
        name = wide;
    } else if (const char* bytes = archive_entry_pathname(entry)) {
        // Bytes that are no text in the code page that they should be in.
        for (; *bytes != 0; ++bytes) name += static_cast<unsigned char>(*bytes) < 128 ? wchar_t(*bytes) : L'\uFFFD';
    }
    std::replace(name.begin(), name.end(), L'\\', L'/');
    return name;
}

} // namespace

struct ZipReader::Library {
    explicit Library(ZipSource& theSource) : source(theSource), reader(archive_read_new()) {
        if (!reader) throw std::bad_alloc();
    }

    ZipSource& source;
    std::unique_ptr<archive, FreeArchive> reader;
    std::exception_ptr failure;
    int opened = ARCHIVE_OK;

    /// Runs what the library has asked for. Nothing may be thrown through the library, which is written in C.
    template<typename Steps>
    auto Kept(la_int64_t ifFailed, Steps&& steps) -> la_int64_t {
        try {
            return steps();
        } catch (...) {
            failure = std::current_exception();
            archive_set_error(reader.get(), -1, "the source has failed");
            return ifFailed;
        }
    }

    static la_ssize_t Read(archive*, void* self, const void** bytes) {
        auto& library = *static_cast<Library*>(self);
        return static_cast<la_ssize_t>(library.Kept(-1, [&] {
            const std::string_view piece = library.source.Next();
            *bytes = piece.data();
            return static_cast<la_int64_t>(piece.size());
        }));
    }
    static la_int64_t Seek(archive*, void* self, la_int64_t offset, int whence) {
        auto& library = *static_cast<Library*>(self);
        return library.Kept(ARCHIVE_FATAL, [&]() -> la_int64_t {
            la_int64_t place = offset;
            if (whence == SEEK_CUR) place += static_cast<la_int64_t>(library.source.Place());
            if (whence == SEEK_END) place += static_cast<la_int64_t>(library.source.SizeBytes());
            if (place < 0 || !library.source.Seek(static_cast<std::uint64_t>(place))) return ARCHIVE_FATAL;
            return place;
        });
    }
    static la_int64_t Skip(archive*, void* self, la_int64_t count) {
        auto& library = *static_cast<Library*>(self);
        return library.Kept(0, [&]() -> la_int64_t {
            const auto left = static_cast<la_int64_t>(library.source.SizeBytes() - library.source.Place());
            const la_int64_t skipped = std::clamp<la_int64_t>(count, 0, std::max<la_int64_t>(left, 0));
            library.source.Seek(library.source.Place() + static_cast<std::uint64_t>(skipped));
            return skipped;
        });
    }

    int Checked(int result) {
        if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
        return result;
    }
};

ZipReader::ZipReader(ZipSource& source, Way way, const std::optional<std::string>& passphrase)
    : library_(std::make_unique<Library>(source)) {
    archive* reader = library_->reader.get();
    if (way == Way::ByDirectory) {
        archive_read_support_format_zip_seekable(reader);
    } else {
        archive_read_support_format_zip_streamable(reader);
    }
    const unsigned codePage = OemCodePage();
    const std::string charset = codePage == Utf8CodePage ? "UTF-8" : "CP" + std::to_string(codePage);
    // Without this charset in the library, its own guess serves.
    archive_read_set_option(reader, nullptr, "hdrcharset", charset.c_str());
    if (passphrase && !passphrase->empty()) archive_read_add_passphrase(reader, passphrase->c_str());
    archive_read_set_callback_data(reader, library_.get());
    archive_read_set_read_callback(reader, &Library::Read);
    if (source.SizeBytes() > 0) {
        archive_read_set_skip_callback(reader, &Library::Skip);
        if (way == Way::ByDirectory) archive_read_set_seek_callback(reader, &Library::Seek);
    }
    library_->opened = library_->Checked(archive_read_open1(reader));
}

ZipReader::~ZipReader() = default;

ZipStep ZipReader::Next(ZipEntry& entry) {
    if (library_->opened != ARCHIVE_OK) return ZipStep::Broken;
    archive_entry* found = nullptr;
    int result = ARCHIVE_RETRY;
    while (result == ARCHIVE_RETRY) {
        result = library_->Checked(archive_read_next_header(library_->reader.get(), &found));
    }
    if (result == ARCHIVE_EOF) return ZipStep::End;
    if (result < ARCHIVE_WARN || found == nullptr) return ZipStep::Broken;
    const auto type = archive_entry_filetype(found);
    entry = {};
    entry.name = NameOf(found);
    entry.isFolder = type == AE_IFDIR;
    while (entry.isFolder && entry.name.ends_with(L'/')) entry.name.pop_back();
    entry.isLink = type != AE_IFDIR && type != AE_IFREG;
    entry.isEncrypted = archive_entry_is_data_encrypted(found) != 0;
    if (archive_entry_size_is_set(found)) entry.sizeBytes = static_cast<std::uint64_t>(archive_entry_size(found));
    entry.writtenAt = MomentOf(archive_entry_mtime(found));
    entry.isInconsistent = result == ARCHIVE_WARN && Reason().starts_with("Inconsistent");
    return ZipStep::Ok;
}

ZipStep ZipReader::Read(std::string_view& data) {
    const void* bytes = nullptr;
    std::size_t length = 0;
    la_int64_t offset = 0;
    const int result = library_->Checked(archive_read_data_block(library_->reader.get(), &bytes, &length, &offset));
    data = bytes ? std::string_view(static_cast<const char*>(bytes), length) : std::string_view();
    if (result == ARCHIVE_OK) return ZipStep::Ok;
    if (result == ARCHIVE_EOF) return ZipStep::End;
    if (result == ARCHIVE_WARN) return ZipStep::Mismatch;
    data = {};
    if (result != ARCHIVE_FAILED) return ZipStep::Broken;
    return Reason().find(AboutPassphrase) != std::string::npos ? ZipStep::WrongPassword : ZipStep::Unsupported;
}

std::uint64_t ZipReader::Consumed() const {
    return static_cast<std::uint64_t>(archive_filter_bytes(library_->reader.get(), 0));
}

std::string ZipReader::Reason() const {
    const char* text = archive_error_string(library_->reader.get());
    return text ? text : "";
}
