#include "core/Application.h"

#include "platform/MessageBoxes.h"
#include "platform/StringTable.h"
#include "platform/System.h"

Application::Application(const Machine& theMachine)
    : machine(theMachine), programFolder_(theMachine.system.ProgramFolder()) {}

std::wstring Application::Text(int id) const {
    return machine.strings.Load(lngLangue + id);
}

std::int16_t Application::ShowMessage(int id, int titleId, std::uint32_t style) {
    return ShowMessage(Text(id), titleId, style);
}

std::int16_t Application::ShowMessage(const std::wstring& text, int titleId, std::uint32_t style) {
    return machine.messageBoxes.Show(text, titleId == 0 ? std::wstring(DefaultTitle) : Text(titleId), style);
}

std::wstring Application::WorkFolder() const {
    return programFolder_ + L"\\zip";
}

std::wstring Application::ListFileFolder() const {
    return strRepRacine + L"\\backup\\Fichierlst\\Medium\\";
}

std::wstring VersionText() {
    return std::to_wstring(BACKUP_VERSION_MAJOR) + L"." + std::to_wstring(BACKUP_VERSION_MINOR) + L"." +
           std::to_wstring(BACKUP_VERSION_REVISION);
}
