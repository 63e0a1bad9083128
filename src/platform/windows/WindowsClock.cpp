#include "platform/windows/WindowsClock.h"

#include <windows.h>

LocalTime WindowsClock::Now() const {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

double WindowsClock::SecondsSinceMidnight() const {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return now.wHour * 3600.0 + now.wMinute * 60.0 + now.wSecond + now.wMilliseconds / 1000.0;
}

void WindowsClock::Sleep(std::uint32_t milliseconds) {
    ::Sleep(milliseconds);
}
