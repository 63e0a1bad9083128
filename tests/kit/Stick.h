#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace kit {

namespace fs = std::filesystem;

/// The stick that the person lends. What lies on it stays as it is: a stick that holds a backup is refused, and what
/// the trial puts there is deleted at the end.
class Stick {
  public:
    /// Throws Failure when this is no stick, or none that may be used.
    explicit Stick(wchar_t letter);
    ~Stick() { Clear(); }
    Stick(const Stick&) = delete;
    Stick& operator=(const Stick&) = delete;

    /// "E:\"
    const std::wstring& Root() const { return root_; }
    bool IsRemovable() const { return isRemovable_; }
    double FreeBytes() const;
    /// What the program needs and nothing else has gone to the stick's root; throws Failure otherwise.
    void RequireBackup() const;
    /// Deletes what the trial put on it; gives whether nothing of it is left.
    bool Clear();
    /// Throws Failure when something at the stick's root came, went or changed.
    void RequireAsBefore() const;

  private:
    struct Entry {
        unsigned long long sizeBytes;
        unsigned long long changed;
        bool operator==(const Entry&) const = default;
    };
    using Entries = std::map<std::wstring, Entry>;

    Entries Look() const;

    std::wstring root_;
    bool isRemovable_ = false;
    bool isLent_ = false;
    Entries before_;
};

} // namespace kit
