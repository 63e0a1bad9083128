#include "Program.h"

#include "Console.h"
#include "Words.h"
#include "shell/forms/frmMainIds.h"
#include "uidriver/Remote.h"
#include "uidriver/Requests.h"

#include <algorithm>

namespace kit {

namespace {

constexpr DWORD LookMilliseconds = 20;
constexpr FormMark MainForm{L"frmMain", IDC_cmdSortie};

struct ControlSearch {
    int id;
    HWND found;
};

BOOL CALLBACK NoteControl(HWND child, LPARAM context) {
    auto& search = *reinterpret_cast<ControlSearch*>(context);
    if (GetDlgCtrlID(child) != search.id) return TRUE;
    search.found = child;
    return !IsWindowVisible(child);
}

/// A message box holds a text of this number, and nothing but texts and buttons. Told without asking the window, which
/// may be busy.
bool IsMessageBox(HWND window) {
    if (uidriver::ClassOf(window) != L"#32770") return false;
    struct Parts {
        bool hasText = false;
        bool hasOthers = false;
    } parts;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM context) -> BOOL {
            auto& seen = *reinterpret_cast<Parts*>(context);
            const std::wstring name = uidriver::ClassOf(child);
            constexpr int textId = 0xFFFF;
            seen.hasText = seen.hasText || (name == L"Static" && (GetDlgCtrlID(child) & 0xFFFF) == textId);
            seen.hasOthers = seen.hasOthers || (name != L"Static" && name != L"Button");
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&parts));
    return parts.hasText && !parts.hasOthers;
}

Box BoxOf(HWND window) {
    const uidriver::Rows rows = Ask({L"messagebox", uidriver::Handle(window)});
    wchar_t title[256] = {};
    InternalGetWindowText(window, title, 256);
    Box box{window, title, rows.empty() ? L"" : rows[0][0], {}};
    for (std::size_t row = 1; row < rows.size(); ++row) box.buttons.push_back(std::stoi(rows[row][0]));
    return box;
}

} // namespace

uidriver::Rows Ask(const uidriver::Row& fields) {
    static const uidriver::RequestTable requests = uidriver::AllRequests();
    const ULONGLONG end = GetTickCount64() + Program::WaitSeconds * 1000ull;
    for (;;) {
        try {
            return requests.at(fields.front())(fields);
        } catch (const uidriver::RequestError& error) {
            if (std::string(error.what()) != "busy" || GetTickCount64() > end) throw;
        }
    }
}

Program::Program(const std::wstring& folder)
    : id_(Ask({L"start", folder, L"\"" + folder + L"\\Backup.exe\""}).front().front()) {
    // The kit was started by the person's own click; its program may come to the front as that one's may.
    AllowSetForegroundWindow(static_cast<DWORD>(std::stoul(id_)));
}

Program::~Program() {
    if (!HasEnded()) Ask({L"kill", id_});
    const ULONGLONG end = GetTickCount64() + 5000;
    while (!HasEnded() && GetTickCount64() < end) Sleep(LookMilliseconds);
}

bool Program::HasEnded() const {
    return !Ask({L"state", id_}).front().front().empty();
}

void Program::Wait(const std::wstring& description, const std::function<bool()>& condition, int seconds) const {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1000;
    std::wstring reason;
    for (;;) {
        if (IsEndWished()) throw Failure(Say({L"interrompu", L"broken off"}));
        try {
            if (condition()) return;
            reason.clear();
        } catch (const uidriver::RequestError& error) {
            reason = L" (" + uidriver::FromUtf8(error.what()) + L")";
        }
        if (GetTickCount64() > end) break;
        Sleep(LookMilliseconds);
    }
    throw Failure(L"waited " + std::to_wstring(seconds) + L" s for " + description + reason + L"; seen: " + Describe());
}

std::vector<Program::Seen> Program::Windows() const {
    std::vector<Seen> windows;
    for (const uidriver::Row& row : Ask({L"windows", id_})) {
        const auto window = reinterpret_cast<HWND>(static_cast<INT_PTR>(std::stoll(row[0])));
        if (row[1] != L"tooltips_class32") windows.push_back({window, row[2], row[3] == L"1"});
    }
    return windows;
}

std::wstring Program::Describe() const {
    if (const std::wstring code = Ask({L"state", id_}).front().front(); !code.empty())
        return L"the program has ended with " + code;
    std::wstring said;
    for (const Seen& seen : Windows())
        said += (IsMessageBox(seen.window) ? BoxOf(seen.window).InWords() : L"window \"" + seen.title + L"\"") + L"; ";
    return said.empty() ? L"no window" : said;
}

HWND Program::FindForm(const FormMark& mark) const {
    for (const Seen& seen : Windows()) {
        if (seen.isEnabled && GetDlgItem(seen.window, mark.landmark) != nullptr) return seen.window;
    }
    return nullptr;
}

HWND Program::FindBox() const {
    for (const Seen& seen : Windows()) {
        if (IsMessageBox(seen.window)) return seen.window;
    }
    return nullptr;
}

void Program::AnswerAtStart() {
    const HWND box = FindBox();
    if (box == nullptr) return;
    const Box shown = BoxOf(box);
    saidAtStart_.push_back(shown.InWords());
    const bool isQuestion = std::count(shown.buttons.begin(), shown.buttons.end(), IDYES) > 0;
    Answer(isQuestion ? IDYES : IDOK);
}

HWND Program::MainWindow() {
    const HWND main = FirstWindow(MainForm);
    Wait(L"the end of the start", [&] {
        AnswerAtStart();
        return IsUsable(main, IDC_cmdBackup);
    });
    return main;
}

HWND Program::FirstWindow(const FormMark& mark) {
    HWND window = nullptr;
    Wait(mark.name, [&] {
        AnswerAtStart();
        return (window = FindForm(mark)) != nullptr;
    });
    return window;
}

HWND Program::Window(const FormMark& mark) {
    HWND window = nullptr;
    Wait(mark.name, [&] { return (window = FindForm(mark)) != nullptr; });
    SetForegroundWindow(window);
    return window;
}

HWND Program::Control(HWND window, int id) {
    ControlSearch search{id, nullptr};
    EnumChildWindows(window, NoteControl, reinterpret_cast<LPARAM>(&search));
    if (search.found == nullptr) throw uidriver::RequestError("no control " + std::to_string(id));
    return search.found;
}

bool Program::IsUsable(HWND window, int id) const {
    const HWND control = Control(window, id);
    return IsWindowEnabled(window) && IsWindowEnabled(control) && IsWindowVisible(control);
}

void Program::Press(HWND window, int id) {
    Wait(L"control " + std::to_wstring(id), [&] { return IsUsable(window, id); });
    // A button of a window that is not the active one may let a click pass.
    SetForegroundWindow(window);
    Ask({L"click", uidriver::Handle(Control(window, id))});
}

void Program::SetText(HWND window, int id, const std::wstring& text) {
    Wait(L"control " + std::to_wstring(id), [&] { return IsUsable(window, id); });
    Ask({L"settext", uidriver::Handle(Control(window, id)), text});
}

std::wstring Program::Text(HWND window, int id) const {
    return Ask({L"text", uidriver::Handle(Control(window, id))}).front().front();
}

std::vector<std::wstring> Program::Entries(HWND window, int id) const {
    std::vector<std::wstring> entries;
    for (const uidriver::Row& row : Ask({L"items", uidriver::Handle(Control(window, id))})) entries.push_back(row[0]);
    return entries;
}

void Program::Choose(HWND window, int id, const std::wstring& beginning) {
    std::size_t index = 0;
    Wait(L"the entry " + beginning, [&] {
        const std::vector<std::wstring> entries = Entries(window, id);
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const std::wstring& entry) { return entry.starts_with(beginning); });
        index = static_cast<std::size_t>(found - entries.begin());
        return found != entries.end() && IsUsable(window, id);
    });
    ChooseAt(window, id, index);
}

void Program::ChooseAt(HWND window, int id, std::size_t index) {
    Ask({L"choose", uidriver::Handle(Control(window, id)), std::to_wstring(index)});
}

int Program::RowCount(HWND window, int id) const {
    return std::stoi(Ask({L"rowcount", uidriver::Handle(Control(window, id))}).front().front());
}

bool Program::IsBoxOpen() const {
    return FindBox() != nullptr;
}

Box Program::OpenBox(int seconds) const {
    HWND box = nullptr;
    const auto isBoxOpen = [&] { return (box = FindBox()) != nullptr; };
    Wait(L"a message box", isBoxOpen, seconds);
    return BoxOf(box);
}

Box Program::Answer(int button) {
    Box box = OpenBox();
    const HWND control = GetDlgItem(box.window, button);
    if (control == nullptr) throw Failure(L"no button " + std::to_wstring(button) + L" in " + box.InWords());
    SetForegroundWindow(box.window);
    Ask({L"click", uidriver::Handle(control)});
    Wait(L"the end of " + box.InWords(), [&] { return !IsWindow(box.window); });
    return box;
}

void Program::RequireEnd() {
    Wait(L"the end of the program", [&] { return HasEnded(); });
    if (const std::wstring code = Ask({L"state", id_}).front().front(); code != L"0")
        throw Failure(L"the program ended with " + code);
}

} // namespace kit
