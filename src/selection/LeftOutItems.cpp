#include "selection/LeftOutItems.h"

#include "core/Application.h"
#include "core/CodePage.h"
#include "core/UserProfileMarker.h"
#include "core/UserValues.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"

#include <algorithm>
#include <utility>

namespace {

/// As many as a box shows on every screen.
constexpr std::size_t MostShown = 10;

} // namespace

bool LeftOutItems::MayAdd(const std::wstring& path) {
    if (SurvivesControlFile(path, app_.user->strProfilUtilisateur)) return true;
    paths_.push_back(path);
    return false;
}

void LeftOutItems::Report() {
    if (paths_.empty()) return;
    std::vector<std::wstring> paths = std::exchange(paths_, {});
    // Two lists of a set may name the same item.
    std::sort(paths.begin(), paths.end());
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    std::wstring names;
    for (std::size_t at = 0; at < std::min(paths.size(), MostShown); ++at) names += paths[at] + L"\n";
    if (paths.size() > MostShown)
        names += ReplaceAll(app_.Text(TextId::AndMoreItems), L"%1", std::to_wstring(paths.size() - MostShown)) + L"\n";
    app_.ShowMessage(ReplaceAll(app_.Text(TextId::ItemsLeftOut), L"%1", names), TextId::ItemsLeftOutTitle,
                     box::Exclamation);
}
