// Drives the program's disc writer from a command line, on whatever image mastering the machine has. For trying a real
// drive by hand, and for measuring: a write tells how long it took and how long the calling thread was kept from its
// messages.
#include "platform/RuntimeError.h"
#include "platform/windows/discs/ImapiDiscWriter.h"

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

class ConsoleLoop : public MessageLoop {
  public:
    void RunPending() override {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    void SetPointer(Pointer) override {}
};

class ConsoleEvents : public DiscWriterEvents {
  public:
    explicit ConsoleEvents(DiscWriter& writer) : writer_(writer) {}

    void ErrorEx(std::int32_t errCode, const std::wstring& errDescr) override {
        std::printf("error 0x%08X %ls\n", static_cast<unsigned>(errCode), errDescr.c_str());
        hasFailed = true;
    }
    void MediaChange() override { std::puts("media change"); }
    void DiscReadAgain() override { std::puts("disc read again"); }
    void WritersChange() override { std::puts("writers change"); }
    void OperationProgress(std::int16_t percent) override {
        const auto operation = writer_.CurrentOperation();
        std::printf("operation %d stage %d percent %d\n", static_cast<int>(operation),
                    static_cast<int>(writer_.CurrentStage()), percent);
        const bool isErased = operation == DiscOperation::EraseInProgress && percent == 100;
        hasEnded = hasEnded || operation == DiscOperation::Finished || isErased;
    }

    bool hasEnded = false;
    bool hasFailed = false;

  private:
    DiscWriter& writer_;
};

void ShowState(const DiscWriter& writer) {
    std::printf("presence %d kind %d status %d writable %d ready %d used %llu free %llu total %llu speed %.1f\n",
                static_cast<int>(writer.Presence()), static_cast<int>(writer.Kind()), static_cast<int>(writer.Status()),
                writer.IsWritable(), writer.IsDvdReady(), static_cast<unsigned long long>(writer.UsedBytes()),
                static_cast<unsigned long long>(writer.FreeBytes()),
                static_cast<unsigned long long>(writer.TotalBytes()), writer.WriteSpeed());
}

/// Handles messages until the operation has ended; returns the longest time between two turns.
double RunToEnd(ConsoleLoop& loop, const ConsoleEvents& events) {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER last{};
    QueryPerformanceCounter(&last);
    double longest = 0;
    while (!events.hasEnded && !events.hasFailed) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
        loop.RunPending();
        LARGE_INTEGER now{};
        QueryPerformanceCounter(&now);
        const double gap =
            static_cast<double>(now.QuadPart - last.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
        if (gap > longest) longest = gap;
        last = now;
    }
    return longest;
}

/// What a write is measured against: the same bytes, copied by the system.
int Copy(const std::wstring& from, const std::wstring& to) {
    const ULONGLONG start = GetTickCount64();
    const bool isCopied = CopyFileW(from.c_str(), to.c_str(), FALSE) != FALSE;
    std::printf("milliseconds %llu\n", static_cast<unsigned long long>(GetTickCount64() - start));
    return isCopied ? 0 : 1;
}

int Usage() {
    std::puts("usage: disc_console cd|dvd INDEX state\n"
              "       disc_console cd|dvd INDEX burn LABEL FILE...\n"
              "       disc_console cd|dvd INDEX erase quick|full\n"
              "       disc_console copy FROM TO\n"
              "INDEX counts the writers from 0.");
    return 2;
}

} // namespace

int wmain(int argumentCount, wchar_t** arguments) {
    const std::vector<std::wstring> words(arguments + 1, arguments + argumentCount);
    if (words.size() < 3) return Usage();
    if (words[0] == L"copy") return Copy(words[1], words[2]);
    ConsoleLoop loop;
    ImapiDiscWriters writers(loop);
    std::unique_ptr<DiscWriter> writer;
    try {
        writer = writers.Create(words[0] == L"dvd" ? DiscFamily::Dvd : DiscFamily::Cd);
    } catch (const RuntimeError& error) {
        std::printf("error %d %ls\n", error.Number(), error.Description().c_str());
        return 1;
    }
    for (const auto& name : writer->WriterNames()) std::printf("writer %ls\n", name.c_str());
    ConsoleEvents events(*writer);
    writer->SetEvents(&events);
    writer->SelectWriter(std::atoi(std::string(words[1].begin(), words[1].end()).c_str()));
    ShowState(*writer);
    if (words[2] == L"state") return 0;

    const ULONGLONG start = GetTickCount64();
    if (words[2] == L"burn" && words.size() > 3) {
        writer->SetDiscLabel(words[3]);
        for (std::size_t index = 4; index < words.size(); ++index) writer->AddFile(words[index]);
        writer->StartWrite();
    } else if (words[2] == L"erase" && words.size() > 3) {
        writer->Erase(words[3] == L"quick");
    } else {
        return Usage();
    }
    const double longest = RunToEnd(loop, events);
    std::printf("milliseconds %llu longest wait %.1f\n", static_cast<unsigned long long>(GetTickCount64() - start),
                longest);
    ShowState(*writer);
    return events.hasFailed ? 1 : 0;
}
