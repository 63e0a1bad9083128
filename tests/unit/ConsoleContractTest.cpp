// What every implementation of Console does; run against the stand-in, and under Windows against the real one too.
#include "support/Failures.h"
#include "support/FakeConsole.h"

#include <gmock/gmock.h>

#include <memory>

#ifdef _WIN32
#include "platform/CodePages.h"
#include "platform/windows/WindowsConsole.h"
#endif

namespace {

using testing::ElementsAre;

class FakeConsoleBench {
  public:
    void Give(const std::string& bytes) { console_.input = bytes; }
    Console& Subject() { return console_; }
    std::vector<std::wstring> Shown() const { return console_.lines; }

  private:
    FakeConsole console_;
};

#ifdef _WIN32
/// A console whose output and input are sent to pipes.
class WindowsConsoleBench {
  public:
    WindowsConsoleBench() {
        CreatePipe(shownEnd_.Receive(), output_.Receive(), nullptr, 0);
        SetStdHandle(STD_OUTPUT_HANDLE, output_.Get());
    }
    ~WindowsConsoleBench() {
        SetStdHandle(STD_OUTPUT_HANDLE, outputBefore_);
        SetStdHandle(STD_INPUT_HANDLE, inputBefore_);
    }
    WindowsConsoleBench(const WindowsConsoleBench&) = delete;
    WindowsConsoleBench& operator=(const WindowsConsoleBench&) = delete;

    /// `bytes` and then the end.
    void Give(const std::string& bytes) {
        UniqueFile given;
        CreatePipe(input_.Receive(), given.Receive(), nullptr, 0);
        DWORD written = 0;
        WriteFile(given.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        SetStdHandle(STD_INPUT_HANDLE, input_.Get());
    }
    Console& Subject() {
        if (!console_) console_ = std::make_unique<WindowsConsole>();
        return *console_;
    }
    std::vector<std::wstring> Shown() const {
        DWORD pending = 0;
        PeekNamedPipe(shownEnd_.Get(), nullptr, 0, nullptr, &pending, nullptr);
        std::string bytes(pending, '\0');
        DWORD readBytes = 0;
        if (pending > 0) ReadFile(shownEnd_.Get(), bytes.data(), pending, &readBytes, nullptr);
        std::vector<std::wstring> lines;
        for (std::size_t end = bytes.find("\r\n"); end != std::string::npos; end = bytes.find("\r\n")) {
            lines.push_back(FromUtf8(bytes.substr(0, end)));
            bytes.erase(0, end + 2);
        }
        EXPECT_EQ(bytes, "") << "a line without its end";
        return lines;
    }

  private:
    HANDLE outputBefore_ = GetStdHandle(STD_OUTPUT_HANDLE);
    HANDLE inputBefore_ = GetStdHandle(STD_INPUT_HANDLE);
    UniqueFile shownEnd_;
    UniqueFile output_;
    UniqueFile input_;
    std::unique_ptr<WindowsConsole> console_;
};
using Benches = testing::Types<FakeConsoleBench, WindowsConsoleBench>;
#else
using Benches = testing::Types<FakeConsoleBench>;
#endif

template<typename Bench>
class ConsoleContract : public testing::Test {
  protected:
    /// What comes in when `bytes` are what is given.
    std::string InputOf(const std::string& bytes) {
        bench_.Give(bytes);
        return bench_.Subject().Input();
    }
    Bench bench_;
};

TYPED_TEST_SUITE(ConsoleContract, Benches);

TYPED_TEST(ConsoleContract, EachLineIsShownWhole) {
    this->bench_.Subject().Line(L"Vérifié : 3 / 3 €");
    this->bench_.Subject().Line(L"");
    this->bench_.Subject().Line(L"\u0141\u00F3d\u017A");
    EXPECT_THAT(this->bench_.Shown(), ElementsAre(L"Vérifié : 3 / 3 €", L"", L"\u0141\u00F3d\u017A"));
}

TYPED_TEST(ConsoleContract, TheInputIsTheFirstLine) {
    EXPECT_EQ(this->InputOf("Mot de passe \r\nmore\r\n"), "Mot de passe ");
    EXPECT_EQ(this->InputOf("\xC9t\xE9\nmore"), "\xC9t\xE9");
    EXPECT_EQ(this->InputOf("\nmore"), "");
}

TYPED_TEST(ConsoleContract, TheInputIsAllOfItWhenNoLineEnds) {
    EXPECT_EQ(this->InputOf("Valcoreaux1"), "Valcoreaux1");
    EXPECT_EQ(this->InputOf(""), "");
}

TYPED_TEST(ConsoleContract, AtFirstNobodyHasAskedForTheEnd) {
    EXPECT_FALSE(this->bench_.Subject().IsStopAsked());
}

TEST(FakeConsole, WithoutInputFails) {
    FakeConsole console;
    EXPECT_EQ(NumberThrownBy([&] { console.Input(); }), static_cast<std::int32_t>(ErrorNumber::InputPastEndOfFile));
}

} // namespace
