#pragma once

/// Lets the calling thread throw where memory has ended. To be called once, while no other thread runs.
void PrepareToThrowWithoutMemory();
