#include "core/Medium.h"

#include "platform/RuntimeError.h"
#include "resources/TextId.h"

const MediumDescription& Describe(Medium medium) {
    switch (medium) {
#define MEDIUM(name, code, ...)                                                                                        \
    case Medium::name: {                                                                                               \
        static constexpr MediumDescription description{__VA_ARGS__};                                                   \
        static_assert((description.detection == MediumDetection::Writer) == description.discs.has_value());            \
        return description;                                                                                            \
    }
#include "core/Media.def"
#undef MEDIUM
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

std::optional<DiscFamily> DiscFamilyOf(Medium medium) {
    return Describe(medium).discs;
}

bool IsDisc(Medium medium) {
    return DiscFamilyOf(medium).has_value();
}
