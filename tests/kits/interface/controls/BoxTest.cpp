// SPDX-License-Identifier: MIT
#include "kits/interface/Box.h"

#include "tests/kits/interface/WidgetTest.h"

#include <QImage>

using BoxTest = WidgetTest;

TEST_F(BoxTest, ShowsItsColourWithinItsBorder)
{
    auto* box = new BBox(BRect(10, 10, 60, 60), "swatch", B_FOLLOW_NONE, B_WILL_DRAW, B_PLAIN_BORDER);
    box->SetViewColor(make_color(200, 0, 0));
    fPage->AddChild(box);
    test::Turn();
    EXPECT_EQ(box->ViewColor(), make_color(200, 0, 0)) << "its own, not the parent's";
    const uint32 red = 0xFFC80000;
    EXPECT_EQ(test::PixelOf(fWindow, 35, 35), red);
    EXPECT_EQ(test::PixelOf(fWindow, 11, 11), red);
    EXPECT_NE(test::PixelOf(fWindow, 10, 30), red);
    EXPECT_NE(test::PixelOf(fWindow, 60, 30), red);
    EXPECT_EQ(test::PixelOf(fWindow, 61, 30), 0xFFD8D8D8);
    box->SetViewColor(make_color(0, 0, 90));
    box->Invalidate();
    test::Turn();
    EXPECT_EQ(test::PixelOf(fWindow, 35, 35), 0xFF00005A);
}

TEST_F(BoxTest, WithoutOneItTakesItsParentsColour)
{
    auto* box = new BBox(BRect(10, 10, 60, 60));
    fPage->AddChild(box);
    EXPECT_EQ(box->ViewColor(), make_color(216, 216, 216));
    EXPECT_EQ(box->Border(), B_FANCY_BORDER);
}

TEST_F(BoxTest, TheMouseReachesTheBox)
{
    class Listening : public BBox {
    public:
        using BBox::BBox;
        void MouseDown(BPoint where) override { fWhere = where; }
        BPoint fWhere;
    };
    auto* box = new Listening(BRect(10, 10, 60, 60));
    fPage->AddChild(box);
    test::Click(box, BPoint(20, 25));
    EXPECT_EQ(box->fWhere, BPoint(20, 25));
}

TEST_F(BoxTest, FollowsChangesOfItsSizeAndLabel)
{
    auto* bare = new BBox(BRect(110, 10, 160, 60), "bare", B_FOLLOW_NONE, B_WILL_DRAW, B_NO_BORDER);
    auto* box = new BBox(BRect(10, 10, 60, 60), "box", B_FOLLOW_NONE, B_WILL_DRAW, B_PLAIN_BORDER);
    fPage->AddChild(bare);
    fPage->AddChild(box);
    test::Turn();
    EXPECT_EQ(test::PixelOf(fWindow, 110, 30), 0xFFD8D8D8);
    box->ResizeTo(80, 80);
    test::Turn();
    EXPECT_NE(test::PixelOf(fWindow, 10, 30), 0xFFD8D8D8);
    EXPECT_NE(test::PixelOf(fWindow, 90, 30), 0xFFD8D8D8);
    box->SetLabel("Group & more");
    EXPECT_STREQ(box->Label(), "Group & more");
    EXPECT_EQ(kits::ViewWidget(box)->accessibleName(), QLatin1String("Group & more"));
}
