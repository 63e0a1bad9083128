#pragma once

#include "check/BackupReport.h"
#include "check/NameSet.h"

#include <deque>
#include <functional>

/// What else is done with the files of a backup while it is inspected: recovering them, or comparing them.
class FileTaker {
  public:
    virtual ~FileTaker() = default;
    virtual void BeginItem(ItemReport& item, const ZipEntry& entry) = 0;
    virtual void BeginFile(const ZipEntry& file) = 0;
    virtual void Take(std::string_view bytes) = 0;
    virtual void EndFile(const FileOutcome& outcome) = 0;
    virtual void Describe(std::uint64_t index, const DirectoryRecord& record) = 0;
    virtual void EndItem() = 0;
};

/// The name that rows know an inner archive by.
std::wstring ArchiveOfRow(const std::wstring& name);

/// Holds what the walk meets against the backup's list, and writes it into the report.
class Inspection final : public WalkListener {
  public:
    /// Called with an item that is new in the report, and again once it is settled.
    using OnItemKnown = std::function<void(const ItemReport& item, bool isSettled)>;

    /// Rows, whose texts the report keeps, come first in it, in their order; inner archives that no row names follow.
    /// Items that are in it already are those of the first rows. Borrows all of it; `takers` get every file in turn.
    /// With `wanted`, other items are passed over and left out of the report.
    Inspection(std::deque<ListedItem> rows, BackupReport& report, std::vector<FileTaker*> takers,
               const NameSet* wanted = nullptr, OnItemKnown onItemKnown = {});

    void OnItem(const ZipEntry& item) override;
    void OnFile(const ZipEntry& file) override;
    void OnData(std::string_view bytes) override;
    void OnFileEnd(const FileOutcome& outcome) override;
    void OnRecord(std::uint64_t index, const DirectoryRecord& record) override;
    void OnItemEnd(const ItemOutcome& outcome) override;
    bool Wants(const std::wstring& name) override;

    /// What has no inner archive is missing, once the walk is through.
    void Finish();

  private:
    ItemVerdict VerdictOf(const ItemOutcome& outcome) const;
    bool IsWhatRowNames() const;
    bool IsWanted(const std::wstring& archive) const;
    void Tell(const ItemReport& item, bool isSettled) const;

    BackupReport& report_;
    std::vector<FileTaker*> takers_;
    const NameSet* wanted_; ///< nothing: all
    OnItemKnown onItemKnown_;
    std::uint32_t nextPlace_ = 0;
    TextIndex rows_; ///< the items that have a row, by their inner archives
    ItemReport* item_ = nullptr;
    std::size_t folderBefore_ = 0; ///< how long the path is that the item's names continue
    std::wstring file_;
    bool isFolder_ = false;
    std::wstring topName_;
    bool hasOneTop_ = true;
};
