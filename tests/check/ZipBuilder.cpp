#include "check/ZipBuilder.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::time_t SavedAt = 1700000000;

struct FreeWriter {
    void operator()(archive* writer) const { archive_write_free(writer); }
};
struct FreeEntry {
    void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};

void Require(int result, archive* writer) {
    if (result < ARCHIVE_WARN) throw std::runtime_error(archive_error_string(writer));
}

la_ssize_t Append(archive*, void* target, const void* bytes, std::size_t length) {
    static_cast<std::string*>(target)->append(static_cast<const char*>(bytes), length);
    return static_cast<la_ssize_t>(length);
}

std::size_t NumberAt(const std::string& zip, std::size_t place, int bytes) {
    std::size_t number = 0;
    for (int byte = bytes; byte-- > 0;)
        number = number << 8 | static_cast<unsigned char>(zip[place + static_cast<std::size_t>(byte)]);
    return number;
}

/// Puts each entry's size before it, as the archiver does; newer releases of the library tell it behind the entry only.
void TellSizesFirst(std::string& zip) {
    const std::size_t end = zip.rfind("PK\5\6");
    std::size_t record = NumberAt(zip, end + 16, 4);
    for (std::size_t left = NumberAt(zip, end + 10, 2); left > 0; --left) {
        const std::size_t entry = NumberAt(zip, record + 42, 4);
        std::copy_n(zip.begin() + static_cast<std::ptrdiff_t>(record) + 24, 4,
                    zip.begin() + static_cast<std::ptrdiff_t>(entry) + 22);
        record += 46 + NumberAt(zip, record + 28, 2) + NumberAt(zip, record + 30, 2) + NumberAt(zip, record + 32, 2);
    }
}

} // namespace

std::string BuildZip(const std::vector<BuiltEntry>& entries, const std::optional<std::string>& password) {
    std::string zip;
    const std::unique_ptr<archive, FreeWriter> writer(archive_write_new());
    archive_write_set_format_zip(writer.get());
    archive_write_set_options(writer.get(), "zip:hdrcharset=UTF-8");
    if (password) {
        archive_write_set_options(writer.get(), "zip:encryption=traditional");
        Require(archive_write_set_passphrase(writer.get(), password->c_str()), writer.get());
    }
    archive_write_set_bytes_per_block(writer.get(), 0);
    Require(archive_write_open(writer.get(), &zip, nullptr, &Append, nullptr), writer.get());
    for (const BuiltEntry& built : entries) {
        const std::unique_ptr<archive_entry, FreeEntry> entry(archive_entry_new());
        archive_entry_set_pathname_utf8(entry.get(), built.name.c_str());
        archive_entry_set_mtime(entry.get(), SavedAt, 0);
        const bool isFolder = built.name.ends_with('/');
        archive_entry_set_filetype(entry.get(), isFolder ? AE_IFDIR : AE_IFREG);
        archive_entry_set_perm(entry.get(), isFolder ? 0755 : 0644);
        archive_entry_set_size(entry.get(), static_cast<la_int64_t>(built.bytes.size()));
        Require(archive_write_header(writer.get(), entry.get()), writer.get());
        if (!built.bytes.empty()) archive_write_data(writer.get(), built.bytes.data(), built.bytes.size());
    }
    Require(archive_write_close(writer.get()), writer.get());
    TellSizesFirst(zip);
    return zip;
}

std::string BuildBackup(const std::vector<std::vector<BuiltEntry>>& items, const std::string& password) {
    std::vector<BuiltEntry> outer;
    for (const std::vector<BuiltEntry>& item : items) {
        char name[16];
        std::snprintf(name, sizeof name, "Zip%04zu.zip", outer.size() + 1);
        outer.push_back({name, BuildZip(item)});
    }
    return BuildZip(outer, password);
}
