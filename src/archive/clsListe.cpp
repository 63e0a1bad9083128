#include "archive/clsListe.h"

#include "core/ArchiveValues.h"
#include "core/UserProfileMarker.h"
#include "core/UserValues.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/MessageLoop.h"
#include "platform/Text.h"
#include "selection/clsColFileInfo.h"
#include "shell/ErrorReport.h"

namespace {

constexpr std::int32_t KindDirectoryAttribute = 16;
constexpr std::wstring_view AllOfFolder = L"\\*.*";

std::wstring LineOf(const clsFileInfo& item, const std::wstring& profileFolder) {
    std::wstring path = WithProfileMarker(item.strNom, profileFolder);
    if (item.lngType == KindFolder && path.find(AllOfFolder) == std::wstring::npos) path += AllOfFolder;
    const std::wstring& archive = item.lngType == KindDirectoryAttribute ? path : item.strNomUnique;
    return path + L"," + std::to_wstring(item.lngType) + L"," + archive + L"\r\n";
}

} // namespace

std::wstring InnerArchiveName(std::int32_t position) {
    std::wstring digits = std::to_wstring(position);
    if (digits.size() < 4) digits.insert(0, 4 - digits.size(), L'0');
    return L"Zip" + digits;
}

std::uint64_t ListPrint(std::string_view bytes, std::uint64_t print) {
    constexpr std::uint64_t prime = 0x100000001B3;
    for (const char byte : bytes) print = (print ^ static_cast<unsigned char>(byte)) * prime + 1;
    return print;
}

void clsListe::EnregistrerListeFichiers(clsColFileInfo& arrArray, ProgressBar& pbProgress) {
    Guarded(app_, L"EnregistrerListeFichiers, module frmBackupCD", [&] {
        app_.archive->listFilePath.clear();
        app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
        const std::int32_t min = pbProgress.Min();
        const std::int32_t max = pbProgress.Max();
        const std::int32_t count = arrArray.Count();
        pbProgress.SetRange(0, count);

        const std::wstring path = app_.machine.environment->Variable(L"Temp").value_or(L"") + L"\\" + ControlFileName;
        const auto file = app_.machine.files->Create(path);
        std::uint64_t print = 0;
        for (std::int32_t position = 1; position <= count; ++position) {
            pbProgress.SetValue(position);
            const auto item = arrArray.Item(position);
            item->strNomUnique = InnerArchiveName(position);
            const std::string line = ToAnsi(LineOf(*item, app_.user->strProfilUtilisateur));
            file->Write(line);
            print = ListPrint(line, print);
        }
        file->Close();
        app_.archive->listFilePrint = print;
        app_.archive->listFilePath = path;

        pbProgress.SetRange(min, max);
        pbProgress.SetValue(0);
        app_.machine.messageLoop->SetPointer(Pointer::Default);
    });
}
