// The disc writer on image mastering, held to what every implementation does.
#include "support/DiscWriterContract.h"
#include "BurnerBench.h"

namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(ImageMastering, DiscWriterContract, BurnerBench);

} // namespace
