#pragma once

#include "platform/discs/DiscProgress.h"
#include "platform/discs/DiscWriter.h"
#include "platform/windows/discs/ImapiDrive.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What is to be written.
struct BurnJob {
    std::vector<std::wstring> files; ///< each goes to the root of the disc under its own name
    std::wstring label;
    std::optional<double> speed; ///< multiples of the family's single speed; none is the drive's fastest
};

/// Follows an operation; called on the thread that runs it or on one of the system's.
struct OperationFollower {
    std::function<void(const DiscProgress&)> tell;
    const std::atomic<bool>& isStopRequested;
};

/// Writes the job to the disc in the drive; returns when the drive has ended. Progress goes up to the closing of the
/// track; success is the return of a success code. The request to stop gives the code RequestCancelled.
HRESULT Burn(const ImapiDrive& drive, DiscFamily family, const BurnJob& job, const OperationFollower& follower);

/// Erases the disc in the drive; returns when the drive has ended. An erase cannot be stopped.
HRESULT EraseDisc(const ImapiDrive& drive, bool isQuick, const OperationFollower& follower);
