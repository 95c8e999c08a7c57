#include "kits/interface/private/TextCache.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <list>
#include <mutex>
#include <string>
#include <unordered_map>

namespace kits::TextCache {

namespace {

constexpr size_t kMaxFonts = 16;
constexpr int32 kMaxMaskSide = 16384;

struct Text {
    std::string text;
    double scale = 0; ///< of the mask; 0 while there is none
    float width = 0;
    std::shared_ptr<const CoverageMask> mask;
};

/// A font that was asked for, and what is known of it.
struct Known {
    BFont font;
    QFont rasterFont; ///< in points that are pixels at scale 1
    font_height height;
    /// The newest first.
    std::list<Text> texts;
    std::unordered_map<std::string_view, std::list<Text>::iterator> byText;

    size_t Bytes() const
    {
        size_t bytes = 0;
        for (const Text& text : texts)
            bytes += text.mask != nullptr ? text.mask->coverage.size() : 0;
        return bytes;
    }
};

std::mutex sMutex;
bool sEnabled = false;
size_t sBytes = 0; ///< of all masks
/// The font used last first. Addresses stay valid.
std::list<Known>& Fonts()
{
    static std::list<Known> fonts;
    return fonts;
}

double DrawnSize(const BFont& font)
{
    return std::clamp(static_cast<double>(font.Size()), 1.0, 1000.0);
}

QFont MakeFont(const BFont& font, double scale)
{
    font_family family;
    font_style style;
    font.GetFamilyAndStyle(&family, &style);
    QFont made;
    if (family[0] != '\0')
        made.setFamily(QString::fromUtf8(family));
    if (style[0] != '\0')
        made.setStyleName(QString::fromUtf8(style));
    // The images that are painted on have 72 dots per inch, so that points are pixels, fractions included.
    made.setPointSizeF(DrawnSize(font) * scale);
    if (font.Face() & B_ITALIC_FACE)
        made.setItalic(true);
    if (font.Face() & B_BOLD_FACE)
        made.setBold(true);
    if (font.Face() & B_UNDERSCORE_FACE)
        made.setUnderline(true);
    if (font.Face() & B_STRIKEOUT_FACE)
        made.setStrikeOut(true);
    const auto smoothing = font.Flags() & B_DISABLE_ANTIALIASING ? QFont::NoAntialias : QFont::PreferAntialias;
    made.setStyleStrategy(static_cast<QFont::StyleStrategy>(smoothing | QFont::NoSubpixelAntialias));
    return made;
}

void SetPixelDots(QImage& image)
{
    constexpr int kDotsPerMeter = 2835; // 72 per inch
    image.setDotsPerMeterX(kDotsPerMeter);
    image.setDotsPerMeterY(kDotsPerMeter);
}

/// What metrics and fonts are measured against.
const QImage& Device()
{
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_Alpha8);
        SetPixelDots(image);
        return image;
    }();
    return device;
}

Known& KnownFont(const BFont& font)
{
    std::list<Known>& fonts = Fonts();
    for (auto it = fonts.begin(); it != fonts.end(); ++it) {
        if (it->font == font) {
            fonts.splice(fonts.begin(), fonts, it);
            return fonts.front();
        }
    }
    if (fonts.size() >= kMaxFonts) {
        sBytes -= fonts.back().Bytes();
        fonts.pop_back();
    }
    Known& known = fonts.emplace_front();
    known.font = font;
    known.rasterFont = QFont(MakeFont(font, 1), &Device());
    const QFontMetricsF metrics(known.rasterFont, &Device());
    known.height = {static_cast<float>(std::ceil(metrics.ascent())), static_cast<float>(std::ceil(metrics.descent())),
                    static_cast<float>(std::max(0.0, std::ceil(metrics.leading())))};
    return known;
}

Text& KnownText(Known& known, std::string_view text)
{
    const auto found = known.byText.find(text);
    if (found != known.byText.end()) {
        known.texts.splice(known.texts.begin(), known.texts, found->second);
        return known.texts.front();
    }
    while (!known.texts.empty() && (known.texts.size() >= kMaxTexts || sBytes > kMaxBytes)) {
        const Text& oldest = known.texts.back();
        sBytes -= oldest.mask != nullptr ? oldest.mask->coverage.size() : 0;
        known.byText.erase(oldest.text);
        known.texts.pop_back();
    }
    Text& added = known.texts.emplace_front();
    added.text = text;
    const QFontMetricsF metrics(known.rasterFont, &Device());
    added.width = static_cast<float>(
        std::ceil(metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())))));
    known.byText.emplace(added.text, known.texts.begin());
    return added;
}

/// Leaning and turned as the font says, around the start of the base line.
QTransform TransformOf(const BFont& font)
{
    QTransform transform;
    transform.rotate(-static_cast<double>(font.Rotation()));
    const double lean = std::clamp(90.0 - static_cast<double>(font.Shear()), -80.0, 80.0);
    transform.shear(-std::tan(lean * 3.14159265358979323846 / 180), 0);
    return transform;
}

std::shared_ptr<const CoverageMask> Raster(const BFont& font, const Text& text, double scale)
{
    const QFont rasterFont(MakeFont(font, scale), &Device());
    const QString string = QString::fromUtf8(text.text.data(), static_cast<qsizetype>(text.text.size()));
    const QFontMetricsF metrics(rasterFont, &Device());
    const QTransform transform = TransformOf(font);
    const QRectF extents(0, -metrics.ascent(), metrics.horizontalAdvance(string), metrics.ascent() + metrics.descent());
    const QRect box = transform.mapRect(extents | metrics.boundingRect(string)).toAlignedRect().adjusted(-1, -1, 1, 1);
    if (box.isEmpty() || box.width() > kMaxMaskSide || box.height() > kMaxMaskSide)
        return nullptr;

    QImage image(box.size(), QImage::Format_Alpha8);
    if (image.isNull())
        return nullptr;
    SetPixelDots(image);
    image.fill(0);
    {
        QPainter painter(&image);
        const bool antialias = (font.Flags() & B_DISABLE_ANTIALIASING) == 0;
        painter.setRenderHint(QPainter::TextAntialiasing, antialias);
        painter.setRenderHint(QPainter::Antialiasing, antialias && !transform.isIdentity());
        painter.setTransform(transform * QTransform::fromTranslate(-box.left(), -box.top()));
        painter.setFont(rasterFont);
        painter.setPen(Qt::black);
        painter.drawText(QPointF(0, 0), string);
    }
    // Only the rows and columns that hold something.
    QRect used;
    for (int y = 0; y < image.height(); y++) {
        const uchar* row = image.constScanLine(y);
        const uchar* end = row + image.width();
        const auto isSet = [](uchar value) { return value != 0; };
        const uchar* first = std::find_if(row, end, isSet);
        if (first == end)
            continue;
        const uchar* last = end - 1;
        while (*last == 0)
            last--;
        used |= QRect(QPoint(static_cast<int>(first - row), y), QPoint(static_cast<int>(last - row), y));
    }
    if (used.isEmpty())
        return nullptr;
    auto mask = std::make_shared<CoverageMask>();
    mask->left = box.left() + used.left();
    mask->top = box.top() + used.top();
    mask->width = used.width();
    mask->height = used.height();
    mask->coverage.reserve(static_cast<size_t>(used.width()) * static_cast<size_t>(used.height()));
    const bool hard = (font.Flags() & B_DISABLE_ANTIALIASING) != 0;
    for (int y = used.top(); y <= used.bottom(); y++) {
        const uchar* row = image.constScanLine(y) + used.left();
        for (int x = 0; x < used.width(); x++)
            mask->coverage.push_back(hard ? (row[x] >= 128 ? 255 : 0) : row[x]);
    }
    return mask;
}

} // namespace

font_height Height(const BFont& font)
{
    std::lock_guard guard(sMutex);
    if (sEnabled)
        return KnownFont(font).height;
    const auto size = static_cast<float>(DrawnSize(font));
    return {std::ceil(size * 0.9F), std::ceil(size * 0.25F), 0};
}

float Width(const BFont& font, std::string_view text)
{
    std::lock_guard guard(sMutex);
    if (sEnabled)
        return KnownText(KnownFont(font), text).width;
    return std::ceil(static_cast<float>(DrawnSize(font)) * 0.6F * static_cast<float>(text.size()));
}

std::shared_ptr<const CoverageMask> Mask(const BFont& font, std::string_view text, double scale)
{
    std::lock_guard guard(sMutex);
    if (!sEnabled || text.empty())
        return nullptr;
    Text& known = KnownText(KnownFont(font), text);
    if (known.scale != scale) {
        sBytes -= known.mask != nullptr ? known.mask->coverage.size() : 0;
        known.mask = Raster(font, known, scale);
        known.scale = scale;
        sBytes += known.mask != nullptr ? known.mask->coverage.size() : 0;
    }
    return known.mask;
}

void Enable()
{
    std::lock_guard guard(sMutex);
    sEnabled = true;
}

void Disable()
{
    std::lock_guard guard(sMutex);
    sEnabled = false;
    sBytes = 0;
    Fonts().clear();
}

} // namespace kits::TextCache
