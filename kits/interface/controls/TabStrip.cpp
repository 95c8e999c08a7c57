// SPDX-License-Identifier: MIT
#include "kits/interface/controls/TabStrip.h"

#include "kits/interface/TabView.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QEvent>
#include <QShortcut>
#include <QStyleOptionTab>
#include <QStylePainter>

#include <algorithm>

namespace {

constexpr int kSmallestTab = 16;

} // namespace

namespace kits {

TabStrip::TabStrip(BTabView* owner)
    : fOwner(owner)
{
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    AddKey(Qt::CTRL | Qt::Key_PageDown, 1);
    AddKey(Qt::CTRL | Qt::Key_Tab, 1);
    AddKey(Qt::CTRL | Qt::Key_PageUp, -1);
    AddKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
}

void TabStrip::AddKey(QKeyCombination key, int step)
{
    auto* shortcut = new QShortcut(key, this);
    connect(shortcut, &QShortcut::activated, this, [this, step] {
        const int tabs = fOwner->CountTabs();
        if (tabs > 0)
            fOwner->Select((std::max(fOwner->Selection(), 0) + step + tabs) % tabs);
    });
}

void TabStrip::PutInto(QWidget* widget)
{
    setParent(widget);
    widget->setFocusProxy(this);
    widget->installEventFilter(this);
    setGeometry(0, 0, widget->width(), Height());
    show();
}

void TabStrip::Update()
{
    while (count() > fOwner->CountTabs())
        removeTab(count() - 1);
    for (int i = 0; i < fOwner->CountTabs(); i++) {
        const QString label = ToLabel(fOwner->TabAt(i)->Label());
        if (i >= count())
            addTab(label);
        else if (tabText(i) != label)
            setTabText(i, label);
    }
    if (fOwner->Selection() >= 0)
        setCurrentIndex(fOwner->Selection());
    setAccessibleName(ToText(fOwner->Name()));
    update();
}

int TabStrip::Height() const
{
    QTabBar probe;
    probe.setFont(font());
    probe.addTab(QStringLiteral("X"));
    return probe.sizeHint().height();
}

QSize TabStrip::minimumTabSizeHint(int index) const
{
    // In a narrow window, labels shrink to nothing before tabs are lost.
    return {kSmallestTab, QTabBar::minimumTabSizeHint(index).height()};
}

void TabStrip::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    if (drawBase())
        PaintBase(painter);
    const int selected = fOwner->Selection();
    for (int i = 0; i < count(); i++)
        if (i != selected)
            PaintTab(painter, i);
    if (selected >= 0 && selected < count())
        PaintTab(painter, selected);
}

void TabStrip::PaintBase(QStylePainter& painter)
{
    QStyleOptionTabBarBase option;
    option.initFrom(this);
    option.shape = shape();
    option.documentMode = documentMode();
    const int overlap = style()->pixelMetric(QStyle::PM_TabBarBaseOverlap, nullptr, this);
    option.rect = QRect(0, height() - overlap, width(), overlap);
    for (int i = 0; i < count(); i++)
        option.tabBarRect |= tabRect(i);
    option.selectedTabRect = tabRect(fOwner->Selection());
    painter.drawPrimitive(QStyle::PE_FrameTabBarBase, option);
}

void TabStrip::PaintTab(QStylePainter& painter, int index)
{
    BTab* tab = fOwner->TabAt(index);
    if (tab == nullptr)
        return;
    QStyleOptionTab option;
    initStyleOption(&option, index);
    option.state.setFlag(QStyle::State_Selected, index == fOwner->Selection());
    painter.drawControl(QStyle::CE_TabBarTabShape, option);
    fPainter = &painter;
    fOption = &option;
    tab->DrawLabel(fOwner, FromQRect(tabRect(index)));
    fPainter = nullptr;
    fOption = nullptr;
}

void TabStrip::PaintLabel()
{
    if (fPainter != nullptr)
        fPainter->drawControl(QStyle::CE_TabBarTabLabel, *fOption);
}

bool TabStrip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parent())
        setGeometry(0, 0, parentWidget()->width(), height());
    return QTabBar::eventFilter(watched, event);
}

void TabStrip::changeEvent(QEvent* event)
{
    QTabBar::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        resize(width(), Height());
        fOwner->LayOut();
    }
}

} // namespace kits
