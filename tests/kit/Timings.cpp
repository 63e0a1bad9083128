#include "Timings.h"

#include "MainJob.h"
#include "Samples.h"
#include "uidriver/Protocol.h"

#include <chrono>
#include <fstream>

namespace kit {

namespace {

constexpr int FloorSeconds = 1800;

/// Seconds that the bare program needs for "backup" or "restore".
double FloorTime(const WorkFolder& work, const Stick& stick, const std::wstring& action,
                 const std::vector<std::wstring>& items) {
    const fs::path list = work.Temp() / L"items.txt";
    const fs::path result = work.Temp() / L"result.txt";
    {
        std::ofstream file(list, std::ios::binary);
        for (const std::wstring& item : items) file << uidriver::ToUtf8(item) << '\n';
    }
    std::error_code ignored;
    fs::remove(result, ignored);
    const std::wstring folder = work.ProgramFolder().wstring();
    const auto started = std::chrono::steady_clock::now();
    const std::wstring id = Ask({L"start", folder,
                                 L"\"" + folder + L"\\floor.exe\" " + action + L" " + stick.Root() + L" " +
                                     MainJob::Password + L" \"" + list.wstring() + L"\" \"" + result.wstring() + L"\""})
                                .front()
                                .front();
    while (Ask({L"state", id}).front().front().empty()) {
        if (std::chrono::steady_clock::now() - started > std::chrono::seconds(FloorSeconds)) {
            Ask({L"kill", id});
            throw Failure(L"the bare program does not end");
        }
        Sleep(20);
    }
    std::ifstream file(result);
    double milliseconds = 0;
    if (!(file >> milliseconds)) throw Failure(L"the bare program failed");
    return milliseconds / 1000;
}

struct Case {
    Words name;
    void (*write)(const fs::path& documents);
    double neededBytes;
};

constexpr double Megabyte = 1024 * 1024;
constexpr Case Quick{{L"quelques petits fichiers", L"a few small files"},
                     [](const fs::path& documents) { WriteSmallFiles(documents, 20); },
                     2 * Megabyte};
constexpr Case Whole[] = {{{L"un fichier de 200 Mo", L"one file of 200 MB"},
                           [](const fs::path& documents) { WriteLargeFile(documents, 200); },
                           450 * Megabyte},
                          {{L"un dossier de 2 000 petits fichiers", L"one folder of 2,000 small files"},
                           [](const fs::path& documents) { WriteSmallFiles(documents, 2000); },
                           20 * Megabyte}};

void TakeTime(const Case& measured, const WorkFolder& work, Stick& stick, Report& report) {
    // The originals, the archive and what is unpacked from it.
    constexpr double copies = 3;
    if (stick.FreeBytes() < measured.neededBytes || work.FreeBytes() < copies * measured.neededBytes)
        throw NotHere(Say({L"il n'y a pas assez de place", L"there is too little room"}));
    work.EmptyDocuments();
    measured.write(work.Documents());
    MainJob job({work.ProgramFolder().wstring(), work.Documents(), L"", false}, stick, report);
    const JobTimes program = job.Run();
    const double backup = FloorTime(work, stick, L"backup", job.Items());
    const double restore = FloorTime(work, stick, L"restore", job.Items());
    if (!stick.Clear()) throw Failure(L"the bare program's files cannot be deleted from the medium");
    const auto line = [](double took, double floor) {
        wchar_t ratio[32] = {};
        std::swprintf(ratio, 32, L"%.3f", took / floor);
        return InSeconds(took) + L" / " + InSeconds(floor) + L" = " + ratio;
    };
    report.Tell({L"copie : programme / archiveur seul", L"backup: program / bare archiver"},
                line(program.backupSeconds, backup));
    report.Tell({L"restauration : programme / archiveur seul", L"restore: program / bare archiver"},
                line(program.restoreSeconds, restore));
}

} // namespace

void TakeTimes(const WorkFolder& work, Stick& stick, bool isQuick, Report& report) {
    const auto take = [&](const Case& measured) {
        report.Step(measured.name, [&] { return TakeTime(measured, work, stick, report), std::wstring(); });
    };
    if (isQuick) return take(Quick);
    for (const Case& measured : Whole) take(measured);
}

} // namespace kit
