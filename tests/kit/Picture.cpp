#include "Picture.h"

#include "Words.h"
#include "win32/PixelBitmap.h"

#include <cstdint>
#include <zlib.h>

#include <vector>

namespace kit {

namespace {

/// Keeps a window before all others for as long as it lives.
class InFront {
  public:
    explicit InFront(HWND window) : window_(window) { Place(HWND_TOPMOST); }
    ~InFront() { Place(HWND_NOTOPMOST); }
    InFront(const InFront&) = delete;
    InFront& operator=(const InFront&) = delete;

  private:
    void Place(HWND behind) const {
        SetWindowPos(window_, behind, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    }
    HWND window_;
};

std::string BigEndian(std::uint32_t number) {
    return {static_cast<char>(number >> 24), static_cast<char>(number >> 16), static_cast<char>(number >> 8),
            static_cast<char>(number)};
}

std::string Chunk(const std::string& kind, const std::string& content) {
    const std::string counted = kind + content;
    const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(counted.data()), static_cast<uInt>(counted.size()));
    return BigEndian(static_cast<std::uint32_t>(content.size())) + counted + BigEndian(static_cast<std::uint32_t>(sum));
}

std::string Compressed(const std::string& bytes) {
    uLongf length = compressBound(static_cast<uLong>(bytes.size()));
    std::string compressed(length, '\0');
    if (compress2(reinterpret_cast<Bytef*>(compressed.data()), &length, reinterpret_cast<const Bytef*>(bytes.data()),
                  static_cast<uLong>(bytes.size()), Z_DEFAULT_COMPRESSION) != Z_OK)
        throw Failure(L"a picture cannot be compressed");
    compressed.resize(length);
    return compressed;
}

/// A PNG of pixels in the order blue, green, red, unused, from the top row down.
std::string Png(const std::vector<unsigned char>& pixels, SIZE size) {
    std::string rows;
    for (LONG y = 0; y < size.cy; ++y) {
        rows += '\0'; // the row is stored as it is
        for (LONG x = 0; x < size.cx; ++x) {
            const unsigned char* pixel = &pixels[static_cast<std::size_t>((y * size.cx + x) * 4)];
            rows += static_cast<char>(pixel[2]);
            rows += static_cast<char>(pixel[1]);
            rows += static_cast<char>(pixel[0]);
        }
    }
    const std::string eightBitColour = {8, 2, 0, 0, 0};
    return "\x89PNG\r\n\x1a\n" +
           Chunk("IHDR", BigEndian(static_cast<std::uint32_t>(size.cx)) +
                             BigEndian(static_cast<std::uint32_t>(size.cy)) + eightBitColour) +
           Chunk("IDAT", Compressed(rows)) + Chunk("IEND", "");
}

std::vector<unsigned char> ScreenPixels(POINT corner, SIZE size) {
    const PixelBitmap bitmap(size);
    if (!bitmap) throw Failure(L"no memory for a picture");
    const BitmapContext memory(bitmap);
    const WindowContext screen(nullptr);
    BitBlt(memory.Get(), 0, 0, size.cx, size.cy, screen.Get(), corner.x, corner.y, SRCCOPY);
    GdiFlush();
    return {bitmap.Bytes(), bitmap.Bytes() + static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy) * 4};
}

} // namespace

std::string PictureOf(HWND window) {
    const InFront inFront(window);
    // The frame fades in, and what is painted reaches the screen when the program next waits.
    constexpr DWORD appearMilliseconds = 300;
    Sleep(appearMilliseconds);
    RECT place{};
    if (!GetWindowRect(window, &place)) throw Failure(L"a window went before its picture was taken");
    const SIZE size{place.right - place.left, place.bottom - place.top};
    if (size.cx <= 0 || size.cy <= 0) throw Failure(L"a window without a size");
    return Png(ScreenPixels({place.left, place.top}, size), size);
}

} // namespace kit
