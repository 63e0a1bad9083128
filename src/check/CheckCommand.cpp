#include "check/CheckCommand.h"

#include "check/CheckWork.h"
#include "check/ReportFile.h"
#include "platform/CodePages.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "resources/TextId.h"

#include <algorithm>

namespace {

constexpr int WrongUsage = 5;
constexpr int CannotReadOrWrite = 4;
constexpr std::uint64_t LongestPasswordFile = 65536;
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

/// A path as it may stand on a command line that another program has quoted.
std::wstring CleanPath(std::wstring path) {
    while (!path.empty() && path.back() == L' ') path.pop_back();
    while (path.size() > 3 && path.ends_with(L"\\\\")) path.pop_back();
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

class WordReader {
  public:
    explicit WordReader(const std::vector<std::wstring>& words) : words_(words) {}

    std::variant<CheckCommand, CommandFault> Read() {
        for (; at_ < words_.size() && !IsWrong(); ++at_) ReadWord();
        if (!IsWrong()) CheckWhole();
        if (IsWrong()) return fault_;
        return command_;
    }

  private:
    bool IsWrong() const { return fault_.text != TextId::None; }

    void ReadWord() {
        const std::wstring word = UpperCase(words_[at_]);
        if (word == L"/CHECK") {
            Take(check_);
        } else if (word == L"/RECOVER") {
            Take(recover_);
        } else if (word == L"/TO") {
            Take(command_.request.target);
        } else if (word == L"/PASSWORD-FILE") {
            Take(command_.passwordFile);
        } else if (word == L"/REPORT") {
            Take(command_.reportFile);
        } else if (word == L"/COMPARE") {
            if (command_.request.isComparison) Fail(TextId::CheckGivenTwice);
            command_.request.isComparison = true;
        } else {
            Fail(TextId::CheckUnknownWord);
        }
    }

    void Take(std::optional<std::wstring>& value) {
        if (value) return Fail(TextId::CheckGivenTwice);
        const bool isThere = at_ + 1 < words_.size() && !words_[at_ + 1].empty() && !words_[at_ + 1].starts_with(L'/');
        if (!isThere) return Fail(TextId::CheckValueMissing);
        value = CleanPath(words_[++at_]);
    }

    void Fail(TextId text) { fault_ = {text, words_[at_]}; }

    void CheckWhole() {
        const bool isRecovery = recover_.has_value();
        if (check_.has_value() == isRecovery || isRecovery != command_.request.target.has_value()) {
            fault_ = {TextId::CheckWorkMissing, {}};
            return;
        }
        command_.request.place = isRecovery ? *recover_ : *check_;
    }

    const std::vector<std::wstring>& words_;
    std::size_t at_ = 0;
    CommandFault fault_;
    CheckCommand command_;
    std::optional<std::wstring> check_;
    std::optional<std::wstring> recover_;
};

std::string ReadSmallFile(const FileStore& files, const std::wstring& path) {
    const auto file = files.Open(files.FullPath(path));
    std::string bytes(static_cast<std::size_t>(std::min(file->SizeBytes(), LongestPasswordFile)), '\0');
    bytes.resize(file->ReadAt(0, bytes));
    return bytes;
}

/// Where the place cannot even be looked at, the work tells why.
std::wstring ArchiveAt(const FileStore& files, const std::wstring& place) {
    try {
        return PlaceOf(files, place).archive;
    } catch (const RuntimeError&) {
        return {};
    }
}

void ShowLines(Console& console, const std::wstring& text) {
    std::size_t from = 0;
    for (std::size_t end = text.find(L'\n'); end != std::wstring::npos; end = text.find(L'\n', from)) {
        console.Line(text.substr(from, end - from));
        from = end + 1;
    }
    console.Line(text.substr(from));
}

} // namespace

std::variant<CheckCommand, CommandFault> ReadCommand(const std::vector<std::wstring>& words) {
    return WordReader(words).Read();
}

std::wstring PasswordIn(std::string_view bytes) {
    const bool isUtf8 = bytes.starts_with(Utf8Mark);
    if (isUtf8) bytes.remove_prefix(Utf8Mark.size());
    bytes = bytes.substr(0, bytes.find_first_of(std::string_view("\r\n\0", 3)));
    return isUtf8 ? FromUtf8(bytes) : FromAnsi(bytes);
}

int RunCommand(FileStore& files, Console& console, const NumberWords& numbers, const std::vector<std::wstring>& words,
               const std::wstring& profileFolder) {
    const Texts& texts = numbers.texts;
    auto understood = ReadCommand(words);
    if (const auto* fault = std::get_if<CommandFault>(&understood)) {
        console.Line(Filled(texts(fault->text), {fault->word}));
        ShowLines(console, texts(TextId::CheckUsage));
        return WrongUsage;
    }
    CheckCommand& command = std::get<CheckCommand>(understood);
    command.request.profileFolder = profileFolder;
    if (command.reportFile) {
        try {
            RequireOffBackup(files, ArchiveAt(files, command.request.place), *command.reportFile, texts);
        } catch (const RuntimeError& error) {
            console.Line(Filled(texts(TextId::CheckReportNotWritten), {FailureWords(error, texts)}));
            return CannotReadOrWrite;
        }
    }
    if (command.passwordFile) {
        try {
            const bool isInput = *command.passwordFile == L"-";
            command.request.password =
                PasswordIn(isInput ? console.Input() : ReadSmallFile(files, *command.passwordFile));
        } catch (const RuntimeError& error) {
            console.Line(Filled(texts(TextId::CheckPasswordUnreadable), {FailureWords(error, texts)}));
            return CannotReadOrWrite;
        }
    }
    CheckHooks hooks;
    hooks.isStopped = [&console] { return console.IsStopAsked(); };
    const BackupReport report = RunCheck(files, command.request, hooks);
    TellReport(report, numbers, [&](const std::wstring& line) { console.Line(line); });
    if (!command.reportFile) return report.ExitCode();
    try {
        WriteReport(files, report, *command.reportFile, numbers);
    } catch (const RuntimeError& error) {
        console.Line(Filled(texts(TextId::CheckReportNotWritten), {FailureWords(error, texts)}));
        return CannotReadOrWrite;
    }
    return report.ExitCode();
}
