#pragma once

#include <windows.h>

#include <utility>

/// Owns one handle of the system. The traits name the raw type (`Type`), the value that means none (`Invalid()`) and
/// the closing call (`Close`). `Get` lends the handle; nothing converts by itself.
template<class Traits>
class UniqueHandle {
  public:
    using Type = typename Traits::Type;

    UniqueHandle() = default;
    explicit UniqueHandle(Type handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(std::exchange(other.handle_, Traits::Invalid())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(std::exchange(other.handle_, Traits::Invalid()));
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Type Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Traits::Invalid(); }

    void Reset(Type handle = Traits::Invalid()) {
        if (handle_ != Traits::Invalid()) Traits::Close(handle_);
        handle_ = handle;
    }
    /// Where a call that opens a handle is to put it.
    Type* Receive() {
        Reset();
        return &handle_;
    }

    /// Gives the handle to another owner.
    Type Release() { return std::exchange(handle_, Traits::Invalid()); }

  private:
    Type handle_ = Traits::Invalid();
};

/// Files and devices, whose invalid value is not null.
struct FileHandleTraits {
    using Type = HANDLE;
    static Type Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { CloseHandle(handle); }
};

/// Events, processes, threads, tokens.
struct ObjectHandleTraits {
    using Type = HANDLE;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { CloseHandle(handle); }
};

struct FindHandleTraits {
    using Type = HANDLE;
    static Type Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { FindClose(handle); }
};

struct WindowHandleTraits {
    using Type = HWND;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { DestroyWindow(handle); }
};

struct FontTraits {
    using Type = HFONT;
    static Type Invalid() { return nullptr; }
    static void Close(Type font) { DeleteObject(font); }
};

/// Icons that were made or extracted; those of LoadIcon and LR_SHARED are the system's.
struct IconTraits {
    using Type = HICON;
    static Type Invalid() { return nullptr; }
    static void Close(Type icon) { DestroyIcon(icon); }
};

/// Menus that no window and no other menu owns yet.
struct MenuTraits {
    using Type = HMENU;
    static Type Invalid() { return nullptr; }
    static void Close(Type menu) { DestroyMenu(menu); }
};

struct AcceleratorTraits {
    using Type = HACCEL;
    static Type Invalid() { return nullptr; }
    static void Close(Type table) { DestroyAcceleratorTable(table); }
};

struct BitmapTraits {
    using Type = HBITMAP;
    static Type Invalid() { return nullptr; }
    static void Close(Type bitmap) { DeleteObject(bitmap); }
};

/// Device contexts that were made, not those that a window lends.
struct MemoryContextTraits {
    using Type = HDC;
    static Type Invalid() { return nullptr; }
    static void Close(Type context) { DeleteDC(context); }
};

using UniqueFile = UniqueHandle<FileHandleTraits>;
using UniqueObject = UniqueHandle<ObjectHandleTraits>;
using UniqueFind = UniqueHandle<FindHandleTraits>;
using UniqueWindow = UniqueHandle<WindowHandleTraits>;
using UniqueFont = UniqueHandle<FontTraits>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueMenu = UniqueHandle<MenuTraits>;
using UniqueAccelerators = UniqueHandle<AcceleratorTraits>;
using UniqueBitmap = UniqueHandle<BitmapTraits>;
using UniqueMemoryContext = UniqueHandle<MemoryContextTraits>;

/// The device context of a window's screen, lent by the window and given back to it.
class WindowContext {
  public:
    /// A null window means the whole screen.
    explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    ~WindowContext() {
        if (context_ != nullptr) ReleaseDC(window_, context_);
    }

    HDC Get() const { return context_; }

  private:
    HWND window_;
    HDC context_;
};
