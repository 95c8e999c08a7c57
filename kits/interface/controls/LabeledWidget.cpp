// SPDX-License-Identifier: MIT
#include "kits/interface/controls/LabeledWidget.h"

#include "kits/interface/controls/NarrowText.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>

namespace {

constexpr int kGap = 5;
/// The least that remains of the gap if the divider is set too close.
constexpr int kSmallestGap = 2;

} // namespace

namespace kits {

LabeledWidget::LabeledWidget(QWidget* field)
    : fField(field)
    , fText(new QLabel(this))
{
    fField->setParent(this);
    setFocusProxy(fField);
    fText->setTextFormat(Qt::PlainText);
    fText->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void LabeledWidget::SetLabel(const QString& label)
{
    fLabel = label;
    fText->setVisible(!label.isEmpty());
    fField->setAccessibleName(label);
    LayOut();
}

void LabeledWidget::SetDivider(float divider)
{
    fDivider = divider;
    LayOut();
}

int LabeledWidget::Divider() const
{
    if (fDivider >= 0)
        return std::min(qRound(fDivider), width());
    return LabelWidth();
}

int LabeledWidget::LabelWidth() const
{
    // One pixel more, because widths are rounded.
    return fLabel.isEmpty() ? 0 : fontMetrics().horizontalAdvance(fLabel) + 1 + kGap;
}

int LabeledWidget::NarrowestLabelWidth() const
{
    return fLabel.isEmpty() ? 0 : NarrowText::WidthOf(this, fLabel, NarrowText::kNarrowest) + 1 + kSmallestGap;
}

QSize LabeledWidget::sizeHint() const
{
    const QSize field = fField->sizeHint();
    const int label = LabelWidth();
    return {std::max(label, fDivider >= 0 ? qRound(fDivider) : 0) + field.width(),
            std::max(fontMetrics().height(), field.height())};
}

void LabeledWidget::LayOut()
{
    const int divider = Divider();
    const int height = std::min(this->height(), fField->sizeHint().height());
    fField->setGeometry(divider, (this->height() - height) / 2, width() - divider, height);
    const int room = std::max(0, divider - kSmallestGap);
    fText->setGeometry(0, 0, room, this->height());
    NarrowText::Fit(fText, fLabel, room);
    fText->setText(fText->fontMetrics().elidedText(fLabel, Qt::ElideRight, room));
}

void LabeledWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    LayOut();
}

void LabeledWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        LayOut();
}

} // namespace kits
