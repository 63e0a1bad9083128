#pragma once

#include "platform/FileStore.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// What stands in an archive under one name.
struct ZipEntry {
    std::wstring name; ///< with slashes; a folder's without one at its end
    bool isFolder = false;
    bool isLink = false;
    bool isEncrypted = false;
    std::optional<std::uint64_t> sizeBytes;
    std::uint64_t writtenAt = 0; ///< in units of 100 nanoseconds since 1601, UTC; to two seconds
    bool isInconsistent = false; ///< the two places that describe it do not agree
};

/// How a step through an archive has ended.
enum class ZipStep {
    Ok,
    End,           ///< of the entry or of the archive, as it should be
    Mismatch,      ///< the entry ends here, and its checksum or size is another; a last piece of data may come with it
    WrongPassword, ///< for this entry
    Unsupported,   ///< this entry cannot be read; the next ones can
    Broken,        ///< no way on from here in this entry, or in the archive
};

/// Where the bytes of an archive come from, one piece after another.
class ZipSource {
  public:
    virtual ~ZipSource() = default;
    /// The next piece, valid until the next call; empty at the end. Throws what reading meets.
    virtual std::string_view Next() = 0;
    /// Goes to a place and gives true, or false where that is not possible.
    virtual bool Seek(std::uint64_t) { return false; }
    virtual std::uint64_t Place() const { return 0; }
    virtual std::uint64_t SizeBytes() const { return 0; }
};

/// Reads one zip archive entry by entry, through libarchive. What its source throws comes out of `Next` and `Read`.
class ZipReader {
  public:
    enum class Way {
        ByDirectory, ///< the archive's directory leads; the source can be sought
        ByHeaders,   ///< from one entry to the next as they follow each other
    };

    /// Borrows the source. `passphrase` is given in the archiver's bytes.
    ZipReader(ZipSource& source, Way way, const std::optional<std::string>& passphrase);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    /// Goes to the next entry: Ok, End or Broken.
    ZipStep Next(ZipEntry& entry);
    /// The next piece of the entry's data, valid until the next call.
    ZipStep Read(std::string_view& data);
    /// How many bytes of the source lie behind it.
    std::uint64_t Consumed() const;
    /// What the library says of the last step that went wrong.
    std::string Reason() const;

  private:
    struct Library;
    std::unique_ptr<Library> library_;
};
