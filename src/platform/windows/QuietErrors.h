#pragma once

/// Makes calls on a drive without a medium fail at once instead of showing a box that asks for a disk. It holds for
/// the whole process and for the programs that it starts.
void SuppressDiskBoxes();
