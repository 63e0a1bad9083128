// A user at the selection, with files that come and go: rows, records, boxes and the required space stay in step.
#include "FuzzInput.h"
#include "Require.h"

#include "core/SpaceValues.h"
#include "platform/RuntimeError.h"
#include "support/SelectionBench.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr const wchar_t* Paths[] = {
    L"C:\\Data\\a.dat",
    L"C:\\Data\\b.dat",
    L"C:\\Data\\Sub",
    L"C:\\Data",
    L"C:\\Data\\",
    L"c:\\data\\A.DAT",
    L"C:\\Mail\\a.pst",
    L"C:\\Mail",
    L"C:\\Data\\été.txt",
    L"C:\\Data\\\u0141.txt",
    L"C:\\Fam\\Rep1",
    L"C:\\Fam\\Rep.txt",
    L"C:\\None\\x.txt",
    L"C:\\Users\\agent\\x.db",
    L"D:\\",
    L"C:\\",
    L"E:\\photo.jpg",
    L"C:\\Data\\a,b.dat",
    L"C:\\Data\\Sub\\c.dat\\",
    L"\\\\server\\share\\f",
};
constexpr const wchar_t* Entries[] = {
    L"C:\\Data\\a.dat",      L"C:\\Data\\Sub",
    L"C:\\Data\\Sub\\",      L"C:\\Data\\*",
    L"C:\\Mail\\*.pst",      L"C:\\Fam\\Rep*",
    L"C:\\None\\x.dat",      L"**UserProfile**\\x.db",
    L"C:\\Fam\\.txt*",       L"C:\\Data\\\u0141.txt",
    L"C:\\Mail\\a.pst",      L"C:\\Data\\Rep*.*",
    L"\"C:\\Data,x\",b",     L"*",
    L"E:\\photo.jpg\\\\*.*", L"",
};
constexpr const wchar_t* Lists[] = {L"vexal.lst",  L"brinde.lst",       L"qamor.lst",
                                    L"tarvel.lst", L"outlookVista.lst", L"transfert.lst"};

/// The user, the list in front of him and the disk behind it.
class SelectionUser {
  public:
    explicit SelectionUser(FuzzInput& input) : input_(input) {
        for (const wchar_t* file :
             {L"C:\\Data\\a.dat", L"C:\\Data\\Sub\\c.dat", L"C:\\Mail\\a.pst", L"C:\\Fam\\Rep.txt",
              L"C:\\Users\\agent\\x.db", L"E:\\photo.jpg", L"C:\\Data\\été.txt", L"C:\\Data\\\u0141.txt"})
            Files().AddSizedFile(file, 1000);
        Files().AddFolder(L"C:\\Fam\\Rep1");
        for (std::size_t count = input_.Below(6); count > 0; --count) {
            std::vector<std::wstring> entries;
            for (std::size_t left = input_.Below(6); left > 0; --left) entries.emplace_back(input_.OneOf(Entries));
            bench_.AddListFile(input_.OneOf(Lists), entries);
        }
        bench_.list.LoadSets();
    }

    void Act() {
        switch (input_.Below(9)) {
        case 0:
            return bench_.list.AddDropped({Picked()});
        case 1:
            bench_.list.AddFolder(Picked());
            return;
        case 2:
            return bench_.list.AddDropped({Picked(), Picked(), Picked()});
        case 3:
            return bench_.list.AddFiles(L"C:\\Data", {L"a.dat", L"été.txt"});
        case 4:
            bench_.screen.selected = AnyRow();
            return;
        case 5:
            return bench_.list.EffacerFichierListe(bench_.screen.selected);
        case 6:
            bench_.list.EffacerTouteListe();
            Require(bench_.list.RowCount() == 0 && bench_.machine.app.space->requiredSpace == Currency());
            return;
        case 7:
            return ClickBox(static_cast<std::int32_t>(input_.Below(SetCount)));
        default:
            return ChangeDisk();
        }
    }

    void Check() {
        const auto rows = bench_.list.RowCount();
        Require(rows == bench_.list.ArrayFichier()->Count());
        Require(bench_.screen.selected >= -1 && bench_.screen.selected < rows);
        std::vector<std::wstring> keys;
        for (std::int32_t at = 0; at < rows; ++at) {
            const SelectionRow& row = bench_.list.Row(at);
            Require(!row.isRemoved && (row.setIndex == NoSet || row.color == SetRowColor));
            Require(!IsDiskRoot(*row.path) && row.setIndex < SetCount);
            keys.push_back(UpperCase(*row.path));
        }
        std::sort(keys.begin(), keys.end());
        Require(std::adjacent_find(keys.begin(), keys.end()) == keys.end());
        for (const auto& item : *bench_.list.ArrayFichier())
            Require(std::binary_search(keys.begin(), keys.end(), UpperCase(item->strNom)));
        for (std::int32_t set = 0; set < SetCount; ++set) Require(bench_.list.ItemsAdded(set) >= 0);
        // What vanished or grew since it was counted may count otherwise now.
        if (!hasDiskChanged_) Require(bench_.machine.app.space->requiredSpace == bench_.SumOfItems());
        if (!hasDiskChanged_) Require(!IsFatal());
    }

  private:
    FakeFiles& Files() { return bench_.machine.files; }
    std::int32_t AnyRow() {
        return static_cast<std::int32_t>(input_.Below(static_cast<std::size_t>(bench_.list.RowCount()) + 1)) - 1;
    }
    /// What the user picks is there, unless it has vanished since it was shown to him. What is listed already and has
    /// vanished is shown to nobody.
    std::wstring Picked() {
        std::wstring path = input_.OneOf(Paths);
        if (Files().FileExists(path) || Files().FolderExists(path)) return path;
        hasDiskChanged_ = true;
        const bool isListed = bench_.list.ArrayFichier()->Find(WithoutTrailingBackslash(path), KindFolder) != nullptr;
        return isListed ? L"C:\\None\\x.txt" : path;
    }
    /// A box that is greyed cannot be clicked.
    void ClickBox(std::int32_t index) {
        if (!bench_.list.Box(index).isEnabled) return;
        bench_.list.ClickBox(index);
        if (hasDiskChanged_ || bench_.list.Box(index).state != BoxState::Unchecked) return;
        for (std::int32_t at = 0; at < bench_.list.RowCount(); ++at) Require(bench_.list.Row(at).setIndex != index);
    }
    void ChangeDisk() {
        hasDiskChanged_ = true;
        const std::wstring path = input_.OneOf(Paths);
        switch (input_.Below(4)) {
        case 0:
            if (Files().FileExists(path) || Files().FolderExists(path)) Files().Remove(path);
            return;
        case 1:
            // A file stays a file: in the place of a folder it would have the folder's key. So does what was taken for
            // one when it had vanished: the list reports a folder in its place, and has a row more.
            if (path.find(L'.') != std::wstring::npos && !path.ends_with(L'\\') && !IsBelowListedFile(path))
                Files().AddSizedFile(path, input_.Bits<std::uint32_t>());
            return;
        case 2:
            return Files().Deny(path);
        default:
            return bench_.AddListFile(input_.OneOf(Lists), {input_.OneOf(Entries), input_.OneOf(Entries)});
        }
    }
    bool IsBelowListedFile(const std::wstring& path) const {
        const auto items = bench_.list.ArrayFichier();
        for (std::wstring above = path.substr(0, path.rfind(L'\\')); above.size() > 2;
             above.resize(above.rfind(L'\\'))) {
            if (items->Find(above, KindFile) != nullptr) return true;
        }
        return false;
    }
    bool IsFatal() const {
        const auto& boxes = bench_.machine.messageBoxes.shown;
        return std::any_of(boxes.begin(), boxes.end(),
                           [](const FakeMessageBoxes::Box& box) { return box.style == box::Critical; });
    }

    FuzzInput& input_;
    SelectionBench bench_;
    bool hasDiskChanged_ = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    FuzzInput input(data, sizeBytes);
    SelectionUser user(input);
    while (!input.IsAtEnd()) {
        user.Act();
        user.Check();
    }
    return 0;
}
