// SPDX-License-Identifier: MIT
#include "kits/interface/Shortcuts.h"
#include "kits/interface/core/ViewPrivate.h"
#include "tests/support/GuiTest.h"

#include <QEvent>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

#include <random>

// Drawing reaches the screen by the short way or by the toolkit's.

namespace {

constexpr rgb_color kGray{100, 100, 100, 255};

class Sheet : public BView {
public:
    Sheet(BRect frame, rgb_color color)
        : BView(frame, "sheet", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW)
    {
        SetViewColor(color);
    }
};

/// Counts the toolkit's paint events.
class Paints : public QObject {
public:
    explicit Paints(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint || event->type() == QEvent::UpdateRequest ? 1 : 0;
        return false;
    }
    int count = 0;
};

class ScreenCopyTest : public testing::Test {
protected:
    ScreenCopyTest()
        : window(new BWindow(BRect(100, 100, 299, 249), "stage", B_TITLED_WINDOW, 0))
        , page(new Sheet(BRect(0, 0, 199, 149), kGray))
    {
        kits::UseShortcuts("copy,pixels");
        window->AddChild(page);
    }
    ~ScreenCopyTest() override
    {
        window->Quit();
        test::Turn();
        kits::UseShortcuts();
    }
    Sheet* Add(BView* parent, BRect frame, rgb_color color = {200, 0, 0, 255})
    {
        auto* sheet = new Sheet(frame, color);
        parent->AddChild(sheet);
        return sheet;
    }
    void Show()
    {
        test::Show(window);
        Screen();
        test::Turn();
    }
    QWidget* Widget() const { return kits::WindowWidget(window); }
    /// Returns what the display really shows of the window.
    QImage Screen() const
    {
        const QWindow* const handle = Widget()->windowHandle();
        return handle->screen()->grabWindow(handle->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// Returns what it must show.
    QImage Wanted() const { return Widget()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
    static void Line(BView* view, int32 x, rgb_color color)
    {
        view->SetHighColor(color);
        view->StrokeLine(BPoint(static_cast<float>(x), 0), BPoint(static_cast<float>(x), view->Bounds().bottom));
    }

    /// Draws, moves and hides at random, and compares the screen with what it has to show.
    void DrawAnything()
    {
        std::mt19937 random(42);
        const auto below = [&](uint32 limit) { return static_cast<int32>(random() % limit); };
        const auto color = [&]() -> rgb_color {
            return {static_cast<uint8>(random()), static_cast<uint8>(random()), static_cast<uint8>(random()), 255};
        };
        std::vector<Sheet*> sheets{page};
        for (int32 i = 0; i < 12; i++) {
            const auto left = static_cast<float>(below(150) - 10);
            const auto top = static_cast<float>(below(100) - 10);
            const BRect frame(left, top, left + static_cast<float>(below(80)), top + static_cast<float>(below(60)));
            sheets.push_back(Add(sheets[random() % sheets.size()], frame, color()));
        }
        Show();
        for (int32 round = 0; round < 300; round++) {
            for (int32 strokes = below(6); strokes >= 0; strokes--) {
                Sheet* sheet = sheets[random() % sheets.size()];
                const BPoint from(static_cast<float>(below(100) - 5), static_cast<float>(below(80) - 5));
                sheet->SetHighColor(color());
                sheet->FillRect(BRect(from.x, from.y, from.x + static_cast<float>(below(9)), from.y + 20));
            }
            if (round % 7 == 6) {
                Sheet* sheet = sheets[1 + random() % (sheets.size() - 1)];
                const BPoint by(static_cast<float>(below(9) - 4), static_cast<float>(below(9) - 4));
                sheet->MoveTo(sheet->Frame().LeftTop() + by);
            }
            test::Turn();
            ASSERT_EQ(Screen(), Wanted()) << "round " << round;
        }
    }

    BWindow* window;
    Sheet* page;
};

} // namespace

TEST_F(ScreenCopyTest, AColumnIsShownWithoutTheToolkitsPainting)
{
    Sheet* chart = Add(page, BRect(20, 30, 119, 79));
    Show();
    Paints ofWindow(Widget());
    Paints ofChart(kits::ViewWidget(chart));
    for (int32 x = 5; x < 10; x++) {
        Line(chart, x, {0, static_cast<uint8>(x), 250, 255});
        test::Turn();
    }
    EXPECT_EQ(ofWindow.count, 0);
    EXPECT_EQ(ofChart.count, 0);
    const QImage screen = Screen();
    for (int32 x = 5; x < 10; x++)
        EXPECT_EQ(screen.pixel(20 + x, 50), qRgb(0, x, 250));
    EXPECT_EQ(screen.pixel(20 + 4, 50), qRgb(200, 0, 0));
    EXPECT_EQ(screen, Wanted());
}

TEST_F(ScreenCopyTest, WhatLiesAboveStays)
{
    Sheet* chart = Add(page, BRect(20, 30, 119, 79));
    Add(chart, BRect(0, 0, 9, 9), {0, 200, 0, 255});
    Add(page, BRect(60, 20, 69, 99), {0, 0, 200, 255});
    Show();
    for (int32 x = 0; x < 100; x += 3)
        Line(chart, x, {250, 250, 0, 255});
    test::Turn();
    const QImage screen = Screen();
    EXPECT_EQ(screen.pixel(20 + 3, 30 + 3), qRgb(0, 200, 0));
    EXPECT_EQ(screen.pixel(20 + 3, 30 + 15), qRgb(250, 250, 0));
    EXPECT_EQ(screen.pixel(63, 50), qRgb(0, 0, 200));
    EXPECT_EQ(screen, Wanted());
}

TEST_F(ScreenCopyTest, AWidgetOfAControlAboveStays)
{
    Sheet* chart = Add(page, BRect(20, 30, 119, 79));
    Show();
    QLabel label(kits::ViewWidget(page));
    label.setAutoFillBackground(true);
    label.setGeometry(40, 10, 30, 100);
    label.show();
    test::Turn();
    for (int32 x = 0; x < 100; x++)
        Line(chart, x, {250, 250, 0, 255});
    test::Turn();
    EXPECT_EQ(Screen(), Wanted());
    EXPECT_NE(Screen().pixel(50, 50), qRgb(250, 250, 0));
}

TEST_F(ScreenCopyTest, NothingIsShownOutsideOfTheParent)
{
    Sheet* frame = Add(page, BRect(20, 30, 69, 79), {0, 0, 200, 255});
    Sheet* chart = Add(frame, BRect(-10, -10, 99, 99));
    Show();
    for (int32 x = 0; x < 110; x += 2)
        Line(chart, x, {250, 250, 0, 255});
    test::Turn();
    EXPECT_EQ(Screen().pixel(15, 50), qRgb(100, 100, 100));
    EXPECT_EQ(Screen().pixel(75, 50), qRgb(100, 100, 100));
    EXPECT_EQ(Screen(), Wanted());
}

TEST_F(ScreenCopyTest, WhatIsTransparentShowsWhatLiesBelow)
{
    Sheet* chart = Add(page, BRect(20, 30, 119, 79), B_TRANSPARENT_COLOR);
    Show();
    Line(chart, 5, {250, 250, 0, 255});
    test::Turn();
    EXPECT_EQ(Screen().pixel(25, 50), qRgb(250, 250, 0));
    EXPECT_EQ(Screen().pixel(26, 50), qRgb(100, 100, 100));
}

TEST_F(ScreenCopyTest, AWindowThatIsResizedShowsAllOfIt)
{
    Sheet* chart = Add(page, BRect(20, 30, 119, 79));
    Show();
    window->ResizeTo(249, 199);
    Line(chart, 5, {250, 250, 0, 255});
    test::Turn();
    test::WaitFor([&] { return Screen().size() == QSize(250, 200); });
    test::Turn();
    Line(chart, 7, {0, 250, 0, 255});
    test::Turn();
    EXPECT_EQ(Screen().pixel(25, 50), qRgb(250, 250, 0));
    EXPECT_EQ(Screen().pixel(27, 50), qRgb(0, 250, 0));
}

TEST_F(ScreenCopyTest, WhateverIsDrawnTheScreenIsWhatTheToolkitWouldPaint)
{
    DrawAnything();
}

TEST_F(ScreenCopyTest, ShowsTheSameByTheToolkitsRequest)
{
    kits::UseShortcuts("copy");
    DrawAnything();
}

TEST_F(ScreenCopyTest, WithoutItTheScreenIsTheSame)
{
    kits::UseShortcuts("off");
    Paints ofWindow(Widget());
    DrawAnything();
    EXPECT_GT(ofWindow.count, 0);
}

TEST_F(ScreenCopyTest, AWindowWithAlphaShowsItsOpaqueViews)
{
    // On an X server such a window has another depth.
    Widget()->setAttribute(Qt::WA_TranslucentBackground);
    Sheet* chart = Add(page, BRect(20, 30, 119, 79));
    Show();
    Paints ofChart(kits::ViewWidget(chart));
    Line(chart, 5, {250, 250, 0, 255});
    test::Turn();
    EXPECT_EQ(ofChart.count, 0);
    EXPECT_EQ(Screen().pixel(25, 50), qRgb(250, 250, 0));
    EXPECT_EQ(Screen(), Wanted());
}
