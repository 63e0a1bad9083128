#include "Report.h"

#include "Console.h"
#include "uidriver/Protocol.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace kit {

namespace {

struct OutcomeName {
    Outcome outcome;
    const char* mark; ///< the same in both languages, for whoever reads many reports by program
    Words words;
};

constexpr std::array OutcomeNames = {
    OutcomeName{Outcome::Passed, "passed", {L"réussi", L"passed"}},
    OutcomeName{Outcome::Failed, "failed", {L"ÉCHEC", L"FAILED"}},
    OutcomeName{Outcome::Skipped, "skipped", {L"omis", L"skipped"}},
    OutcomeName{Outcome::Told, "told", {L"à savoir", L"to know"}},
};

const OutcomeName& NameOf(Outcome outcome) {
    return *std::find_if(OutcomeNames.begin(), OutcomeNames.end(),
                         [&](const OutcomeName& name) { return name.outcome == outcome; });
}

constexpr const char* PageHead =
    "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Backup</title><style>\n"
    "body{font:14px sans-serif;margin:2em}td{border-bottom:1px solid #ccc;padding:2px 8px;vertical-align:top;"
    "white-space:pre-wrap}tr.failed{background:#fcc}tr.skipped{background:#ffc}table{border-collapse:collapse}"
    "figure{display:inline-block;margin:8px;vertical-align:top}img{max-width:100%;border:1px solid #888}\n"
    "</style></head><body>\n";

std::string Escaped(const std::wstring& text) {
    std::string escaped;
    for (const char character : uidriver::ToUtf8(text)) {
        if (character == '<')
            escaped += "&lt;";
        else if (character == '>')
            escaped += "&gt;";
        else if (character == '&')
            escaped += "&amp;";
        else if (character == '"')
            escaped += "&quot;";
        else if (character != '\0')
            escaped += character;
    }
    return escaped;
}

std::string Base64(const std::string& bytes) {
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        unsigned group = 0;
        for (std::size_t place = 0; place < 3; ++place)
            group = group << 8 | (at + place < bytes.size() ? static_cast<unsigned char>(bytes[at + place]) : 0u);
        for (std::size_t place = 0; place < 4; ++place)
            text += at + place <= bytes.size() ? digits[group >> (18 - 6 * place) & 63] : '=';
    }
    return text;
}

} // namespace

void Report::Hide(const std::wstring& text, const std::wstring& instead) {
    if (text.size() > 2) hidden_.insert(hidden_.begin(), {text, instead});
}

std::wstring Report::Hidden(std::wstring text) const {
    for (const auto& [secret, instead] : hidden_) {
        for (std::size_t at = text.find(secret); at != std::wstring::npos; at = text.find(secret, at + instead.size()))
            text.replace(at, secret.size(), instead);
    }
    return text;
}

void Report::Begin(const Words& title) {
    if (!sections_.empty()) Write();
    sections_.push_back({Say(title), {}, {}});
    Print(L"\n== " + Say(title) + L"\n");
}

void Report::Add(Outcome outcome, const std::wstring& name, const std::wstring& detail) {
    sections_.back().lines.push_back({Hidden(name), outcome, Hidden(detail)});
}

void Report::AddPicture(const std::wstring& caption, const std::string& png) {
    sections_.back().pictures.push_back({caption, png});
}

void Report::Require(const Words& name, const std::function<std::wstring()>& action) {
    const ULONGLONG started = GetTickCount64();
    const auto note = [&](Outcome outcome, const std::wstring& detail) {
        Add(outcome, Say(name), detail);
        Print(L"   " + Say(name) + L": " + Say(NameOf(outcome).words) + L" (" +
              std::to_wstring((GetTickCount64() - started) / 1000) + L" s)\n");
    };
    try {
        note(Outcome::Passed, action());
    } catch (const NotHere& reason) {
        note(Outcome::Skipped, reason.Said());
        throw;
    } catch (const Failure& failure) {
        note(Outcome::Failed, failure.Said());
        throw;
    } catch (const std::exception& failure) {
        note(Outcome::Failed, uidriver::FromUtf8(failure.what()));
        throw Failure(uidriver::FromUtf8(failure.what()));
    }
}

bool Report::Step(const Words& name, const std::function<std::wstring()>& action) {
    try {
        Require(name, action);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

int Report::Count(Outcome outcome) const {
    int count = 0;
    for (const Section& section : sections_) {
        count += static_cast<int>(std::count_if(section.lines.begin(), section.lines.end(),
                                                [&](const Line& line) { return line.outcome == outcome; }));
    }
    return count;
}

std::string Report::Page() const {
    std::string page = PageHead;
    page += "<h1>" + Escaped(Say({L"Essai de Copies de sécurité", L"Trial of Backup"})) + "</h1>\n<p id=\"summary\">";
    for (const Outcome outcome : {Outcome::Passed, Outcome::Failed, Outcome::Skipped})
        page += std::to_string(Count(outcome)) + " " + NameOf(outcome).mark + " ";
    page += "</p>\n";
    for (const Section& section : sections_) {
        page += "<h2>" + Escaped(section.title) + "</h2>\n<table>\n";
        for (const Line& line : section.lines) {
            const OutcomeName& name = NameOf(line.outcome);
            page += std::string("<tr class=\"") + name.mark + "\"><td>" + Escaped(line.name) + "</td><td>" +
                    Escaped(Say(name.words)) + "</td><td>" + Escaped(line.detail) + "</td></tr>\n";
        }
        page += "</table>\n";
        for (const Picture& picture : section.pictures) {
            page += "<figure><figcaption>" + Escaped(picture.caption) + "</figcaption><img alt=\"" +
                    Escaped(picture.caption) + "\" src=\"data:image/png;base64," + Base64(picture.png) +
                    "\"></figure>\n";
        }
    }
    return page + "</body></html>\n";
}

void Report::Write() const {
    std::ofstream file(path_, std::ios::binary | std::ios::trunc);
    file << Page();
    file.close();
    if (!file) throw Failure(L"the report cannot be written: " + path_.wstring());
}

} // namespace kit
