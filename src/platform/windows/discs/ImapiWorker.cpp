#include "platform/windows/discs/ImapiWorker.h"

#include "platform/RuntimeError.h"
#include "platform/discs/MasteringCodes.h"
#include "platform/windows/QuietErrors.h"
#include "platform/windows/discs/ImapiBurn.h"

#include <new>
#include <system_error>
#include <utility>

namespace {

constexpr DWORD LookMilliseconds = 1000;
constexpr DWORD SettlingLookMilliseconds = 250;
constexpr DWORD ListMilliseconds = 3000;
constexpr DWORD RetryMilliseconds = 50;
/// How long a drive may take to become ready after it has written or erased.
constexpr DWORD SettleMilliseconds = 20000;

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
    return SystemText(result, FORMAT_MESSAGE_FROM_SYSTEM, nullptr);
}

} // namespace

ImapiWorker::ImapiWorker(DiscFamily family, DiscEventQueue& queue)
    : family_(family), queue_(queue), wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      ended_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), list_(family) {
    // Without them the end of the thread would be waited for in vain.
    if (!wake_ || !ended_) throw RuntimeError(ErrorNumber::CannotCreateObject);
    try {
        thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        throw RuntimeError(ErrorNumber::CannotCreateObject);
    }
}

ImapiWorker::~ImapiWorker() {
    RequestEnd();
    thread_.join();
}

void ImapiWorker::RequestStop() {
    if (latest_) latest_->RequestStop();
}

void ImapiWorker::RequestEnd() {
    isEndRequested_ = true;
    RequestStop();
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

std::function<void()>* ImapiWorker::FirstCommand() {
    std::lock_guard lock(mutex_);
    return commands_.empty() ? nullptr : &commands_.front();
}

void ImapiWorker::DropFirstCommand() {
    std::lock_guard lock(mutex_);
    commands_.pop_front();
}

void ImapiWorker::SelectDrive(const std::wstring& id, int selection) {
    Enqueue([this, id, selection] {
        drive_.reset();
        selection_ = selection;
        if (!id.empty()) drive_ = std::make_unique<ImapiDrive>(id);
        ReadDrive(true);
    });
}

void ImapiWorker::Start(int operation, DiscOperation kind, Operation run) {
    const auto tell = [this, operation](const DiscProgress& progress) {
        DiscEvent event;
        event.kind = DiscEvent::Kind::Progress;
        event.operation = operation;
        event.progress = progress;
        queue_.Post(std::move(event));
    };
    latest_ = std::make_shared<OperationWatch>(DiscProgress{kind, WritingStage::FillingBuffer, -1}, tell);
    Enqueue([this, operation, watch = latest_, run = std::move(run), result = std::optional<HRESULT>()]() mutable {
        if (!result) result = ResultOf(run, watch);
        TellEnd(operation, *result);
    });
}

void ImapiWorker::StartWrite(int operation, BurnJob job) {
    Start(operation, DiscOperation::Preparing, [this, job = std::move(job)](const auto& watch) {
        return drive_ ? Burn(*drive_, family_, job, watch) : static_cast<HRESULT>(Mastering::NoMedia);
    });
}

void ImapiWorker::StartErase(int operation, bool isQuick) {
    Start(operation, DiscOperation::EraseInProgress, [this, isQuick](const auto& watch) {
        return drive_ ? EraseDisc(*drive_, isQuick, watch) : static_cast<HRESULT>(Mastering::NoMedia);
    });
}

void ImapiWorker::Run() {
    {
        const ComApartment apartment;
        SuppressDiskBoxes();
        while (!isEndRequested_) {
            try {
                TakeStep();
            } catch (const std::bad_alloc&) {
                // The step is taken again when there may be memory; what was read by half of it is not known.
                if (drive_) drive_->Forget();
                Sleep(RetryMilliseconds);
            }
        }
        drive_.reset();
    }
    SetEvent(ended_.Get());
}

void ImapiWorker::TakeStep() {
    if (mustTellDrives_) {
        LookForDrives();
    } else if (auto* command = FirstCommand()) {
        (*command)();
        DropFirstCommand();
    } else if (WaitForSingleObject(wake_.Get(), MillisecondsToNextLook()) == WAIT_TIMEOUT) {
        isLookDue_ = false;
        ReadDrive(false);
        if (GetTickCount64() - listedTick_ >= ListMilliseconds) LookForDrives();
    }
}

DWORD ImapiWorker::MillisecondsToNextLook() const {
    if (isLookDue_) return 0;
    return settleEnd_ != 0 ? SettlingLookMilliseconds : LookMilliseconds;
}

void ImapiWorker::LookForDrives() {
    if (list_.Refresh()) mustTellDrives_ = true;
    if (mustTellDrives_) TellDrives();
    listedTick_ = GetTickCount64();
}

void ImapiWorker::TellDrives() {
    DiscEvent event;
    event.kind = DiscEvent::Kind::DrivesListed;
    event.result = FAILED(list_.Result()) ? list_.Result() : S_OK;
    for (const auto& drive : list_.Writers()) {
        event.names.push_back(drive.name);
        event.ids.push_back(drive.id);
    }
    queue_.Post(std::move(event));
    mustTellDrives_ = false;
}

void ImapiWorker::ReadDrive(bool isAsked) {
    const bool isSettling = settleEnd_ != 0;
    DriveSnapshot snapshot;
    if (drive_) {
        snapshot = drive_->Read();
        if (isSettling && !isAsked && !drive_->HasAnswered() && GetTickCount64() < settleEnd_) return;
    }
    if (!isAsked && !isSettling && snapshot == told_) return;
    DiscEvent event;
    event.kind = DiscEvent::Kind::DriveRead;
    event.selection = selection_;
    event.snapshot = snapshot;
    event.isAfterOperation = isSettling;
    queue_.Post(std::move(event));
    told_ = std::move(snapshot);
    settleEnd_ = 0;
}

HRESULT ImapiWorker::ResultOf(const Operation& run, const std::shared_ptr<OperationWatch>& watch) {
    HRESULT result = static_cast<HRESULT>(Mastering::RequestCancelled);
    try {
        if (!watch->IsStopRequested()) result = run(watch);
    } catch (const std::bad_alloc&) {
        result = E_OUTOFMEMORY;
    }
    watch->End();
    return result;
}

void ImapiWorker::TellEnd(int operation, HRESULT result) {
    DiscEvent event;
    event.kind = DiscEvent::Kind::OperationEnded;
    event.operation = operation;
    event.result = result;
    if (FAILED(result)) event.text = TextOfFailure(result);
    queue_.Post(std::move(event));
    // The window is told first: a drive may take its time before it answers again.
    settleEnd_ = GetTickCount64() + SettleMilliseconds;
    if (drive_) drive_->Forget();
    isLookDue_ = true;
}
