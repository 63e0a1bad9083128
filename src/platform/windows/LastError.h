#pragma once

#include <cstdint>

enum class ErrorNumber : std::int32_t;

/// The run-time number that stands for one of Windows' own error codes.
ErrorNumber ErrorNumberOf(std::uint32_t systemError);

/// Throws the RuntimeError that stands for one of Windows' own error codes.
[[noreturn]] void ThrowSystemError(std::uint32_t systemError);

/// Throws for the calling thread's last error. To be called before anything else can change that.
[[noreturn]] void ThrowLastError();
