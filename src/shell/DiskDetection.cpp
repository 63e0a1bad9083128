#include "shell/DiskDetection.h"

#include "core/UsbAnswer.h"
#include "platform/Drives.h"
#include "platform/MessageBoxes.h"
#include "shell/modFonctionsCommunes.h"
#include "shell/modObtenirUSB.h"

namespace {

MediumOffer OfferOf(const std::vector<std::wstring>& letters) {
    MediumOffer offer;
    for (const std::wstring& letter : letters) {
        if (!letter.empty()) offer.roots.push_back(letter + L":\\");
    }
    offer.isEnabled = !offer.roots.empty();
    return offer;
}

} // namespace

MediumOffer DetectRemovableDisks(Application& app) {
    MediumOffer offer =
        OfferOf(modFonctionsCommunes::GetDriveListByType(app, modFonctionsCommunes::RemovableButFloppies));
    if (app.usbAnswer->intReponseUSB == box::AnswerNo) return {};
    return offer;
}

MediumOffer DetectExternalDisks(Application& app) {
    const auto fixed = modFonctionsCommunes::GetDriveListByType(app, static_cast<std::int32_t>(DriveType::Fixed));
    return OfferOf(modObtenirUSB::ScanDiskLetter(app, fixed));
}
