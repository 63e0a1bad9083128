#pragma once

#include "core/Application.h"
#include "shell/ErrorReport.h"
#include "ui/Controls.h"

#include <span>
#include <string>
#include <utility>

/// A control and the text that it shows.
struct Caption {
    int controlId;
    TextId textId;
};

/// A form that knows the application: its texts, its messages and its way of reporting failures.
class ApplicationForm : public ui::Form {
  public:
    /// `module` is the name under which failures are reported, such as "frmMain".
    ApplicationForm(Application& app, int templateId, const wchar_t* module);

  protected:
    /// Runs a procedure's steps under its fixed label.
    template<typename Steps>
    auto Guarded(const wchar_t* procedure, Steps&& steps) {
        return ::Guarded(app_, procedure, std::forward<Steps>(steps));
    }
    std::wstring Text(TextId id) const { return app_.Text(id); }
    /// Gives each control of the table its text in the user's language.
    void SetCaptions(std::span<const Caption> captions);
    /// Gives labels that are never seen, each before the control that it names to a screen reader, their texts without
    /// access keys.
    void SetNames(std::span<const Caption> names);
    void OnUnhandledException() noexcept override;

    Application& app_;

  private:
    std::wstring module_;
};
