// SPDX-License-Identifier: MIT
#include "kits/interface/Button.h"
#include "kits/interface/CheckBox.h"
#include "kits/interface/ColorControl.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Slider.h"
#include "kits/interface/TextControl.h"
#include "tests/kits/interface/WidgetTest.h"

/// One control of each kind, one below the other.
class ControlFocusTest : public WidgetTest {
protected:
    ControlFocusTest()
    {
        auto* menu = new BPopUpMenu("menu");
        menu->AddItem(new BMenuItem("one", nullptr));
        Add(new BCheckBox(BRect(10, 10, 100, 30), "box", "Box", nullptr));
        Add(new BTextControl(BRect(10, 40, 200, 60), "text", "Text:", "", nullptr));
        Add(new BMenuField(BRect(10, 70, 200, 90), "field", "Field:", menu));
        Add(new BSlider(BRect(10, 100, 200, 140), "slider", "Slider", nullptr, 0, 10));
        Add(new BColorControl(BPoint(10, 150), B_CELLS_32x8, 8, "color", nullptr));
        Add(new BButton(BRect(10, 240, 100, 260), "button", "Button", nullptr));
        test::Turn();
    }

    void Add(BView* control)
    {
        fPage->AddChild(control);
        fControls.push_back(control);
    }

    std::vector<BView*> fControls;
};

TEST_F(ControlFocusTest, EveryKindCanBeReachedByTab)
{
    fControls.front()->MakeFocus();
    std::vector<const QWidget*> reached;
    for (int i = 0; i < 20; i++) {
        reached.push_back(QApplication::focusWidget());
        test::Key(fWindow, B_TAB);
    }
    for (const BView* control : fControls)
        EXPECT_NE(std::find(reached.begin(), reached.end(), FocusOf(control)), reached.end()) << control->Name();
}

TEST_F(ControlFocusTest, ThoseThatAreNotNavigableCannot)
{
    auto* text = new BTextControl(BRect(210, 10, 390, 30), "not", "Not:", "", nullptr, B_FOLLOW_LEFT | B_FOLLOW_TOP,
                                  B_WILL_DRAW);
    fPage->AddChild(text);
    fControls.front()->MakeFocus();
    for (int i = 0; i < 20; i++) {
        EXPECT_NE(QApplication::focusWidget(), FocusOf(text));
        test::Key(fWindow, B_TAB);
    }
}

TEST_F(ControlFocusTest, AClickIntoATextGivesItTheFocus)
{
    fControls.front()->MakeFocus();
    QWidget* field = FocusOf(fControls[1]);
    EXPECT_NE(QApplication::focusWidget(), field);
    EXPECT_TRUE(field->focusPolicy() & Qt::ClickFocus);
}

TEST_F(ControlFocusTest, TheRingStaysWhenANeighbourGoes)
{
    fControls[0]->MakeFocus();
    test::Turn();
    QWidget* box = FocusOf(fControls[0]);
    const QImage focused = box->grab().toImage();
    for (size_t i = 1; i < fControls.size(); i++) {
        fControls[i]->RemoveSelf();
        delete fControls[i];
        test::Turn();
        EXPECT_EQ(QApplication::focusWidget(), box);
        EXPECT_EQ(box->grab().toImage(), focused);
    }
}

TEST_F(ControlFocusTest, TabFollowsTheViewsHoweverLateTheyCame)
{
    auto* late = new BButton(BRect(110, 240, 200, 260), "late", "Late", nullptr);
    fPage->AddChild(late, fControls[1]);
    test::Turn();
    fControls[0]->MakeFocus();
    test::Key(fWindow, B_TAB);
    EXPECT_EQ(QApplication::focusWidget(), FocusOf(late));
    test::Key(fWindow, B_TAB);
    EXPECT_EQ(QApplication::focusWidget(), FocusOf(fControls[1]));
    test::Key(fWindow, B_TAB, B_SHIFT_KEY);
    EXPECT_EQ(QApplication::focusWidget(), FocusOf(late));
    late->RemoveSelf();
    delete late;
    test::Turn();
    fControls.back()->MakeFocus();
    test::Key(fWindow, B_TAB);
    EXPECT_EQ(QApplication::focusWidget(), FocusOf(fControls.front()));
    test::Key(fWindow, B_TAB);
    EXPECT_EQ(QApplication::focusWidget(), FocusOf(fControls[1]));
}
