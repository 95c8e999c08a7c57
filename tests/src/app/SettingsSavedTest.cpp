// SPDX-License-Identifier: MIT
#include "kits/interface/ColorControl.h"
#include "kits/interface/ListView.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/ScrollView.h"
#include "kits/interface/Slider.h"
#include "kits/interface/TextControl.h"
#include "src/prefs/DDTabView.h"
#include "src/prefs/PrefsTab.h"
#include "src/prefs/store/Autosave.h"
#include "src/sampling/list/SourceListView.h"
#include "src/support/MessageCodes.h"
#include "tests/src/app/AppTest.h"
#include "tests/src/app/AppWindows.h"
#include "tests/support/GuiTest.h"

#include <cstring>
#include <set>
#include <string>

// Every change that the user makes by a control of a page of the preferences is on the disk after one look of the
// autosave.

namespace {

/// One way to use a control, and the control's name.
struct Use {
    std::string name;
    std::function<void()> action;
};

bool IsChoiceOfTarget(const BView* view)
{
    const auto* field = dynamic_cast<const BMenuField*>(view);
    return field != nullptr && std::strcmp(field->Label(), "Target:") == 0;
}

void AddItems(const std::string& name, BMenu* menu, std::vector<Use>* uses)
{
    for (int32 i = 0; BMenuItem* item = menu->ItemAt(i); i++)
        if (item->Submenu() != nullptr)
            AddItems(name, item->Submenu(), uses);
        else
            uses->push_back({name, [item] { item->Invoke(); }});
}

/// Selects another row, as the user would.
void SelectAnother(BListView* list)
{
    const int32 row = list->CurrentSelection() == 1 ? 2 : 1;
    list->Select(row < list->CountItems() ? row : 0);
    BMessage message(*list->SelectionMessage());
    list->BInvoker::Invoke(&message);
}

/// Returns the uses of a control of a page; none for other views.
std::vector<Use> UsesOf(BView* view)
{
    std::vector<Use> uses;
    if (auto* field = dynamic_cast<BMenuField*>(view)) {
        AddItems(field->Label(), field->Menu(), &uses);
    } else if (auto* scroll = dynamic_cast<BScrollView*>(view)) {
        if (auto* list = dynamic_cast<BListView*>(scroll->Target()))
            uses.push_back({dynamic_cast<SourceListView*>(list) != nullptr ? "list of sources" : "list of fonts",
                            [list] { SelectAnother(list); }});
    } else if (auto* text = dynamic_cast<BTextControl*>(view)) {
        uses.push_back({text->Label(),
                        [text] {
                            text->SetText((std::string(text->Text()) + "x").c_str());
                            text->Invoke();
                        }});
    } else if (auto* color = dynamic_cast<BColorControl*>(view)) {
        uses.push_back({"color",
                        [color] {
                            rgb_color value = color->ValueAsColor();
                            value.red ^= 0x55;
                            color->SetValue(value);
                            color->Invoke();
                        }});
    } else if (auto* control = dynamic_cast<BControl*>(view)) {
        // The beginning of a slider's label stays the same.
        const size_t length = dynamic_cast<BSlider*>(view) != nullptr ? 4 : std::string::npos;
        uses.push_back({std::string(control->Label()).substr(0, length), [control] {
                            control->SetValue(control->Value() == 0 ? 1 : control->Value() - 1);
                            control->Invoke();
                        }});
    }
    return uses;
}

class SettingsSavedTest : public AppTest {
protected:
    /// Uses a control, looks once, and compares the disk with the arrangement then.
    void Try(QelApp& app, Autosave& autosave, const Use& use)
    {
        autosave.Save();
        EXPECT_EQ(autosave.Drain(), B_OK);
        const Preferences before("application/x-vnd.kvt-Qel", false, true);
        use.action();
        test::Turn();
        autosave.Look();
        EXPECT_EQ(autosave.Drain(), B_OK);
        const Preferences after("application/x-vnd.kvt-Qel", false, true);
        EXPECT_EQ(app.StoreArrangement(), B_OK);
        EXPECT_TRUE(after.HasSameData(*prefs_user)) << use.name << " is not on the disk";
        fUsed.insert(use.name);
        if (!after.HasSameData(before))
            fChanging.insert(use.name);
    }

    /// Uses each control of a page, once for each target that the page can have.
    void TryPage(QelApp& app, Autosave& autosave, PrefsTab* page)
    {
        std::vector<Use> targets;
        std::vector<Use> uses;
        for (int32 i = 0; BView* view = page->ChildAt(i); i++) {
            std::vector<Use> found = UsesOf(view);
            std::vector<Use>& list = IsChoiceOfTarget(view) ? targets : uses;
            list.insert(list.end(), found.begin(), found.end());
        }
        if (targets.empty())
            targets.push_back({"", [] {}});
        for (const Use& target : targets) {
            target.action();
            test::Turn();
            for (const Use& use : uses)
                Try(app, autosave, use);
        }
    }

    void TryWindow(QelApp& app, SmartWindow* window)
    {
        Autosave autosave(
            {prefs_common, prefs_user}, [&app] { return app.StoreArrangement(); }, [](const StoreWriter&) {});
        for (int32 i = 0; BView* view = window->ChildAt(i); i++) {
            auto* const tabs = dynamic_cast<DDTabView*>(view);
            for (int32 page = 0; tabs != nullptr && page < tabs->CountTabs(); page++) {
                tabs->Select(page);
                test::Turn();
                TryPage(app, autosave, dynamic_cast<PrefsTab*>(tabs->TabAt(page)->View()));
            }
        }
    }

    std::set<std::string> fUsed;     ///< the names of the controls
    std::set<std::string> fChanging; ///< those that have changed the disk at least once
};

} // namespace

TEST_F(SettingsSavedTest, EachControlOfEachPageIsOnTheDiskAfterOneLook)
{
    Run({[](QelApp& app) { Tabs(app)->Select(1); },
         [this](QelApp& app) {
             app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
             app.Window()->PostMessage(MSG_CHART_PREFS, FirstChart(app));
             Await([&app] {
                 return app.PreferencesWindow() != nullptr && FirstChart(app)->PreferencesWindow() != nullptr;
             });
         },
         [this](QelApp& app) {
             test::Show(app.PreferencesWindow());
             TryWindow(app, app.PreferencesWindow());
         },
         [this](QelApp& app) {
             test::Show(FirstChart(app)->PreferencesWindow());
             TryWindow(app, FirstChart(app)->PreferencesWindow());
         }});
    // All of them are settings, except these two.
    fChanging.insert("list of sources");
    fChanging.insert("Test on Desktop");
    EXPECT_EQ(fUsed, fChanging);
    EXPECT_EQ(fUsed.size(), 23u);
}
