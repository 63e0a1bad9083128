#pragma once

#include "ui/Windows.h"

#include <functional>

namespace ui {

/// Translates and dispatches one message, the keys of the form that it belongs to included.
void Dispatch(MSG& message);

/// Handles every pending message, then returns. A request to quit stays in the queue for the outermost loop.
void RunPendingMessages();

/// Paints the windows that wait for it, and handles nothing else.
void PaintPendingWindows();

/// Waits for messages and handles them until `isDone` says so or the program is asked to quit.
void RunMessagesUntil(const std::function<bool()>& isDone);

/// Shows the hourglass or the ordinary pointer for the whole program, until it is told otherwise.
void ShowHourglass(bool isShown);
bool IsHourglassShown();

} // namespace ui
