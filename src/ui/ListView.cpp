#include "ui/ListView.h"

#include "ui/LongCells.h"

#include <algorithm>

namespace ui {

void ListView::Attach(const ListViewRows& rows, bool hasTicks) {
    rows_ = &rows;
    hasTicks_ = hasTicks;
    columnCount_ = 0;
    firstHiddenColumn_ = 0;
    const LPARAM styles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_INFOTIP | LVS_EX_LABELTIP |
                          (hasTicks ? LVS_EX_CHECKBOXES : 0);
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, static_cast<WPARAM>(styles), styles);
    if (hasTicks) Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK);
    if (!boldFont_) {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(Send(WM_GETFONT)), sizeof font, &font);
        font.lfWeight = FW_BOLD;
        boldFont_.Reset(CreateFontIndirectW(&font));
    }
    Form& form = ParentForm();
    form.OnNotify(Id(), LVN_GETDISPINFOW,
                  [this](NMHDR& header) { return FillItem(reinterpret_cast<NMLVDISPINFOW&>(header)); });
    form.OnNotify(Id(), NM_CUSTOMDRAW,
                  [this](NMHDR& header) { return Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(header)); });
    form.OnNotify(Id(), LVN_GETINFOTIPW, [this](NMHDR& header) -> LRESULT {
        auto& tip = reinterpret_cast<NMLVGETINFOTIPW&>(header);
        const std::wstring text = TipOf(tip.iItem);
        if (!text.empty() && tip.cchTextMax > 0) lstrcpynW(tip.pszText, text.c_str(), tip.cchTextMax);
        return 0;
    });
    KeepHiddenColumnsShut();
    if (!hasTicks) return;
    // The second of two quick clicks comes as a double click; on a tick box it counts like the first.
    for (const UINT click : {NM_CLICK, NM_DBLCLK}) {
        form.OnNotify(Id(), click, [this](NMHDR& header) -> LRESULT {
            LVHITTESTINFO hit{};
            hit.pt = reinterpret_cast<NMITEMACTIVATE&>(header).ptAction;
            const int row = static_cast<int>(Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
            if (row >= 0 && (hit.flags & LVHT_ONITEMSTATEICON) != 0 && (hit.flags & LVHT_ONITEMLABEL) == 0 && onTick_)
                onTick_(row);
            return 0;
        });
    }
    form.OnNotify(Id(), LVN_KEYDOWN, [this](NMHDR& header) -> LRESULT {
        const int row = Selected();
        if (reinterpret_cast<NMLVKEYDOWN&>(header).wVKey == VK_SPACE && row >= 0 && onTick_) onTick_(row);
        return 0;
    });
}

void ListView::AddColumn(const std::wstring& title, int widthTwips, bool isNumber) {
    LVCOLUMNW column{};
    std::wstring text = title;
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
    column.pszText = text.data();
    column.cx = PixelsFromTwips(widthTwips, Handle());
    Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(columnCount_++), reinterpret_cast<LPARAM>(&column));
    firstHiddenColumn_ = columnCount_;
}

void ListView::AddHiddenColumn() {
    LVCOLUMNW column{};
    std::wstring noTitle;
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = noTitle.data();
    column.fmt = LVCFMT_LEFT | LVCFMT_FIXED_WIDTH;
    Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(columnCount_++), reinterpret_cast<LPARAM>(&column));
}

/// A fixed width is something that only Windows Vista and later know of, and only against the mouse. The view's window
/// asks nobody whether its header may, so the answer stands before it.
void ListView::KeepHiddenColumnsShut() {
    headerWatch_.Attach(Handle(), [this](const WindowMessage& message) -> LRESULT {
        if (message.id == WM_NOTIFY && WouldOpenHidden(*reinterpret_cast<const NMHDR*>(message.lParam))) return TRUE;
        return message.PassOn();
    });
}

bool ListView::WouldOpenHidden(const NMHDR& header) const {
    // The code first: asking for the header is a message of its own, and most notifications are about something else.
    const auto& change = reinterpret_cast<const NMHEADERW&>(header);
    const auto isHidden = [&] {
        return header.hwndFrom == ListView_GetHeader(Handle()) && change.iItem >= firstHiddenColumn_;
    };
    switch (header.code) {
    case HDN_BEGINTRACKA:
    case HDN_BEGINTRACKW:
    case HDN_DIVIDERDBLCLICKA:
    case HDN_DIVIDERDBLCLICKW:
        return isHidden();
    case HDN_ITEMCHANGINGA:
    case HDN_ITEMCHANGINGW:
        return isHidden() && change.pitem != nullptr && (change.pitem->mask & HDI_WIDTH) != 0 && change.pitem->cxy != 0;
    default:
        return false;
    }
}

void ListView::SetColumnWidth(int column, int width) {
    Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0));
}

void ListView::FillWidth(int column) {
    RECT inner{};
    GetClientRect(Handle(), &inner);
    int rest = inner.right;
    // The bar that comes with many rows takes its room from the same width.
    if ((GetWindowLongPtrW(Handle(), GWL_STYLE) & WS_VSCROLL) == 0) rest -= GetSystemMetrics(SM_CXVSCROLL);
    for (int other = 0; other < columnCount_; ++other) {
        if (other != column) rest -= ColumnWidth(other);
    }
    if (rest > 0) SetColumnWidth(column, rest);
}

void ListView::SetIcons(HIMAGELIST icons) {
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons));
}

void ListView::ShowOrder(int column, bool isDescending) {
    HWND header = ListView_GetHeader(Handle());
    for (int other = 0; other < columnCount_; ++other) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        Header_GetItem(header, other, &item);
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (other == column) item.fmt |= isDescending ? HDF_SORTDOWN : HDF_SORTUP;
        Header_SetItem(header, other, &item);
    }
}

void ListView::OnColumn(std::function<void(int)> handler) {
    ParentForm().OnNotify(Id(), LVN_COLUMNCLICK, [handler = std::move(handler)](NMHDR& header) -> LRESULT {
        handler(reinterpret_cast<NMLISTVIEW&>(header).iSubItem);
        return 0;
    });
}

void ListView::OnSelect(std::function<void()> handler) {
    ParentForm().OnNotify(Id(), LVN_ITEMCHANGED, [handler = std::move(handler)](NMHDR& header) -> LRESULT {
        const auto& change = reinterpret_cast<NMLISTVIEW&>(header);
        if (((change.uOldState ^ change.uNewState) & LVIS_SELECTED) != 0) handler();
        return 0;
    });
}

void ListView::WidenFor(int column, const std::wstring& text) {
    const int tickWidth = hasTicks_ && column == 0 ? 2 * GetSystemMetrics(SM_CXSMICON) : 0;
    const int margins = GetSystemMetrics(SM_CXSMICON);
    const int needed =
        static_cast<int>(Send(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str()))) + tickWidth + margins;
    if (ColumnWidth(column) < needed) SetColumnWidth(column, needed);
}

/// What the row has to say; else a text of it that the view cannot show whole.
std::wstring ListView::TipOf(int row) const {
    const std::wstring tip = rows_->ToolTip(row);
    return tip.empty() ? LongTextOf(*rows_, row, columnCount_) : tip;
}

void ListView::RowsChanged() {
    if (rows_ == nullptr) return;
    Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(rows_->Count()), LVSICF_NOSCROLL);
    Redraw();
}

void ListView::Redraw() {
    InvalidateRect(Handle(), nullptr, FALSE);
}

void ListView::RedrawRow(int row) {
    Send(LVM_REDRAWITEMS, static_cast<WPARAM>(row), row);
}

void ListView::Select(int row) {
    if (row >= 0 && Send(LVM_GETSELECTEDCOUNT) == 1 && Selected() == row) {
        ShowRow(row);
        return;
    }
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    // Row by row: told about all rows at once, or where only one can be selected about another one, the view goes
    // through every row that it has.
    for (int selected = Selected(); selected >= 0; selected = Selected())
        Send(LVM_SETITEMSTATE, static_cast<WPARAM>(selected), reinterpret_cast<LPARAM>(&item));
    if (row < 0) return;
    TurnPageTo(row);
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

/// Followed down row by row, the view would move and paint all that it shows for each row.
void ListView::TurnPageTo(int row) {
    const auto top = static_cast<int>(Send(LVM_GETTOPINDEX));
    const auto rowsPerPage = std::max(1, static_cast<int>(Send(LVM_GETCOUNTPERPAGE)));
    if (row < top + rowsPerPage) return;
    ShowRow(std::min(row + rowsPerPage, static_cast<int>(Send(LVM_GETITEMCOUNT))) - 1);
}

int ListView::Selected() const {
    // Asked for a selected row where there is none, the view goes through every row.
    if (Send(LVM_GETSELECTEDCOUNT) == 0) return -1;
    const auto focused = static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED | LVNI_SELECTED));
    return focused >= 0 ? focused : static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void ListView::OnDrop(std::function<void(const std::vector<std::wstring>&)> handler) {
    onDrop_ = std::move(handler);
    DragAcceptFiles(Handle(), TRUE);
    dropTarget_.Attach(Handle(), [this](const WindowMessage& message) -> LRESULT {
        if (message.id != WM_DROPFILES) return message.PassOn();
        const auto drop = reinterpret_cast<HDROP>(message.wParam);
        ParentForm().RunGuarded([this, drop] { TakeDrop(drop); });
        DragFinish(drop);
        return 0;
    });
}

LRESULT ListView::FillItem(NMLVDISPINFOW& info) const {
    LVITEMW& item = info.item;
    if (rows_ == nullptr || item.iItem < 0 || item.iItem >= rows_->Count()) return 0;
    if ((item.mask & LVIF_TEXT) != 0) {
        cellText_ = rows_->Cell(item.iItem, item.iSubItem);
        lstrcpynW(item.pszText, cellText_.c_str(), item.cchTextMax);
    }
    if ((item.mask & LVIF_IMAGE) != 0) {
        const int icon = rows_->Icon(item.iItem);
        item.iImage = icon >= 0 ? icon : I_IMAGENONE;
    }
    if ((item.mask & LVIF_STATE) != 0 && hasTicks_) {
        item.stateMask |= LVIS_STATEIMAGEMASK;
        item.state = (item.state & ~static_cast<UINT>(LVIS_STATEIMAGEMASK)) |
                     INDEXTOSTATEIMAGEMASK(rows_->IsTicked(item.iItem) ? 2 : 1);
    }
    return 0;
}

LRESULT ListView::Draw(NMLVCUSTOMDRAW& draw) const {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: {
        const auto row = static_cast<int>(draw.nmcd.dwItemSpec);
        if (rows_ == nullptr || row >= rows_->Count()) return CDRF_DODEFAULT;
        const RowStyle style = rows_->Style(row);
        if (style.color != 0) draw.clrText = style.color;
        const LRESULT then = LongTextOf(*rows_, row, columnCount_).empty() ? 0 : CDRF_NOTIFYPOSTPAINT;
        if (!style.isBold) return CDRF_DODEFAULT | then;
        SelectObject(draw.nmcd.hdc, boldFont_.Get());
        return CDRF_NEWFONT | then;
    }
    case CDDS_ITEMPOSTPAINT: {
        const auto row = static_cast<int>(draw.nmcd.dwItemSpec);
        if (rows_ == nullptr || row >= rows_->Count()) return CDRF_DODEFAULT;
        HFONT font = rows_->Style(row).isBold ? boldFont_.Get() : reinterpret_cast<HFONT>(Send(WM_GETFONT));
        DrawLongCells(Handle(), draw, *rows_, columnCount_, font);
        return CDRF_DODEFAULT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

void ListView::TakeDrop(HDROP drop) {
    std::vector<std::wstring> paths;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT index = 0; index < count; ++index) {
        std::wstring path(static_cast<std::size_t>(DragQueryFileW(drop, index, nullptr, 0)) + 1, L'\0');
        path.resize(DragQueryFileW(drop, index, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(std::move(path));
    }
    // A program that drops waits for this message; a message box belongs after it.
    ParentForm().Post([this, paths = std::move(paths)] {
        if (onDrop_) onDrop_(paths);
    });
}

} // namespace ui
