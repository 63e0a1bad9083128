#include "core/CommandWords.h"

#include <gtest/gtest.h>

TEST(CommandWords, QuotedFoldersMayEndInABackslash) {
    const std::vector<std::wstring> words = {L"C:\\Program Files\\BackupCheck.exe", L"/check", L"E:\\", L"/report",
                                             L"D:\\a b.json"};
    EXPECT_EQ(CommandWords(L"\"C:\\Program Files\\BackupCheck.exe\"  /check \"E:\\\" /report \"D:\\a b.json\""), words);
    EXPECT_EQ(CommandWords(L"x \"\""), (std::vector<std::wstring>{L"x", L""}));
}
