#include "ui/IconList.h"

#include "win32/PixelBitmap.h"

#include <cstring>

namespace ui {

namespace {

/// Where a screen without alpha shows nothing: one bit for each pixel, each row filled up to 16.
UniqueBitmap MaskOf(const std::vector<std::uint32_t>& pixels, int size) {
    const auto side = static_cast<std::size_t>(size);
    const std::size_t rowBytes = (side + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(rowBytes * side);
    for (std::size_t at = 0; at < side * side; ++at) {
        const bool isClear = pixels[at] >> 24 < 128;
        std::uint8_t& byte = bits[at / side * rowBytes + at % side / 8];
        if (isClear) byte = static_cast<std::uint8_t>(byte | 0x80 >> at % side % 8);
    }
    return UniqueBitmap(CreateBitmap(size, size, 1, 1, bits.data()));
}

UniqueIcon IconOf(const std::vector<std::uint32_t>& pixels, int size) {
    const PixelBitmap colors({size, size});
    if (!colors) return {};
    std::memcpy(colors.Bytes(), pixels.data(), pixels.size() * sizeof pixels[0]);
    const UniqueBitmap mask = MaskOf(pixels, size);
    ICONINFO parts{};
    parts.fIcon = TRUE;
    parts.hbmMask = mask.Get();
    parts.hbmColor = colors.Get();
    return UniqueIcon(CreateIconIndirect(&parts));
}

} // namespace

IconList::IconList(int count, const Painter& paint) {
    const int size = GetSystemMetrics(SM_CXSMICON);
    images_.Reset(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, count, 0));
    for (int index = 0; index < count; ++index) {
        icons_.push_back(IconOf(paint(index, size), size));
        ImageList_ReplaceIcon(images_.Get(), -1, icons_.back().Get());
    }
}

} // namespace ui
