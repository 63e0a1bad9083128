#pragma once

#include "ComObject.h"
#include "Drives.h"

#include <string>

/// What the data writer hands to the image so that a new session can follow the ones on the disc.
class Session : public DispatchObject<IDispatch> {
  public:
    explicit Session(std::wstring driveFolder) : driveFolder_(std::move(driveFolder)) {}

    /// The session behind an array of multisession interfaces; null when it holds none of this server.
    static ComPointer<IDispatch> In(SAFEARRAY* sessions, std::wstring& driveFolder);

    /// The session is one of a disc that can be overwritten anywhere.
    bool isRandomWrite = false;

  private:
    void* OtherThanDispatch(REFIID id) override;

    std::wstring driveFolder_;
};

/// The ways in which the disc in a drive can be added to.
HRESULT GiveSessions(const VirtualDrive& drive, SAFEARRAY** value);

/// Makes the content of a written disc appear on its drive letter, in a process of its own: that may outlive the
/// program that wrote the disc, as a drive does.
void StartShowingContent(const std::wstring& discFolder);

/// Takes the disc out of the drive; it lies beside it in the folder "ejected".
void EjectDisc(const std::wstring& driveFolder);

/// Puts a copy of a later session's volume descriptors at the start of the image, where readers that know of one
/// session only look for them.
HRESULT RepeatDescriptors(HANDLE image, LONG startSector);
