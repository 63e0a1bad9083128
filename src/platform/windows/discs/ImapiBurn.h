#pragma once

#include "platform/discs/DiscFamily.h"
#include "platform/windows/discs/ImapiDrive.h"
#include "platform/windows/discs/ImapiImage.h"
#include "platform/windows/discs/OperationWatch.h"

#include <memory>

/// Writes the job to the disc in the drive; returns when the drive has ended. Progress goes up to the closing of the
/// track; success is the return of a success code. The request to stop gives the code RequestCancelled. A drive that is
/// held or becoming ready is waited for, 20 seconds at most.
HRESULT Burn(ImapiDrive& drive, DiscFamily family, const BurnJob& job, const std::shared_ptr<OperationWatch>& watch);

/// Erases the disc in the drive; returns when the drive has ended. An erase cannot be stopped.
HRESULT EraseDisc(ImapiDrive& drive, bool isQuick, const std::shared_ptr<OperationWatch>& watch);
