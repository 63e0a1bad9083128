#include "ListViewDriver.h"

#include <shlobj.h>

#include <cstring>

std::wstring ListViewDriver::Cell(int row, int column) const {
    wchar_t text[MAX_PATH + 40] = {};
    ListView_GetItemText(list_, row, column, text, MAX_PATH + 40);
    return text;
}

std::wstring ListViewDriver::Row(int row) const {
    const int columns = Header_GetItemCount(ListView_GetHeader(list_));
    std::wstring cells;
    for (int column = 0; column < columns; ++column) cells += (column > 0 ? L"|" : L"") + Cell(row, column);
    return cells;
}

std::vector<std::wstring> ListViewDriver::Rows() const {
    std::vector<std::wstring> rows;
    for (int row = 0; row < Count(); ++row) rows.push_back(Row(row));
    return rows;
}

std::vector<std::wstring> ListViewDriver::Headers() const {
    std::vector<std::wstring> headers(static_cast<std::size_t>(Header_GetItemCount(ListView_GetHeader(list_))));
    for (std::size_t column = 0; column < headers.size(); ++column) {
        wchar_t text[64] = {};
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT;
        info.pszText = text;
        info.cchTextMax = 64;
        SendMessageW(list_, LVM_GETCOLUMNW, column, reinterpret_cast<LPARAM>(&info));
        headers[column] = text;
    }
    return headers;
}

ListViewDriver::Look ListViewDriver::LookOf(int row) const {
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(screen, GetStockObject(DEFAULT_GUI_FONT));
    NMLVCUSTOMDRAW draw{};
    draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    draw.nmcd.hdc = screen;
    draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
    Ask(draw, NM_CUSTOMDRAW);
    LOGFONTW font{};
    GetObjectW(SelectObject(screen, before), sizeof font, &font);
    ReleaseDC(nullptr, screen);
    return {draw.clrText, font.lfWeight >= FW_BOLD};
}

std::wstring ListViewDriver::Tip(int row) const {
    wchar_t text[100] = {};
    NMLVGETINFOTIPW tip{};
    tip.pszText = text;
    tip.cchTextMax = 100;
    tip.iItem = row;
    Ask(tip, static_cast<int>(LVN_GETINFOTIPW));
    return text;
}

void ListViewDriver::Select(int row) const {
    ListView_SetItemState(list_, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void ListViewDriver::TickByKey(int row) const {
    Select(row);
    SendMessageW(list_, WM_KEYDOWN, VK_SPACE, 0);
}

void ListViewDriver::Drop(const std::vector<std::wstring>& paths) const {
    std::wstring names;
    for (const std::wstring& path : paths) names += path + L'\0';
    names += L'\0';
    const std::size_t bytes = names.size() * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + bytes);
    auto* header = static_cast<DROPFILES*>(GlobalLock(memory));
    header->pFiles = sizeof(DROPFILES);
    header->fWide = TRUE;
    std::memcpy(header + 1, names.data(), bytes);
    GlobalUnlock(memory);
    SendMessageW(list_, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
}
