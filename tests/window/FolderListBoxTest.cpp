#include "ui/FolderListBox.h"
#include "TestForm.h"
#include "ui/Units.h"

#include <gtest/gtest.h>

#include <shellapi.h>

#include <functional>
#include <string>
#include <vector>

namespace {

/// What an icon of the small size looks like on white, row by row.
std::vector<COLORREF> Pixels(const std::function<void(HDC context, RECT place)>& draw) {
    const RECT place{0, 0, GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON)};
    HDC screen = GetDC(nullptr);
    HDC context = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, place.right, place.bottom);
    HGDIOBJ previous = SelectObject(context, bitmap);
    FillRect(context, &place, GetSysColorBrush(COLOR_WINDOW));
    draw(context, place);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < place.bottom; ++y) {
        for (int x = 0; x < place.right; ++x) pixels.push_back(GetPixel(context, x, y));
    }
    SelectObject(context, previous);
    DeleteObject(bitmap);
    DeleteDC(context);
    ReleaseDC(nullptr, screen);
    return pixels;
}

std::vector<COLORREF> ShellFolderPixels(UINT state) {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
    SHFILEINFOW info{};
    SHGetFileInfoW(folder.c_str(), 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON | state);
    std::vector<COLORREF> pixels = Pixels([&](HDC context, RECT place) {
        DrawIconEx(context, 0, 0, info.hIcon, place.right, place.bottom, 0, nullptr, DI_NORMAL);
    });
    DestroyIcon(info.hIcon);
    return pixels;
}

TEST(FolderListBox, ShowsFoldersAsTheShellDoes) {
    TestForm form;
    form.Create();
    ui::FolderListBox folders(form, IDC_testFolders);
    folders.Attach();
    folders.SetLines({{L"", 0, true}, {L"", 0, false}}, -1);
    const int margin = ui::PixelsFromTwips(30, folders.Handle());
    const auto drawn = [&](UINT row) {
        return Pixels([&](HDC context, RECT place) {
            OffsetRect(&place, -margin, 0);
            place.right += margin;
            DRAWITEMSTRUCT item{ODT_LISTBOX, IDC_testFolders, row, ODA_DRAWENTIRE, 0, folders.Handle(),
                                context,     place,           0};
            SendMessageW(form.Handle(), WM_DRAWITEM, IDC_testFolders, reinterpret_cast<LPARAM>(&item));
        });
    };
    EXPECT_EQ(drawn(0), ShellFolderPixels(SHGFI_OPENICON));
    EXPECT_EQ(drawn(1), ShellFolderPixels(0));
    EXPECT_NE(drawn(0), drawn(1));
}

} // namespace
