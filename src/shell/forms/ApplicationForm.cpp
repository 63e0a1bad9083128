#include "shell/forms/ApplicationForm.h"

ApplicationForm::ApplicationForm(Application& app, int templateId, const wchar_t* module)
    : ui::Form(templateId), app_(app), module_(module) {}

void ApplicationForm::SetCaptions(std::span<const Caption> captions) {
    for (const Caption& caption : captions) ui::Control(*this, caption.controlId).SetText(Text(caption.textId));
}

void ApplicationForm::SetNames(std::span<const Caption> names) {
    for (const Caption& name : names) {
        std::wstring text = Text(name.textId);
        std::erase(text, L'&');
        ui::Control(*this, name.controlId).SetText(text);
    }
}

void ApplicationForm::OnUnhandledException() noexcept {
    try {
        ReportCurrentException(app_, L"WindowProc, module " + module_);
    } catch (...) {
        // Nobody is left to tell. The program stays, and what the user does next is tried as ever.
    }
}
