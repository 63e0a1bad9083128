// Files as image mastering reads them.
#include "platform/windows/discs/FileStream.h"
#include "win32/UniqueHandle.h"

#include <winioctl.h>

#include <gmock/gmock.h>

#include <string>

namespace {

/// A file with a few bytes at `offset` and nothing before.
std::wstring MakeFileWithHole(LONGLONG offset, const std::string& bytes) {
    std::wstring path = L"C:\\VirtualBurner\\stream.bin";
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD count = 0;
    DeviceIoControl(file.Get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &count, nullptr);
    LARGE_INTEGER place{};
    place.QuadPart = offset;
    SetFilePointerEx(file.Get(), place, nullptr, FILE_BEGIN);
    WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    return path;
}

class FileStreams : public testing::Test {
  protected:
    ~FileStreams() override { DeleteFileW(L"C:\\VirtualBurner\\stream.bin"); }
};

TEST_F(FileStreams, PositionsBeyondFourGibAreKept) {
    constexpr LONGLONG offset = (LONGLONG{1} << 32) + 4321;
    HRESULT result = E_FAIL;
    const auto stream = OpenFileStream(MakeFileWithHole(offset, "the end"), result);
    ASSERT_TRUE(stream) << result;
    STATSTG status{};
    stream->Stat(&status, STATFLAG_NONAME);
    EXPECT_EQ(status.cbSize.QuadPart, static_cast<ULONGLONG>(offset) + 7);
    LARGE_INTEGER place{};
    place.QuadPart = offset;
    ULARGE_INTEGER reached{};
    EXPECT_EQ(stream->Seek(place, STREAM_SEEK_SET, &reached), S_OK);
    EXPECT_EQ(reached.QuadPart, static_cast<ULONGLONG>(offset));
    char buffer[16] = {};
    ULONG count = 0;
    EXPECT_EQ(stream->Read(buffer, sizeof buffer, &count), S_FALSE);
    EXPECT_EQ(std::string(buffer, count), "the end");
}

TEST_F(FileStreams, CloneReadsOnItsOwn) {
    HRESULT result = E_FAIL;
    const auto stream = OpenFileStream(MakeFileWithHole(0, "abcdef"), result);
    char first = 0;
    char second = 0;
    stream->Read(&first, 1, nullptr);
    ComPointer<IStream> clone;
    ASSERT_EQ(stream->Clone(clone.Receive()), S_OK);
    clone->Read(&second, 1, nullptr);
    EXPECT_EQ(second, 'b');
    stream->Read(&first, 1, nullptr);
    EXPECT_EQ(first, 'b');
}

TEST_F(FileStreams, PositionBeforeTheStartIsRefused) {
    HRESULT result = E_FAIL;
    const auto stream = OpenFileStream(MakeFileWithHole(0, "abcdef"), result);
    LARGE_INTEGER distance{};
    distance.QuadPart = -1;
    EXPECT_EQ(stream->Seek(distance, STREAM_SEEK_CUR, nullptr), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(stream->Seek(distance, STREAM_SEEK_END, nullptr), S_OK);
    char last = 0;
    EXPECT_EQ(stream->Read(&last, 1, nullptr), S_OK);
    EXPECT_EQ(last, 'f');
}

TEST_F(FileStreams, FileBeingReadCannotBeChanged) {
    HRESULT result = E_FAIL;
    const std::wstring path = MakeFileWithHole(0, "abcdef");
    const auto stream = OpenFileStream(path, result);
    const UniqueFile writer(
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(writer);
    ULONG count = 0;
    EXPECT_EQ(stream->Write("x", 1, &count), STG_E_ACCESSDENIED);
}

TEST_F(FileStreams, MissingFileGivesTheSystemsCode) {
    HRESULT result = S_OK;
    EXPECT_FALSE(OpenFileStream(L"C:\\VirtualBurner\\no such file", result));
    EXPECT_EQ(result, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
}

} // namespace
