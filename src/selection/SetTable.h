#pragma once

#include "resources/TextId.h"

#include <array>
#include <cstdint>
#include <span>

/// The Windows versions on which a list file is read.
enum class ListFor { EveryVersion, BeforeVista, SinceVista };

struct SetListFile {
    const wchar_t* name;
    ListFor versions = ListFor::EveryVersion;
};

/// A set of files and folders that the user ticks with one box.
struct PredefinedSet {
    TextId captionId; ///< the text beside the box; None where the caption is the same in both languages
    const wchar_t* caption;
    std::span<const SetListFile> listFiles; ///< in the order in which they are read; the first one stands for the set
};

inline constexpr std::array SalesLists{SetListFile{L"vexal.lst"}, SetListFile{L"brinde.lst"}};
inline constexpr std::array ClientLists{SetListFile{L"qamor.lst"}};
inline constexpr std::array DocumentLists{SetListFile{L"tarvel.lst"}};
inline constexpr std::array MailLists{SetListFile{L"outlookVista.lst", ListFor::SinceVista},
                                      SetListFile{L"outlookXP.lst", ListFor::BeforeVista}};

/// Every predefined set. A set's index is its place here; the selection control has a box for each.
inline constexpr std::array SetTable{
    PredefinedSet{TextId::IllustrationsSet, L"", SalesLists},
    PredefinedSet{TextId::ClientsSet, L"", ClientLists},
    PredefinedSet{TextId::DocumentsSet, L"", DocumentLists},
    PredefinedSet{TextId::None, L"Outlook", MailLists},
};

inline constexpr auto SetCount = static_cast<std::int32_t>(SetTable.size());
