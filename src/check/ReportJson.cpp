#include "check/ReportWords.h"
#include "core/Application.h"
#include "platform/CodePages.h"

#include <array>
#include <functional>
#include <utility>

namespace {

constexpr std::array<const char*, 12> Verdicts = {
    "good",        "faulty",     "empty",  "wrongPassword", "passwordMissing", "noBackup",
    "olderFormat", "unreadable", "noRoom", "notWritable",   "stopped",         "notChecked"};
constexpr std::array<const char*, 11> ItemVerdicts = {"whole",     "damaged",          "damagedWhenSaved", "cut",
                                                      "empty",     "directoryDamaged", "locked",           "missing",
                                                      "notListed", "otherBackup",      "notChecked"};
constexpr std::array<const char*, 13> FindingKinds = {"damaged",    "brokenOff",  "unreadable", "tooLong", "refused",
                                                      "keptAs",     "absent",     "newer",      "older",   "differs",
                                                      "addedSince", "notWritten", "notMarked"};
constexpr std::array<std::pair<RowProblem, const char*>, 6> Problems = {{
    {RowProblem::Comma, "comma"},
    {RowProblem::LostLetters, "lostLetters"},
    {RowProblem::TwoFields, "twoFields"},
    {RowProblem::SharedMailStore, "sharedMailStore"},
    {RowProblem::TooLong, "tooLong"},
    {RowProblem::NotRestorable, "notRestorable"},
}};

/// Writes one JSON value, with commas where they belong.
class Json {
  public:
    using Tell = std::function<void(std::string_view piece)>;

    explicit Json(const Tell& tell) : tell_(tell) {}

    Json& Open(char bracket) {
        Part();
        text_ += bracket;
        isFirst_ = true;
        return *this;
    }
    Json& Close(char bracket) {
        text_ += bracket;
        isFirst_ = false;
        return *this;
    }
    Json& Key(std::string_view key) {
        Part();
        Quote(key);
        text_ += ':';
        isFirst_ = true;
        return *this;
    }
    void Value(std::string_view value) {
        Part();
        Quote(value);
    }
    void Value(const std::wstring& value) { Value(std::string_view(ToUtf8(value))); }
    void Value(std::uint64_t value) {
        Part();
        text_ += std::to_string(value);
    }
    void Flag(std::string_view key, bool value) {
        Key(key).Part();
        text_ += value ? "true" : "false";
    }
    template<typename Kind>
    void Field(std::string_view key, const Kind& value) {
        Key(key).Value(value);
    }

    /// Gives out what has come together, when it is much.
    void FlushWhenMuch() {
        if (text_.size() > PieceBytes) Flush();
    }
    void EndLine() {
        text_ += '\n';
        Flush();
    }

  private:
    void Flush() {
        tell_(text_);
        text_.clear();
    }
    void Part() {
        if (!isFirst_) text_ += ',';
        isFirst_ = false;
    }
    void Quote(std::string_view value) {
        constexpr std::string_view digits = "0123456789abcdef";
        text_ += '"';
        for (const char letter : value) {
            const auto code = static_cast<unsigned char>(letter);
            if (letter == '"' || letter == '\\') text_ += '\\';
            if (code < 32) {
                text_ += "\\u00";
                text_ += digits[code >> 4];
                text_ += digits[code & 15];
            } else {
                text_ += letter;
            }
        }
        text_ += '"';
    }

    static constexpr std::size_t PieceBytes = 65536;

    const Tell& tell_;
    std::string text_;
    bool isFirst_ = true;
};

void Write(Json& json, const FileFinding& finding) {
    json.Open('{');
    json.Field("file", finding.file);
    json.Field("what", std::string_view(FindingKinds[static_cast<std::size_t>(finding.what)]));
    if (finding.what == FileFinding::What::BrokenOff) json.Field("wholeBytes", finding.at);
    if (HasNumber(finding.what)) json.Field("error", finding.at);
    if (!finding.other.empty()) json.Field("path", finding.other);
    json.Close('}');
}

void Write(Json& json, const ItemReport& item, bool isRecovery) {
    json.Open('{');
    json.Field("number", static_cast<std::uint64_t>(item.number));
    json.Field("path", item.path);
    json.Field("archive", item.archive);
    json.Field("kind", std::string_view(item.number == 0 ? "unknown" : item.isFolder ? "folder" : "file"));
    json.Field("verdict", std::string_view(ItemVerdicts[static_cast<std::size_t>(item.verdict)]));
    json.Flag("isGood", !item.HasFault());
    json.Field("files", item.files);
    json.Field("bytes", item.bytes);
    json.Field("damagedFiles", item.remarks->damagedFiles);
    if (isRecovery) {
        json.Field("recoveredFiles", item.recoveredFiles);
        json.Field("presentFiles", item.presentFiles);
    }
    json.Key("problems").Open('[');
    for (const auto& [problem, name] : Problems) {
        if ((item.problems & static_cast<unsigned>(problem)) != 0) json.Value(std::string_view(name));
    }
    json.Close(']').Key("findings").Open('[');
    for (const FileFinding& finding : item.remarks->findings) Write(json, finding);
    json.Close(']');
    json.Field("moreFindings", item.remarks->moreFindings);
    json.Field("reason", std::string_view(item.remarks->reason));
    json.Close('}');
}

std::string_view ListState(const BackupReport& report) {
    return report.hasList ? "read" : report.isListUnreadable ? "unreadable" : "missing";
}

std::string_view PasswordState(const BackupReport& report) {
    if (report.verdict == Verdict::WrongPassword) return "wrong";
    if (report.verdict == Verdict::PasswordMissing) return "missing";
    if (!report.isEncrypted) return "notNeeded";
    return report.isOpenedByFirstWord ? "firstWord" : "whole";
}

} // namespace

void TellReportAsJson(const BackupReport& report, const std::function<void(std::string_view piece)>& tell) {
    Json json(tell);
    json.Open('{');
    json.Field("format", std::uint64_t{1});
    json.Field("program", L"BackupCheck " + VersionText());
    json.Field("action", std::string_view(report.isRecovery ? "recover" : "check"));
    json.Flag("compared", report.isComparison);
    json.Field("verdict", std::string_view(Verdicts[static_cast<std::size_t>(report.verdict)]));
    json.Field("exitCode", static_cast<std::uint64_t>(report.ExitCode()));
    json.Field("failure", report.failure ? report.failure->Description() : std::wstring());
    json.Field("list", ListState(report));
    json.Field("password", PasswordState(report));
    if (report.isRecovery) json.Field("target", report.target);
    json.Key("archive").Open('{');
    json.Field("path", report.archive);
    json.Field("bytes", report.archiveBytes);
    json.Field("directory", std::string_view(!report.walk.hasDirectory        ? "missing"
                                             : report.walk.doesDirectoryAgree ? "agrees"
                                                                              : "disagrees"));
    json.Field("unreadableBytes", report.walk.unreadableBytes);
    json.Field("reason", std::string_view(report.walk.reason));
    json.Close('}').Key("totals").Open('{');
    json.Field("items", static_cast<std::uint64_t>(report.items.size()));
    json.Field("faultyItems", report.FaultyItems());
    json.Field("files", report.Files());
    json.Field("bytes", report.Bytes());
    if (report.isRecovery) {
        json.Field("recoveredFiles", report.RecoveredFiles());
        json.Field("presentFiles", report.PresentFiles());
    }
    json.Close('}').Key("items").Open('[');
    for (const ItemReport& item : report.items) {
        Write(json, item, report.isRecovery);
        json.FlushWhenMuch();
    }
    json.Close(']').Close('}');
    json.EndLine();
}
