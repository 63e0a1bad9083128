#pragma once

#include "check/PackedText.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

/// What Windows' own programs take of a path.
inline constexpr std::size_t LongestPath = 259;

/// Why the restore window cannot put a row of the list back where it came from.
enum class RowProblem : unsigned {
    Comma = 1,           ///< the path holds the sign that parts the fields
    LostLetters = 2,     ///< letters that the list's code page lacks stand as question marks
    TwoFields = 4,       ///< the list is of the form that names no inner archives
    SharedMailStore = 8, ///< several mail stores of one name go to one place, and the last one stays
    TooLong = 16,        ///< the path is longer than Windows' own programs take
    NotRestorable = 32,  ///< the row, or the first row of the list, cannot be read as it was meant
};

/// One row of a backup's list, as it was meant.
struct ListedItem {
    PackedText path;       ///< where it was saved from, without the mark of a folder
    PackedText archive;    ///< of the inner archive, without ".zip"
    int number = 0;        ///< from 1 on
    unsigned problems = 0; ///< a sum of RowProblem
    bool isFolder = false;

    bool Has(RowProblem problem) const { return (problems & static_cast<unsigned>(problem)) != 0; }
};

/// Reads a backup's list row by row: each line is a row of its own, and a comma too many spoils no other. What the
/// restore window would make of it is told by the problems. The rows' texts are kept in `texts`. Never throws for what
/// the list holds.
std::deque<ListedItem> ReadBackupList(std::string_view bytes, const std::wstring& profileFolder, PackedTexts& texts);

/// The last name of a path; the path itself when it has no backslash.
std::wstring LastName(const std::wstring& path);

/// Whether a name in an archive is the one that the list means, given that the list is ANSI text: letters that it lacks
/// became question marks or their nearest letter there.
bool IsNameMeant(const std::wstring& listed, const std::wstring& real);
