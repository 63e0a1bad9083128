#include "ui/PathDialogs.h"

#include "ui/TypedPath.h"

#include <commdlg.h>
#include <shlobj.h>

#include <array>
#include <memory>

namespace ui {

namespace {

constexpr std::size_t LongestPath = 32768;

struct FreeTaskMemory {
    void operator()(void* memory) const { CoTaskMemFree(memory); }
};

/// Nothing of the tree is taken for what was typed: what is not there yet is chosen by its whole path.
int CALLBACK TakeTyped(HWND, UINT message, LPARAM lParam, LPARAM typed) {
    if (message != BFFM_VALIDATEFAILEDW) return 0;
    const auto path = WholePath(reinterpret_cast<const wchar_t*>(lParam));
    if (path) {
        *reinterpret_cast<std::wstring*>(typed) = *path;
    } else {
        MessageBeep(MB_ICONWARNING);
    }
    return path ? 0 : 1;
}

std::optional<std::wstring> Browse(Form& owner, const std::wstring& instruction, UINT flags) {
    std::array<wchar_t, MAX_PATH> path{};
    BROWSEINFOW browse{};
    browse.hwndOwner = owner.Handle();
    browse.lpszTitle = instruction.c_str();
    browse.pszDisplayName = path.data();
    browse.ulFlags = BIF_NEWDIALOGSTYLE | BIF_EDITBOX | BIF_VALIDATE | flags;
    std::wstring typed;
    browse.lpfn = TakeTyped;
    browse.lParam = reinterpret_cast<LPARAM>(&typed);
    const std::unique_ptr<ITEMIDLIST, FreeTaskMemory> chosen(SHBrowseForFolderW(&browse));
    if (!typed.empty()) return typed;
    if (!chosen || !SHGetPathFromIDListW(chosen.get(), path.data())) return std::nullopt;
    return std::wstring(path.data());
}

} // namespace

std::optional<std::wstring> ChooseFolder(Form& owner, const std::wstring& instruction) {
    return Browse(owner, instruction, BIF_RETURNONLYFSDIRS);
}

std::optional<std::wstring> ChooseFolderOrFile(Form& owner, const std::wstring& instruction) {
    return Browse(owner, instruction, BIF_BROWSEINCLUDEFILES | BIF_NONEWFOLDERBUTTON);
}

std::optional<std::wstring> ChooseNewFile(Form& owner, const std::wstring& name, const std::vector<FileKind>& kinds) {
    std::wstring filter;
    for (const FileKind& kind : kinds) {
        const std::wstring pattern = L"*." + kind.ending;
        filter.append(kind.name).append(L" (").append(pattern).append(L")").append(1, L'\0');
        filter.append(pattern).append(1, L'\0');
    }
    std::vector<wchar_t> path(LongestPath);
    name.copy(path.data(), path.size() - 1);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner.Handle();
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrDefExt = kinds.empty() ? nullptr : kinds.front().ending.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!GetSaveFileNameW(&dialog)) return std::nullopt;
    return std::wstring(path.data());
}

} // namespace ui
