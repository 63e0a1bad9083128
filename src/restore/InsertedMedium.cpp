#include "restore/InsertedMedium.h"

#include "archive/clsListe.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <functional>
#include <new>

namespace {

constexpr std::uint64_t LargestListBytes = 64u << 20;

} // namespace

InsertedMedium LookAtMedium(const Application& app, const std::wstring& root) {
    InsertedMedium medium;
    InsertedMedium::Print& print = medium.print;
    print.root = root;
    if (root.empty()) return medium;
    print.volumeLabel = app.machine.drives->VolumeLabel(root);
    medium.isCdRom = app.machine.drives->Type(root) == DriveType::CdRom;
    const Files& files = *app.machine.files;
    if (!files.FileExists(root + ControlFileName)) return medium;
    if (!files.FileExists(root + ArchiveName)) {
        print.content = InsertedMedium::Content::OlderFormat;
        return medium;
    }
    print.content = InsertedMedium::Content::Backup;
    try {
        // No list of paths is that large; a file that claims to be is not taken into memory.
        if (files.FileSize(root + ControlFileName) > LargestListBytes) throw RuntimeError(ErrorNumber::OutOfMemory);
        print.archiveSizeBytes = files.FileSize(root + ArchiveName);
        medium.controlFile = files.Read(root + ControlFileName);
        print.listBytes = medium.controlFile.size();
        print.listHash = std::hash<std::string>()(medium.controlFile);
    } catch (const RuntimeError& error) {
        medium.failure = error;
        print.failure = error.Number();
    } catch (const std::bad_alloc&) {
        medium.failure = RuntimeError(ErrorNumber::OutOfMemory);
        print.failure = medium.failure->Number();
    }
    return medium;
}
