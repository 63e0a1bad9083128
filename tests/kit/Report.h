#pragma once

#include "Words.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kit {

enum class Outcome { Passed, Failed, Skipped, Told };

/// The one file that the kit leaves: a page that holds everything, its pictures included. It is written anew after each
/// section, so that a run which breaks off has one as well.
class Report {
  public:
    explicit Report(std::filesystem::path path) : path_(std::move(path)) {}

    const std::filesystem::path& Path() const { return path_; }

    /// From now on `instead` stands wherever `text` would: the report goes to others, and a person's name stands in
    /// paths. What is hidden last is looked for first.
    void Hide(const std::wstring& text, const std::wstring& instead);

    void Begin(const Words& title);
    void Add(Outcome outcome, const std::wstring& name, const std::wstring& detail = {});
    void Tell(const Words& name, const std::wstring& detail) { Add(Outcome::Told, Say(name), detail); }
    void AddPicture(const std::wstring& caption, const std::string& png);

    /// Does one thing and notes how it went, with what it gives. A failure is noted and ends here; gives whether it
    /// went well.
    bool Step(const Words& name, const std::function<std::wstring()>& action);
    /// The same for a step that another one needs: a failure goes on to the caller after it was noted.
    void Require(const Words& name, const std::function<std::wstring()>& action);

    int Count(Outcome outcome) const;
    /// Throws Failure when the file cannot be written.
    void Write() const;

  private:
    struct Line {
        std::wstring name;
        Outcome outcome;
        std::wstring detail;
    };
    struct Picture {
        std::wstring caption;
        std::string png;
    };
    struct Section {
        std::wstring title;
        std::vector<Line> lines;
        std::vector<Picture> pictures;
    };

    std::wstring Hidden(std::wstring text) const;
    std::string Page() const;

    std::filesystem::path path_;
    std::vector<std::pair<std::wstring, std::wstring>> hidden_;
    std::vector<Section> sections_;
};

} // namespace kit
