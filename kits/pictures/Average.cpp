// SPDX-License-Identifier: MIT
#include "kits/pictures/Average.h"

#include "kits/kernel/Bounds.h"

#include <QFile>
#include <QImageReader>
#include <QRgba64>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace kits {

namespace {

constexpr qint64 kMegabyte = 1024 * 1024;
/// Pictures of this size or more are read smaller.
constexpr qint64 kManyBytes = 256 * kMegabyte;
/// The longer side of a picture that is drawn or read smaller.
constexpr int kSmallSide = 1024;
/// The largest value of a component.
constexpr uint64_t kMost = 65535;
/// A picture is converted this many pixels at a time.
constexpr int kBandPixels = 1 << 20;

/// Returns a descriptor of a regular file that is not too large, or -1.
int OpenRegular(const char* path)
{
    struct stat status;
    // Opening a device may already have effects, and opening a FIFO would wait.
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode))
        return -1;
    const int file = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return -1;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= bounds::kMostPictureFile)
        return file;
    close(file);
    return -1;
}

/// The toolkit reads these smaller without having them whole. Pictures with fewer bits per pixel it would scale
/// afterwards, which takes more memory than the whole, and loses the palette.
bool CanBeReadSmaller(QImage::Format format)
{
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32;
}

/// Chooses the size at which the picture is read. Returns false if it may not be read at any size.
bool ChooseSize(QImageReader& reader)
{
    const QSize size = reader.size();
    const QSize small = size.scaled(kSmallSide, kSmallSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    if (reader.format().startsWith("svg")) {
        if (size.isValid())
            reader.setScaledSize(small);
        return true;
    }
    // Some formats reveal their size only during the reading, which ends at the allocation limit.
    if (!size.isValid())
        return true;
    const qint64 pixels = qint64{size.width()} * size.height();
    if (pixels > bounds::kMostPixels)
        return false;
    if (CanBeReadSmaller(reader.imageFormat()) && pixels * qint64{sizeof(QRgb)} > kManyBytes)
        reader.setScaledSize(small);
    return true;
}

std::optional<Average> AverageOf(const QImage& picture)
{
    if (picture.isNull())
        return std::nullopt;
    // A thousand million products of two components fit.
    uint64_t red = 0;
    uint64_t green = 0;
    uint64_t blue = 0;
    uint64_t alpha = 0;
    const int step = std::max(1, kBandPixels / picture.width());
    for (int top = 0; top < picture.height(); top += step) {
        // Sixteen bits per component: palettes, greys and deep colours all convert to these without loss. Not
        // premultiplied: one version of the toolkit multiplies the opacity, too.
        const QImage band = picture.copy(0, top, picture.width(), std::min(step, picture.height() - top))
                                .convertToFormat(QImage::Format_RGBA64);
        if (band.isNull())
            return std::nullopt;
        for (int y = 0; y < band.height(); y++) {
            const auto* line = reinterpret_cast<const QRgba64*>(band.constScanLine(y));
            for (const QRgba64* pixel = line; pixel != line + band.width(); pixel++) {
                const uint64_t opacity = pixel->alpha();
                red += opacity * pixel->red();
                green += opacity * pixel->green();
                blue += opacity * pixel->blue();
                alpha += opacity * kMost;
            }
        }
    }
    const uint64_t weight = static_cast<uint64_t>(picture.width()) * static_cast<uint64_t>(picture.height()) * kMost;
    const auto part = [&](uint64_t sum) { return static_cast<uint32_t>((sum + weight / 2) / weight); };
    return Average{part(red), part(green), part(blue), part(alpha)};
}

} // namespace

std::optional<Average> AverageOf(const char* path)
{
    const int descriptor = OpenRegular(path);
    if (descriptor < 0)
        return std::nullopt;
    // Some formats are recognised only by the suffix of the name.
    QFile file(QFile::decodeName(path));
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return std::nullopt;
    }
    QImageReader::setAllocationLimit(bounds::kMostPicture);
    QImageReader reader(&file);
    return ChooseSize(reader) ? AverageOf(reader.read()) : std::nullopt;
}

} // namespace kits
