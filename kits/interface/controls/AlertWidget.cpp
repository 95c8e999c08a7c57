// SPDX-License-Identifier: MIT
#include "kits/interface/controls/AlertWidget.h"

#include "kits/application/Language.h"
#include "kits/interface/core/Content.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>

#include <algorithm>

namespace {

/// Lines longer than this many letters are tiring to read.
constexpr int kLettersPerLine = 70;
constexpr int kOffset = 40;

QIcon PictureOf(alert_type type, const QStyle& style)
{
    switch (type) {
    case B_WARNING_ALERT:
        return style.standardIcon(QStyle::SP_MessageBoxWarning);
    case B_STOP_ALERT:
        return style.standardIcon(QStyle::SP_MessageBoxCritical);
    default:
        return style.standardIcon(QStyle::SP_MessageBoxInformation);
    }
}

using kits::ToText;
using kits::Translate;

QString NameOf(alert_type type)
{
    switch (type) {
    case B_WARNING_ALERT:
        return ToText(Translate("Warning"));
    case B_STOP_ALERT:
        return ToText(Translate("Error"));
    default:
        return ToText(Translate("Information"));
    }
}

/// Returns the text with places at which a word wider than a line, such as a path, may be broken: a label breaks lines
/// only between words.
QString Breakable(const QString& text, const QFontMetrics& metrics, int most)
{
    constexpr QChar kBreak(0x200B);
    QString result;
    QString part; // of a word, since the last such place
    for (const QChar letter : text) {
        const bool isStart = !letter.isLowSurrogate() && !letter.isMark();
        if (!letter.isSpace() && isStart && metrics.horizontalAdvance(part + letter) > most) {
            const auto slash = part.lastIndexOf(u'/');
            const auto length = slash > 0 ? part.size() - slash - 1 : 0;
            result.insert(result.size() - length, kBreak);
            part = part.right(length);
        }
        part = letter.isSpace() ? QString() : part + letter;
        result += letter;
    }
    return result;
}

/// As wide as the longest line, if that can be read well and fits on the screen.
void FitText(QLabel* label)
{
    const QFontMetrics metrics = label->fontMetrics();
    const int widest = label->sizeHint().width();
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int room = screen == nullptr ? widest : screen->availableGeometry().width() * 2 / 3;
    const int most = std::min(room, kLettersPerLine * metrics.averageCharWidth());
    if (widest <= most)
        return;
    label->setText(Breakable(label->text(), metrics, most));
    label->setWordWrap(true);
    label->setFixedWidth(most);
    label->setFixedHeight(label->heightForWidth(most));
}

} // namespace

namespace kits {

AlertWidget::AlertWidget(const QString& text, const std::vector<std::string>& buttons, button_width width,
                         button_spacing spacing, alert_type type, std::function<void(int)> pressed)
    : fPressed(std::move(pressed))
{
    auto* rows = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    const QIcon picture = PictureOf(type, *style());
    if (!picture.isNull()) {
        auto* icon = new QLabel(this);
        const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
        icon->setPixmap(picture.pixmap(size));
        icon->setAlignment(Qt::AlignTop);
        icon->setAccessibleName(NameOf(type));
        top->addWidget(icon);
        top->addSpacing(style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, this));
    }
    auto* label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    FitText(label);
    top->addWidget(label, 1);
    rows->addLayout(top, 1);

    for (std::size_t i = 0; i < buttons.size(); i++) {
        auto* button = new QPushButton(ToLabel(buttons[i].c_str()), this);
        button->setAccessibleDescription(text);
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, i] { fPressed(static_cast<int>(i)); });
        fButtons.push_back(button);
    }
    rows->addLayout(LayOutButtons(width, spacing));
    fButtons.back()->setDefault(true);
    setFocusProxy(fButtons.back());
    if (fButtons.size() == 1) {
        auto* escape = new QShortcut(Qt::Key_Escape, this);
        connect(escape, &QShortcut::activated, fButtons[0], [this] { fButtons[0]->click(); });
    }
}

QLayout* AlertWidget::LayOutButtons(button_width width, button_spacing spacing)
{
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (std::size_t i = 0; i < fButtons.size(); i++) {
        QPushButton* button = fButtons[i];
        if (width == B_WIDTH_FROM_LABEL)
            button->setFixedWidth(button->fontMetrics().horizontalAdvance(button->text()) +
                                  2 * button->fontMetrics().height());
        row->addWidget(button);
        if (i == 0 && spacing == B_OFFSET_SPACING && fButtons.size() > 1)
            row->addSpacing(kOffset);
    }
    return row;
}

void AlertWidget::AnswerCloseOf(QWidget* window)
{
    window->installEventFilter(this);
}

bool AlertWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Close)
        return QWidget::eventFilter(watched, event);
    event->ignore();
    fPressed(0);
    return true;
}

} // namespace kits
