#pragma once

#include "Program.h"

#include <string>

namespace kit {

/// Opens the window with the medium's figures from the backup window, closes it again, and gives its picture.
std::string InformationPicture(Program& program, HWND backup);

} // namespace kit
