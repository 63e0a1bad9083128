#include "platform/discs/DiscErrors.h"

#include "platform/discs/MasteringCodes.h"

std::wstring DiscErrorText(std::uint32_t result) {
    switch (result) {
    case Mastering::RequestCancelled:
        return L"The operation was cancelled.";
    case Mastering::NoMedia:
        return L"There is no disc in the drive.";
    case Mastering::MediaIncompatible:
    case Mastering::MediaNotSupported:
    case Mastering::EraseMediaNotSupported:
        return L"The disc cannot be used for this operation.";
    case Mastering::MediaUpsideDown:
        return L"The disc is inserted upside down.";
    case Mastering::MediaBecomingReady:
        return L"The drive is still loading the disc.";
    case Mastering::MediaBusy:
    case Mastering::WriteInProgress:
        return L"The drive is still busy with the operation before.";
    case Mastering::MediaWriteProtected:
        return L"The disc is write-protected.";
    case Mastering::CommandTimeout:
        return L"The drive did not answer in time.";
    case Mastering::RecorderLocked:
        return L"Another program is using the drive.";
    case Mastering::LossOfStreaming:
        return L"The data did not reach the drive fast enough.";
    case Mastering::UnexpectedResponse:
        return L"The drive reported a failure during the write.";
    case Mastering::StreamTooLarge:
    case Mastering::ImageSizeLimit:
    case Mastering::ImageTooBig:
        return L"The files do not fit on the disc.";
    case Mastering::MediaNotBlank:
        return L"The disc is not blank.";
    case Mastering::RecorderNotSupported:
        return L"The drive cannot write discs.";
    case Mastering::EraseNotErasable:
        return L"The disc cannot be erased.";
    case Mastering::EraseDriveFailed:
        return L"The drive could not erase the disc.";
    case Mastering::ImageReadFailure:
        return L"A file could not be read while it was being written.";
    case Mastering::ImageDataTooBig:
        return L"A file is too large for the disc's file system.";
    case Mastering::ImageEmptyDisc:
    case Mastering::ImageNoFileSystem:
        return L"Nothing can be added to what is on the disc.";
    default:
        return {};
    }
}
