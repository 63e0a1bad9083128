#pragma once

#include "win32/UniqueHandle.h"

/// A bitmap whose pixels can be read and written: four bytes each (blue, green, red, and alpha where it is asked for),
/// row by row from the top. Nothing when the system has no memory for it.
class PixelBitmap {
  public:
    explicit PixelBitmap(SIZE size) {
        BITMAPINFO layout{};
        layout.bmiHeader.biSize = sizeof layout.bmiHeader;
        layout.bmiHeader.biWidth = size.cx;
        layout.bmiHeader.biHeight = -size.cy; // from the top
        layout.bmiHeader.biPlanes = 1;
        layout.bmiHeader.biBitCount = 32;
        void* bytes = nullptr;
        bitmap_.Reset(CreateDIBSection(nullptr, &layout, DIB_RGB_COLORS, &bytes, nullptr, 0));
        bytes_ = static_cast<unsigned char*>(bytes);
    }

    explicit operator bool() const { return static_cast<bool>(bitmap_); }
    HBITMAP Get() const { return bitmap_.Get(); }
    /// As long as the bitmap lives; call `GdiFlush` before reading what was drawn.
    unsigned char* Bytes() const { return bytes_; }

  private:
    UniqueBitmap bitmap_;
    unsigned char* bytes_ = nullptr;
};

/// What is drawn here is drawn on the bitmap, which is borrowed.
class BitmapContext {
  public:
    explicit BitmapContext(const PixelBitmap& bitmap)
        : context_(CreateCompatibleDC(nullptr)), previous_(SelectObject(context_.Get(), bitmap.Get())) {}
    BitmapContext(const BitmapContext&) = delete;
    BitmapContext& operator=(const BitmapContext&) = delete;
    ~BitmapContext() { SelectObject(context_.Get(), previous_); }

    HDC Get() const { return context_.Get(); }

  private:
    UniqueMemoryContext context_;
    HGDIOBJ previous_;
};
