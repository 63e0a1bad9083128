#pragma once

#include "core/Application.h"

#include <cstdint>
#include <string>
#include <type_traits>

/// Logs a failure and shows it in a critical box; returns when the user has closed it.
/// `procedure` is the procedure's fixed label, such as "InitLangue, module frmMain".
void ReportError(Application& app, const std::wstring& procedure, std::int32_t number, const std::wstring& description,
                 std::int16_t line = 0);

/// Reports the exception being handled, whatever its type. To be called in a catch block only.
void ReportCurrentException(Application& app, const std::wstring& procedure);

/// The same; where there is too little memory for the report, the user is told so with what `PrepareMemoryReport` made.
/// Throws std::bad_alloc when that has made nothing.
void TellCurrentException(Application& app, const wchar_t* procedure);

/// Makes the report of an end of memory in the user's language.
void PrepareMemoryReport(Application& app);

/// Runs a procedure's steps. A failure stops them, is reported once under `procedure`, and gives the default value;
/// the caller goes on either way.
template<typename Steps>
auto Guarded(Application& app, const wchar_t* procedure, Steps&& steps) -> std::invoke_result_t<Steps> {
    using Result = std::invoke_result_t<Steps>;
    try {
        return steps();
    } catch (...) {
        TellCurrentException(app, procedure);
    }
    if constexpr (!std::is_void_v<Result>) return Result{};
}
