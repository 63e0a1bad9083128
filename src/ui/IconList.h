#pragma once

#include "ui/Controls.h"
#include "win32/UniqueHandle.h"

#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace ui {

struct ImageListTraits {
    using Type = HIMAGELIST;
    static Type Invalid() { return nullptr; }
    static void Close(Type list) { ImageList_Destroy(list); }
};

/// Small icons that the program paints itself, in the size of the system's small icons.
class IconList {
  public:
    /// The pixels of icon `index`, row by row from the top, each alpha, red, green, blue from its highest byte on.
    using Painter = std::function<std::vector<std::uint32_t>(int index, int sizePixels)>;

    IconList(int count, const Painter& paint);

    HIMAGELIST Images() const { return images_.Get(); }
    HICON Icon(int index) const { return icons_.at(static_cast<std::size_t>(index)).Get(); }

  private:
    std::vector<UniqueIcon> icons_;
    UniqueHandle<ImageListTraits> images_;
};

/// A control that shows an icon, or nothing.
class Picture : public Control {
  public:
    using Control::Control;
    /// `icon` is lent and must outlive the picture.
    void SetIcon(HICON icon) { Send(STM_SETICON, reinterpret_cast<WPARAM>(icon)); }
};

} // namespace ui
