// SPDX-License-Identifier: MIT
#include "kits/interface/core/ScaleWatch.h"

#include "kits/interface/View.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"
#include "kits/interface/platform/x11/DesktopScale.h"
#include "kits/interface/platform/x11/XSettings.h"
#include "tests/support/GuiTest.h"

#include <QImage>
#include <QPixmap>
#include <QPixmapCache>

#include <gtest/gtest.h>

namespace {

/// The settings that a GTK desktop publishes with this factor.
kits::XSettings Scaled(uint8 factor)
{
    const std::string name = "Gdk/WindowScalingFactor";
    std::vector<uint8> bytes{0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, static_cast<uint8>(name.size()), 0};
    bytes.insert(bytes.end(), name.begin(), name.end());
    bytes.resize((bytes.size() + 3) / 4 * 4 + 4);
    bytes.insert(bytes.end(), {factor, 0, 0, 0});
    return kits::XSettings(bytes);
}

void SetScale(uint8 factor)
{
    kits::DesktopScale::Apply(Scaled(factor));
    kits::ScaleWatch::Follow();
    test::Turn();
}

/// Red, with a blue column.
class Column : public BView {
public:
    explicit Column(BRect frame)
        : BView(frame, "column", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
    {
        SetViewColor(200, 0, 0);
    }
    void Draw(BRect) override
    {
        SetHighColor(0, 0, 200);
        StrokeLine(BPoint(3, 0), BPoint(3, Bounds().bottom));
    }
};

QImage Shown(BView* view)
{
    return kits::ViewImpl::Of(view).fPane->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

TEST(ScaleWatch, WindowsFollowUpAndDownAtTheirLogicalFrames)
{
    auto* window = new BWindow(BRect(50, 60, 149, 99), "scaled", B_TITLED_WINDOW, 0);
    auto* view = new Column(window->Bounds());
    window->AddChild(view);
    test::Show(window);
    const BRect frame = window->Frame();
    const kits::WindowImpl& impl = kits::WindowImpl::Of(window);
    const double first = impl.Scale();
    const QImage before = Shown(view);
    for (const uint8 factor : {2, 1, 3, 2, 1}) {
        SetScale(factor);
        EXPECT_EQ(impl.Scale(), first * factor);
        EXPECT_EQ(window->Frame(), frame);
        EXPECT_EQ(impl.fPane->size(), QSize(100, 40));
        EXPECT_EQ(view->Bounds(), BRect(0, 0, 99, 39));
        const QImage shown = Shown(view);
        ASSERT_EQ(shown.width(), before.width() * factor);
        for (int x = 0; x < shown.width(); x++)
            ASSERT_EQ(shown.pixel(x, 0), before.pixel(x / factor, 0)) << x << " at " << static_cast<int>(factor);
    }
    window->Quit();
    test::Turn();
}

TEST(ScaleWatch, PartsOfControlsAreDrawnAnew)
{
    QPixmapCache::insert(QStringLiteral("part"), QPixmap(4, 4));
    SetScale(2);
    EXPECT_FALSE(QPixmapCache::find(QStringLiteral("part"), nullptr));
    SetScale(1);
}
