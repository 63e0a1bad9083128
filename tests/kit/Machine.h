#pragma once

#include "Report.h"

namespace kit {

/// Whether this is no real Windows.
bool IsWine();
/// Whether this process has the rights of an administrator.
bool IsElevated();

/// What the report's reader has to know of the computer: Windows, scale, code page, drives. Nothing that names a
/// person.
void TellMachine(Report& report);

} // namespace kit
