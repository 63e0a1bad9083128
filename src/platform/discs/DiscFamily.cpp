#include "platform/discs/DiscFamily.h"

#include "platform/RuntimeError.h"

void ThrowUnknownFamily() {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}
