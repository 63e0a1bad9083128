#include "archive/WorkFolder.h"

#include "core/Application.h"
#include "platform/Files.h"

void ResetWorkFolder(Application& app) {
    RemoveWorkFolder(app);
    app.machine.files->CreateFolder(app.WorkFolder());
}

void RemoveWorkFolder(Application& app) {
    if (app.machine.files->FolderExists(app.WorkFolder())) app.machine.files->DeleteFolder(app.WorkFolder());
}
