// SPDX-License-Identifier: MIT
#include "kits/application/Messenger.h"
#include "kits/interface/Alert.h"
#include "kits/interface/TabView.h"
#include "kits/interface/core/ViewPrivate.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/MessageCodes.h"
#include "src/support/ui/SmartWindow.h"
#include "tests/src/app/AppTest.h"

#include <QAccessible>
#include <QApplication>
#include <QSlider>
#include <QWidget>

#include <gtest/gtest.h>

#include <set>
#include <string>

// What every window of the program tells assistive technology.

namespace {

/// Returns whether the role only contains or decorates others.
bool IsStructure(QAccessible::Role role)
{
    static const std::set<QAccessible::Role> kRoles = {
        QAccessible::Client,    QAccessible::Pane,      QAccessible::Border,
        QAccessible::Separator, QAccessible::Grouping,  QAccessible::ScrollBar,
        QAccessible::Grip,      QAccessible::Indicator, QAccessible::MenuBar};
    return kRoles.contains(role);
}

BTabView* Tabs(const BWindow* window)
{
    for (int32 i = 0; i < window->CountChildren(); i++)
        if (auto* tabs = dynamic_cast<BTabView*>(window->ChildAt(i)))
            return tabs;
    return nullptr;
}

/// The pages write some of their labels when they are shown, by messages to themselves.
bool SlidersHaveLabels()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        for (const QSlider* slider : window->findChildren<QSlider*>())
            if (slider->isVisible() && slider->accessibleName().isEmpty())
                return false;
    }
    return true;
}

class AccessTest : public AppTest {
protected:
    static std::string Text(QAccessibleInterface* what, QAccessible::Text kind)
    {
        return what->text(kind).toStdString();
    }

    void Walk(QAccessibleInterface* what, const std::string& path)
    {
        ASSERT_NE(what, nullptr) << path;
        if (!what->isValid() || what->state().invisible)
            return;
        const QAccessible::Role role = what->role();
        const std::string name = Text(what, QAccessible::Name);
        const std::string here = path + "/" + std::to_string(role) + ":" + name;
        if (what->state().focusable || !IsStructure(role)) {
            const QObject* object = what->object();
            EXPECT_FALSE(name.empty()) << here << " " << (object != nullptr ? object->metaObject()->className() : "-");
        }
        for (int i = 0; i < what->childCount(); i++)
            Walk(what->child(i), here);
    }

    void WalkWindows()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible())
                Walk(QAccessible::queryAccessibleInterface(window), "");
    }
};

ChartView* FirstChart(QelApp& app)
{
    auto* holder = dynamic_cast<ChartViewHolder*>(Tabs(app.Window())->TabAt(1)->View());
    return holder != nullptr ? holder->ChartAt(0) : nullptr;
}

} // namespace

TEST_F(AccessTest, EverythingInEveryWindowHasAName)
{
    std::vector<Step> steps = {
        [this](QelApp&) { WalkWindows(); },
        [](QelApp& app) { Tabs(app.Window())->Select(1); },
        [this](QelApp&) { WalkWindows(); },
        [](QelApp& app) {
            app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
            app.PostMessage(B_ABOUT_REQUESTED);
            (new BAlert("Title", "A question.", "No", "Yes"))->Go(nullptr);
            app.Window()->PostMessage(MSG_CHART_PREFS, FirstChart(app));
        },
        [this](QelApp&) { Await(SlidersHaveLabels); },
        [this](QelApp&) { WalkWindows(); },
    };
    // A page is in its window only while it is selected.
    for (int32 page = 1; page < 5; page++) {
        steps.push_back([page](QelApp& app) { Tabs(FirstChart(app)->PreferencesWindow())->Select(page); });
        steps.push_back([this](QelApp&) { Await(SlidersHaveLabels); });
        steps.push_back([this](QelApp&) { WalkWindows(); });
    }
    steps.push_back([](QelApp& app) { FirstChart(app)->ContextMenuRequested(BPoint(10, 10)); });
    steps.push_back([this](QelApp&) {
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        WalkWindows();
    });
    Run(std::move(steps));
}

TEST_F(AccessTest, AChartReadsAsItsTitleAndItsSourcesValues)
{
    Run({[](QelApp& app) {
             ChartView* chart = FirstChart(app);
             chart->SetTitle("Machine");
             chart->RemoveValueProvider(-1);
             for (const vptarget_t target : {VP_ALL_CPUS, VP_USED_MEMORY}) {
                 BMessage archive;
                 ValueProvider(target, 0).Archive(&archive);
                 chart->AddValueProvider(&archive, -1);
             }
             Tabs(app.Window())->Select(1);
         },
         [](QelApp& app) {
             QAccessibleInterface* chart = QAccessible::queryAccessibleInterface(kits::ViewWidget(FirstChart(app)));
             ASSERT_NE(chart, nullptr);
             EXPECT_EQ(chart->role(), QAccessible::Chart);
             EXPECT_TRUE(chart->state().focusable);
             EXPECT_EQ(Text(chart, QAccessible::Name), "Machine");
             EXPECT_EQ(Text(chart, QAccessible::Value), "All CPUs 0.0 %, Used memory 0.0 %");
             EXPECT_EQ(Text(chart, QAccessible::Description), "All CPUs 0.0 %, Used memory 0.0 %");
             // The handle, then the sources.
             ASSERT_EQ(chart->childCount(), 3);
             QAccessibleInterface* memory = chart->child(2);
             EXPECT_EQ(Text(memory, QAccessible::Name), "Used memory");
             EXPECT_EQ(Text(memory, QAccessible::Value), "0.0 %");
             EXPECT_EQ(memory->valueInterface()->currentValue().toDouble(), 0);
             EXPECT_EQ(memory->valueInterface()->maximumValue().toDouble(), 100);
             EXPECT_EQ(memory->parent(), chart);
             EXPECT_EQ(chart->indexOfChild(memory), 2);
             EXPECT_EQ(chart->child(3), nullptr);
             FirstChart(app)->RemoveValueProvider(1);
             EXPECT_FALSE(memory->isValid());
             EXPECT_EQ(Text(memory, QAccessible::Name), "");
             EXPECT_EQ(chart->childCount(), 2);
             FirstChart(app)->SetTitle("");
             EXPECT_EQ(Text(chart, QAccessible::Name), "Chart");
         }});
}
