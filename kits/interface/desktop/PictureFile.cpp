#include "kits/interface/desktop/SettingsDesktop.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QUrl>

namespace kits {

namespace {

/// Pictures are read at this size, which most formats do far faster than whole.
constexpr QSize kSmall(64, 64);

QString PathOf(const std::string& location)
{
    const QString text = QString::fromStdString(location);
    return text.startsWith(QStringLiteral("file:")) ? QUrl(text).toLocalFile() : text;
}

QString FirstPictureOf(const QString& folder)
{
    for (const QString& place : {folder + QStringLiteral("/contents/images"), folder}) {
        for (const QFileInfo& file : QDir(place).entryInfoList(QDir::Files, QDir::Name)) {
            if (!QImageReader::imageFormat(file.filePath()).isEmpty())
                return file.filePath();
        }
    }
    return {};
}

} // namespace

std::optional<rgb_color> AverageOfFile(const std::string& location)
{
    QString path = PathOf(location);
    if (QFileInfo(path).isDir())
        path = FirstPictureOf(path);
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QImageReader reader(path);
    reader.setScaledSize(kSmall);
    const QImage image = reader.read().convertToFormat(QImage::Format_RGB32);
    if (image.isNull())
        return std::nullopt;
    uint64 red = 0;
    uint64 green = 0;
    uint64 blue = 0;
    const auto count = static_cast<uint64>(image.width()) * static_cast<uint64>(image.height());
    for (int y = 0; y < image.height(); y++) {
        const QRgb* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); x++) {
            red += static_cast<uint64>(qRed(line[x]));
            green += static_cast<uint64>(qGreen(line[x]));
            blue += static_cast<uint64>(qBlue(line[x]));
        }
    }
    const auto part = [&](uint64 sum) { return static_cast<uint8>((sum + count / 2) / count); };
    return make_color(part(red), part(green), part(blue));
}

} // namespace kits
