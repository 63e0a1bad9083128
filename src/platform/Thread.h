#pragma once

#include <functional>

/// Runs the steps, which throw nothing, on a new thread at once; nobody can wait for it or end it. What the steps hold
/// goes on that thread when they have ended. Throws std::system_error where no thread can be made, and nothing has run.
void StartThread(std::function<void()> steps);
