#pragma once

#include "check/DirectoryTally.h"
#include "check/ZipReader.h"

#include <cstdint>
#include <string>
#include <string_view>

enum class FileState {
    Whole,
    Damaged,    ///< its checksum is another, or its data breaks off
    Unreadable, ///< packed or protected in a way that the archiver of a backup never uses
};

/// What reading one file of an inner archive has come to.
struct FileOutcome {
    FileState state = FileState::Whole;
    std::uint64_t bytes = 0;  ///< read of it
    bool isBrokenOff = false; ///< it ends after `bytes`; otherwise the damage is somewhere in it
    std::string reason;
};

enum class ItemState {
    Whole,
    Damaged,          ///< on the medium: the outer archive's checksum is another, or its data breaks off
    DamagedWhenSaved, ///< the outer archive is whole here, but what it holds was not when it was put there
    Cut,              ///< the inner archive breaks off, and did so when it was saved
    Empty,            ///< the inner archive holds nothing
    DirectoryDamaged, ///< every file is whole, but the inner archive's directory does not name them
    Locked,           ///< the password that opens the others does not open this one
};

/// What reading one inner archive has come to.
struct ItemOutcome {
    ItemState state = ItemState::Whole;
    std::uint64_t files = 0;
    std::uint64_t damagedFiles = 0;
    std::uint64_t bytes = 0;
    std::string reason;
};

/// What somebody does with the contents of a backup while it is walked.
class WalkListener {
  public:
    virtual ~WalkListener() = default;
    virtual void OnItem(const ZipEntry& item) = 0;
    virtual void OnFile(const ZipEntry& file) = 0;
    virtual void OnData(std::string_view bytes) = 0;
    virtual void OnFileEnd(const FileOutcome& outcome) = 0;
    /// For each file and folder of the item that was met, when all of them are through; in the directory's order.
    virtual void OnRecord(std::uint64_t index, const DirectoryRecord& record) = 0;
    virtual void OnItemEnd(const ItemOutcome& outcome) = 0;
    /// Whether the item of this name is to be read. The others are passed over.
    virtual bool Wants(const std::wstring& name) = 0;
};
