// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/UserFonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

namespace kits {

constinit BFont UserFonts::sPlain{BFont::Blank()};
constinit BFont UserFonts::sBold{BFont::Blank()};

namespace {

void Take(BFont* into, const QFont& font)
{
    // Only the user's choice: the font file is found when something is drawn.
    into->SetFamilyAndStyle(font.family().toUtf8().constData(), font.styleName().toUtf8().constData());
    const int dots = QGuiApplication::primaryScreen() != nullptr
                         ? qRound(QGuiApplication::primaryScreen()->logicalDotsPerInchY())
                         : 96;
    into->SetSize(static_cast<float>(font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * dots / 72)));
}

} // namespace

void UserFonts::Read()
{
    Take(&sPlain, QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    sBold = sPlain;
    sBold.SetFace(B_BOLD_FACE);
}

void UserFonts::Forget()
{
    sPlain = BFont(BFont::Blank());
    sBold = sPlain;
}

} // namespace kits

const BFont* be_plain_font = &kits::UserFonts::sPlain;
const BFont* be_bold_font = &kits::UserFonts::sBold;
