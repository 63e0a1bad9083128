#pragma once

#include <string>
#include <vector>

class Application;

/// The items that an action of the user could not add, because the list of a backup cannot record their paths: they
/// would come back as other paths, over other files. What lies inside a folder is no matter, the archive keeps those
/// names.
class LeftOutItems {
  public:
    explicit LeftOutItems(Application& app) : app_(app) {}

    /// Whether an item of this path may be added; one that may not is remembered.
    bool MayAdd(const std::wstring& path);
    bool IsEmpty() const { return paths_.empty(); }
    /// Tells the user which items were left out since the last time, and why; nothing to do when there are none.
    void Report();

  private:
    Application& app_;
    std::vector<std::wstring> paths_;
};
