// Reads a backup's archive through as the library by itself does it, and nothing else: the outer archive by its
// directory with the password, each inner one from the outer one's data as it comes.
//   check_floor ARCHIVE PASSWORD
// Prints how many bytes the files in the inner archives have.

#include <archive.h>
#include <archive_entry.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

constexpr std::size_t PieceBytes = std::size_t{256} << 10;

la_ssize_t ReadPiece(archive*, void* outer, const void** piece) {
    std::size_t length = 0;
    la_int64_t place = 0;
    const int step = archive_read_data_block(static_cast<archive*>(outer), piece, &length, &place);
    return step == ARCHIVE_EOF ? 0 : step == ARCHIVE_OK ? static_cast<la_ssize_t>(length) : -1;
}

std::uint64_t ReadInner(archive* outer) {
    archive* inner = archive_read_new();
    archive_read_support_format_zip_streamable(inner);
    archive_read_open(inner, outer, nullptr, ReadPiece, nullptr);
    std::uint64_t bytes = 0;
    archive_entry* entry = nullptr;
    while (archive_read_next_header(inner, &entry) == ARCHIVE_OK) {
        const void* piece = nullptr;
        std::size_t length = 0;
        la_int64_t place = 0;
        while (archive_read_data_block(inner, &piece, &length, &place) == ARCHIVE_OK) bytes += length;
    }
    archive_read_free(inner);
    const void* rest = nullptr;
    while (ReadPiece(nullptr, outer, &rest) > 0) {
    }
    return bytes;
}

} // namespace

int wmain(int count, wchar_t** words) {
    if (count != 3) return 2;
    std::string password;
    for (const wchar_t* letter = words[2]; *letter != 0; ++letter) password += static_cast<char>(*letter);
    archive* outer = archive_read_new();
    archive_read_support_format_zip_seekable(outer);
    archive_read_add_passphrase(outer, password.c_str());
    if (archive_read_open_filename_w(outer, words[1], PieceBytes) != ARCHIVE_OK) return 1;
    std::uint64_t bytes = 0;
    archive_entry* entry = nullptr;
    while (archive_read_next_header(outer, &entry) == ARCHIVE_OK) bytes += ReadInner(outer);
    archive_read_free(outer);
    std::printf("%llu\n", static_cast<unsigned long long>(bytes));
    return 0;
}
