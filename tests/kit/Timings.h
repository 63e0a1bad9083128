#pragma once

#include "Report.h"
#include "Stick.h"
#include "WorkFolder.h"

namespace kit {

/// Takes the times of a backup and a restore by the program and by a bare program that runs the same archiver command
/// lines, in turn. With `isQuick` on a few small files only.
void TakeTimes(const WorkFolder& work, Stick& stick, bool isQuick, Report& report);

} // namespace kit
