#pragma once

#include "ui/Form.h"

#include <optional>
#include <string>
#include <vector>

namespace ui {

/// Lets the user choose a folder with the system's dialog; nothing when he gives up. A path that he types need not be
/// there.
std::optional<std::wstring> ChooseFolder(Form& owner, const std::wstring& instruction);

/// The same, with the files of the folders to be chosen from as well.
std::optional<std::wstring> ChooseFolderOrFile(Form& owner, const std::wstring& instruction);

struct FileKind {
    std::wstring name;
    std::wstring ending; ///< without its dot
};

/// Lets the user choose where to save a file, by default `name` in his documents. A file that is there already is asked
/// about.
std::optional<std::wstring> ChooseNewFile(Form& owner, const std::wstring& name, const std::vector<FileKind>& kinds);

} // namespace ui
