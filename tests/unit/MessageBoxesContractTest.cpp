#include "support/MessageBoxesContract.h"
#include "support/FakeMessageBoxes.h"

namespace {

struct FakeBoxesBench {
    FakeBoxesBench() {
        boxes.whileShown = [this](const FakeMessageBoxes::Box& shown) {
            text = shown.text;
            title = shown.title;
        };
    }
    void Press(int button) { boxes.answers = {button}; }
    FakeMessageBoxes boxes;
    std::wstring text;
    std::wstring title;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, MessageBoxesContract, FakeBoxesBench);

} // namespace
