#pragma once

#include <string_view>

/// Whether a path stands in a control file as what it is: the file is in the system's ANSI code page, with a marker for
/// the profile folder. False for a path with a character that the code page lacks, or has only in another form, such as
/// a decomposed accent or a full-width comma: restored, it would be another path.
bool SurvivesControlFile(std::wstring_view path, std::wstring_view profileFolder);
