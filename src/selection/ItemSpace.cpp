#include "selection/ItemSpace.h"

#include "core/Application.h"
#include "platform/Files.h"
#include "shell/modObtenirUSB.h"

namespace {

/// Room for what the archive adds to an item.
constexpr double Margin = 1.05;

} // namespace

Currency ItemSpace(const Application& app, const std::wstring& path, bool isFolder,
                   const std::function<void()>& stillMeasuring) {
    const std::uint64_t sizeBytes = isFolder ? modObtenirUSB::FolderSize(app, path, true, stillMeasuring).sizeBytes
                                             : app.machine.files->FileSize(path);
    return Currency::FromDouble(static_cast<double>(sizeBytes) * Margin);
}
