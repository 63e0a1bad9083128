#pragma once

#include <filesystem>

namespace kit {

namespace fs = std::filesystem;

bool IsHere(const fs::path& path);

/// Deletes a folder with what lies in it; of a link or a junction the link alone. What is held for a moment is tried
/// again; gives whether nothing is left.
bool DeleteTree(const fs::path& folder);

/// A folder of the kit's own below the person's temporary files. It holds the program, what it backs up and a temporary
/// folder, which the programs that are started take for theirs, as they take `Profile` for the person's.
class WorkFolder {
  public:
    /// Throws Failure when the folder cannot be made.
    WorkFolder();
    ~WorkFolder() { Remove(); }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const fs::path& Path() const { return path_; }
    fs::path ProgramFolder() const { return path_ / L"Valcoreaux" / L"Backup"; }
    fs::path Profile() const { return path_ / L"Profile"; }
    fs::path Documents() const { return Profile() / L"Documents"; }
    fs::path Temp() const { return path_ / L"Temp"; }

    /// Which language the program's copy speaks: what the settings file of a sibling program says.
    void SetLanguage(bool isFrench) const;
    double FreeBytes() const;
    /// An empty documents folder.
    void EmptyDocuments() const;
    /// Gives whether nothing is left of it.
    bool Remove();

  private:
    fs::path path_;
};

} // namespace kit
