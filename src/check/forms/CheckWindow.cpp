#include "check/forms/CheckWindow.h"

#include "archive/DriveLines.h"
#include "archive/PassingSecret.h"
#include "platform/Locale.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "ui/Menu.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array Captions = {
    Caption{IDC_PlacesLabel, TextId::CheckPlacesCaption},
    Caption{IDC_Browse, TextId::CheckBrowseCaption},
    Caption{IDC_PasswordLabel, TextId::CheckPasswordCaption},
    Caption{IDC_Compare, TextId::CheckCompareCaption},
    Caption{IDC_Check, TextId::CheckStartCaption},
    Caption{IDC_ItemsLabel, TextId::CheckItemsCaption},
    Caption{IDC_SelectAll, TextId::SelectAllCaption},
    Caption{IDC_DeselectAll, TextId::DeselectAllCaption},
    Caption{IDC_Recover, TextId::CheckRecoverCaption},
    Caption{IDC_SaveReport, TextId::CheckSaveCaption},
    Caption{IDC_DetailsLabel, TextId::CheckDetailsCaption},
    Caption{IDC_Close, TextId::CloseCaption},
    Caption{IDC_Cancel, TextId::CancelCaption},
};

struct ColumnHead {
    TextId title;
    int widthTwips;
    bool isNumber;
};
/// By CheckColumn. The path takes what the others leave.
constexpr std::array<ColumnHead, CheckColumns> ColumnHeads = {{
    {TextId::CheckNumberHeader, 1100, false},
    {TextId::CheckPathHeader, 2000, false},
    {TextId::TypeHeader, 1000, false},
    {TextId::CheckFilesHeader, 900, true},
    {TextId::CheckSizeHeader, 1100, true},
    {TextId::CheckResultHeader, 2400, false},
}};

// A burst of device messages is over within this time.
constexpr UINT RefreshDelayMilliseconds = 200;

ui::IconList PaintedSigns() {
    return {VerdictSigns,
            [](int index, int sizePixels) { return PaintSign(static_cast<VerdictSign>(index), sizePixels); }};
}

} // namespace

std::wstring CheckWindow::ShownRows::Cell(int row, int column) const {
    return rows_.Cell(row, static_cast<CheckColumn>(column));
}

int CheckWindow::ShownRows::Icon(int row) const {
    const VerdictSign sign = rows_.Sign(row);
    return sign == VerdictSign::None ? -1 : static_cast<int>(sign);
}

CheckWindow::CheckWindow(Application& app, CheckWays ways)
    : ApplicationForm(app, IDD_CheckWindow, L"CheckWindow"), ways_(std::move(ways)),
      texts_([&app](TextId id) { return app.Text(id); }), words_{texts_, app.machine.locale->DecimalSeparator()},
      icons_(PaintedSigns()), follow_(*this, [this] { Follow(); }), refresh_(*this, [this] { ListPlaces(); }),
      rows_(words_) {}

bool CheckWindow::HasWorkEnded() const {
    return std::all_of(tasks_.begin(), tasks_.end(), [](const BackgroundTask& task) { return task.HasEnded(); });
}

void CheckWindow::OnLoad() {
    Guarded(L"Load, module CheckWindow", [this] {
        Connect();
        SetTexts();
        AddColumns();
        anchors_.Take({{IDC_Places, true, true, true, false},
                       {IDC_Browse, false, true, true, false},
                       {IDC_Check, false, true, true, false},
                       {IDC_Verdict, true, true, true, false},
                       {IDC_Items, true, true, true, true},
                       {IDC_SelectAll, true, false, false, true},
                       {IDC_DeselectAll, true, false, false, true},
                       {IDC_Recover, false, false, true, true},
                       {IDC_SaveReport, false, false, true, true},
                       {IDC_DetailsLabel, true, false, false, true},
                       {IDC_Details, true, false, true, true},
                       {IDC_Progress, true, false, true, true},
                       {IDC_ProgressText, true, false, true, true},
                       {IDC_Close, false, false, true, true},
                       {IDC_Cancel, false, false, true, true}});
        progress_.SetRange(0, ProgressRange);
        UsePlace({});
        ListPlaces();
    });
}

void CheckWindow::Connect() {
    SetAccelerators({{FVIRTKEY, VK_F5, IDM_Refresh}});
    On(IDM_Refresh, BN_CLICKED, [this] { ListPlaces(); });
    for (int column = 0; column < CheckColumns; ++column)
        On(IDM_SortByFirst + column, BN_CLICKED, [this, column] { SortBy(column); });
    places_.OnSelect([this] { PlaceClicked(); });
    browse_.OnClick([this] { BrowseClicked(); });
    check_.OnClick([this] { CheckClicked(); });
    selectAll_.OnClick([this] { TickAll(true); });
    deselectAll_.OnClick([this] { TickAll(false); });
    recover_.OnClick([this] { RecoverClicked(); });
    saveReport_.OnClick([this] { SaveReportClicked(); });
    close_.OnClick([this] { Unload(); });
    cancel_.OnClick([this] { CancelClicked(); });
    items_.OnTick([this](int row) { RowTicked(row); });
    items_.OnColumn([this](int column) { SortBy(column); });
    items_.OnSelect([this] { ShowDetails(); });
    // The box would take the key for a wish to close the window.
    detailsKeys_.On(VK_ESCAPE, [this] { SendMessageW(Handle(), WM_COMMAND, IDCANCEL, 0); });
}

void CheckWindow::SetTexts() {
    SetTitle(Text(TextId::CheckTitle));
    SetCaptions(Captions);
    std::vector<ui::MenuCommand> commands = {{IDM_Refresh, Text(TextId::CheckRefreshDrives) + L"\tF5"}};
    for (int column = 0; column < CheckColumns; ++column)
        commands.push_back(
            {IDM_SortByFirst + column,
             Filled(Text(TextId::CheckSortBy), {Text(ColumnHeads.at(static_cast<std::size_t>(column)).title)})});
    ui::AddMenu(*this, Text(TextId::CheckViewCaption), commands);
}

void CheckWindow::AddColumns() {
    items_.Attach(shownRows_, true);
    items_.SetIcons(icons_.Images());
    for (const ColumnHead& head : ColumnHeads) items_.AddColumn(Text(head.title), head.widthTwips, head.isNumber);
    items_.FillWidth(static_cast<int>(CheckColumn::Path));
    items_.ShowOrder(static_cast<int>(rows_.SortedBy()), rows_.IsDescending());
}

std::optional<LRESULT> CheckWindow::OnMessage(UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
    case WM_GETMINMAXINFO:
        anchors_.Limit(*reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    case WM_SIZE:
        anchors_.Apply();
        items_.FillWidth(static_cast<int>(CheckColumn::Path));
        break;
    case WM_DEVICECHANGE:
        refresh_.Request(RefreshDelayMilliseconds);
        break;
    default:
        break;
    }
    return std::nullopt;
}

bool CheckWindow::OnClosing() {
    if (!IsBusy()) return true;
    // A report is soon saved, and the window closes then. Where the disk hangs, the second wish closes it.
    if (work_ == Work::Saving) return std::exchange(closesWhenSaved_, true);
    const TextId what = work_ == Work::Recovering ? TextId::RecoveryRuns : TextId::CheckRuns;
    isAsking_ = true;
    const int answer = app_.ShowMessage(Text(what) + L" " + Text(TextId::CheckCloseQuestion), TextId::CheckTitle,
                                        box::YesNo | box::Question | box::DefaultButton2);
    isAsking_ = false;
    auto untold = std::exchange(untold_, nullptr);
    if (answer == box::AnswerYes) return true;
    if (untold) Post(std::move(untold));
    return false;
}

void CheckWindow::OnUnload() {
    follow_.Stop();
    refresh_.Cancel();
    // What still runs ends by itself.
    job_.reset();
    awake_.reset();
    session_.reset();
    std::wstring password = password_.Text();
    password_.SetText(std::wstring(password.size(), L' '));
    password_.SetText(L"");
    Forget(password);
}

/// A drive may take its time to answer.
void CheckWindow::ListPlaces() {
    Guarded(L"ListPlaces, module CheckWindow", [this] {
        if (listedDrives_) {
            refresh_.Request(RefreshDelayMilliseconds);
            return;
        }
        const auto lines = std::make_shared<std::vector<std::wstring>>();
        tasks_.emplace_back([lines, list = ways_.driveLines] { *lines = list(); });
        placesTask_ = tasks_.back();
        listedDrives_ = lines;
        follow_.Start(FollowMilliseconds);
    });
}

void CheckWindow::ShowPlaces(const std::vector<std::wstring>& driveLines) {
    std::vector<Place> places;
    for (const std::wstring& line : driveLines) {
        // Where there is no drive, a line says so; here the button beside the list does.
        if (const std::wstring root = RootOfLine(line); !root.empty()) places.push_back({root, line});
    }
    for (const std::wstring& path : pickedPlaces_) places.push_back({path, path});
    shownPlaces_ = std::move(places);
    std::vector<std::wstring> lines;
    for (const Place& place : shownPlaces_) lines.push_back(place.line);
    places_.SetItems(lines);
    const auto now = PlaceShown();
    const bool isThere = now != shownPlaces_.end();
    bool isOther = !place_.empty() && (!isThere || now->line != placeLine_);
    // A medium that is read all the time may be slow to tell its label.
    if (isOther && isThere && IsBusy()) isOther = HasLabel(now->line);
    if (isOther && (report_ || IsBusy())) {
        // What was found stays to be read and saved. Ticks among it say nothing about another medium.
        archive_.clear();
        isMediumLost_ = true;
    }
    // Beside a line that is chosen, what was found would seem to be about the medium that is there now.
    isPlaceThere_ = isThere && !isMediumLost_;
    if (isPlaceThere_) places_.Select(static_cast<int>(now - shownPlaces_.begin()));
    if (IsBusy()) return;
    if (report_) {
        EnableControls();
        ShowDetails();
    } else if (place_.empty() && shownPlaces_.size() == 1) {
        places_.Select(0);
        UsePlace(shownPlaces_.front().path);
    } else if (isOther || isMediumLost_) {
        UsePlace(isThere ? place_ : std::wstring());
    }
}

std::vector<CheckWindow::Place>::const_iterator CheckWindow::PlaceShown() const {
    return std::find_if(shownPlaces_.begin(), shownPlaces_.end(),
                        [this](const Place& place) { return place.path == place_; });
}

void CheckWindow::PlaceClicked() {
    const int line = places_.Selected();
    if (line < 0 || IsBusy()) return;
    Guarded(L"PlaceClicked, module CheckWindow",
            [&] { UsePlace(shownPlaces_.at(static_cast<std::size_t>(line)).path); });
}

void CheckWindow::BrowseClicked() {
    Guarded(L"BrowseClicked, module CheckWindow", [this] {
        const auto path = ways_.chooseBackup(*this, Text(TextId::CheckChooseBackup));
        if (!path || path->empty() || !IsLoaded()) return;
        const auto known = std::find_if(shownPlaces_.begin(), shownPlaces_.end(),
                                        [&](const Place& place) { return place.path == *path; });
        const auto line = static_cast<int>(known - shownPlaces_.begin());
        if (known == shownPlaces_.end()) {
            pickedPlaces_.push_back(*path);
            shownPlaces_.push_back({*path, *path});
            places_.Add(*path);
        }
        places_.Select(line);
        UsePlace(*path);
    });
}

/// The window is about another backup now: its list is read, and nothing is known of its archive.
void CheckWindow::UsePlace(const std::wstring& path) {
    ++placesUsed_;
    place_ = path;
    const auto shown = PlaceShown();
    placeLine_ = shown == shownPlaces_.end() ? std::wstring() : shown->line;
    isPlaceThere_ = !path.empty();
    isMediumLost_ = false;
    job_.reset();
    untouched_.reset();
    report_.reset();
    archive_.clear();
    work_ = Work::None;
    ClearRows();
    progress_.SetValue(0);
    progressText_.SetText(L"");
    ShowDetails();
    if (path.empty()) {
        ShowVerdict(VerdictSign::None, Text(TextId::CheckChooseFirst));
        EnableControls();
        return;
    }
    ShowVerdict(VerdictSign::None, Text(TextId::CheckNotCheckedYet));
    CheckRequest request;
    request.isListOnly = true;
    Begin(Work::Listing, std::move(request));
}

void CheckWindow::ClearRows() {
    rows_.Clear();
    items_.Select(-1);
    items_.RowsChanged();
    items_.ShowOrder(static_cast<int>(rows_.SortedBy()), rows_.IsDescending());
}

void CheckWindow::CheckClicked() {
    Guarded(L"CheckClicked, module CheckWindow", [this] {
        // The rows may be those of a medium that has left.
        if (archive_.empty()) ClearRows();
        CheckRequest request;
        request.isComparison = compare_.IsChecked();
        Begin(Work::Checking, std::move(request));
    });
}

void CheckWindow::RecoverClicked() {
    Guarded(L"RecoverClicked, module CheckWindow", [this] {
        CheckRequest request;
        request.wanted = rows_.Wanted();
        const int placesUsed = placesUsed_;
        const auto target = ways_.chooseTarget(*this, Text(TextId::CheckChooseTarget));
        if (!target || target->empty() || !IsLoaded()) return;
        // Messages have run: what was ticked may be about a medium that has left.
        if (placesUsed != placesUsed_ || !CanRecover()) return;
        if (IsOnMedium(*ways_.files, archive_, *target)) {
            app_.ShowMessage(TextId::CheckTargetOnMedium, TextId::CheckTitle, box::Exclamation);
            return;
        }
        request.target = *target;
        Begin(Work::Recovering, std::move(request));
    });
}

void CheckWindow::RowTicked(int row) {
    if (IsBusy()) return;
    rows_.Toggle(row);
    items_.RedrawRow(row);
    EnableControls();
}

void CheckWindow::TickAll(bool isTicked) {
    rows_.TickAll(isTicked);
    items_.Redraw();
    EnableControls();
}

void CheckWindow::SortBy(int column) {
    const int row = rows_.SortBy(static_cast<CheckColumn>(column), items_.Selected());
    items_.ShowOrder(column, rows_.IsDescending());
    items_.Select(row);
    items_.Redraw();
}

/// The details of the selected row; without one, those of the whole backup.
void CheckWindow::ShowDetails() {
    const int row = items_.Selected();
    const bool isRow = row >= 0 && row < rows_.Count();
    shownItem_ = isRow ? rows_.Settled(row) : nullptr;
    std::vector<std::wstring> lines;
    if (shownItem_ != nullptr) {
        lines = ItemLines(*shownItem_, texts_);
    } else if (!isRow && report_) {
        lines = SummaryLines(*report_, words_);
        if (isMediumLost_) lines.push_back(Text(TextId::CheckChooseFirst));
    }
    details_.SetText(AsParagraphs(lines));
}

bool CheckWindow::CanRecover() const {
    return work_ == Work::None && isPlaceThere_ && !archive_.empty() && (rows_.Count() == 0 || rows_.IsAnyTicked());
}

void CheckWindow::EnableControls() {
    const bool isBusy = IsBusy();
    const bool isJob = isBusy && work_ != Work::Saving;
    const bool hasRows = rows_.Count() > 0;
    for (ui::Control* control : std::initializer_list<ui::Control*>{&places_, &browse_, &password_, &compare_})
        control->Enable(!isBusy);
    check_.Enable(!isBusy && isPlaceThere_);
    selectAll_.Enable(!isBusy && hasRows);
    deselectAll_.Enable(!isBusy && hasRows);
    recover_.Enable(CanRecover());
    saveReport_.Enable(!isBusy && report_ != nullptr);
    close_.Enable(!isBusy);
    cancel_.Enable(isJob && !cancelledAt_);
    cancel_.Show(isJob);
    close_.Show(!isJob);
    SetCancelButton(isJob ? IDC_Cancel : IDC_Close);
}
