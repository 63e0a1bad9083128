#include "selection/LongWork.h"

#include "core/Application.h"
#include "platform/Clock.h"
#include "platform/MessageLoop.h"

#include <utility>

namespace {

constexpr double LongSeconds = 0.5;
constexpr double PaintingSeconds = 0.1;
constexpr double DaySeconds = 86400;

} // namespace

LongWork::LongWork(Application& app, std::function<void()> beforePainting)
    : app_(app), beforePainting_(std::move(beforePainting)) {}

double LongWork::Elapsed() const {
    const double elapsed = app_.machine.clock->SecondsSinceMidnight() - startSeconds_;
    return elapsed < 0 ? elapsed + DaySeconds : elapsed;
}

void LongWork::Begin() {
    if (depth_++ > 0) return;
    startSeconds_ = app_.machine.clock->SecondsSinceMidnight();
    isLong_ = false;
}

void LongWork::Continue() {
    if (depth_ == 0) return;
    const double elapsed = Elapsed();
    if (elapsed <= LongSeconds) return;
    if (isLong_ && elapsed - paintedAfterSeconds_ < PaintingSeconds) return;
    if (!isLong_) app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    isLong_ = true;
    beforePainting_();
    app_.machine.messageLoop->Paint();
    paintedAfterSeconds_ = Elapsed();
}

void LongWork::End() {
    if (--depth_ > 0 || !isLong_) return;
    app_.machine.messageLoop->SetPointer(Pointer::Default);
}
