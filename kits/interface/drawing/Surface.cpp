// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/Surface.h"

#include <cstring>

namespace kits {

bool Surface::SetSize(int32 width, int32 height, const PixelGrid& grid, uint32 newWord)
{
    if (width <= 0 || height <= 0) {
        Release();
        return false;
    }
    if (Exists() && width == fWidth && height == fHeight && grid.SameEdges(fGrid)) {
        fGrid = grid;
        return true;
    }
    const PixelRect device = grid.ToDevice({0, 0, width, height});
    if (device.IsEmpty()) {
        Release();
        return false;
    }
    const bool keeps = Exists() && grid.SameEdges(fGrid);
    const bool opaqueWord = newWord >> 24 == 0xFF;
    const auto stride = static_cast<size_t>(device.right);
    if (keeps && device.right == fDevice.right) {
        // Only the number of rows changes.
        fWords.resize(stride * static_cast<size_t>(device.bottom), newWord);
        fOpaque = fOpaque && (opaqueWord || height <= fHeight);
    } else {
        std::vector<uint32> words(stride * static_cast<size_t>(device.bottom), newWord);
        const PixelRect common = keeps ? Intersection(device, fDevice) : PixelRect{};
        for (int32 y = 0; y < common.bottom; y++) {
            std::memcpy(words.data() + static_cast<size_t>(y) * stride,
                        fWords.data() + static_cast<size_t>(y) * static_cast<size_t>(fDevice.right),
                        static_cast<size_t>(common.right) * sizeof(uint32));
        }
        fWords = std::move(words);
        const bool grown = !keeps || width > fWidth || height > fHeight;
        fOpaque = (fOpaque || !keeps) && (opaqueWord || !grown);
    }
    fDevice = device;
    fGrid = grid;
    fWidth = width;
    fHeight = height;
    return true;
}

void Surface::Release()
{
    std::vector<uint32>().swap(fWords);
    fDevice = {};
    fWidth = 0;
    fHeight = 0;
    fOpaque = false;
}

Canvas Surface::MakeCanvas()
{
    return Canvas(fWords.data(), fDevice.right, fDevice, Canvas::kShown, fGrid);
}

void Surface::Take(const Canvas& canvas)
{
    if (canvas.MadeOpaque())
        fOpaque = true;
    else if (canvas.WroteTransparent())
        fOpaque = false;
}

} // namespace kits
