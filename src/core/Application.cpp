#include "core/Application.h"

#include "core/ArchiveValues.h"
#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "core/StartUpValues.h"
#include "core/UsbAnswer.h"
#include "core/UserValues.h"
#include "core/WriterFlags.h"
#include "platform/Environment.h"
#include "platform/MessageBoxes.h"
#include "platform/StringTable.h"
#include "resources/TextId.h"

#include <utility>

Application::Application(Machine theMachine)
    : machine(std::move(theMachine)), programFolder_(machine.environment->ProgramFolder()) {}

Application::~Application() = default;

std::wstring Application::Text(TextId id) const {
    return machine.strings->Load(language->lngLangue + static_cast<int>(id));
}

int Application::ShowMessage(TextId id, TextId titleId, std::uint32_t style) {
    return ShowMessage(Text(id), titleId, style);
}

int Application::ShowMessage(const std::wstring& text, TextId titleId, std::uint32_t style) {
    return machine.messageBoxes->Show(text, titleId == TextId::None ? std::wstring(DefaultTitle) : Text(titleId),
                                      style);
}

std::wstring Application::WorkFolder() const {
    return programFolder_ + L"\\zip";
}

std::wstring Application::ListFileFolder() const {
    return startUp->strRepRacine + L"\\backup\\Fichierlst\\Medium\\";
}

std::wstring VersionText() {
    return std::to_wstring(BACKUP_VERSION_MAJOR) + L"." + std::to_wstring(BACKUP_VERSION_MINOR) + L"." +
           std::to_wstring(BACKUP_VERSION_REVISION);
}
