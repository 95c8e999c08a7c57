// SPDX-License-Identifier: MIT
#include "kits/interface/CheckBox.h"

#include "kits/interface/controls/NarrowText.h"
#include "kits/interface/core/Content.h"

#include <QCheckBox>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace {

/// A check box that narrows its letters when it is narrower than it asks for, and whose mark is as tall as they are:
/// styles draw the mark in one size.
class NarrowingBox : public QCheckBox {
public:
    QSize sizeHint() const override
    {
        const QSize size = kits::NarrowText::Natural(this, text(), QCheckBox::sizeHint());
        return {size.width() + Growth(), std::max(size.height(), Mark().height())};
    }
    int NarrowestWidth() const
    {
        return Around() + kits::NarrowText::WidthOf(this, text(), kits::NarrowText::kNarrowest);
    }
    void Fit() { kits::NarrowText::Fit(this, text(), width() - Around()); }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QCheckBox::resizeEvent(event);
        Fit();
    }

    void paintEvent(QPaintEvent* event) override
    {
        if (Growth() == 0) {
            QCheckBox::paintEvent(event);
            return;
        }
        QStylePainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        const QRect label = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);
        const QRect shown = layoutDirection() == Qt::RightToLeft ? label.adjusted(0, 0, -Growth(), 0)
                                                                 : label.adjusted(Growth(), 0, 0, 0);
        const QRect mark(QPoint(0, (height() - Mark().height()) / 2), Mark());
        option.rect = QStyle::visualRect(layoutDirection(), rect(), mark);
        painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, option);
        option.rect = shown;
        painter.drawControl(QStyle::CE_CheckBoxLabel, option);
        if (option.state.testFlag(QStyle::State_HasFocus)) {
            QStyleOptionFocusRect focus;
            focus.QStyleOption::operator=(option);
            painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
        }
    }

    bool hitButton(const QPoint& place) const override
    {
        return Growth() == 0 ? QCheckBox::hitButton(place) : rect().contains(place);
    }

private:
    QSize StylesMark() const
    {
        return {style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this),
                style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)};
    }
    QSize Mark() const
    {
        const int letters = fontMetrics().ascent();
        return StylesMark().expandedTo(QSize(letters, letters));
    }
    /// Returns how much wider the mark is than the style's.
    int Growth() const { return Mark().width() - StylesMark().width(); }
    int Around() const { return sizeHint().width() - kits::NarrowText::WidthOf(this, text(), QFont::Unstretched); }
};

} // namespace

void BCheckBox::AttachedToWindow()
{
    BControl::AttachedToWindow();
    // Only once: on a page that comes back, it keeps the width that the page gave it.
    if (!fHasGrown)
        GrowToPreferred();
    fHasGrown = true;
}

float BCheckBox::NarrowestWidth()
{
    QWidget* widget = EnsureWidget();
    widget->ensurePolished();
    return static_cast<float>(static_cast<NarrowingBox*>(widget)->NarrowestWidth() - 1);
}

void BCheckBox::SetValue(int32 value)
{
    BControl::SetValue(value == B_CONTROL_OFF ? B_CONTROL_OFF : B_CONTROL_ON);
}

QWidget* BCheckBox::MakeWidget()
{
    auto* box = new NarrowingBox;
    QObject::connect(box, &QCheckBox::clicked, fContent.get(), [this](bool checked) {
        StoreValue(checked ? B_CONTROL_ON : B_CONTROL_OFF);
        Invoke();
    });
    return box;
}

void BCheckBox::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* box = fContent->As<NarrowingBox>();
    const QSignalBlocker silent(box);
    if (box->text() != kits::ToLabel(Label())) {
        box->setText(kits::ToLabel(Label()));
        box->Fit();
    }
    box->setChecked(Value() != B_CONTROL_OFF);
}
