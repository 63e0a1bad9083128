#include "Remote.h"
#include "Requests.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <vector>

namespace uidriver {

namespace {

constexpr std::size_t TextLimit = 1024;

struct ListMessages {
    UINT count, textLength, text, selection, select;
    WORD notification;
};

constexpr ListMessages ComboMessages{CB_GETCOUNT,  CB_GETLBTEXTLEN, CB_GETLBTEXT,
                                     CB_GETCURSEL, CB_SETCURSEL,    CBN_SELCHANGE};
constexpr ListMessages ListBoxMessages{LB_GETCOUNT,  LB_GETTEXTLEN, LB_GETTEXT,
                                       LB_GETCURSEL, LB_SETCURSEL,  LBN_SELCHANGE};

bool IsCombo(HWND control) {
    return lstrcmpiW(ClassOf(control).c_str(), L"ComboBox") == 0;
}

const ListMessages& MessagesFor(HWND control) {
    return IsCombo(control) ? ComboMessages : ListBoxMessages;
}

bool IsMultiple(HWND control) {
    return !IsCombo(control) && (GetWindowLongW(control, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
}

// items CONTROL: text and whether it is selected, of each entry of a drop-down list or list box
Rows Items(const Row& fields) {
    const HWND control = WindowAt(fields, 1);
    const ListMessages& messages = MessagesFor(control);
    const LRESULT current = Send(control, messages.selection);
    const LRESULT count = Send(control, messages.count);
    Rows rows;
    for (LRESULT index = 0; index < count; ++index) {
        const LRESULT length = Send(control, messages.textLength, static_cast<WPARAM>(index));
        std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
        Send(control, messages.text, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
        text.resize(text.size() - 1);
        const bool isSelected =
            IsMultiple(control) ? Send(control, LB_GETSEL, static_cast<WPARAM>(index)) > 0 : index == current;
        rows.push_back({text, Number(isSelected)});
    }
    return rows;
}

// choose CONTROL INDEX: the selection and the notification that a person's choice makes
Rows Choose(const Row& fields) {
    const HWND control = WindowAt(fields, 1);
    const auto index = static_cast<WPARAM>(NumberAt(fields, 2));
    const ListMessages& messages = MessagesFor(control);
    if (static_cast<LRESULT>(index) >= Send(control, messages.count)) throw RequestError("no such entry");
    if (IsMultiple(control)) {
        Send(control, LB_SETSEL, TRUE, static_cast<LPARAM>(index));
    } else {
        Send(control, messages.select, index);
    }
    PostNotification(control, messages.notification);
    return {};
}

// clickitem CONTROL INDEX COUNT: one or two mouse clicks on a list box's entry
Rows ClickItem(const Row& fields) {
    const HWND control = WindowAt(fields, 1);
    const auto index = static_cast<WPARAM>(NumberAt(fields, 2));
    if (static_cast<LRESULT>(index) >= Send(control, LB_GETCOUNT)) throw RequestError("no such entry");
    Send(control, LB_SETTOPINDEX, index);
    RECT rect{};
    Send(control, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect));
    PostClick(control, {rect.left + 8, (rect.top + rect.bottom) / 2}, NumberAt(fields, 3) == 2);
    return {};
}

int ColumnCount(HWND list) {
    const auto header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    return header == nullptr ? 0 : static_cast<int>(Send(header, HDM_GETITEMCOUNT));
}

// columns LIST: the header texts
Rows Columns(const Row& fields) {
    const HWND list = WindowAt(fields, 1);
    RemoteBlock block(list, sizeof(LVCOLUMNW) + TextLimit * sizeof(wchar_t));
    Rows rows;
    for (int column = 0; column < ColumnCount(list); ++column) {
        LVCOLUMNW record{};
        record.mask = LVCF_TEXT | LVCF_WIDTH;
        record.pszText = reinterpret_cast<wchar_t*>(block.Address(sizeof record));
        record.cchTextMax = TextLimit;
        block.Write(0, &record, sizeof record);
        Send(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column), block.Address());
        wchar_t text[TextLimit] = {};
        block.Read(sizeof record, text, sizeof text - sizeof(wchar_t));
        block.Read(0, &record, sizeof record);
        rows.push_back({text, Number(record.cx)});
    }
    return rows;
}

// panels STATUSBAR: the text of each
Rows Panels(const Row& fields) {
    const HWND bar = WindowAt(fields, 1);
    RemoteBlock block(bar, TextLimit * sizeof(wchar_t));
    Rows rows;
    for (WPARAM panel = 0; panel < static_cast<WPARAM>(Send(bar, SB_GETPARTS)); ++panel) {
        if (LOWORD(Send(bar, SB_GETTEXTLENGTHW, panel)) >= TextLimit) throw RequestError("a panel's text is too long");
        wchar_t text[TextLimit] = {};
        Send(bar, SB_GETTEXTW, panel, block.Address());
        block.Read(0, text, sizeof text - sizeof(wchar_t));
        rows.push_back({text});
    }
    return rows;
}

// rows LIST FIRST COUNT: is ticked, is selected, then the text of each column
Rows ListRows(const Row& fields) {
    const HWND list = WindowAt(fields, 1);
    const std::int64_t first = NumberAt(fields, 2);
    const std::int64_t end = std::min<std::int64_t>(Send(list, LVM_GETITEMCOUNT), first + NumberAt(fields, 3));
    const int columnCount = std::max(ColumnCount(list), 1);
    RemoteBlock block(list, sizeof(LVITEMW) + TextLimit * sizeof(wchar_t));
    std::vector<wchar_t> text(TextLimit);
    Rows rows;
    for (std::int64_t index = first; index < end; ++index) {
        const auto state = static_cast<UINT>(
            Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(index), LVIS_STATEIMAGEMASK | LVIS_SELECTED));
        Row row{Number((state & LVIS_STATEIMAGEMASK) >> 12 == 2), Number((state & LVIS_SELECTED) != 0)};
        for (int column = 0; column < columnCount; ++column) {
            LVITEMW record{};
            record.iSubItem = column;
            record.pszText = reinterpret_cast<wchar_t*>(block.Address(sizeof record));
            record.cchTextMax = TextLimit;
            block.Write(0, &record, sizeof record);
            const LRESULT length = Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(index), block.Address());
            // A virtual list may answer with the address of a text of its own.
            block.Read(0, &record, sizeof record);
            text.assign(TextLimit, L'\0');
            if (length > 0) block.Read(sizeof record, text.data(), (TextLimit - 1) * sizeof(wchar_t));
            row.emplace_back(text.data());
        }
        rows.push_back(row);
    }
    return rows;
}

Rows RowCount(const Row& fields) {
    return {{Number(Send(WindowAt(fields, 1), LVM_GETITEMCOUNT))}};
}

// The middle of a part of a row, LVIR_LABEL or the check mark before it.
POINT PointInRow(HWND list, WPARAM index, bool isTick) {
    Send(list, LVM_ENSUREVISIBLE, index, FALSE);
    RemoteBlock block(list, sizeof(RECT) + sizeof(LVHITTESTINFO));
    RECT rect{};
    rect.left = LVIR_LABEL;
    block.Write(0, &rect, sizeof rect);
    if (Send(list, LVM_GETITEMRECT, index, block.Address()) == 0) throw RequestError("no such row");
    block.Read(0, &rect, sizeof rect);
    const LONG middle = (rect.top + rect.bottom) / 2;
    if (!isTick) return {rect.left + 8, middle};
    for (LONG x = std::max<LONG>(rect.left - 1, 0); x >= 0; --x) {
        LVHITTESTINFO hit{};
        hit.pt = {x, middle};
        block.Write(sizeof rect, &hit, sizeof hit);
        Send(list, LVM_HITTEST, 0, block.Address(sizeof rect));
        block.Read(sizeof rect, &hit, sizeof hit);
        if ((hit.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON) return {std::max<LONG>(x - 4, 1), middle};
    }
    throw RequestError("the row has no check box");
}

// clickrow LIST INDEX PART COUNT: mouse clicks on a row's label or on its check box ("tick")
Rows ClickRow(const Row& fields) {
    const HWND list = WindowAt(fields, 1);
    const POINT point = PointInRow(list, static_cast<WPARAM>(NumberAt(fields, 2)), fields.at(3) == L"tick");
    PostClick(list, point, NumberAt(fields, 4) == 2);
    return {};
}

} // namespace

void AddListRequests(RequestTable& table) {
    table[L"items"] = Items;
    table[L"choose"] = Choose;
    table[L"clickitem"] = ClickItem;
    table[L"columns"] = Columns;
    table[L"rows"] = ListRows;
    table[L"rowcount"] = RowCount;
    table[L"panels"] = Panels;
    table[L"clickrow"] = ClickRow;
}

} // namespace uidriver
