#pragma once

#include <cstdint>

/// The numbers of the system's image mastering, version 2.
namespace Mastering {

constexpr std::int32_t SectorBytes = 2048;

/// Kinds of disc.
enum MediaType : std::int32_t {
    MediaUnknown = 0x00,
    MediaCdRom = 0x01,
    MediaCdR = 0x02,
    MediaCdRw = 0x03,
    MediaDvdRom = 0x04,
    MediaDvdRam = 0x05,
    MediaDvdPlusR = 0x06,
    MediaDvdPlusRw = 0x07,
    MediaDvdPlusRDl = 0x08,
    MediaDvdMinusR = 0x09,
    MediaDvdMinusRw = 0x0A,
};

/// Bits of a disc's state; any bit of StateUnwritable forbids writing.
enum MediaState : std::int32_t {
    StateOverwriteOnly = 0x0001,
    StateBlank = 0x0002,
    StateAppendable = 0x0004,
    StateFinalSession = 0x0008,
    StateDamaged = 0x0400,
    StateEraseRequired = 0x0800,
    StateIncompleteSession = 0x1000,
    StateWriteProtected = 0x2000,
    StateFinalized = 0x4000,
    StateUnsupported = 0x8000,
    StateUnwritable = 0xFC00,
};

/// What a write is doing.
enum WriteAction : std::int32_t {
    ActionValidating = 0,
    ActionFormatting = 1,
    ActionInitializing = 2,
    ActionCalibrating = 3,
    ActionWriting = 4,
    ActionFinalizing = 5,
    ActionCompleted = 6,
    ActionVerifying = 7,
};

/// What a drive can write, as its profiles say.
enum Profile : std::int32_t {
    ProfileCdRecordable = 0x0009,
    ProfileCdRewritable = 0x000A,
    ProfileDvdMinusR = 0x0011,
    ProfileDvdRam = 0x0012,
    ProfileDvdMinusRwRestricted = 0x0013,
    ProfileDvdMinusRwSequential = 0x0014,
    ProfileDvdMinusRDlSequential = 0x0015,
    ProfileDvdMinusRDlJump = 0x0016,
    ProfileDvdPlusRw = 0x001A,
    ProfileDvdPlusR = 0x001B,
    ProfileDvdPlusRwDl = 0x002A,
    ProfileDvdPlusRDl = 0x002B,
};

/// File systems of an image, as bits.
enum FileSystem : std::int32_t { Iso9660 = 1, Joliet = 2, Udf = 4 };

/// Result codes that the program tells apart.
enum Result : std::uint32_t {
    AccessDenied = 0x80070005,
    HandleLost = 0x80070006,
    DeviceGone = 0x80070037,
    RequestCancelled = 0xC0AA0002,
    RecorderRequired = 0xC0AA0003,
    SpeedAdjusted = 0x00AA0004,
    NoMedia = 0xC0AA0202,
    MediaIncompatible = 0xC0AA0203,
    MediaUpsideDown = 0xC0AA0204,
    MediaBecomingReady = 0xC0AA0205,
    MediaFormatInProgress = 0xC0AA0206,
    MediaBusy = 0xC0AA0207,
    MediaWriteProtected = 0xC0AA0209,
    NoSuchFeature = 0xC0AA020A,
    ConfigurationNotSupported = 0xC0AA020C,
    CommandTimeout = 0xC0AA020D,
    RecorderLocked = 0xC0AA0210,
    LossOfStreaming = 0xC0AA0300,
    UnexpectedResponse = 0xC0AA0301,
    WriteInProgress = 0xC0AA0400,
    WriteNotInProgress = 0xC0AA0401,
    InvalidMediaState = 0xC0AA0402,
    StreamNotSupported = 0xC0AA0403,
    StreamTooLarge = 0xC0AA0404,
    MediaNotBlank = 0xC0AA0405,
    MediaNotSupported = 0xC0AA0406,
    RecorderNotSupported = 0xC0AA0407,
    ClientNameNotValid = 0xC0AA0408,
    EraseRecorderInUse = 0x80AA0900,
    EraseNotErasable = 0x80AA0904,
    EraseDriveFailed = 0x80AA0905,
    EraseMediaNotSupported = 0xC0AA0909,
    EraseClientNameNotValid = 0xC0AA090B,
    ImageReadOnly = 0xC0AAB102,
    ImageInvalidVolumeName = 0xC0AAB104,
    ImageInvalidParameter = 0xC0AAB101,
    ImageInvalidPath = 0xC0AAB110,
    ImageDuplicateName = 0xC0AAB112,
    ImageItemNotFound = 0xC0AAB118,
    ImageSizeLimit = 0xC0AAB120,
    ImageTooBig = 0xC0AAB121,
    ImageReadFailure = 0xC0AAB129,
    ImageDataTooBig = 0xC0AAB132,
    ImageEmptyDisc = 0xC0AAB150,
    ImageNoFileSystem = 0xC0AAB151,
    ImageIncompatibleSession = 0xC0AAB133,
    ImageImportNotAllowed = 0xC0AAB159,
    ImageMultisessionNotSet = 0xC0AAB15D,
};

} // namespace Mastering
