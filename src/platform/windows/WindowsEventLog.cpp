#include "platform/windows/WindowsEventLog.h"

#include "win32/UniqueHandle.h"

#include <windows.h>

namespace {

// The log refuses an entry whose text is longer.
constexpr std::size_t LongestText = 31839;

struct EventSourceTraits {
    using Type = HANDLE;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { DeregisterEventSource(handle); }
};

} // namespace

void WindowsEventLog::WriteError(const std::wstring& message) {
    const UniqueHandle<EventSourceTraits> source(RegisterEventSourceW(nullptr, L"Backup"));
    if (!source) return;
    const std::wstring text = message.substr(0, LongestText);
    const wchar_t* texts[] = {text.c_str()};
    ReportEventW(source.Get(), EVENTLOG_ERROR_TYPE, 0, 1, nullptr, 1, 0, texts, nullptr);
}
