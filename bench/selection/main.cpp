// Measures the selection list in its real window on real files. Takes the folder that `bench/selection.py` has filled.

#include "BareList.h"

#include "backup/forms/frmBackup.h"
#include "core/SpaceValues.h"
#include "core/StartUpValues.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsEnvironment.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsLocale.h"
#include "platform/windows/WindowsOperatingSystem.h"
#include "platform/windows/WindowsStringTable.h"
#include "selection/forms/ctlSelectionFichiersIds.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "support/ProcessorTime.h"
#include "ui/MessagePump.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <string>

namespace {

double Seconds() {
    LARGE_INTEGER now{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

struct Cost {
    double seconds = 0;
    double processorSeconds = 0;
};

template<typename Steps>
Cost CostOf(Steps steps) {
    const double start = Seconds();
    const double processorStart = ProcessorSeconds();
    steps();
    return {Seconds() - start, ProcessorSeconds() - processorStart};
}

template<typename Steps>
double TimeOf(Steps steps) {
    const double start = Seconds();
    steps();
    return Seconds() - start;
}

double PrivateMegabytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PagefileUsage) / 1048576.0;
}

/// The machine as it is where files, texts and times are concerned, with room for any amount.
class BenchMachine {
    FakeMachine stands_;
    WindowsStringTable strings_;
    WindowsOperatingSystem operatingSystem_;
    WindowsEnvironment environment_;
    WindowsLocale locale_;
    WindowsClock clock_;
    FormMessageLoop messageLoop_;

  public:
    WindowsFiles files;
    Application app{Ports()};

    BenchMachine() {
        stands_.drives.Add(L"C:\\", DriveType::Fixed);
        stands_.drives.Add(L"E:\\", DriveType::Removable, L"", {5e14, 5e14});
        app.startUp->dblEspaceDisponible = 5e14;
        app.startUp->strRepRacine = L"C:\\bench\\root";
    }
    Machine Ports() {
        Machine ports = stands_.Ports();
        ports.strings = strings_;
        ports.files = files;
        ports.operatingSystem = operatingSystem_;
        ports.environment = environment_;
        ports.locale = locale_;
        ports.clock = clock_;
        ports.messageLoop = messageLoop_;
        return ports;
    }
    std::size_t MessagesShown() const { return stands_.messageBoxes.shown.size(); }
};

class ClosedMainWindow : public MainWindow {
  public:
    bool FullExit() const override { return false; }
    void SetFullExit(bool) override {}
};

/// The backup window for a removable disk, with the folder of the user's documents open.
class Window {
  public:
    Window(BenchMachine& machine, const std::wstring& profile) : backup_(machine.app, [](ui::Form&) { return false; }) {
        SetEnvironmentVariableW(L"UserProfile", profile.c_str());
        machine.app.space->requiredSpace = Currency();
        backup_.SetMedia(Medium::RemovableDisk);
        backup_.SetDrive(L"E:\\");
        backup_.SetParent(main_);
        openSeconds_ = TimeOf([this] {
            backup_.Create();
            backup_.Show();
        });
        ui::RunPendingMessages();
        control_ = GetParent(Inside(backup_.Handle(), IDC_lvFichRep));
    }

    double OpenSeconds() const { return openSeconds_; }
    HWND At(int id) const { return GetDlgItem(control_, id); }
    void Click(int id) const { SendMessageW(At(id), BM_CLICK, 0, 0); }
    int RowCount() const { return ListView_GetItemCount(At(IDC_lvFichRep)); }
    void SelectAllFiles() const { SendMessageW(At(IDC_flbSelectFichier), LB_SETSEL, TRUE, -1); }

  private:
    static HWND Inside(HWND window, int id) {
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (HWND found = GetDlgItem(child, id)) return found;
        }
        return nullptr;
    }

    ClosedMainWindow main_;
    frmBackup backup_;
    HWND control_ = nullptr;
    double openSeconds_ = 0;
};

void Row(const char* what, const char* format, double value, const std::string& target) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    std::printf("| %s | %s | %s |\n", what, text, target.c_str());
    std::fflush(stdout);
}

int failures = 0;

/// Rows that are not as many as they should be make every figure worthless.
void Expect(int seen, int wanted, const char* what) {
    if (seen == wanted) return;
    std::printf("%s: %d rows instead of %d\n", what, seen, wanted);
    ++failures;
}

/// The costs of steps that are measured many times.
class Costs {
    Cost total_;
    double slowest_ = 0;
    int count_ = 0;

  public:
    void Add(const Cost& cost) {
        total_.seconds += cost.seconds;
        total_.processorSeconds += cost.processorSeconds;
        slowest_ = std::max(slowest_, cost.seconds);
        ++count_;
    }
    double MeanMilliseconds() const { return total_.seconds / count_ * 1000; }
    double MeanProcessorMilliseconds() const { return total_.processorSeconds / count_ * 1000; }
    double SlowestMilliseconds() const { return slowest_ * 1000; }
};

/// Removes rows that a person could have chosen, in turn with a bare list view of as many rows. Most of the time goes
/// to the view's scroll bar, which it paints at once.
void RemoveOneByOne(const Window& window) {
    constexpr int removals = 500;
    const int count = window.RowCount();
    HWND list = window.At(IDC_lvFichRep);
    const BareList bare(list, count);
    std::mt19937 random(1);
    Costs program;
    Costs floor;
    for (int removed = 0; removed < removals; ++removed) {
        const int row = static_cast<int>(random() % static_cast<unsigned>(count - removed));
        SelectInView(bare.View(), row);
        floor.Add(CostOf([&] { bare.Click(); }));
        SelectInView(list, row);
        program.Add(CostOf([&] { window.Click(IDC_cmdEffacerFichierListe); }));
    }
    Expect(window.RowCount(), count - removals, "removing rows");
    Expect(bare.RowCount(), count - removals, "removing rows of the bare list view");
    Row("remove one of 100000 rows, mean of 500, ms", "%.3f", program.MeanMilliseconds(), "5");
    Row("remove one of 100000 rows, mean of 500, ms of processor", "%.3f", program.MeanProcessorMilliseconds(), "");
    Row("remove one of 100000 rows, slowest of 500, ms", "%.3f", program.SlowestMilliseconds(), "");
    Row("a bare list view with one row less, mean of 500, ms", "%.3f", floor.MeanMilliseconds(), "");
    Row("a bare list view with one row less, ms of processor", "%.3f", floor.MeanProcessorMilliseconds(), "");
    Row("removing against the bare list view", "%.3f", program.MeanMilliseconds() / floor.MeanMilliseconds(), "1.1");
    Row("removing against the bare list view, processor", "%.3f",
        program.MeanProcessorMilliseconds() / floor.MeanProcessorMilliseconds(), "");
}

/// The cost per item of adding all files of a folder by the button.
Cost AddAll(BenchMachine& machine, int count) {
    const double before = PrivateMegabytes();
    Window window(machine, L"C:\\bench\\" + std::to_wstring(count));
    window.SelectAllFiles();
    const Cost cost = CostOf([&] { window.Click(IDC_cmdAjouterFichier); });
    const Cost perItem{cost.seconds / count, cost.processorSeconds / count};
    Expect(window.RowCount(), count, "adding");
    const std::string items = std::to_string(count) + " files";
    Row(("open the folder of " + items + ", s").c_str(), "%.3f", window.OpenSeconds(), "");
    Row(("add " + items + ", s").c_str(), "%.3f", cost.seconds, count == 100000 ? "10" : "");
    Row(("add " + items + ", microseconds each").c_str(), "%.1f", perItem.seconds * 1e6, "");
    Row(("add " + items + ", microseconds of processor each").c_str(), "%.1f", perItem.processorSeconds * 1e6, "");
    if (count == 100000) {
        Row("private memory of the window with 100000 rows, MB", "%.1f", PrivateMegabytes() - before, "100");
        RemoveOneByOne(window);
    }
    const double removeAll = TimeOf([&] { window.Click(IDC_cmdEffacerTouteListe); });
    Expect(window.RowCount(), 0, "removing all");
    Row(("remove the whole list of " + items + ", s").c_str(), "%.4f", removeAll, "");
    return perItem;
}

void ReadListFile(BenchMachine& machine) {
    constexpr int entries = 10000;
    machine.app.startUp->strRepRacine = L"C:\\bench\\sets";
    Window window(machine, L"C:\\bench\\empty");
    Expect(window.RowCount(), entries, "the predefined set");
    Row("open the window with a list file of 10000 entries, s", "%.3f", window.OpenSeconds(), "");
    const double taken = TimeOf([&] { window.Click(IDC_chkSauvOKR1); });
    Expect(window.RowCount(), 0, "unchecking the set");
    const double added = TimeOf([&] { window.Click(IDC_chkSauvOKR1); });
    Expect(window.RowCount(), entries, "checking the set");
    Row("uncheck a set of 10000 entries, s", "%.3f", taken, "");
    Row("check a set of 10000 entries, s", "%.3f", added, "");
    machine.app.startUp->strRepRacine = L"C:\\bench\\root";
}

/// What cannot be done without: one enumeration of every folder, and nothing else.
std::uint64_t BareMeasure(std::wstring& folder) {
    constexpr DWORD largeFetch = 2;
    const std::size_t length = folder.size();
    folder += L"\\*";
    WIN32_FIND_DATAW entry{};
    HANDLE search = FindFirstFileExW(folder.c_str(), static_cast<FINDEX_INFO_LEVELS>(1), &entry, FindExSearchNameMatch,
                                     nullptr, largeFetch);
    folder.resize(length);
    if (search == INVALID_HANDLE_VALUE) return 0;
    std::uint64_t bytes = 0;
    do {
        if (entry.cFileName[0] == L'.') continue;
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            folder += L'\\';
            folder += entry.cFileName;
            bytes += BareMeasure(folder);
            folder.resize(length);
        } else {
            bytes += static_cast<std::uint64_t>(entry.nFileSizeHigh) << 32 | entry.nFileSizeLow;
        }
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return bytes;
}

void MeasureFolder(BenchMachine& machine) {
    constexpr std::size_t rounds = 7;
    std::array<double, rounds> program{};
    std::array<double, rounds> bare{};
    for (std::size_t round = 0; round < rounds; ++round) {
        std::uint64_t bareBytes = 0;
        std::uint64_t programBytes = 1;
        std::wstring folder = L"C:\\bench\\tree";
        bare[round] = TimeOf([&] { bareBytes = BareMeasure(folder); });
        program[round] = TimeOf([&] { programBytes = machine.files.Measure(L"C:\\bench\\tree", [] {}).sizeBytes; });
        if (bareBytes != programBytes || bareBytes == 0) {
            std::printf("the two measurements differ\n");
            ++failures;
        }
    }
    std::sort(program.begin(), program.end());
    std::sort(bare.begin(), bare.end());
    Row("measure 50000 files in 500 folders, median of 7, ms", "%.1f", program[rounds / 2] * 1000, "");
    Row("the bare enumeration of the same, median of 7, ms", "%.1f", bare[rounds / 2] * 1000, "");
    Row("measuring against the bare enumeration", "%.3f", program[rounds / 2] / bare[rounds / 2], "1.1");
}

} // namespace

int main() {
    BenchMachine machine;
    std::printf("| what | measured | at most |\n|---|---|---|\n");
    AddAll(machine, 1000); // what the first window loads once is no part of the work
    std::printf("| (the first window of the process ends here) | | |\n");
    const Cost few = AddAll(machine, 1000);
    AddAll(machine, 10000);
    const Cost many = AddAll(machine, 100000);
    Row("time per item at 100000 against that at 1000", "%.3f", many.seconds / few.seconds, "1.3");
    Row("processor time per item at 100000 against that at 1000", "%.3f", many.processorSeconds / few.processorSeconds,
        "");
    ReadListFile(machine);
    MeasureFolder(machine);
    if (machine.MessagesShown() > 0) {
        std::printf("%zu messages came up\n", machine.MessagesShown());
        ++failures;
    }
    return failures > 0 ? 1 : 0;
}
