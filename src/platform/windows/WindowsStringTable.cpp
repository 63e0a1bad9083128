#include "platform/windows/WindowsStringTable.h"

#include <windows.h>

std::wstring WindowsStringTable::Load(int id) const {
    // With a length of 0 the call lends the text where it lies, whole, instead of copying what fits.
    const wchar_t* text = nullptr;
    const int length =
        LoadStringW(GetModuleHandleW(nullptr), static_cast<UINT>(id), reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}
