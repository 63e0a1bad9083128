#pragma once

#include <string>
#include <string_view>

/// A volume label that every file system of a disc accepts, as near to `label` as can be: letters without their
/// accents, digits, dots and underscores, 15 characters at most; what lies between two words becomes one underscore.
/// Empty when nothing of the label can be kept.
std::wstring AcceptableDiscLabel(std::wstring_view label);
