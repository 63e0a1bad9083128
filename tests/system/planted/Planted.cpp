// A library that somebody put beside the program under the name of one of the system's: it leaves a sign when it is
// loaded.

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    const HANDLE sign = CreateFileW(L"C:\\Tools\\planted.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (sign != INVALID_HANDLE_VALUE) CloseHandle(sign);
    return TRUE;
}
