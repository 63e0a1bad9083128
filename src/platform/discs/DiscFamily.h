#pragma once

/// Which discs a writer is asked for.
enum class DiscFamily { Cd, Dvd };

/// Throws 9.
[[noreturn]] void ThrowUnknownFamily();

/// What goes with a family: another family has to be given its own here, and by every caller.
template<typename Value>
Value ByFamily(DiscFamily family, Value forCd, Value forDvd) {
    switch (family) {
    case DiscFamily::Cd:
        return forCd;
    case DiscFamily::Dvd:
        return forDvd;
    }
    ThrowUnknownFamily();
}
