#pragma once

#include "core/Application.h"
#include "platform/discs/DiscWriter.h"
#include "shell/MediumOffer.h"

#include <functional>
#include <memory>

/// Lists every drive root from A:\ to Z:\ once, so that the drives are awake when a writer looks at them.
void WakeDrives(Application& app);

/// Whether DVD writing is allowed at all: before Windows NT 6 always, from then on where the settings file says so.
bool IsDvdAllowed(const Application& app);

/// A writer component set up for one look at what it can drive; released by the destructor.
class WriterProbe : private DiscWriterEvents {
  public:
    /// Clears the writer error flag and makes the component. Throws when it cannot be made.
    WriterProbe(Application& app, DiscFamily family);
    ~WriterProbe() override;
    WriterProbe(const WriterProbe&) = delete;
    WriterProbe& operator=(const WriterProbe&) = delete;

    /// What the component offers: nothing when setting it up raised the writer error flag.
    MediumOffer Offer() const;

  private:
    void ErrorEx(std::int32_t errCode, const std::wstring& errDescr) override;
    void MediaChange() override {}
    void DiscReadAgain() override {}
    void WritersChange() override {}
    void OperationProgress(std::int16_t) override {}

    Application& app_;
    DiscFamily family_;
    std::unique_ptr<DiscWriter> writer_;
};

/// Handles messages until the clock has passed the next whole second, midnight included, or `isEnding` says that the
/// program is closing.
void WaitForNextSecond(Application& app, const std::function<bool()>& isEnding);
