#include "platform/windows/discs/ImapiWorker.h"

#include "platform/discs/DiscErrors.h"
#include "platform/discs/MasteringCodes.h"
#include "platform/windows/QuietErrors.h"

#include <utility>

namespace {

constexpr DWORD LookMilliseconds = 1000;

/// Multithreaded: nothing has to pump messages here, and the system's objects are made for it.
class ComApartment {
  public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    HRESULT result_;
};

struct ModuleTraits {
    using Type = HMODULE;
    static Type Invalid() { return nullptr; }
    static void Close(Type module) { FreeLibrary(module); }
};

std::wstring SystemText(HRESULT result, DWORD source, HMODULE module) {
    wchar_t text[512];
    const DWORD length = FormatMessageW(source | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, module,
                                        static_cast<DWORD>(result), 0, text, ARRAYSIZE(text), nullptr);
    std::wstring found(text, length);
    while (!found.empty() && found.back() == L' ') found.pop_back();
    return found;
}

std::wstring TextOfFailure(HRESULT result) {
    for (const wchar_t* library : {L"imapi2.dll", L"imapi2fs.dll"}) {
        const UniqueHandle<ModuleTraits> module(LoadLibraryExW(library, nullptr, LOAD_LIBRARY_AS_DATAFILE));
        if (!module) continue;
        std::wstring text = SystemText(result, FORMAT_MESSAGE_FROM_HMODULE, module.Get());
        if (!text.empty()) return text;
    }
    std::wstring text = DiscErrorText(static_cast<std::uint32_t>(result));
    return text.empty() ? SystemText(result, FORMAT_MESSAGE_FROM_SYSTEM, nullptr) : text;
}

} // namespace

ImapiWorker::ImapiWorker(DiscFamily family, DiscEventQueue& queue)
    : family_(family), queue_(queue), wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      ended_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), thread_([this] { Run(); }) {}

ImapiWorker::~ImapiWorker() {
    RequestEnd();
    thread_.join();
}

void ImapiWorker::RequestEnd() {
    isEndRequested_ = true;
    isStopRequested_ = true;
    SetEvent(wake_.Get());
}

bool ImapiWorker::WaitForEnd(DWORD milliseconds) const {
    return WaitForSingleObject(ended_.Get(), milliseconds) == WAIT_OBJECT_0;
}

void ImapiWorker::Enqueue(std::function<void()> command) {
    {
        std::lock_guard lock(mutex_);
        commands_.push_back(std::move(command));
    }
    SetEvent(wake_.Get());
}

std::function<void()> ImapiWorker::NextCommand() {
    std::lock_guard lock(mutex_);
    if (commands_.empty()) return nullptr;
    auto command = std::move(commands_.front());
    commands_.pop_front();
    return command;
}

void ImapiWorker::SelectDrive(int index, int selection) {
    Enqueue([this, index, selection] {
        drive_.reset();
        selection_ = selection;
        drive_ = std::make_unique<ImapiDrive>(drives_.at(static_cast<std::size_t>(index)).id);
        ReadDrive(true);
    });
}

void ImapiWorker::StartWrite(int operation, BurnJob job) {
    isStopRequested_ = false;
    Enqueue([this, operation, job = std::move(job)] {
        RunOperation(operation,
                     [&](const OperationFollower& follower) { return Burn(*drive_, family_, job, follower); });
    });
}

void ImapiWorker::StartErase(int operation, bool isQuick) {
    isStopRequested_ = false;
    Enqueue([this, operation, isQuick] {
        RunOperation(operation,
                     [&](const OperationFollower& follower) { return EraseDisc(*drive_, isQuick, follower); });
    });
}

void ImapiWorker::Run() {
    {
        const ComApartment apartment;
        SuppressDiskBoxes();
        ListDrives();
        while (!isEndRequested_) {
            if (auto command = NextCommand())
                command();
            else if (WaitForSingleObject(wake_.Get(), LookMilliseconds) == WAIT_TIMEOUT && drive_)
                ReadDrive(false);
        }
        drive_.reset();
    }
    SetEvent(ended_.Get());
}

void ImapiWorker::ListDrives() {
    HRESULT result = S_OK;
    drives_ = ListImapiDrives(family_, result);
    DiscEvent event;
    event.kind = DiscEvent::Kind::DrivesListed;
    event.result = FAILED(result) ? result : S_OK;
    for (const auto& drive : drives_) event.names.push_back(drive.name);
    queue_.Post(std::move(event));
}

void ImapiWorker::ReadDrive(bool isAsked) {
    const DriveSnapshot& snapshot = drive_->Read();
    if (!isAsked && snapshot == told_) return;
    told_ = snapshot;
    DiscEvent event;
    event.kind = DiscEvent::Kind::DriveRead;
    event.selection = selection_;
    event.snapshot = snapshot;
    queue_.Post(std::move(event));
}

void ImapiWorker::RunOperation(int operation, const std::function<HRESULT(const OperationFollower&)>& run) {
    const auto tell = [&](const DiscProgress& progress) {
        DiscEvent event;
        event.kind = DiscEvent::Kind::Progress;
        event.operation = operation;
        event.progress = progress;
        queue_.Post(std::move(event));
    };
    DiscEvent event;
    event.kind = DiscEvent::Kind::OperationEnded;
    event.result = isStopRequested_ ? static_cast<HRESULT>(Mastering::RequestCancelled)
                                    : run(OperationFollower{tell, isStopRequested_});
    if (FAILED(event.result)) event.text = TextOfFailure(event.result);
    drive_->Forget();
    told_ = drive_->Read();
    event.operation = operation;
    event.selection = selection_;
    event.snapshot = told_;
    queue_.Post(std::move(event));
}
