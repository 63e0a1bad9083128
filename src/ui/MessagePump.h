#pragma once

#include "ui/Windows.h"

#include <functional>

namespace ui {

/// Sees a message before it is dispatched, with the top-level window that it belongs to; gives whether it was a key of
/// that window.
using KeyTranslation = bool (*)(HWND topLevel, MSG& message);
/// The forms stand above the messages and bring the way to their keys; the last one set counts.
void SetKeyTranslation(KeyTranslation translation);

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
