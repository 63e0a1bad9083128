#include "platform/windows/WindowsSettingsFiles.h"

#include "platform/Text.h"

#include <windows.h>

std::wstring WindowsSettingsFiles::Value(const std::wstring& file, const std::wstring& section,
                                         const std::wstring& key) const {
    constexpr DWORD bufferLength = 255;
    std::string buffer(bufferLength, '\0');
    const DWORD length = GetPrivateProfileStringA(ToAnsi(section).c_str(), ToAnsi(key).c_str(), "", buffer.data(),
                                                  bufferLength, ToAnsi(file).c_str());
    return FromAnsi(buffer.substr(0, length));
}
