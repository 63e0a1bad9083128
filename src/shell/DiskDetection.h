#pragma once

#include "core/Application.h"
#include "shell/MediumOffer.h"

/// The removable drives other than A and B; none once the user has declined USB disks.
MediumOffer DetectRemovableDisks(Application& app);

/// The fixed drives on the USB bus. May ask the user whether USB disks are to be used, once per run.
MediumOffer DetectExternalDisks(Application& app);
