// What the user sees while work lasts: rows and figures are brought up to date before each painting.
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

namespace {

class PaintedLoop : public FakeMessageLoop {
  public:
    std::function<void()> whenPainted;
    void Paint() override {
        FakeMessageLoop::Paint();
        if (whenPainted) whenPainted();
    }
};

class CountingHost : public SelectionHost {
  public:
    using SelectionHost::SelectionHost;
    int showings = 0;
    void OnShowChanges() override { ++showings; }
};

TEST(LongWork, RowsAndFiguresAreUpToDateBeforeEachPainting) {
    PaintedLoop messages;
    FakeMachine machine(&messages);
    CountingHost host(machine.app);
    SelectionScreen screen;
    SelectionList list(machine.app, host, screen);
    host.spaceOf = [](const std::wstring&) { return Currency(); };
    host.whenRaised = [&](const std::wstring&) { machine.clock.secondsSinceMidnight += 1; };
    messages.whenPainted = [&] {
        EXPECT_EQ(screen.refreshes, messages.paintings) << "the rows that were added are in the view";
        EXPECT_EQ(host.showings, messages.paintings) << "and so are the figures";
        EXPECT_EQ(screen.selected, list.RowCount() - 1);
    };
    list.AddDropped({L"C:\\a", L"C:\\b", L"C:\\c"});
    EXPECT_EQ(messages.paintings, 3);
    EXPECT_EQ(screen.refreshes, 4) << "and once more at the end";
}

} // namespace
