#pragma once

#include "platform/discs/DiscFamily.h"

#include <array>
#include <cstdint>
#include <optional>

enum class TextId : int;

/// What a backup is saved on.
enum class Medium : std::int16_t {
#define MEDIUM(name, code, ...) name = code,
#include "core/Media.def"
#undef MEDIUM
};

/// Every medium, by code.
inline constexpr std::array AllMedia{
#define MEDIUM(name, code, ...) Medium::name,
#include "core/Media.def"
#undef MEDIUM
};

/// How the program finds out whether a medium is there.
enum class MediumDetection { Writer, RemovableDrives, UsbDrives };

struct MediumDescription {
    TextId labelId; ///< the text that names the medium, such as "Disque amovible"
    MediumDetection detection;
    std::optional<DiscFamily> discs; ///< which discs it is; nothing for a disk
    TextId notFoundToolTipId;        ///< the text that says why it is not offered; None where nothing is said
    TextId wantedDiscId;             ///< the text that names the disc to insert instead of a wrong one; None for disks
    bool isDriveChosenInList; ///< the copy goes to the drive of the backup window's list, not to the one handed over
    bool doesStopReachWriter; ///< Stop aborts the writer; where there is none, that fails and is reported
};

/// Throws 9 for a code that no medium has.
const MediumDescription& Describe(Medium medium);

/// Which discs the medium is; nothing for a disk.
std::optional<DiscFamily> DiscFamilyOf(Medium medium);

/// Whether the medium is burnt by a writer; otherwise it is a disk, which is copied to.
bool IsDisc(Medium medium);
