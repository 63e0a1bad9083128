#pragma once

#include <windows.h>

#include <string>

/// What the program in which FaultyMemory.cpp stands and the test share, in a section named for the process.
struct AllocationPlan {
    volatile LONG first = 0; ///< the first allocation that fails, counted from 1; 0: none does
    volatile LONG last = 0;  ///< the last one that fails
    volatile LONG made = 0;  ///< allocations since the plan came into force
    volatile LONG failed = 0;
};

inline std::wstring NameOfAllocationPlan(DWORD process) {
    return L"Local\\FaultyMemory." + std::to_wstring(process);
}
