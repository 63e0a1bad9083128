// What the check window shows, at which size and in which languages, and how the keyboard goes through it.
#include "CaptionFit.h"
#include "CheckWindowBench.h"
#include "KeyboardReach.h"
#include "core/LanguageValues.h"
#include "resources/TextId.h"
#include "support/ProcessorTime.h"

#include <commctrl.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CheckWindowShown : public CheckWindowTest {
  protected:
    SIZE OuterSize() const {
        RECT outer{};
        GetWindowRect(Window(), &outer);
        return {outer.right - outer.left, outer.bottom - outer.top};
    }
};

TEST_F(CheckWindowShown, CaptionsFitAndKeysDifferInBothLanguagesWhileIdleAndWhileWorking) {
    for (const int language : {0, 10000}) {
        machine.app.language->lngLangue = language;
        Open();
        CloseGate();
        for (const bool isWorking : {false, true}) {
            if (isWorking) StartCheck();
            EXPECT_THAT(ClippedCaptions(Window()), IsEmpty()) << language << isWorking;
            EXPECT_THAT(OverlappingControls(Window()), IsEmpty()) << language << isWorking;
            EXPECT_THAT(UnreachableControls(Window()), IsEmpty()) << language << isWorking;
            EXPECT_THAT(UnlabelledFields(Window()), IsEmpty()) << language << isWorking;
            EXPECT_EQ(AccessKeyClashes(Window()), L"") << language << isWorking;
        }
        files->gate.Open();
        ASSERT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 1; }));
        machine.messageBoxes.shown.clear();
        form->Unload();
    }
}

TEST_F(CheckWindowShown, TabGoesFromThePlaceByThePasswordToTheListAndItsButtons) {
    Open();
    EXPECT_THAT(TabOrder(Window()), ElementsAre(IDC_Places, IDC_Browse, IDC_Password, IDC_Compare, IDC_Check, IDC_Items,
                                                IDC_SelectAll, IDC_DeselectAll, IDC_Recover, IDC_Details, IDC_Close));
    EXPECT_EQ(DefaultButton(), IDC_Check);
}

TEST_F(CheckWindowShown, ColumnsAndTheirRowsAreShown) {
    Open();
    EXPECT_THAT(List().Headers(), ElementsAre(L"N°", L"Élément", L"Type", L"Fichiers", L"Taille", L"Résultat"));
    EXPECT_EQ(List().Row(0), L"1|C:\\a.txt|Fichier|||Non vérifié");
    EXPECT_EQ(List().Row(1), L"2|C:\\Docs|Répertoire|||Non vérifié");
    EXPECT_EQ(Text(IDC_Verdict), machine.app.Text(TextId::CheckNotCheckedYet));
    Check();
    EXPECT_EQ(List().Row(1), L"2|C:\\Docs|Répertoire|1|2,9 Ko|Intact");
    EXPECT_THAT(List().Tip(1), testing::HasSubstr(L"Intact (1 fichier(s), 3000 octet(s))"));
}

TEST_F(CheckWindowShown, EveryResultFitsItsColumnInBothLanguages) {
    constexpr LRESULT cellMargins = 12;
    for (const int language : {0, 10000}) {
        machine.app.language->lngLangue = language;
        Open();
        const HWND list = GetDlgItem(Window(), IDC_Items);
        const LRESULT room = SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(CheckColumn::Result), 0);
        for (auto id = static_cast<int>(TextId::CheckShortWhole); id <= static_cast<int>(TextId::CheckShortRemarks);
             ++id) {
            const std::wstring text = machine.app.Text(static_cast<TextId>(id));
            const LRESULT width = SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str()));
            EXPECT_GT(width, 0);
            EXPECT_LE(width + cellMargins, room) << text;
        }
        form->Unload();
    }
}

TEST_F(CheckWindowShown, AHeaderOrdersTheRowsAndTheSelectionGoesWithItsItem) {
    Open();
    Check();
    List().Select(0);
    EXPECT_THAT(Text(IDC_Details), testing::HasSubstr(L"C:\\a.txt"));
    SendMessageW(Window(), WM_COMMAND, IDM_SortByFirst + static_cast<int>(CheckColumn::Size), 0);
    SendMessageW(Window(), WM_COMMAND, IDM_SortByFirst + static_cast<int>(CheckColumn::Size), 0);
    EXPECT_EQ(List().Cell(0, 1), L"C:\\Docs") << "the largest first";
    EXPECT_EQ(List().Selected(), 1);
    EXPECT_THAT(Text(IDC_Details), testing::HasSubstr(L"C:\\a.txt"));
}

TEST_F(CheckWindowShown, WindowGrowsWithItsListAndGetsNoSmallerThanItWasMade) {
    Open();
    const SIZE size = OuterSize();
    MINMAXINFO limits{};
    SendMessageW(Window(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ(limits.ptMinTrackSize.x, size.cx);
    EXPECT_EQ(limits.ptMinTrackSize.y, size.cy);
    RECT before{};
    GetWindowRect(At(IDC_Items), &before);
    SetWindowPos(Window(), nullptr, 0, 0, size.cx + 90, size.cy + 60, SWP_NOMOVE | SWP_NOZORDER);
    ui::RunPendingMessages();
    RECT after{};
    GetWindowRect(At(IDC_Items), &after);
    EXPECT_EQ((after.right - after.left) - (before.right - before.left), 90);
    EXPECT_EQ((after.bottom - after.top) - (before.bottom - before.top), 60);
    EXPECT_THAT(OverlappingControls(Window()), IsEmpty());
}

TEST_F(CheckWindowShown, WindowFitsTheScreensThatAgentsHave) {
    Open();
    constexpr int taskBarPixels = 48;
    for (const auto& [width, height, scale] :
         {std::tuple{1366, 768, 1.0}, {1366, 768, 1.25}, {1920, 1080, 1.5}, {1920, 1080, 1.75}}) {
        EXPECT_LE(OuterSize().cx * scale, width) << scale;
        EXPECT_LE(OuterSize().cy * scale, height - taskBarPixels * scale) << scale;
    }
}

TEST_F(CheckWindowShown, ManyRowsAreShownWithinTwoSeconds) {
    std::string list;
    for (int row = 1; row <= 100000; ++row)
        list += "C:\\Documents\\Client " + std::to_string(row) + ".doc,32,Zip" + std::to_string(row) + "\r\n";
    files->Add(L"E:\\_listFich.lst", list);
    form.emplace(machine.app, ways);
    form->Create();
    form->Show();
    const double begin = ProcessorSeconds();
    ASSERT_TRUE(WaitFor([this] { return List().Count() == 100000; }));
    UpdateWindow(Window());
    const double seconds = ProcessorSeconds() - begin;
    RecordProperty("milliseconds", static_cast<int>(1000 * seconds));
    EXPECT_LT(seconds, 2.0) << "of processor time: the machine may have other work";
    EXPECT_EQ(List().Cell(99999, 1), L"C:\\Documents\\Client 100000.doc");
}

} // namespace
