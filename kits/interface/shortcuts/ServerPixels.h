// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>

#include <span>

class QWindow;

namespace kits {

/// Sends parts of a window's picture to the X server, as they are now. The toolkit's way, by memory that both share, is
/// made for pictures; for a few columns and figures putting its request together costs more than the pixels do.
/// Main thread.
/// @param picture  the pixels of the window, from its upper left corner
/// @param places   within the picture; they may overlap
/// @return false when nothing was sent: this is no X server, its pixels are not those of the picture, or there are so
///         many that the shared memory is the better way
bool SendPixels(const QWindow& window, const QImage& picture, std::span<const QRect> places);

} // namespace kits
