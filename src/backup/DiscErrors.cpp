#include "backup/DiscErrors.h"

#include "platform/discs/MasteringCodes.h"
#include "resources/TextId.h"

#include <algorithm>

namespace {

struct ErrorText {
    std::uint32_t code;
    TextId textId;
};

constexpr ErrorText ErrorTexts[] = {
    {Mastering::MediaIncompatible, TextId::DiscUnsuitable},
    {Mastering::MediaNotSupported, TextId::DiscUnsuitable},
    {Mastering::EraseMediaNotSupported, TextId::DiscUnsuitable},
    {Mastering::MediaUpsideDown, TextId::DiscUpsideDown},
    {Mastering::MediaBecomingReady, TextId::DiscLoading},
    {Mastering::MediaBusy, TextId::WriterNotDone},
    {Mastering::MediaFormatInProgress, TextId::WriterNotDone},
    {Mastering::WriteInProgress, TextId::WriterNotDone},
    {Mastering::MediaWriteProtected, TextId::DiscProtected},
    {Mastering::CommandTimeout, TextId::WriterSilent},
    {Mastering::RecorderLocked, TextId::WriterHeld},
    {Mastering::EraseRecorderInUse, TextId::WriterHeld},
    {Mastering::AccessDenied, TextId::WriterHeld},
    {Mastering::LossOfStreaming, TextId::DataTooSlow},
    {Mastering::UnexpectedResponse, TextId::WriteFailed},
    {Mastering::StreamTooLarge, TextId::FilesTooLarge},
    {Mastering::ImageSizeLimit, TextId::FilesTooLarge},
    {Mastering::ImageTooBig, TextId::FilesTooLarge},
    {Mastering::NoMedia, TextId::WriterEmpty},
    {Mastering::RecorderNotSupported, TextId::WriterCannotWrite},
    {Mastering::EraseNotErasable, TextId::DiscCannotBeErased},
    {Mastering::EraseDriveFailed, TextId::WriterCannotErase},
    {Mastering::ImageReadFailure, TextId::SourceUnreadable},
    {Mastering::ImageDataTooBig, TextId::FileTooLargeForDisc},
    {Mastering::MediaNotBlank, TextId::DiscCannotBeAddedTo},
    {Mastering::ImageEmptyDisc, TextId::DiscCannotBeAddedTo},
    {Mastering::ImageNoFileSystem, TextId::DiscCannotBeAddedTo},
    {Mastering::ImageIncompatibleSession, TextId::DiscCannotBeAddedTo},
    {Mastering::ImageImportNotAllowed, TextId::DiscCannotBeAddedTo},
    {Mastering::ImageMultisessionNotSet, TextId::DiscCannotBeAddedTo},
    {Mastering::HandleLost, TextId::WriterGone},
    {Mastering::DeviceGone, TextId::WriterGone},
};

TextId TextIdOf(std::int32_t errCode) {
    const auto code = static_cast<std::uint32_t>(errCode);
    const auto found = std::find_if(std::begin(ErrorTexts), std::end(ErrorTexts),
                                    [code](const ErrorText& text) { return text.code == code; });
    return found == std::end(ErrorTexts) ? TextId::WriterFailed : found->textId;
}

} // namespace

std::wstring DiscErrorDescription(const Application& app, std::int32_t errCode, const std::wstring& systemText,
                                  bool isErasable) {
    const TextId textId = TextIdOf(errCode);
    std::wstring text = systemText.empty() ? app.Text(textId) : systemText;
    if (textId == TextId::DiscCannotBeAddedTo)
        text += L" " + app.Text(isErasable ? TextId::EraseOrInsertBlank : TextId::InsertBlank);
    return text;
}
