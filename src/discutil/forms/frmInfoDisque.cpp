#include "discutil/forms/frmInfoDisque.h"

#include "platform/AtScopeEnd.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"

#include <array>

namespace {

constexpr std::array Captions = {
    Caption{IDC_cmdOK, TextId::OkCaption},
    Caption{IDC_cmdRafraichir, TextId::RefreshCaption},
    Caption{IDC_frmInfosDisque, TextId::DiscCaption},
    Caption{IDC_lblLabelType, TextId::DiscTypeCaption},
    Caption{IDC_lblLabelEspaceUtilise, TextId::UsedSpaceCaption},
    Caption{IDC_lblLabelStatut, TextId::DiscStatusCaption},
    Caption{IDC_lblMoAGraver, TextId::SizeCaption},
    Caption{IDC_lblEspaceUtilise, TextId::UsedSpaceAtFirst},
    Caption{IDC_lblEstimEspaceUtilise, TextId::EstimateAtFirst},
};

} // namespace

frmInfoDisque::frmInfoDisque(Application& app) : ApplicationForm(app, IDD_frmInfoDisque, L"frmInfoDisque") {}

void frmInfoDisque::OnLoad() {
    SetCancelButton(IDC_cmdOK);
    cmdRafraichir.OnClick([this] { cmdRafraichir_Click(); });
    cmdOK.OnClick([this] { cmdOk_Click(); });
    Guarded(L"Form_Load, module frmInfoDisque", [this] {
        InitCaptions();
        Rafraichir();
    });
}

void frmInfoDisque::OnUnload() {
    Guarded(L"Form_Unload, module frmInfoDisque", [this] { parent_ = nullptr; });
}

void frmInfoDisque::InitCaptions() {
    Guarded(L"InitCaptions, module frmInfoDisque", [this] {
        SetTitle(Text(TextId::DiscInformationTitle));
        SetCaptions(Captions);
    });
}

void frmInfoDisque::Rafraichir() {
    Guarded(L"Rafraichir, module frmInfoDisque", [this] {
        const Medium medium = parent_->MediaType();
        const auto family = DiscFamilyOf(medium);
        const DiscWriter* writer = parent_->Writer();
        if (family && writer == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
        DiscInformation information;
        // A disk that fails in the middle still shows what it told before.
        WithEnding(
            [&] {
                if (family) {
                    information = InformationOnDisc(app_, *family, parent_->DiscMediaTypeString(), *writer);
                } else {
                    ReadInformationOnDisk(app_, medium, parent_->Drive(), parent_->RequiredSpaceText(), information);
                }
            },
            [&] { ShowInformation(information); });
    });
}

void frmInfoDisque::ShowInformation(const DiscInformation& information) {
    const auto set = [](ui::Label& label, const std::optional<std::wstring>& text) {
        if (text) label.SetText(*text);
    };
    set(lblTypeCD, information.type);
    set(lblStatutCD, information.status);
    set(lblEspaceUtilise, information.used);
    set(lblEstimEspaceUtilise, information.estimate);
}

void frmInfoDisque::cmdRafraichir_Click() {
    Guarded(L"cmdRafraichir_Click, module frmInfoDisque", [this] { Rafraichir(); });
}

void frmInfoDisque::cmdOk_Click() {
    Guarded(L"cmdOk_Click, module frmInfoDisque", [this] { Unload(); });
}
