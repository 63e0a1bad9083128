#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class Application;
class Files;

/// A line of the folder list: a folder above the open one, the open one itself, or one directly in it.
struct BrowsedFolder {
    std::wstring name;
    std::wstring path;
    int level = 0; ///< 0 for the disk root
};

/// The folder in which the user looks around: its way down from the disk root, the folders and the files in it, as far
/// as the user's Explorer would show them. What is added to a backup is not cut down by that.
class FolderBrowser {
  public:
    explicit FolderBrowser(const Files& files) : files_(files) {}

    /// The open folder; empty before the first one was opened.
    const std::wstring& Path() const { return path_; }
    /// Opens a folder, or the root of a drive ("D:"). Throws the errors of `Files::ShownContents` and then stays where
    /// it was.
    void Open(const std::wstring& path);

    /// The open folder with the folders above it and below, each above what it holds.
    const std::vector<BrowsedFolder>& Folders() const { return folders_; }
    /// The place of the open folder in `Folders`.
    std::size_t OpenIndex() const { return openIndex_; }
    const std::vector<std::wstring>& FileNames() const { return fileNames_; }

  private:
    const Files& files_;
    std::wstring path_;
    std::vector<BrowsedFolder> folders_;
    std::size_t openIndex_ = 0;
    std::vector<std::wstring> fileNames_;
};

/// The drives to choose from, as "c: [LABEL]". No floppy drive is read for it, nor any drive on the network.
std::vector<std::wstring> DriveChoices(const Application& app);
/// The drive ("C:") of a line of `DriveChoices`.
std::wstring DriveOfChoice(const std::wstring& choice);
/// Whether choosing this drive ("A:" or "B:") moves nothing, so that the floppy is never read.
bool IsFloppyDrive(const std::wstring& drive);

/// The user's documents, where browsing starts; nothing when they are not on a drive of their own letter.
std::optional<std::wstring> StartFolder(const Application& app);
