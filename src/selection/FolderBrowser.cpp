#include "selection/FolderBrowser.h"

#include "core/Application.h"
#include "core/Languages.h"
#include "platform/Drives.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/OperatingSystem.h"
#include "platform/Text.h"
#include "selection/PathRules.h"

#include <algorithm>
#include <utility>

namespace {

std::vector<std::wstring> Sorted(std::vector<std::wstring> names) {
    std::vector<std::pair<std::wstring, std::wstring>> keyed;
    keyed.reserve(names.size());
    for (std::wstring& name : names) keyed.emplace_back(UpperCase(name), std::move(name));
    std::sort(keyed.begin(), keyed.end());
    std::transform(keyed.begin(), keyed.end(), names.begin(), [](auto& entry) { return std::move(entry.second); });
    return names;
}

bool IsDrive(const std::wstring& path) {
    return path.size() == 2 && path[1] == L':';
}

/// The folders from the disk root down to `path`.
std::vector<BrowsedFolder> WayTo(const std::wstring& path) {
    std::vector<BrowsedFolder> way;
    std::size_t end = path.find(L'\\');
    if (end == std::wstring::npos) return {{path, path, 0}};
    way.push_back({path.substr(0, end + 1), path.substr(0, end + 1), 0});
    while (end + 1 < path.size()) {
        const std::size_t start = end + 1;
        end = std::min(path.find(L'\\', start), path.size());
        way.push_back({path.substr(start, end - start), path.substr(0, end), static_cast<int>(way.size())});
    }
    return way;
}

bool IsLabelRead(DriveType type) {
    return type == DriveType::Fixed || type == DriveType::Removable || type == DriveType::CdRom;
}

} // namespace

void FolderBrowser::Open(const std::wstring& path) {
    const std::wstring opened = WithoutTrailingBackslash(IsDrive(path) ? path + L'\\' : path);
    FolderContents contents = files_.ShownContents(opened);
    std::vector<BrowsedFolder> folders = WayTo(opened);
    openIndex_ = folders.size() - 1;
    const int level = static_cast<int>(folders.size());
    for (std::wstring& name : Sorted(std::move(contents.folders))) {
        std::wstring below = InFolder(opened, name);
        folders.push_back({std::move(name), std::move(below), level});
    }
    path_ = opened;
    folders_ = std::move(folders);
    fileNames_ = Sorted(std::move(contents.files));
}

std::vector<std::wstring> DriveChoices(const Application& app) {
    const Drives& drives = *app.machine.drives;
    std::vector<std::wstring> choices;
    for (const std::wstring& root : drives.Roots()) {
        std::wstring choice = root.substr(0, 2);
        choice[0] = static_cast<wchar_t>(choice[0] | 0x20);
        if (!IsFloppyDrive(choice) && IsLabelRead(drives.Type(root))) {
            if (const auto label = drives.VolumeLabel(root); label && !label->empty()) choice += L" [" + *label + L"]";
        }
        choices.push_back(std::move(choice));
    }
    return choices;
}

std::wstring DriveOfChoice(const std::wstring& choice) {
    return UpperCase(choice.substr(0, 2));
}

bool IsFloppyDrive(const std::wstring& drive) {
    const std::wstring upper = UpperCase(drive);
    return upper == L"A:" || upper == L"B:";
}

std::optional<std::wstring> StartFolder(const Application& app) {
    const std::wstring profile = app.machine.environment->Variable(L"UserProfile").value_or(L"");
    std::vector<std::wstring> candidates = {profile + L"\\Documents"};
    if (!app.machine.operatingSystem->Version().IsVistaOrLater()) {
        candidates = {profile + L"\\" + LanguageOf(app).documentsFolder};
        for (const LanguageDescription& other : Languages)
            candidates.push_back(profile + L"\\" + other.documentsFolder);
    }
    for (const std::wstring& candidate : candidates) {
        if (!app.machine.files->FolderExists(candidate)) continue;
        if (candidate[1] == L':') return candidate;
        return std::nullopt;
    }
    return std::nullopt;
}
