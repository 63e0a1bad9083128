#pragma once

#include "win32/UniqueHandle.h"

#include <windows.h>

struct LibraryTraits {
    using Type = HMODULE;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { FreeLibrary(handle); }
};

/// A library of the system, loaded from the system's folder and from nowhere else. What the program imports by name
/// would be looked for beside the program first, where somebody may have put another of that name; only the libraries
/// that Windows has loaded already for everybody ("known DLLs") are safe from that.
class SystemLibrary {
  public:
    /// `name` such as L"userenv.dll". Without such a library every procedure is missing.
    explicit SystemLibrary(const wchar_t* name);

    /// A procedure of the library by its name; null when it is missing.
    template<typename Procedure>
    Procedure Find(const char* name) const {
        return library_ ? reinterpret_cast<Procedure>(reinterpret_cast<void*>(GetProcAddress(library_.Get(), name)))
                        : nullptr;
    }

  private:
    UniqueHandle<LibraryTraits> library_;
};

/// Makes the process look for libraries in the system's folder only, from now on. Windows 7 without its update of 2011
/// (KB2533623) cannot, and goes on looking beside the program.
void LoadLibrariesFromSystemOnly();
