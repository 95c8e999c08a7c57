// SPDX-License-Identifier: MIT
#include "kits/interface/MenuBar.h"

#include "kits/interface/Window.h"
#include "kits/interface/controls/MenuPart.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QCoreApplication>
#include <QMenuBar>
#include <QShortcut>

#include <algorithm>

namespace {

/// A bar reads one picture of its style, a PNG, which the toolkit reads without a plugin. But with its plugin folders
/// in sight it would first load every picture plugin: a megabyte, and milliseconds before the window appears. So the
/// folders are hidden meanwhile.
QMenuBar* MakeBar()
{
    const QStringList folders = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    auto* const bar = new QMenuBar;
    QCoreApplication::setLibraryPaths(folders);
    return bar;
}

} // namespace

BMenuBar::BMenuBar(BRect frame, const char* name, uint32 resizingMode, menu_layout layout, bool resizeToFit)
    : BMenu(name, layout)
    , fResizeToFit(resizeToFit)
{
    MoveTo(frame.LeftTop());
    ResizeTo(frame.Width(), frame.Height());
    SetResizingMode(resizingMode);
}

BMenuBar::~BMenuBar() = default;

void BMenuBar::WidgetCreated(QWidget*)
{
    fContent = std::make_unique<kits::Content>();
    auto* bar = MakeBar();
    fContent->SetWidget(bar);
    bar->setNativeMenuBar(false);
    auto* open = new QShortcut(QKeySequence(Qt::Key_F10), bar);
    QObject::connect(open, &QShortcut::activated, fContent.get(), [bar] {
        if (!bar->actions().isEmpty())
            bar->setActiveAction(bar->actions().constFirst());
    });
    fPart = std::make_unique<kits::MenuPart>(this, bar);
    kits::FillView(this, bar);
}

void BMenuBar::AttachedToWindow()
{
    kits::TakeParentColor(this);
    if (!fResizeToFit)
        return;
    float height = 0;
    GetPreferredSize(nullptr, &height);
    ResizeTo(std::min(Bounds().Width(), Window()->Bounds().Width()), height);
}

void BMenuBar::ViewColorChanged()
{
    if (fContent != nullptr)
        kits::FitPalette(fContent->As<>(), kits::ColorBehind(this));
}

void BMenuBar::GetPreferredSize(float* width, float* height)
{
    if (fContent == nullptr) {
        BMenu::GetPreferredSize(width, height);
        return;
    }
    kits::GetSizeHint(fContent->As<>(), width, height);
}
