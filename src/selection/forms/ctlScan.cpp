#include "selection/forms/ctlScan.h"
#include "resources/TextId.h"

#include <array>

namespace {

constexpr std::array Captions = {Caption{IDC_lblScan, TextId::ScanCaption}};

} // namespace

ctlScan::ctlScan(Application& app) : ApplicationForm(app, IDD_ctlScan, L"ctlScan") {}

void ctlScan::OnLoad() {
    Guarded(L"UserControl_Initialize, module ctlScan", [this] { InitCaptions(); });
}

void ctlScan::InitCaptions() {
    Guarded(L"InitCaptions, module ctlScan", [this] { SetCaptions(Captions); });
}

bool ctlScan::Enabled() const {
    return IsEnabled();
}

void ctlScan::SetEnabled(bool bEnabled) {
    Enable(bEnabled);
}
