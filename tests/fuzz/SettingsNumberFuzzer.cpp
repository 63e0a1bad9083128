// The language number of the settings file: any text is a number or one of two errors.
#include "Require.h"

#include "core/LongConversion.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    const std::wstring text = FromAnsi({reinterpret_cast<const char*>(data), sizeBytes});
    try {
        const std::int32_t value = ToLong(text, L",");
        Require(ToLong(std::to_wstring(value), L",") == value);
    } catch (const RuntimeError& error) {
        Require(error.Number() == static_cast<std::int32_t>(ErrorNumber::TypeMismatch) ||
                error.Number() == static_cast<std::int32_t>(ErrorNumber::Overflow));
    }
    return 0;
}
