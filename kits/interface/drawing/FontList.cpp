#include "kits/interface/Font.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <cstring>

namespace {

QStringList Families()
{
    QStringList families = qGuiApp != nullptr ? QFontDatabase::families() : QStringList();
    // What no BFont can name is not offered.
    families.removeIf([](const QString& name) {
        return QFontDatabase::isPrivateFamily(name) || name.toUtf8().size() > qsizetype{B_FONT_FAMILY_LENGTH};
    });
    families.sort(Qt::CaseInsensitive);
    return families;
}

QStringList StylesOf(const char* family)
{
    QStringList styles = qGuiApp != nullptr ? QFontDatabase::styles(QString::fromUtf8(family)) : QStringList();
    styles.removeIf([](const QString& name) { return name.toUtf8().size() > qsizetype{B_FONT_STYLE_LENGTH}; });
    return styles;
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
    return static_cast<int32>(StylesOf(family).size());
}

status_t get_font_style(const font_family family, int32 index, font_style* style, uint16* face)
{
    if (style == nullptr)
        return B_BAD_VALUE;
    const QStringList styles = StylesOf(family);
    if (styles.isEmpty())
        return B_NAME_NOT_FOUND;
    if (index < 0 || index >= styles.size())
        return B_BAD_INDEX;
    Copy(style, styles[index]);
    if (face != nullptr) {
        const QString name = QString::fromUtf8(family);
        const bool bold = QFontDatabase::bold(name, styles[index]);
        const bool italic = QFontDatabase::italic(name, styles[index]);
        *face = static_cast<uint16>((bold ? B_BOLD_FACE : 0) | (italic ? B_ITALIC_FACE : 0));
        if (*face == 0)
            *face = B_REGULAR_FACE;
    }
    return B_OK;
}
