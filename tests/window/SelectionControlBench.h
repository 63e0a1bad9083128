#pragma once

#include "HostForm.h"
#include "selection/forms/ctlSelectionFichiers.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "support/SelectionHost.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

/// The selection control in a host window, on a stand-in workstation that has real messages.
class SelectionControlTest : public testing::Test {
  protected:
    using Texts = std::vector<std::wstring>;
    using Ids = std::vector<int>;

    SelectionControlTest() : machine(&messages), host(machine.app) {
        machine.drives.Add(L"A:\\", DriveType::Removable, L"FLOPPY");
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"Système");
        machine.drives.Add(L"D:\\", DriveType::Fixed, L"Données");
        machine.drives.Add(L"F:\\", DriveType::CdRom, std::nullopt);
        machine.files.FailWith(L"F:\\", ErrorNumber::DiskNotReady);
        machine.system.SetEnvironment(L"UserProfile", L"C:\\Users\\agent");
        machine.system.SetEnvironment(L"Windir", L"C:\\windows");
        for (const wchar_t* name : {L"c.txt", L"a.txt", L"b.txt"})
            machine.files.AddSizedFile(std::wstring(L"C:\\Users\\agent\\Documents\\") + name, 100);
        machine.files.AddFolder(L"C:\\Users\\agent\\Documents\\Ventes");
        machine.files.AddSizedFile(L"D:\\Data\\x.dat", 1000);
        machine.files.AddSizedFile(L"D:\\Data\\y.dat", 2000);
        machine.files.AddSizedFile(L"D:\\Data\\z.dat", 3000);
        host.spaceOf = [this](const std::wstring& path) { return control->SpaceOf(path); };
    }

    void AddListFile(const std::wstring& name, const std::string& content) {
        machine.files.AddFile(machine.app.ListFileFolder() + name, content);
    }

    void Open() {
        control = std::make_unique<ctlSelectionFichiers>(machine.app, host);
        parent.Create();
        SetWindowPos(parent.Handle(), nullptr, 0, 0, 820, 460, SWP_NOMOVE);
        for (HWND child = GetWindow(parent.Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            ShowWindow(child, SW_HIDE);
        RECT place{5, 4, 523, 242};
        MapDialogRect(parent.Handle(), &place);
        control->CreateChild(parent, place);
        parent.Show();
        ui::RunPendingMessages();
    }

    HWND At(int id) const { return GetDlgItem(control->Handle(), id); }
    std::wstring Text(int id) const {
        wchar_t text[256] = {};
        GetWindowTextW(At(id), text, 256);
        return text;
    }
    void Click(int id) {
        SendMessageW(At(id), BM_CLICK, 0, 0);
        ui::RunPendingMessages();
    }
    LRESULT State(int id) const { return SendMessageW(At(id), BM_GETCHECK, 0, 0); }
    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }

    Texts Lines(int id) const {
        Texts lines;
        for (LRESULT row = 0; row < SendMessageW(At(id), LB_GETCOUNT, 0, 0); ++row) {
            wchar_t text[MAX_PATH] = {};
            SendMessageW(At(id), LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
            lines.push_back(text);
        }
        return lines;
    }
    void ClickLine(int id, int row) {
        RECT place{};
        SendMessageW(At(id), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        const LPARAM point = MAKELPARAM(place.left + 20, (place.top + place.bottom) / 2);
        PostMessageW(At(id), WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(At(id), WM_LBUTTONUP, 0, point);
        ui::RunPendingMessages();
    }
    void SelectLines(const std::vector<int>& rows) {
        for (const int row : rows) SendMessageW(At(IDC_flbSelectFichier), LB_SETSEL, TRUE, row);
    }
    void ChooseDrive(int row) {
        SendMessageW(At(IDC_dlbSelectLecteur), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
        SendMessageW(control->Handle(), WM_COMMAND, MAKEWPARAM(IDC_dlbSelectLecteur, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(At(IDC_dlbSelectLecteur)));
        ui::RunPendingMessages();
    }
    std::wstring Drive() const {
        wchar_t text[64] = {};
        GetWindowTextW(At(IDC_dlbSelectLecteur), text, 64);
        return text;
    }
    void Drop(const Texts& paths) {
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
        SendMessageW(At(IDC_lvFichRep), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
        ui::RunPendingMessages();
    }
    int RowCount() const { return ListView_GetItemCount(At(IDC_lvFichRep)); }
    int SelectedRow() const { return ListView_GetNextItem(At(IDC_lvFichRep), -1, LVNI_SELECTED); }
    std::wstring Row(int row) const {
        std::wstring cells;
        for (int column = 0; column < 4; ++column) {
            wchar_t text[MAX_PATH] = {};
            ListView_GetItemText(At(IDC_lvFichRep), row, column, text, MAX_PATH);
            cells += (column > 0 ? L"|" : L"") + std::wstring(text);
        }
        return cells;
    }
    Texts Rows() const {
        Texts rows;
        for (int row = 0; row < RowCount(); ++row) rows.push_back(Row(row));
        return rows;
    }
    Texts Headers() const {
        Texts headers;
        for (int column = 0; column < 4; ++column) {
            wchar_t text[64] = {};
            LVCOLUMNW info{};
            info.mask = LVCF_TEXT;
            info.pszText = text;
            info.cchTextMax = 64;
            SendMessageW(At(IDC_lvFichRep), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                         reinterpret_cast<LPARAM>(&info));
            headers.push_back(text);
        }
        return headers;
    }
    /// How the view is told to draw a row.
    NMLVCUSTOMDRAW Drawn(int row) const {
        NMLVCUSTOMDRAW draw{};
        HDC screen = GetDC(nullptr);
        draw.nmcd.hdr = {At(IDC_lvFichRep), IDC_lvFichRep, static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
        draw.nmcd.hdc = screen;
        SendMessageW(control->Handle(), WM_NOTIFY, IDC_lvFichRep, reinterpret_cast<LPARAM>(&draw));
        ReleaseDC(nullptr, screen);
        return draw;
    }
    void PressKey(int id, WPARAM key) {
        SetFocus(At(id));
        MSG message{At(id), WM_KEYDOWN, key, 0, 0, {}};
        if (!parent.TranslateKeys(message)) DispatchMessageW(&message);
        ui::RunPendingMessages();
    }

    FormMessageLoop messages;
    FakeMachine machine;
    SelectionHost host;
    HostForm parent;
    std::unique_ptr<ctlSelectionFichiers> control;
};
