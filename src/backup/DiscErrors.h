#pragma once

#include "core/Application.h"

#include <cstdint>
#include <string>

/// What the user is told of a writer's error: the system's own text or, where it has none, one in the user's language.
/// Where the disc holds what nothing can be added to, also what can be done about it.
std::wstring DiscErrorDescription(const Application& app, std::int32_t errCode, const std::wstring& systemText,
                                  bool isErasable);
