#include "shell/forms/FormMessageLoop.h"

#include "ui/MessagePump.h"

void FormMessageLoop::RunPending() {
    ui::RunPendingMessages();
}

void FormMessageLoop::Paint() {
    ui::PaintPendingWindows();
}

void FormMessageLoop::SetPointer(Pointer pointer) {
    ui::ShowHourglass(pointer == Pointer::Hourglass);
}
