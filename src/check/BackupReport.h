#pragma once

#include "check/BackupList.h"
#include "check/BackupWalk.h"
#include "check/PackedText.h"
#include "check/Rare.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

enum class ItemVerdict : std::uint8_t {
    Whole,
    Damaged,
    DamagedWhenSaved,
    Cut,
    Empty,
    DirectoryDamaged,
    Locked,
    Missing,     ///< the list names it, and there is no inner archive of that name
    NotListed,   ///< the inner archive is there, and no row names it
    OtherBackup, ///< what the inner archive holds is not what the row names
    NotChecked,  ///< the work ended before
};

/// What is to be told of one file.
struct FileFinding {
    enum class What {
        Damaged,   ///< somewhere in it
        BrokenOff, ///< whole up to `at`
        Unreadable,
        TooLong,
        Refused, ///< its name leads out of the target folder
        KeptAs,  ///< recovered under the name in `other`
        Absent,  ///< on this computer, older than the backup, and not in it
        Newer,   ///< on this computer it was changed since
        Older,   ///< on this computer it is older than in the backup
        Differs,
        AddedSince, ///< on this computer only, and made after the backup
        NotWritten, ///< not recovered, for the reason whose run-time number is in `at`
        NotMarked,  ///< recovered without its times or attributes, for such a reason
    };
    What what = What::Damaged;
    std::wstring file;
    std::uint64_t at = 0;
    std::wstring other;
};

/// What few items have to tell.
struct ItemRemarks {
    std::uint64_t damagedFiles = 0;
    std::string reason;
    std::vector<FileFinding> findings;
    std::uint64_t moreFindings = 0; ///< that were not kept
};

/// There may be very many of them: what is the same for most takes no room.
struct ItemReport {
    PackedText path; ///< where it was saved from; empty without a row
    PackedText archive;
    std::uint64_t bytes = 0;
    Rare<ItemRemarks> remarks;
    std::uint32_t place = 0; ///< among all items of the backup: the rows in their order, then what no row names
    int number = 0;          ///< of the row; 0 when no row names it
    std::uint32_t files = 0;
    std::uint32_t recoveredFiles = 0;
    std::uint32_t presentFiles = 0; ///< that were there already, byte for byte
    std::uint8_t problems = 0;      ///< a sum of RowProblem
    ItemVerdict verdict = ItemVerdict::NotChecked;
    bool isFolder = false;

    bool HasFault() const;
    void Take(const ItemOutcome& outcome);
    void Add(FileFinding finding);
};

enum class Verdict {
    Good,
    Faulty,
    Empty,
    WrongPassword,
    PasswordMissing,
    NoBackup,
    OlderFormat,
    Unreadable,
    NoRoom,
    NotWritable,
    Stopped,
    NotChecked, ///< only what the list says was read
};

/// All that a check or a recovery has found.
struct BackupReport {
    Verdict verdict = Verdict::NoBackup;
    bool isRecovery = false;
    bool isComparison = false;
    std::wstring archive; ///< its path
    std::wstring target;  ///< of a recovery
    bool isTargetOnMedium = false;
    std::uint64_t archiveBytes = 0;
    bool hasList = false;
    bool isListUnreadable = false;
    std::uint64_t listPrint = 0; ///< tells the list from others
    bool isOpenedByFirstWord = false;
    bool isEncrypted = false;
    WalkOutcome walk;
    PackedTexts texts;                   ///< those of the items
    std::deque<ItemReport> items;        ///< each stays where it is in memory, also when the report is moved
    std::optional<RuntimeError> failure; ///< why the work ended
    std::uint64_t neededBytes = 0;       ///< at least, for a recovery without room
    std::uint64_t freeBytes = 0;

    std::uint64_t Files() const;
    std::uint64_t Bytes() const;
    std::uint64_t FaultyItems() const;
    std::uint64_t RecoveredFiles() const;
    std::uint64_t PresentFiles() const;
    /// 0 all good, 1 something is damaged or missing, 2 wrong password, 3 no backup, 4 cannot be read or written.
    int ExitCode() const;
    /// Settles the verdict of a work that has come to its end.
    void Conclude();
};
