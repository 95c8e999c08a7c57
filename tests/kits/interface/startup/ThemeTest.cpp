// SPDX-License-Identifier: MIT
#include "kits/interface/startup/Theme.h"

#include "kits/application/Message.h"
#include "kits/interface/Button.h"
#include "kits/interface/CheckBox.h"
#include "kits/interface/ListView.h"
#include "kits/interface/Menu.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/NumberControl.h"
#include "kits/interface/ScrollView.h"
#include "kits/interface/Slider.h"
#include "kits/interface/TabView.h"
#include "kits/interface/TextControl.h"
#include "kits/interface/TextView.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/startup/DarkStyle.h"
#include "tests/support/GuiTest.h"

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>

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
    EXPECT_EQ(ui_color(B_PANEL_BACKGROUND_COLOR), kGrey);
    EXPECT_LT(Brightness(ui_color(B_PANEL_TEXT_COLOR)), 64);
    EXPECT_GT(Brightness(ui_color(B_DOCUMENT_BACKGROUND_COLOR)), 192);
}

TEST_F(Theme, ReadsWellOnADarkDesktop)
{
    kits::Theme::SetDesktopIsDark(true);
    EXPECT_LT(Brightness(ui_color(B_PANEL_BACKGROUND_COLOR)), 96);
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

TEST_F(Theme, MarksAndFramesAreSeenOnADarkDesktop)
{
    kits::Theme::SetDesktopIsDark(true);
    auto* window = new BWindow(BRect(50, 50, 449, 449), "Test", B_TITLED_WINDOW, 0);
    auto* page = new BView(window->Bounds(), "page", B_FOLLOW_ALL, B_WILL_DRAW);
    page->SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    window->AddChild(page);
    auto* slider = new BSlider(BRect(10, 10, 309, 12), "", "Size", new BMessage(1), 0, 100);
    slider->SetHashMarks(B_HASH_MARKS_BOTTOM);
    slider->SetHashMarkCount(10);
    slider->SetValue(60);
    auto* box = new BCheckBox(BRect(10, 80, 15, 85), "", "Border", new BMessage(2));
    auto* text = new BTextControl(BRect(10, 110, 209, 115), "", "", "text", nullptr);
    auto* button = new BButton(BRect(10, 150, 109, 170), "", "Press", nullptr);
    auto* list = new BListView(BRect(0, 0, 100, 80), "list");
    auto* scroll = new BScrollView("", list, B_FOLLOW_NONE, 0, false, true, B_FANCY_BORDER);
    scroll->MoveTo(10, 200);
    auto* number = new BNumberControl(BRect(150, 200, 151, 201), "number", nullptr, 0, 9);
    auto* menu = new BMenu("Choose");
    menu->AddItem(new BMenuItem("One", nullptr));
    auto* field = new BMenuField(BRect(220, 200, 319, 201), "", "", menu);
    for (BView* view : std::initializer_list<BView*>{slider, box, text, button, scroll, number, field})
        page->AddChild(view);
    test::Show(window);
    test::Turn();

    const QColor panel = QGuiApplication::palette().color(QPalette::Window);
    const QColor inside = QGuiApplication::palette().color(QPalette::Base);
    // In the middle of the left edge of each frame, where there are no letters: the lightest of the first pixels.
    const auto expectFrame = [&](const BView* view, const char* what) {
        const QWidget* widget = kits::ViewWidget(view);
        while (widget->focusProxy() != nullptr)
            widget = widget->focusProxy();
        const QImage picture = const_cast<QWidget*>(widget)->grab().toImage();
        double best = 1;
        for (int x = 0; x < 2; x++)
            best = std::max(best, kits::DarkStyle::Contrast(picture.pixelColor(x, picture.height() / 2), panel));
        EXPECT_GE(best, 3) << what << " on the panel";
        best = 1;
        for (int x = 0; x < 2; x++)
            best = std::max(best, kits::DarkStyle::Contrast(picture.pixelColor(x, picture.height() / 2), inside));
        EXPECT_GE(best, 3) << what << " around what is in it";
    };
    expectFrame(box, "check box");
    expectFrame(text, "text field");
    expectFrame(button, "button");
    expectFrame(list, "list");
    expectFrame(number, "number field");
    expectFrame(field, "menu field");

    // Some row below the bar has ten marks, each a pixel wide, and the panel's colour between them.
    const QWidget* bar = kits::ViewWidget(slider)->focusProxy();
    while (bar->focusProxy() != nullptr)
        bar = bar->focusProxy();
    const QImage picture = const_cast<QWidget*>(bar)->grab().toImage();
    int most = 0;
    for (int y = picture.height() / 2; y < picture.height(); y++) {
        int marks = 0;
        for (int x = 1; x + 1 < picture.width(); x++) {
            const auto contrast = [&](int at) { return kits::DarkStyle::Contrast(picture.pixelColor(at, y), panel); };
            marks += contrast(x) >= 3 && contrast(x - 1) < 1.1 && contrast(x + 1) < 1.1 ? 1 : 0;
        }
        most = std::max(most, marks);
    }
    EXPECT_EQ(most, 10);
    window->Quit();
}

TEST_F(Theme, ContrastIsThatOfTheGuidelines)
{
    EXPECT_NEAR(kits::DarkStyle::Contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(kits::DarkStyle::Contrast(Qt::white, Qt::white), 1, 0.001);
    EXPECT_NEAR(kits::DarkStyle::Contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
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
    // Views that are added later too.
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
