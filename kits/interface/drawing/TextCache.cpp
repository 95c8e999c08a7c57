// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/TextCache.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <array>
#include <list>
#include <mutex>
#include <string>
#include <unordered_map>

namespace kits::TextCache {

namespace {

constexpr size_t kMaxFonts = 16;
constexpr size_t kNewest = 32;
constexpr int32 kMaxMaskPixels = 4 * 1024 * 1024;

/// Charts draw figures that change all the time. The cache composes them from characters that were rasterised once,
/// which takes a twentieth of the time of laying the text out: each digit is a part, and the text after the figure and
/// a blank, such as a unit, is one more part. Composed texts are not cached: they hardly come again.
constexpr std::string_view kFigures = "0123456789.,%+- ";

struct Text {
    std::string text;
    double width = 0; ///< in logical pixels, with its fraction
    double scale = 0; ///< the scale of the mask; 0 if there is none yet
    double advance = 0;
    std::shared_ptr<const CoverageMask> mask;

    size_t Bytes() const { return mask != nullptr ? mask->coverage.size() : 0; }
};

/// A requested font, and everything known about it.
struct Known {
    BFont font;
    QFont rasterFont; ///< in points that are pixels at scale 1
    font_height height;
    std::array<Text, kFigures.size()> figures; ///< each one once it was requested
    /// The newest first.
    std::list<Text> texts;
    std::unordered_map<std::string_view, std::list<Text>::iterator> byText;

    size_t Bytes() const
    {
        size_t bytes = 0;
        for (const Text& text : texts)
            bytes += text.Bytes();
        for (const Text& figure : figures)
            bytes += figure.Bytes();
        return bytes;
    }
};

std::mutex sMutex;
bool sEnabled = false;
size_t sBytes = 0; ///< of all masks
/// The last used font first. Addresses stay valid.
std::list<Known>& Fonts()
{
    // Not destroyed automatically: the resources of a font may be gone by then.
    static auto& fonts = *new std::list<Known>;
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
    // The images to paint on have 72 dots per inch, so that points are pixels, including fractions.
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

/// The device against which metrics and fonts are measured.
const QImage& Device()
{
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_Alpha8);
        SetPixelDots(image);
        return image;
    }();
    return device;
}

size_t CountFigures(std::string_view text)
{
    return std::min(text.find_first_not_of(kFigures), text.size());
}

bool IsMadeOfParts(const BFont& font, std::string_view text)
{
    const size_t figures = CountFigures(text);
    return figures > 1 && (figures == text.size() || text[figures - 1] == ' ') && font.Rotation() == 0 &&
           font.Shear() == 90 && (font.Face() & (B_UNDERSCORE_FACE | B_STRIKEOUT_FACE)) == 0;
}

template <class Function> void ForEachPart(std::string_view text, Function&& function)
{
    const size_t figures = CountFigures(text);
    for (size_t i = 0; i < figures; i++)
        function(text.substr(i, 1));
    if (figures < text.size())
        function(text.substr(figures));
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

void Measure(const Known& known, Text& text)
{
    const QFontMetricsF metrics(known.rasterFont, &Device());
    text.width =
        metrics.horizontalAdvance(QString::fromUtf8(text.text.data(), static_cast<qsizetype>(text.text.size())));
}

Text& KnownText(Known& known, std::string_view text)
{
    if (const size_t place = text.size() == 1 ? kFigures.find(text[0]) : std::string_view::npos;
        place != std::string_view::npos) {
        Text& figure = known.figures[place];
        if (figure.text.empty()) {
            figure.text = text;
            Measure(known, figure);
        }
        return figure;
    }
    const auto found = known.byText.find(text);
    if (found != known.byText.end()) {
        known.texts.splice(known.texts.begin(), known.texts, found->second);
        return known.texts.front();
    }
    // Some always stay, however much the other fonts keep.
    while (known.texts.size() > kNewest && (known.texts.size() >= kMaxTexts || sBytes > kMaxBytes)) {
        const Text& oldest = known.texts.back();
        sBytes -= oldest.Bytes();
        known.byText.erase(oldest.text);
        known.texts.pop_back();
    }
    Text& added = known.texts.emplace_front();
    added.text = text;
    known.byText.emplace(added.text, known.texts.begin());
    Measure(known, added);
    return added;
}

/// Slants and rotates as the font says, around the start of the base line.
QTransform TransformOf(const BFont& font)
{
    QTransform transform;
    transform.rotate(-static_cast<double>(font.Rotation()));
    const double lean = std::clamp(90.0 - static_cast<double>(font.Shear()), -80.0, 80.0);
    transform.shear(-std::tan(lean * 3.14159265358979323846 / 180), 0);
    return transform;
}

std::shared_ptr<const CoverageMask> Raster(const BFont& font, Text& text, double scale)
{
    QFont rasterFont(MakeFont(font, scale), &Device());
    const QString string = QString::fromUtf8(text.text.data(), static_cast<qsizetype>(text.text.size()));
    // Letters are as wide as whole pixels make them, so at another scale a text is nearly always wider or narrower than
    // the scaled width. But room for the text at scale 1 has to be enough at every scale.
    text.advance = text.width * scale;
    const double natural = QFontMetricsF(rasterFont, &Device()).horizontalAdvance(string);
    if (natural > text.advance && text.advance > 0)
        rasterFont.setLetterSpacing(QFont::PercentageSpacing, 100 * text.advance / natural);
    const QFontMetricsF metrics(rasterFont, &Device());
    const QTransform transform = TransformOf(font);
    const QRectF extents(0, -metrics.ascent(), text.advance, metrics.ascent() + metrics.descent());
    const QRect box = transform.mapRect(extents | metrics.boundingRect(string)).toAlignedRect().adjusted(-1, -1, 1, 1);
    if (box.isEmpty() || static_cast<int64>(box.width()) * box.height() > kMaxMaskPixels)
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
    // Only the rows and columns with content.
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

/// Returns the text with its mask at the scale.
Text& RasteredText(Known& known, std::string_view string, double scale)
{
    Text& text = KnownText(known, string);
    if (text.scale == scale)
        return text;
    sBytes -= text.Bytes();
    text.mask = Raster(known.font, text, scale);
    text.scale = scale;
    sBytes += text.Bytes();
    return text;
}

std::shared_ptr<const CoverageMask> Join(Known& known, std::string_view text, double scale)
{
    struct Part {
        int32 x;
        std::shared_ptr<const CoverageMask> mask;
    };
    std::vector<Part> parts;
    parts.reserve(text.size());
    PixelRect box;
    double pen = 0;
    ForEachPart(text, [&](std::string_view string) {
        const Text& part = RasteredText(known, string, scale);
        const auto x = static_cast<int32>(std::floor(pen + 0.5));
        pen += part.advance;
        if (part.mask == nullptr)
            return;
        const CoverageMask& mask = *part.mask;
        box = Union(box, {x + mask.left, mask.top, x + mask.left + mask.width, mask.top + mask.height});
        parts.push_back({x, part.mask});
    });
    if (box.IsEmpty() || static_cast<int64>(box.Width()) * box.Height() > kMaxMaskPixels)
        return nullptr;
    auto joined = std::make_shared<CoverageMask>(CoverageMask{box.left, box.top, box.Width(), box.Height(), {}});
    joined->coverage.resize(static_cast<size_t>(box.Width()) * static_cast<size_t>(box.Height()));
    for (const Part& part : parts) {
        const CoverageMask& mask = *part.mask;
        for (int32 y = 0; y < mask.height; y++) {
            const uint8* from = mask.coverage.data() + static_cast<ptrdiff_t>(y) * mask.width;
            uint8* to = joined->coverage.data() + static_cast<ptrdiff_t>(mask.top - box.top + y) * box.Width() +
                        part.x + mask.left - box.left;
            for (int32 x = 0; x < mask.width; x++)
                to[x] = std::max(to[x], from[x]);
        }
    }
    return joined;
}

double WidthOf(Known& known, std::string_view text)
{
    if (!IsMadeOfParts(known.font, text))
        return KnownText(known, text).width;
    double width = 0;
    ForEachPart(text, [&](std::string_view part) { width += KnownText(known, part).width; });
    return width;
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
        return static_cast<float>(std::ceil(WidthOf(KnownFont(font), text)));
    return std::ceil(static_cast<float>(DrawnSize(font)) * 0.6F * static_cast<float>(text.size()));
}

std::shared_ptr<const CoverageMask> Mask(const BFont& font, std::string_view text, double scale)
{
    std::lock_guard guard(sMutex);
    if (!sEnabled || text.empty())
        return nullptr;
    Known& known = KnownFont(font);
    return IsMadeOfParts(font, text) ? Join(known, text, scale) : RasteredText(known, text, scale).mask;
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
