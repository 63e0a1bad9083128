#pragma once

#include <windows.h>

/// Puts a function of the test's own in the place of an imported one for as long as it lives, to see what a port really
/// asks of the system. `import` is the address of the pointer through which this program calls it.
template<typename Function>
class ImportSwap {
  public:
    ImportSwap(Function* import, Function replacement) : import_(import), original_(*import) { Put(replacement); }
    ~ImportSwap() { Put(original_); }
    ImportSwap(const ImportSwap&) = delete;
    ImportSwap& operator=(const ImportSwap&) = delete;

  private:
    void Put(Function function) {
        DWORD protection = 0;
        VirtualProtect(import_, sizeof *import_, PAGE_READWRITE, &protection);
        *import_ = function;
        VirtualProtect(import_, sizeof *import_, protection, &protection);
    }

    Function* import_;
    Function original_;
};
