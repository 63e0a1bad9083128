#pragma once

#include "selection/forms/ctlScanIds.h"
#include "shell/forms/ApplicationForm.h"
#include "ui/Controls.h"

#include <cstdint>

/// Shows that the computer's buses are being scanned for drives. Its host places it with `CreateChild`.
class ctlScan final : public ApplicationForm {
  public:
    explicit ctlScan(Application& app);

    std::int16_t MIN() const { return static_cast<std::int16_t>(pgbScan.Min()); }
    void SetMIN(std::int16_t iMin) { pgbScan.SetRange(iMin, pgbScan.Max()); }
    std::int16_t MAX() const { return static_cast<std::int16_t>(pgbScan.Max()); }
    void SetMAX(std::int16_t iMax) { pgbScan.SetRange(pgbScan.Min(), iMax); }
    std::int16_t Value() const { return static_cast<std::int16_t>(pgbScan.Value()); }
    /// Outside the range the bar itself decides: it stays at the nearer end.
    void SetValue(std::int16_t iValue) { pgbScan.SetValue(iValue); }

    bool Enabled() const;
    void SetEnabled(bool bEnabled);

  protected:
    void OnLoad() override;

  private:
    void InitCaptions();

    ui::Label lblScan{*this, IDC_lblScan};
    ui::ProgressBarControl pgbScan{*this, IDC_pgbScan};
};
