// A disc writer leaves nothing behind, however it ends.
#include "BurnerBench.h"
#include "support/DiscWriterContract.h"

#include <tlhelp32.h>

#include <cstddef>
#include <cstring>
#include <ostream>
#include <vector>

namespace {

struct Footprint {
    std::size_t handles = 0;
    std::size_t threads = 0;
    std::size_t windows = 0;
    long burnerObjects = 0;

    bool operator==(const Footprint&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Footprint& footprint) {
    return stream << footprint.handles << " handles, " << footprint.threads << " threads, " << footprint.windows
                  << " message windows, " << footprint.burnerObjects << " objects of the burner";
}

/// Counted in the system's list of all handles: Wine has no count for one process.
std::size_t HandleCount() {
    struct Entry {
        ULONG process;
        BYTE type;
        BYTE flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    constexpr ULONG SystemHandles = 16;
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<BYTE> answer(1 << 20);
    ULONG sizeBytes = 0;
    if (query(SystemHandles, answer.data(), static_cast<ULONG>(answer.size()), &sizeBytes) < 0) return 0;
    ULONG count = 0;
    std::memcpy(&count, answer.data(), sizeof count);
    std::size_t own = 0;
    for (ULONG index = 0; index < count; ++index) {
        Entry entry{};
        std::memcpy(&entry, answer.data() + alignof(Entry) + index * sizeof entry, sizeof entry);
        own += entry.process == GetCurrentProcessId();
    }
    return own;
}

std::size_t MessageWindowCount() {
    std::size_t count = 0;
    for (HWND window = nullptr; (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        count += process == GetCurrentProcessId();
    }
    return count;
}

std::size_t ThreadCount() {
    const UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::size_t count = 0;
    for (BOOL isFound = Thread32First(snapshot.Get(), &entry); isFound; isFound = Thread32Next(snapshot.Get(), &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    return count;
}

Footprint FootprintNow() {
    return {HandleCount(), ThreadCount(), MessageWindowCount(), LiveBurnerObjects()};
}

/// One life of a writer: `turn` decides how far it comes before it ends.
void LiveOnce(BurnerBench& bench, const std::wstring& file, int turn) {
    RecordedDiscEvents events;
    const auto writer = bench.Writers().Create(turn % 2 ? DiscFamily::Dvd : DiscFamily::Cd);
    events.writer = writer.get();
    writer->SetEvents(&events);
    writer->SetDiscLabel(L"21 nov., 2026");
    const bool isErase = turn % 8 == 6;
    if (isErase) {
        writer->Erase(true);
    } else {
        writer->AddFile(file);
        writer->StartWrite();
    }
    switch (turn % 5) {
    case 0: // to its end
        bench.RunUntil([&] { return events.HasFinished() || isErase || !events.errors.empty(); });
        break;
    case 1: // stopped, and ended at once
        bench.RunUntil([&] { return events.HasReached(DiscOperation::Writing, 5) || isErase; });
        writer->Abort();
        break;
    case 2: // ended in the middle
        bench.RunUntil([&] { return events.HasReached(DiscOperation::Writing, 10) || isErase; });
        break;
    case 3: // stopped and waited for
        writer->Abort();
        bench.RunUntil([&] { return !events.errors.empty(); });
        break;
    default: // ended before anything was told
        break;
    }
    writer->ShutDown();
}

TEST(DiscLeaks, TwoHundredLivesLeaveNothingBehind) {
    BurnerBench bench;
    for (wchar_t letter : {L'G', L'K'})
        BurnerBench::SetDrive(
            letter, {{"write milliseconds", "30"}, {"quick erase milliseconds", "20"}, {"shows content", "no"}});
    const std::wstring file = bench.MakeFile(L"OKRBACKUP.ZIP", 400000);
    const auto renew = [&] {
        bench.Insert(DiscFamily::Cd, 0, MediaKind::CdRw);
        bench.Insert(DiscFamily::Dvd, 0, MediaKind::DvdMinusRw);
    };
    // The first lives make what the process keeps anyway.
    for (int turn = 0; turn < 40; ++turn) {
        renew();
        LiveOnce(bench, file, turn);
    }
    const Footprint before = FootprintNow();
    ASSERT_GT(before.handles, 0u);
    for (int turn = 0; turn < 200; ++turn) {
        renew();
        LiveOnce(bench, file, turn);
    }
    EXPECT_EQ(FootprintNow(), before);
    EXPECT_EQ(before.burnerObjects, 0);
}

} // namespace
