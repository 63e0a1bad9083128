#include "archive/forms/frmMotPasse.h"

#include "archive/PassingSecret.h"
#include "archive/modGestionMotPasse.h"
#include "core/ArchiveValues.h"
#include "core/UserValues.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "resources/TextId.h"

#include <array>

namespace {

using modGestionMotPasse::WithoutBlanksAround;

constexpr std::array Captions = {
    Caption{IDC_lblTitre, TextId::EnterPassword},       Caption{IDC_lblConfirmation, TextId::ConfirmPassword},
    Caption{IDC_lblNotaBene, TextId::PasswordRequired}, Caption{IDC_cmdOK, TextId::OkCaption},
    Caption{IDC_cmdCancel, TextId::CancelCaption},      Caption{IDC_cmdAideMax, TextId::ShowHelpCaption},
    Caption{IDC_cmdAideMin, TextId::HideHelpCaption},   Caption{IDC_lblTitreLabel, TextId::PasswordRulesIntro},
};
constexpr std::array CriterionTexts = {TextId::RuleLength, TextId::RuleAccountName, TextId::RuleCategories};
constexpr std::array CategoryTexts = {TextId::CategoryUppercase, TextId::CategoryLowercase, TextId::CategoryDigits,
                                      TextId::CategoryOthers};

// All sizes are in twips.
constexpr int InnerWidth = 7300;
constexpr int LeftEdge = 120;
constexpr int FieldWidth = 3000;
constexpr int ButtonWidth = 1215;
constexpr int EntryTop = 60;
constexpr int EntryGap = 15;
constexpr int EntryHeight = 270;
constexpr int LabelHeight = 210;
constexpr int FrameLeft = 1455;
constexpr int FrameWidth = 5725;
constexpr int FrameHeight = 3900;
constexpr int FrameTopWhileHidden = 2280;

struct HelpHeights {
    int shown;
    int hidden;
};
constexpr HelpHeights EntryHeights{5525, 1800};
constexpr HelpHeights CreationHeights{6525, 2865};

constexpr const HelpHeights& HeightsOf(bool isCreation) {
    return isCreation ? CreationHeights : EntryHeights;
}

} // namespace

frmMotPasse::frmMotPasse(Application& app, PasswordMode mode)
    : ApplicationForm(app, IDD_frmMotPasse, L"frmMotPasse"), mode_(mode) {}

frmMotPasse::~frmMotPasse() {
    if (answer_) Forget(*answer_);
}

void frmMotPasse::OnLoad() {
    SetCancelButton(IDC_cmdCancel);
    SetFrame(IDC_frameAide, {IDC_lblTitreLabel, IDC_lblCritere, IDC_lblAlphaNum});
    cmdOK.OnClick([this] { cmdOK_Click(); });
    cmdCancel.OnClick([this] { cmdCancel_Click(); });
    cmdAideMax.OnClick([this] { cmdAideMax_Click(); });
    cmdAideMin.OnClick([this] { cmdAideMin_Click(); });
    txtMotPasse.OnEnter([this] { txtMotPasse_KeyPress(); });
    txtConfirmation.OnEnter([this] { txtConfirmation_KeyPress(); });
    Form_Load();
}

void frmMotPasse::OnUnload() {
    // Nothing of a password stays in the boxes' memory.
    for (ui::TextBox* box : {&txtMotPasse, &txtConfirmation}) {
        const PassingSecret typed(box->Text());
        box->SetText(std::wstring(typed.Text().size(), L' '));
        box->SetText(L"");
    }
}

void frmMotPasse::Form_Load() {
    Guarded(L"Form_Load, module frmMotPasse", [this] {
        InitCaptionsMotPasse();
        SetInnerWidthTwips(InnerWidth);
        if (IsCreation())
            LayOutForCreation();
        else
            LayOutForEntry();
        SetHeightTwips(HeightsOf(IsCreation()).hidden);
        cmdAideMin.Move(cmdAideMax.Bounds());
        ShowHelp(false, FrameTopWhileHidden);
    });
}

void frmMotPasse::InitCaptionsMotPasse() {
    Guarded(L"InitCaptionsMotPasse, module modGestionMotPasse", [this] {
        const auto lines = [this](const auto& textIds) {
            std::wstring text;
            for (const TextId textId : textIds) text += (text.empty() ? L"" : L"\r\n") + Text(textId);
            return text;
        };
        SetTitle(Text(TextId::PasswordTitle));
        SetCaptions(Captions);
        lblCritere.SetText(lines(CriterionTexts));
        lblAlphaNum.SetText(lines(CategoryTexts));
    });
}

void frmMotPasse::LayOutForCreation() {
    constexpr int fieldLeft = 2400;
    constexpr int buttonHeight = 345;
    constexpr int rightEdge = FrameLeft + FrameWidth;
    lblNotaBene.Move({LeftEdge, 60, rightEdge - LeftEdge, 600});
    lblTitre.Move({LeftEdge, 765, fieldLeft - LeftEdge, LabelHeight});
    txtMotPasse.Move({fieldLeft, 720, FieldWidth, 285});
    lblConfirmation.Move({LeftEdge, 1110, fieldLeft - LeftEdge, LabelHeight});
    txtConfirmation.Move({fieldLeft, 1065, FieldWidth, 285});
    cmdOK.Move({rightEdge - 2 * ButtonWidth - 120, 1530, ButtonWidth, buttonHeight});
    cmdCancel.Move({rightEdge - ButtonWidth, 1530, ButtonWidth, buttonHeight});
    cmdAideMax.Move({LeftEdge, 2040, ButtonWidth, buttonHeight});
    cmdCancel.Show(true);
    lblConfirmation.Show(true);
    txtConfirmation.Show(true);
    txtConfirmation.Enable(true);
}

void frmMotPasse::LayOutForEntry() {
    lblConfirmation.Show(false);
    txtConfirmation.Show(false);
    lblNotaBene.Show(false);
    lblTitre.Move({LeftEdge, EntryTop, FieldWidth, LabelHeight});
    txtMotPasse.Move({LeftEdge, EntryTop + LabelHeight + EntryGap, FieldWidth, EntryHeight});
    int top = EntryTop + LabelHeight + EntryGap + EntryHeight + EntryGap;
    for (ui::Button* button : {&cmdCancel, &cmdOK, &cmdAideMax}) {
        button->Move({LeftEdge, top, ButtonWidth, EntryHeight});
        top += EntryHeight + EntryGap;
    }
    // Tab goes down the stack.
    cmdCancel.FollowInTabOrder(txtMotPasse);
}

void frmMotPasse::cmdOK_Click() {
    Guarded(L"cmdOK_Click, module frmMotPasse", [this] {
        if (IsCreation()) {
            isAccepted_ = IsNewPasswordAccepted();
            app_.machine.messageLoop->RunPending();
            // The dialog may have been closed meanwhile, or a second click have emptied the boxes.
            if (!IsLoaded() || !isAccepted_) return;
        }
        const PassingSecret password(txtMotPasse.Text());
        answer_ = password.Text();
        Unload();
    });
}

bool frmMotPasse::IsNewPasswordAccepted() {
    if (VerifierComplexiteMotPasse()) {
        if (!txtConfirmation.IsVisible() || IsConfirmed()) return true;
        app_.ShowMessage(TextId::PasswordsDiffer, TextId::PasswordsDifferTitle, box::Information);
        txtConfirmation.SetText(L"");
        txtConfirmation.SetFocus();
        return false;
    }
    app_.ShowMessage(TextId::PasswordRefused, TextId::PasswordRefusedTitle, box::Information);
    txtMotPasse.SetText(L"");
    txtConfirmation.SetText(L"");
    cmdAideMax_Click();
    txtMotPasse.SetFocus();
    return false;
}

bool frmMotPasse::VerifierComplexiteMotPasse() {
    return Guarded(L"VerifierComplexiteMotPasse, module frmMotPasse", [this] {
        const PassingSecret password(txtMotPasse.Text());
        return modGestionMotPasse::VerifierComplexiteMotPasse(password.Text(), app_.user->accountName);
    });
}

bool frmMotPasse::IsConfirmed() {
    const PassingSecret password(txtMotPasse.Text());
    const PassingSecret confirmation(txtConfirmation.Text());
    return modGestionMotPasse::MotsPasseIdentiques(WithoutBlanksAround(password.Text()),
                                                   WithoutBlanksAround(confirmation.Text()));
}

void frmMotPasse::cmdCancel_Click() {
    Guarded(L"cmdCancel_Click, module frmMotPasse", [this] { Unload(); });
}

void frmMotPasse::txtMotPasse_KeyPress() {
    Guarded(L"txtMotPasse_KeyPress, module frmMotPasse", [this] {
        if (txtConfirmation.IsVisible())
            txtConfirmation.SetFocus();
        else
            cmdOK_Click();
        app_.machine.messageLoop->RunPending();
    });
}

void frmMotPasse::txtConfirmation_KeyPress() {
    Guarded(L"txtConfirmation_KeyPress, module frmMotPasse", [this] { cmdOK_Click(); });
}

void frmMotPasse::cmdAideMax_Click() {
    Guarded(L"cmdAideMax_Click, module frmMotPasse", [this] {
        SetHeightTwips(HeightsOf(IsCreation()).shown);
        ShowHelp(true, cmdAideMax.Bounds().top);
    });
}

void frmMotPasse::cmdAideMin_Click() {
    Guarded(L"cmdAideMin_Click, module frmMotPasse", [this] {
        SetHeightTwips(HeightsOf(IsCreation()).hidden);
        ShowHelp(false, FrameTopWhileHidden);
    });
}

/// Moves the help to where it is seen or, shut, does not show at the window's edge.
void frmMotPasse::ShowHelp(bool isShown, int topTwips) {
    frameAide.Move({FrameLeft, topTwips, FrameWidth, FrameHeight});
    lblTitreLabel.Move({FrameLeft + 120, topTwips + 180, FrameWidth - 240, 975});
    lblCritere.Move({FrameLeft + 120, topTwips + 1170, FrameWidth - 240, 1365});
    lblAlphaNum.Move({FrameLeft + 360, topTwips + 2565, FrameWidth - 480, 1170});
    frameAide.Show(isShown);
    // The key that opened the help shuts it: the focus goes from one button to the other.
    ui::Button& shown = isShown ? cmdAideMin : cmdAideMax;
    ui::Button& hidden = isShown ? cmdAideMax : cmdAideMin;
    const bool hadFocus = hidden.HasFocus();
    shown.Show(true);
    if (hadFocus) shown.SetFocus();
    hidden.Show(false);
}

bool modGestionMotPasse::DemanderMotPasse(Application& app, ui::Form* owner, PasswordMode mode) {
    return Guarded(app, L"DemanderMotPasse, module modGestionMotPasse", [&] {
        std::wstring& password = app.archive->backupPassword;
        Forget(password);
        frmMotPasse dialog(app, mode);
        dialog.ShowModal(owner);
        if (dialog.Answer()) password = *dialog.Answer();
        return dialog.Answer().has_value();
    });
}
