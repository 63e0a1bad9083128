#pragma once

#include "uidriver/Protocol.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace kit {

/// A form, told by a control that no other one has.
struct FormMark {
    const wchar_t* name;
    int landmark;
};

struct Box {
    HWND window = nullptr;
    std::wstring title;
    std::wstring text;
    std::vector<int> buttons;
    std::wstring InWords() const { return L"\"" + title + L"\": " + text; }
};

/// One run of the program, in its real windows, with what a person's clicks send. Whatever does not come within its
/// time is a Failure that says what was seen instead.
class Program {
  public:
    /// Starts the program of a folder.
    explicit Program(const std::wstring& folder);
    /// Ends it when it still runs.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Wait(const std::wstring& description, const std::function<bool()>& condition, int seconds = WaitSeconds) const;

    /// The main window when it can be used, and a window that is opened from it while the start may still go on. Boxes
    /// that come before that are answered, Yes where there is a question.
    HWND MainWindow();
    HWND FirstWindow(const FormMark& mark);
    /// The words of the boxes that came at the start.
    const std::vector<std::wstring>& SaidAtStart() const { return saidAtStart_; }
    HWND Window(const FormMark& mark);

    /// A control of a window, at whatever depth.
    static HWND Control(HWND window, int id);
    bool IsUsable(HWND window, int id) const;
    /// Clicks a button or an option once it can be used.
    void Press(HWND window, int id);
    void SetText(HWND window, int id, const std::wstring& text);
    std::wstring Text(HWND window, int id) const;
    std::vector<std::wstring> Entries(HWND window, int id) const;
    /// Chooses the entry that begins with a text.
    void Choose(HWND window, int id, const std::wstring& beginning);
    void ChooseAt(HWND window, int id, std::size_t index);
    int RowCount(HWND window, int id) const;

    bool IsBoxOpen() const;
    Box OpenBox(int seconds = WaitSeconds) const;
    /// Presses a button of the open box and waits until the box is gone.
    Box Answer(int button = IDOK);

    /// Waits for the end; a Failure when the program did not end well.
    void RequireEnd();

    static constexpr int WaitSeconds = 30;

  private:
    struct Seen {
        HWND window;
        std::wstring title;
        bool isEnabled;
    };

    std::vector<Seen> Windows() const;
    HWND FindForm(const FormMark& mark) const;
    HWND FindBox() const;
    bool HasEnded() const;
    std::wstring Describe() const;
    void AnswerAtStart();

    std::wstring id_;
    std::vector<std::wstring> saidAtStart_;
};

/// A request to the window driver, asked again while the window is busy.
uidriver::Rows Ask(const uidriver::Row& fields);

} // namespace kit
