// SPDX-License-Identifier: MIT
#include "kits/interface/Font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <tuple>
#include <vector>

namespace {

QStringList Families()
{
    QStringList families = qGuiApp != nullptr ? QFontDatabase::families() : QStringList();
    // Names that no BFont can hold are not offered.
    families.removeIf([](const QString& name) {
        return QFontDatabase::isPrivateFamily(name) || name.toUtf8().size() > qsizetype{B_FONT_FAMILY_LENGTH};
    });
    families.sort(Qt::CaseInsensitive);
    return families;
}

/// The properties that order the styles of a family.
struct Style {
    QString name;
    int stretch = QFont::Unstretched;
    int weight = QFont::Normal;
    int slant = QFont::StyleNormal;

    auto Order() const
    {
        const int away = std::abs(stretch - QFont::Unstretched);
        return std::tuple(away, stretch, weight, slant, name);
    }
    /// The distance from the regular style.
    auto Distance() const
    {
        return std::tuple(std::abs(stretch - QFont::Unstretched), slant != QFont::StyleNormal,
                          std::abs(weight - QFont::Normal), weight, name);
    }
};

/// The toolkit knows the width of a style's letters but does not report it: the names do.
int StretchOf(const QString& style)
{
    const auto has = [&style](const char* word) { return style.contains(QLatin1String(word), Qt::CaseInsensitive); };
    if (has("Condensed") || has("Narrow") || has("Compressed"))
        return has("Semi") ? QFont::SemiCondensed : has("Extra") ? QFont::ExtraCondensed : QFont::Condensed;
    if (has("Expanded") || has("Extended") || has("Wide"))
        return has("Semi") ? QFont::SemiExpanded : QFont::Expanded;
    return QFont::Unstretched;
}

std::vector<Style> StylesOf(const QString& family)
{
    std::vector<Style> styles;
    if (qGuiApp == nullptr)
        return styles;
    for (const QString& name : QFontDatabase::styles(family)) {
        if (name.toUtf8().size() > qsizetype{B_FONT_STYLE_LENGTH})
            continue;
        constexpr int kAnySize = 12;
        const QFont::Style slant = QFontDatabase::font(family, name, kAnySize).style();
        styles.push_back({name, StretchOf(name), QFontDatabase::weight(family, name), slant});
    }
    std::sort(styles.begin(), styles.end(), [](const Style& a, const Style& b) { return a.Order() < b.Order(); });
    return styles;
}

bool Has(const std::vector<Style>& styles, const QString& name)
{
    return std::any_of(
        styles.begin(), styles.end(), [&name](const Style& style) { return style.name == name; });
}

QString RegularOf(const std::vector<Style>& styles)
{
    const auto nearer = [](const Style& a, const Style& b) { return a.Distance() < b.Distance(); };
    return std::min_element(styles.begin(), styles.end(), nearer)->name;
}

template <size_t Size> void Copy(char (*to)[Size], const QString& from)
{
    const QByteArray bytes = from.toUtf8();
    std::memset(*to, 0, Size);
    std::memcpy(*to, bytes.constData(), static_cast<size_t>(bytes.size()));
}

} // namespace

int32 count_font_families()
{
    return static_cast<int32>(Families().size());
}

status_t get_font_family(int32 index, font_family* family)
{
    if (family == nullptr)
        return B_BAD_VALUE;
    const QStringList families = Families();
    if (index < 0 || index >= families.size())
        return B_BAD_INDEX;
    Copy(family, families[index]);
    return B_OK;
}

int32 count_font_styles(const font_family family)
{
    return static_cast<int32>(StylesOf(QString::fromUtf8(family)).size());
}

status_t get_font_style(const font_family family, int32 index, font_style* style, uint16* face)
{
    if (style == nullptr)
        return B_BAD_VALUE;
    const QString name = QString::fromUtf8(family);
    const std::vector<Style> styles = StylesOf(name);
    if (styles.empty())
        return B_NAME_NOT_FOUND;
    if (index < 0 || static_cast<size_t>(index) >= styles.size())
        return B_BAD_INDEX;
    const QString& found = styles[static_cast<size_t>(index)].name;
    Copy(style, found);
    if (face != nullptr) {
        const bool bold = QFontDatabase::bold(name, found);
        const bool italic = QFontDatabase::italic(name, found);
        *face = static_cast<uint16>((bold ? B_BOLD_FACE : 0) | (italic ? B_ITALIC_FACE : 0));
        if (*face == 0)
            *face = B_REGULAR_FACE;
    }
    return B_OK;
}

namespace {

/// Returns the name under which a family is listed, possibly with its maker in brackets; empty if it is not listed.
QString ListedFamily(const QStringList& families, const QString& name)
{
    if (families.contains(name))
        return name;
    const auto found = std::find_if(families.begin(), families.end(), [&name](const QString& family) {
        return family.startsWith(name + QStringLiteral(" ["));
    });
    return found != families.end() && !name.isEmpty() ? *found : QString();
}

/// Returns the style nearest to the regular one among those with these faces, or among all if none has them.
QString StyleWithFace(const QString& family, const std::vector<Style>& styles, uint16 face)
{
    std::vector<Style> fitting;
    std::copy_if(styles.begin(), styles.end(), std::back_inserter(fitting), [&](const Style& style) {
        return QFontDatabase::bold(family, style.name) == ((face & B_BOLD_FACE) != 0) &&
               QFontDatabase::italic(family, style.name) == ((face & B_ITALIC_FACE) != 0);
    });
    return RegularOf(fitting.empty() ? styles : fitting);
}

} // namespace

status_t kits::GetRegularStyle(const font_family family, font_style* style)
{
    if (style == nullptr)
        return B_BAD_VALUE;
    const std::vector<Style> styles = StylesOf(QString::fromUtf8(family));
    if (styles.empty())
        return B_NAME_NOT_FOUND;
    Copy(style, RegularOf(styles));
    return B_OK;
}

status_t kits::GetListedStyle(const BFont& font, font_family* family, font_style* style)
{
    font_family ownFamily;
    font_style ownStyle;
    font.GetFamilyAndStyle(&ownFamily, &ownStyle);
    const QStringList families = Families();
    QString found = ListedFamily(families, QString::fromUtf8(ownFamily));
    if (found.isEmpty() && qGuiApp != nullptr)
        found = ListedFamily(families, QFontInfo(QFont(QString::fromUtf8(ownFamily))).family());
    const std::vector<Style> styles = StylesOf(found);
    if (styles.empty())
        return B_NAME_NOT_FOUND;
    Copy(family, found);
    Copy(style, Has(styles, QString::fromUtf8(ownStyle)) ? QString::fromUtf8(ownStyle)
                                                         : StyleWithFace(found, styles, font.Face()));
    return B_OK;
}
