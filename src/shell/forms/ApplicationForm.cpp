#include "shell/forms/ApplicationForm.h"

ApplicationForm::ApplicationForm(Application& app, int templateId, const wchar_t* module)
    : ui::Form(templateId), app_(app), module_(module) {}

void ApplicationForm::SetCaptions(std::span<const Caption> captions) {
    for (const Caption& caption : captions) ui::Control(*this, caption.controlId).SetText(Text(caption.textId));
}

void ApplicationForm::OnUnhandledException() noexcept {
    ReportCurrentException(app_, L"WindowProc, module " + module_);
}
