#pragma once

/// What the events of a disc writer and the windows say to each other.
struct WriterFlags {
    bool hasWriterError = false;    ///< raised by every error event; lowered before a writer is made and a write starts
    bool isCancelRequested = false; ///< makes progress events stop the write
    bool areFileMessagesHeld = false; ///< keeps messages from being handled between files added to an image
};
