#include "selection/PredefinedSets.h"

#include "core/SequentialInput.h"
#include "core/SpaceValues.h"
#include "core/TextDecoding.h"
#include "core/UserProfileMarker.h"
#include "core/UserValues.h"
#include "platform/AtScopeEnd.h"
#include "platform/Files.h"
#include "platform/OperatingSystem.h"
#include "platform/RuntimeError.h"
#include "selection/ItemSpace.h"
#include "selection/PathRules.h"
#include "shell/ErrorReport.h"
#include "shell/UserProfile.h"

#include <string_view>
#include <utility>

namespace {

constexpr std::wstring_view MailStore = L"pst";

bool Contains(const std::wstring& text, std::wstring_view part) {
    return text.find(part) != std::wstring::npos;
}

std::wstring_view LastFour(std::wstring_view text) {
    return text.size() <= 4 ? text : text.substr(text.size() - 4);
}

/// The entry of a list file as an item of the kind that it has on this computer.
clsFileInfo ItemOf(const Files& files, const std::wstring& entry) {
    const bool isFolder = !entry.empty() && files.IsDirectory(entry);
    return isFolder ? clsFileInfo{WithoutTrailingBackslash(entry), KindFolder, {}} : clsFileInfo{entry, KindFile, {}};
}

bool IsReadOn(bool isVista, ListFor versions) {
    switch (versions) {
    case ListFor::EveryVersion:
        return true;
    case ListFor::BeforeVista:
        return !isVista;
    case ListFor::SinceVista:
        return isVista;
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

std::wstring WithoutWildcards(const std::wstring& pattern) {
    return Without(Without(pattern, L"*.*"), L"*");
}

/// Whether a wildcard entry stands for a row that a set brought.
bool IsMatch(const std::wstring& pattern, const std::wstring& path) {
    const std::wstring folder = FolderPart(pattern);
    if (!folder.empty() && path.starts_with(folder)) return true;
    // "C:\Data\*" stands for the folder itself.
    if (WithoutWildcards(pattern) == folder && path + L'\\' == folder) return true;
    return Contains(path, MailStore) && Contains(pattern, MailStore) && LastFour(path) == LastFour(pattern);
}

/// The many steps of one procedure, each to be done whatever the others meet. The first failure is reported; a stick
/// that was pulled out would otherwise report every one of its files.
class ManySteps {
  public:
    ManySteps(Application& app, const wchar_t* procedure) : app_(app), procedure_(procedure) {}

    template<typename Steps>
    void Run(Steps&& steps) {
        try {
            steps();
        } catch (...) {
            if (!std::exchange(isReported_, true)) ReportCurrentException(app_, procedure_);
        }
    }

  private:
    Application& app_;
    const wchar_t* procedure_;
    bool isReported_ = false;
};

} // namespace

std::vector<std::wstring> PredefinedSets::ListFiles(std::int32_t setIndex) const {
    const bool isVista = app_.machine.operatingSystem->Version().IsVistaOrLater();
    std::vector<std::wstring> paths;
    for (const SetListFile& file : SetTable.at(static_cast<std::size_t>(setIndex)).listFiles) {
        if (IsReadOn(isVista, file.versions)) paths.push_back(app_.ListFileFolder() + file.name);
    }
    return paths;
}

bool PredefinedSets::IsInstalled(std::int32_t setIndex) const {
    const std::vector<std::wstring> listFiles = ListFiles(setIndex);
    return !listFiles.empty() && app_.machine.files->FileExists(listFiles.front());
}

std::wstring PredefinedSets::TransferList() const {
    return app_.ListFileFolder() + L"transfert.lst";
}

std::vector<std::wstring> PredefinedSets::Entries(const std::wstring& listFile) {
    SequentialInput input(DecodeText(app_.machine.files->Read(listFile)));
    const bool isOutlook = Contains(listFile, L"outlook");
    const AtScopeEnd restore([this, profile = app_.user->strProfilUtilisateur]() mutable {
        app_.user->strProfilUtilisateur = std::move(profile);
    });
    if (isOutlook) LireProfilUtilisateur(app_);
    std::vector<std::wstring> entries;
    while (!input.IsAtEnd()) entries.push_back(WithUserProfile(input.Field(), app_.user->strProfilUtilisateur));
    return entries;
}

void PredefinedSets::RemplirArray(const std::wstring& listFile, std::int32_t setIndex) {
    Guarded(app_, L"RemplirArray, module frmBackupCD", [&] {
        for (const std::wstring& entry : Entries(listFile)) {
            FillFrom(entry, setIndex);
            work_.Continue();
        }
    });
}

void PredefinedSets::FillFrom(const std::wstring& entry, std::int32_t setIndex) {
    const Files& files = *app_.machine.files;
    if (Contains(entry, MailStore) && Contains(entry, L"*")) AjouteMultiple(entry, setIndex);
    if (entry.ends_with(L'*')) {
        AjouteMultiple(entry, setIndex);
        return;
    }
    const clsFileInfo probe = ItemOf(files, entry);
    if (probe.lngType == KindFile ? files.FileExists(entry) : files.FolderExists(entry)) AddItem(probe, setIndex);
}

void PredefinedSets::AjouteMultiple(const std::wstring& pattern, std::int32_t setIndex) {
    Guarded(app_, L"AjouteMultiple, module modFonctionsCommunes", [&] {
        std::wstring start = WithoutWildcards(pattern);
        if (start.ends_with(L'\\')) {
            start.pop_back();
            AjouteToListAndArray(start, true, setIndex);
            return;
        }
        const std::wstring folder = FolderPart(start);
        const std::wstring fragment = start.substr(folder.size());
        if (folder.empty() || !app_.machine.files->FolderExists(folder)) return;
        const FolderContents contents = app_.machine.files->Contents(folder);
        for (const std::wstring& name : contents.folders) {
            if (name.starts_with(fragment)) AjouteToListAndArray(folder + name, true, setIndex);
        }
        for (const std::wstring& name : contents.files) {
            if (name.starts_with(fragment) || name.ends_with(fragment))
                AjouteToListAndArray(folder + name, false, setIndex);
        }
    });
}

void PredefinedSets::AjouteToListAndArray(const std::wstring& path, bool isFolder, std::int32_t setIndex) {
    Guarded(app_, L"AjouteToListAndArray, module modFonctionsCommunes", [&] {
        const Files& files = *app_.machine.files;
        if (isFolder ? files.FolderExists(path) : files.FileExists(path))
            AddItem({path, isFolder ? KindFolder : KindFile, {}}, setIndex);
        work_.Continue();
    });
}

void PredefinedSets::AddItem(const clsFileInfo& probe, std::int32_t setIndex) {
    const auto set = static_cast<std::size_t>(setIndex);
    const bool isFolder = probe.lngType == KindFolder;
    if (!leftOut_.MayAdd(probe.strNom)) return;
    if (content_.collection->ContainsItem(probe)) {
        // The row belongs to the last set that named it. A folder that the user added reads "\*.*" and stays theirs.
        if (SelectionRow* row = content_.rows.Find(probe.strNom); row != nullptr) {
            if (row->setIndex == NoSet) row->space = SpaceOf(probe.strNom, isFolder);
            row->setIndex = setIndex;
            row->color = SetRowColor;
        }
        return;
    }
    const auto item = content_.collection->Add(probe.strNom, probe.lngType);
    SelectionRow row{std::make_shared<std::wstring>(probe.strNom), false, isFolder, setIndex, SetRowColor};
    row.ShareText(item);
    SelectionRow& added = content_.rows.Add(std::move(row));
    content_.shownRow = content_.rows.Count() - 1;
    added.space = SpaceOf(probe.strNom, isFolder);
    app_.space->requiredSpace += added.space;
    ++content_.arrNbItemsAjoutes[set];
    ++content_.arrNbItemsRestants[set];
}

void PredefinedSets::ViderArray(const std::wstring& listFile) {
    constexpr const wchar_t* procedure = L"ViderArray, module frmBackupCD";
    Guarded(app_, procedure, [&] {
        ManySteps removals(app_, procedure);
        for (const std::wstring& entry : Entries(listFile)) {
            work_.Continue();
            if (entry.ends_with(L'*') || entry.ends_with(L"*.pst")) {
                EffacerMultiple(entry);
                continue;
            }
            // By the row: what has vanished since no longer says of which kind it was.
            SelectionRow* row = content_.rows.Find(WithoutTrailingBackslash(entry));
            if (row != nullptr && row->color == SetRowColor) removals.Run([&] { RemoveItem(*row); });
        }
    });
    content_.rows.Sweep();
}

void PredefinedSets::EffacerMultiple(const std::wstring& pattern) {
    constexpr const wchar_t* procedure = L"EffacerMultiple, module modFonctionsCommunes";
    Guarded(app_, procedure, [&] {
        ManySteps removals(app_, procedure);
        content_.rows.VisitBackwards([&](SelectionRow& row) {
            if (row.color == SetRowColor && IsMatch(pattern, *row.path)) removals.Run([&] { RemoveItem(row); });
            work_.Continue();
        });
    });
}

/// Takes the row and its record out before the measuring, which may fail: what is not shown is not backed up.
void PredefinedSets::RemoveItem(SelectionRow& row) {
    content_.rows.Mark(row);
    if (content_.collection->Find(*row.path, row.isFolder ? KindFolder : KindFile) != nullptr)
        content_.collection->Remove(*row.path);
    try {
        app_.space->requiredSpace -= SpaceToGive(row);
    } catch (...) {
        // Nobody can measure it any more: what it was counted for goes with it.
        app_.space->requiredSpace -= row.space;
        throw;
    }
}

/// What a row's item takes now; a folder that has vanished would measure nothing, and gives what it was counted for.
Currency PredefinedSets::SpaceToGive(const SelectionRow& row) {
    if (row.isFolder && !app_.machine.files->FolderExists(*row.path)) return row.space;
    return SpaceOf(*row.path, row.isFolder);
}

Currency PredefinedSets::SpaceOf(const std::wstring& path, bool isFolder) {
    return ItemSpace(app_, path, isFolder, [this] { work_.Continue(); });
}
