#pragma once

class Application;

/// The folder in which archives are built and opened: "zip" beside the program. Both throw what deleting or creating it
/// meets.

/// Deletes the work folder when it is there, and makes it anew.
void ResetWorkFolder(Application& app);

/// Deletes the work folder when it is there.
void RemoveWorkFolder(Application& app);
