// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/PostOffice.h"
#include "kits/interface/Alert.h"
#include "kits/interface/CheckBox.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Slider.h"
#include "src/prefs/DDTabView.h"
#include "src/prefs/PrefsWindow.h"
#include "tests/src/chart/ChartTestKit.h"
#include "tests/support/GuiTest.h"

#include <cstring>

/// A chart in a window of its own, and a preferences window for pages.
class PageTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        AddChart(100, 50);
    }

    void TearDown() override
    {
        ClosePrefs();
        ChartWindowTest::TearDown();
    }

    /// Makes the preferences window with this page in it, shown; the page belongs to it.
    template <typename Page> Page* Show(Page* page)
    {
        AddPage(page);
        prefs->Show();
        test::Turn();
        return page;
    }

    void AddPage(PrefsTab* page)
    {
        if (prefs == nullptr) {
            prefs = new PrefsWindow(BRect(50, 50, 490, 330), "Preferences", nullptr, &prefs);
            prefs->SetSizeLimits(440, 100000, 280, 100000);
        }
        static_cast<PrefsWindow*>(prefs)->AddPrefsTab(page);
    }

    void ClosePrefs()
    {
        if (prefs != nullptr)
            prefs->Quit();
        test::Turn();
    }

    /// Sends one of the window's own messages.
    void Post(uint32 code)
    {
        prefs->PostMessage(code);
        test::Turn();
    }

    /// Returns the tab view that holds the pages.
    DDTabView* TabView() const
    {
        for (int32 i = 0; BView* view = prefs->ChildAt(i); i++)
            if (auto* tabs = dynamic_cast<DDTabView*>(view))
                return tabs;
        return nullptr;
    }

    /// Returns a page's control by its label, or by the beginning of it, for a text that the page changes.
    template <typename Control> static Control* Find(const BView* page, const char* label)
    {
        for (int32 i = 0; BView* view = page->ChildAt(i); i++) {
            auto* control = dynamic_cast<Control*>(view);
            if (control != nullptr && std::strncmp(control->Label(), label, std::strlen(label)) == 0)
                return control;
        }
        return nullptr;
    }

    /// Returns a page's nth child of a kind.
    template <typename View> static View* FindNth(const BView* page, int32 nth = 0)
    {
        for (int32 i = 0; BView* view = page->ChildAt(i); i++) {
            auto* child = dynamic_cast<View*>(view);
            if (child != nullptr && nth-- == 0)
                return child;
        }
        return nullptr;
    }

    /// Sets the value and notifies, as the user would.
    static void Use(BControl* control, int32 value)
    {
        control->SetValue(value);
        control->Invoke();
        test::Turn();
    }

    static void Choose(BMenuItem* item)
    {
        ASSERT_NE(item, nullptr);
        item->Invoke();
        test::Turn();
    }

    static BMenuItem* Item(BMenuField* field, const char* label) { return field->Menu()->FindItem(label); }

    static const char* Marked(const BMenu* menu)
    {
        const BMenuItem* item = menu->FindMarked();
        return item != nullptr ? item->Label() : "";
    }

    /// Returns the open alert, or null.
    static BAlert* OpenAlert()
    {
        for (const kits::token_t token : kits::PostOffice::Get().RunningLoopers())
            if (auto* alert = dynamic_cast<BAlert*>(kits::PostOffice::Get().LooperAt(token)))
                return alert;
        return nullptr;
    }

    BMessage ChartSettings() const
    {
        BMessage settings;
        chart->SavePrefsTo(&settings);
        return settings;
    }

    SmartWindow* prefs = nullptr;
};
