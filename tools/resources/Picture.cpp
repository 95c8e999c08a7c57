// SPDX-License-Identifier: MIT
#include "tools/resources/Picture.h"

#include <QImage>

#include <cstdint>

namespace {

void Append(const void* data, size_t size, std::string* bytes)
{
    bytes->append(static_cast<const char*>(data), size);
}

} // namespace

bool PixelsOfPicture(std::string_view file, std::string* bytes)
{
    const QImage picture = QImage::fromData(reinterpret_cast<const uchar*>(file.data()), static_cast<int>(file.size()))
                               .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return false;
    const uint32_t size[] = {static_cast<uint32_t>(picture.width()), static_cast<uint32_t>(picture.height())};
    bytes->clear();
    Append(size, sizeof size, bytes);
    for (int y = 0; y < picture.height(); ++y)
        Append(picture.constScanLine(y), size[0] * sizeof(uint32_t), bytes);
    return true;
}
