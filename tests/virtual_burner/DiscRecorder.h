#pragma once

#include "ComObject.h"
#include "Drives.h"

#include <string>

/// The recorder that a format object was given; null for one that is not of this server or not initialized.
class DiscRecorder : public DispatchObject<IDiscRecorder2> {
  public:
    static DiscRecorder* Of(IDiscRecorder2* recorder);

    /// As its files say at this moment.
    VirtualDrive Drive() const { return VirtualDrive(folder_); }
    bool IsInitialized() const { return !folder_.empty(); }
    /// Whether a write or an erase of this process holds the drive.
    static bool IsHeld(const std::wstring& folder);
    static void Hold(const std::wstring& folder, bool isHeld);
    const std::wstring& Folder() const { return folder_; }

    HRESULT STDMETHODCALLTYPE EjectMedia() override;
    HRESULT STDMETHODCALLTYPE CloseTray() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AcquireExclusiveAccess(VARIANT_BOOL, BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ReleaseExclusiveAccess() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DisableMcn() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnableMcn() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitializeDiscRecorder(BSTR id) override;
    HRESULT STDMETHODCALLTYPE get_ActiveDiscRecorder(BSTR* value) override { return GiveText(folder_, value); }
    HRESULT STDMETHODCALLTYPE get_VendorId(BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_ProductId(BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_ProductRevision(BSTR* value) override { return GiveText(L"1.0 ", value); }
    HRESULT STDMETHODCALLTYPE get_VolumeName(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_VolumePathNames(SAFEARRAY** value) override;
    HRESULT STDMETHODCALLTYPE get_DeviceCanLoadMedia(VARIANT_BOOL* value) override { return GiveFlag(false, value); }
    HRESULT STDMETHODCALLTYPE get_LegacyDeviceNumber(LONG* value) override { return Give<LONG>(0, value); }
    HRESULT STDMETHODCALLTYPE get_SupportedFeaturePages(SAFEARRAY** value) override { return GiveNumbers({}, value); }
    HRESULT STDMETHODCALLTYPE get_CurrentFeaturePages(SAFEARRAY** value) override { return GiveNumbers({}, value); }
    HRESULT STDMETHODCALLTYPE get_SupportedProfiles(SAFEARRAY** value) override {
        return GiveNumbers(Drive().Profiles(), value);
    }
    HRESULT STDMETHODCALLTYPE get_CurrentProfiles(SAFEARRAY** value) override { return GiveNumbers({}, value); }
    HRESULT STDMETHODCALLTYPE get_SupportedModePages(SAFEARRAY** value) override { return GiveNumbers({}, value); }
    HRESULT STDMETHODCALLTYPE get_ExclusiveAccessOwner(BSTR* value) override { return GiveText({}, value); }

  private:
    void* OtherThanDispatch(REFIID id) override;

    std::wstring folder_;
};

/// Holds a drive for a write or an erase, and says whether it could be had.
class DriveHold {
  public:
    explicit DriveHold(const std::wstring& folder) : folder_(folder), isHeld_(!DiscRecorder::IsHeld(folder)) {
        if (isHeld_) DiscRecorder::Hold(folder_, true);
    }
    ~DriveHold() {
        if (isHeld_) DiscRecorder::Hold(folder_, false);
    }
    DriveHold(const DriveHold&) = delete;
    DriveHold& operator=(const DriveHold&) = delete;
    bool IsHeld() const { return isHeld_; }

  private:
    std::wstring folder_;
    bool isHeld_;
};
