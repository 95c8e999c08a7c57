#include "kits/interface/theme/Theme.h"

#include "kits/interface/Button.h"
#include "kits/interface/TabView.h"
#include "kits/interface/TextView.h"
#include "kits/interface/Window.h"
#include "kits/interface/views/ViewPrivate.h"
#include "tests/support/GuiTest.h"

#include <QGuiApplication>
#include <QPalette>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

constexpr rgb_color kGrey{216, 216, 216, 255};

int Brightness(rgb_color color)
{
    return (color.red + color.green + color.blue) / 3;
}

class Theme : public testing::Test {
protected:
    void TearDown() override { kits::Theme::SetDesktopIsDark(false); }
};

} // namespace

TEST_F(Theme, IsThePlatformsGreyOnALightDesktop)
{
    EXPECT_FALSE(kits::Theme::IsDark());
    EXPECT_EQ(ui_color(B_PANEL_BACKGROUND_COLOR), kGrey);
    EXPECT_LT(Brightness(ui_color(B_PANEL_TEXT_COLOR)), 64);
    EXPECT_GT(Brightness(ui_color(B_DOCUMENT_BACKGROUND_COLOR)), 192);
}

TEST_F(Theme, ReadsWellOnADarkDesktop)
{
    kits::Theme::SetDesktopIsDark(true);
    EXPECT_TRUE(kits::Theme::IsDark());
    const color_which pairs[][2] = {{B_PANEL_TEXT_COLOR, B_PANEL_BACKGROUND_COLOR},
                                    {B_DOCUMENT_TEXT_COLOR, B_DOCUMENT_BACKGROUND_COLOR},
                                    {B_CONTROL_TEXT_COLOR, B_CONTROL_BACKGROUND_COLOR},
                                    {B_TOOL_TIP_TEXT_COLOR, B_TOOL_TIP_BACKGROUND_COLOR}};
    for (const auto& pair : pairs)
        EXPECT_GT(Brightness(ui_color(pair[0])) - Brightness(ui_color(pair[1])), 120) << pair[0];
    const QPalette palette = QGuiApplication::palette();
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        EXPECT_GT(qGray(palette.color(QPalette::Disabled, role).rgb()), 110);
        EXPECT_LT(qGray(palette.color(QPalette::Disabled, role).rgb()), qGray(palette.color(role).rgb()));
    }
    kits::Theme::SetDesktopIsDark(false);
    EXPECT_EQ(ui_color(B_PANEL_BACKGROUND_COLOR), kGrey);
}

TEST_F(Theme, IsFollowedByWindowsThatAreOpen)
{
    auto* window = new BWindow(BRect(50, 50, 349, 249), "Test", B_TITLED_WINDOW, 0);
    auto* tabs = new BTabView(BRect(0, 0, 299, 199), "tabs");
    window->AddChild(tabs);
    auto* first = new BTextView(BRect(0, 0, 100, 50), "first", BRect(0, 0, 100, 50), B_FOLLOW_NONE, B_WILL_DRAW);
    auto* second = new BView(BRect(0, 0, 100, 50), "second", B_FOLLOW_NONE, B_WILL_DRAW);
    second->SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    auto* button = new BButton(BRect(0, 0, 50, 20), "", "Press", nullptr);
    second->AddChild(button);
    auto* fixed = new BView(BRect(60, 0, 99, 20), "fixed", B_FOLLOW_NONE, B_WILL_DRAW);
    fixed->SetViewColor(10, 20, 30);
    second->AddChild(fixed);
    tabs->AddTab(first);
    tabs->AddTab(second);
    tabs->Select(0);
    test::Show(window);

    kits::Theme::SetDesktopIsDark(true);
    test::Turn();
    EXPECT_EQ(tabs->ViewColor(), ui_color(B_PANEL_BACKGROUND_COLOR));
    EXPECT_EQ(first->ViewColor(), ui_color(B_DOCUMENT_BACKGROUND_COLOR));
    // What comes into the window later too.
    tabs->Select(1);
    test::Turn();
    EXPECT_EQ(second->ViewColor(), ui_color(B_PANEL_BACKGROUND_COLOR));
    EXPECT_EQ(button->ViewColor(), ui_color(B_PANEL_BACKGROUND_COLOR));
    EXPECT_EQ(fixed->ViewColor(), make_color(10, 20, 30));
    EXPECT_EQ(test::PixelOf(second, 80, 40) & 0xFFFFFF, 0x363636u);
    EXPECT_EQ(test::PixelOf(fixed, 5, 5) & 0xFFFFFF, 0x0A141Eu);

    kits::Theme::SetDesktopIsDark(false);
    test::Turn();
    EXPECT_EQ(second->ViewColor(), kGrey);
    EXPECT_EQ(button->ViewColor(), kGrey);
    EXPECT_EQ(test::PixelOf(second, 80, 40) & 0xFFFFFF, 0xD8D8D8u);
    // A colour that the program sets is kept from then on.
    second->SetViewColor(1, 2, 3);
    kits::Theme::SetDesktopIsDark(true);
    EXPECT_EQ(second->ViewColor(), make_color(1, 2, 3));
    window->Quit();
}
