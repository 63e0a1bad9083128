#include "shell/WriterDetection.h"

#include "core/WriterFlags.h"
#include "platform/Clock.h"
#include "platform/Drives.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "shell/LanguageChoice.h"
#include "shell/modObtenirUSB.h"

#include <cmath>

namespace {

constexpr std::uint32_t PauseMilliseconds = 1;

bool IsAllowed(const Application& app, DiscFamily family) {
    switch (family) {
    case DiscFamily::Cd:
        return true;
    case DiscFamily::Dvd:
        return IsDvdAllowed(app);
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

} // namespace

void WakeDrives(Application& app) {
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) app.machine.drives->Touch(std::wstring(1, letter) + L":\\");
}

bool IsDvdAllowed(const Application& app) {
    if (!modObtenirUSB::IsWinVista(app)) return true;
    return UpperCase(LireINI(app, L"c:\\Valcoreaux\\Backup\\Backup.ini", L"DVD", L"Disponible")) == L"OUI";
}

WriterProbe::WriterProbe(Application& app, DiscFamily family) : app_(app), family_(family) {
    app_.writerFlags->hasWriterError = false;
    writer_ = app_.machine.discWriters->Create(family);
    writer_->SetEvents(this);
}

WriterProbe::~WriterProbe() {
    writer_->ShutDown();
}

MediumOffer WriterProbe::Offer() const {
    MediumOffer offer;
    if (app_.writerFlags->hasWriterError) return offer;
    const bool isFound = !writer_->WriterNames().empty();
    const bool isAllowed = IsAllowed(app_, family_);
    offer.isEnabled = isFound && isAllowed;
    offer.isForbidden = isFound && !isAllowed;
    return offer;
}

void WriterProbe::ErrorEx(std::int32_t, const std::wstring&) {
    app_.writerFlags->hasWriterError = true;
}

void WaitForNextSecond(Application& app, const std::function<bool()>& isEnding) {
    const double start = app.machine.clock->SecondsSinceMidnight();
    const double end = std::floor(start) + 1;
    while (!isEnding()) {
        const double now = app.machine.clock->SecondsSinceMidnight();
        // The clock starts again at midnight.
        if (now >= end || now < start) return;
        app.machine.messageLoop->RunPending();
        app.machine.clock->Sleep(PauseMilliseconds);
    }
}
