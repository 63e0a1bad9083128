#include "selection/ItemSpace.h"

#include "core/Application.h"
#include "platform/Files.h"

namespace {

/// Room for what the archive adds to an item.
constexpr double Margin = 1.05;

} // namespace

Currency ItemSpace(const Application& app, const std::wstring& path, bool isFolder,
                   const std::function<void()>& stillMeasuring) {
    const Files& files = app.machine.files;
    const std::uint64_t sizeBytes = isFolder ? files.Measure(path, stillMeasuring).sizeBytes : files.FileSize(path);
    return Currency::FromDouble(static_cast<double>(sizeBytes) * Margin);
}
