#include "BurnerBench.h"

#include <gmock/gmock.h>

int main(int argumentCount, char** arguments) {
    testing::InitGoogleMock(&argumentCount, arguments);
    if (!RegisterVirtualBurner()) return 2;
    return RUN_ALL_TESTS();
}
