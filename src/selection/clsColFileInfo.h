#pragma once

#include "selection/clsFileInfo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class Application;

/// The selected items in the order in which they were added, each under its path as key. Positions count from 1; keys
/// are compared without regard to case. Records are shared: a record that was handed out outlives its removal.
/// For the user-interface thread only.
class clsColFileInfo {
  public:
    explicit clsColFileInfo(Application& app) : app_(app) {}

    /// Appends a record of path `sKey` and kind `sType` and gives it. An empty path is stored without a key, any
    /// number of times. A path that is there already is reported (457) and gives null.
    std::shared_ptr<clsFileInfo> Add(const std::wstring& sKey, std::int32_t sType);

    /// Throws 9 when there is no such position.
    std::shared_ptr<clsFileInfo> Item(std::int32_t position) const;
    /// Throws 5 when there is no such key.
    std::shared_ptr<clsFileInfo> Item(const std::wstring& key) const;
    /// The record of this path (in any letter case) and kind; null when there is none. Takes the same time however
    /// many records there are.
    std::shared_ptr<clsFileInfo> Find(const std::wstring& path, std::int32_t kind) const;

    std::int32_t Count() const { return static_cast<std::int32_t>(records_.size() - removed_); }

    /// Later positions move down by one. An unknown position (9) or key (5) is reported. By key the time does not grow
    /// with the number of records.
    void Remove(std::int32_t position);
    void Remove(const std::wstring& key);
    void RemoveAll();

    /// Whether there is a record of the same path, in any letter case, and the same kind.
    bool ContainsItem(const clsFileInfo& fiValue) const { return Find(fiValue.strNom, fiValue.lngType) != nullptr; }

    /// Walks the records in order, as `const std::shared_ptr<clsFileInfo>&`. Any change of the collection ends a walk.
    class Enumerator;
    Enumerator begin() const;
    Enumerator end() const;

  private:
    struct Record : clsFileInfo {
        bool isRemoved = false;
    };
    using Records = std::vector<std::shared_ptr<Record>>;
    /// By the hash of the upper-case path: the path itself is in the record, and long lists need not hold it twice.
    using Index = std::unordered_multimap<std::size_t, std::shared_ptr<Record>>;

    Index::const_iterator InIndex(const std::wstring& key) const;
    void Sweep() const;

    Application& app_;
    // Removed records stay in their places until a position is asked for, so that removing many costs one pass.
    mutable Records records_;
    mutable std::size_t removed_ = 0;
    Index index_;
};

class clsColFileInfo::Enumerator {
  public:
    explicit Enumerator(Records::const_iterator at) : at_(at) {}
    std::shared_ptr<clsFileInfo> operator*() const { return *at_; }
    Enumerator& operator++() {
        ++at_;
        return *this;
    }
    bool operator==(const Enumerator&) const = default;

  private:
    Records::const_iterator at_;
};

inline clsColFileInfo::Enumerator clsColFileInfo::begin() const {
    Sweep();
    return Enumerator(records_.begin());
}

inline clsColFileInfo::Enumerator clsColFileInfo::end() const {
    Sweep();
    return Enumerator(records_.end());
}
