#pragma once

#include "core/Currency.h"

#include <functional>
#include <string>

class Application;

/// The space that an item of the selection takes of a backup: its bytes, for a folder those of all files below it,
/// times 1.05. `stillMeasuring` is called now and then. Throws the errors of `Files::FileSize` for a file.
Currency ItemSpace(const Application& app, const std::wstring& path, bool isFolder,
                   const std::function<void()>& stillMeasuring);
