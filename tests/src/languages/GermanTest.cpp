// SPDX-License-Identifier: MIT
#include "kits/application/Language.h"
#include "kits/interface/Alert.h"
#include "kits/interface/TabView.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/sampling/SourceTable.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/SmartWindow.h"
#include "tests/src/app/AppTest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>

namespace {

BTabView* Tabs(const BWindow* window)
{
    for (int32 i = 0; i < window->CountChildren(); i++)
        if (auto* tabs = dynamic_cast<BTabView*>(window->ChildAt(i)))
            return tabs;
    return nullptr;
}

ChartView* FirstChart(QelApp& app)
{
    return dynamic_cast<ChartViewHolder*>(Tabs(app.Window())->TabAt(1)->View())->ChartAt(0);
}

std::string Labels(const BWindow* window)
{
    std::string labels;
    for (int32 i = 0; const BTab* tab = Tabs(window)->TabAt(i); i++)
        labels += std::string(tab->Label()) + " ";
    return labels;
}

/// Checks that everything with a text has room for it, and lies within its parent.
void ExpectNothingIsCut()
{
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (!top->isVisible())
            continue;
        for (QWidget* widget : top->findChildren<QWidget*>()) {
            QString text;
            if (auto* label = qobject_cast<QLabel*>(widget))
                text = label->text();
            else if (auto* button = qobject_cast<QAbstractButton*>(widget))
                text = button->text();
            else if (auto* box = qobject_cast<QComboBox*>(widget))
                text = box->currentText();
            if (!widget->isVisible() || text.isEmpty())
                continue;
            const std::string where = top->windowTitle().toStdString() + ": " + text.toStdString();
            EXPECT_FALSE(text.contains(QChar(0x2026))) << where;
            if (!text.contains('\n'))
                EXPECT_GE(widget->width(), widget->fontMetrics().horizontalAdvance(text)) << where;
            EXPECT_GE(widget->height() + 1, widget->fontMetrics().height()) << where;
            const QRect inside = widget->visibleRegion().boundingRect();
            EXPECT_EQ(inside.size(), widget->size()) << where;
        }
    }
}

class GermanTest : public AppTest {};

} // namespace

TEST_F(GermanTest, IsSpoken)
{
    ASSERT_STREQ(kits::CurrentLanguage(), "de");
    EXPECT_STREQ(Tr("Preferences"), "Einstellungen");
    EXPECT_EQ(SourceName(VP_FIRST_CPU + 2, VP_AVERAGE | VP_EXP_AVERAGE), "CPU 2 Mittel (exp. geglättet)");
    EXPECT_EQ(SourceName(VP_USED_MEMORY, 0), "Belegter Speicher");
    EXPECT_EQ(SourceName(2054, 3), "");
}

TEST_F(GermanTest, IsNotToldToOtherPrograms)
{
    EXPECT_EQ(ValueProvider::Name(VP_USED_MEMORY, 0), "Used memory");
    char caption[ValueProvider::kValueStringLength];
    ValueProvider::PrintMemory(caption, 1);
    EXPECT_STREQ(caption, "4.0 kB");
}

TEST_F(GermanTest, IsNotInWhatIsStored)
{
    const auto expectEnglish = [](const BMessage& archive) {
        std::string bytes(static_cast<size_t>(archive.FlattenedSize()), '\0');
        ASSERT_EQ(archive.Flatten(bytes.data(), static_cast<ssize_t>(bytes.size())), B_OK);
        for (const char* text : {"Diagramm", "Laufzeit", "Einstellungen", "Allgemein", "Farben", "Quellen", "Belegter"})
            EXPECT_EQ(bytes.find(text), std::string::npos) << text;
        EXPECT_NE(bytes.find("ChartViewHolder"), std::string::npos);
    };
    Run({[&](QelApp& app) {
        BMessage archive;
        ASSERT_EQ(app.Window()->Archive(&archive, true), B_OK);
        expectEnglish(archive);
    }});
}

TEST_F(GermanTest, FitsIntoEveryWindow)
{
    std::vector<Step> steps = {
        [](QelApp& app) { EXPECT_EQ(Labels(app.Window()), "Laufzeit Diagramme "); },
        [](QelApp& app) { Tabs(app.Window())->Select(1); },
        [](QelApp& app) {
            app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
            app.PostMessage(B_ABOUT_REQUESTED);
            app.Window()->PostMessage(MSG_CHART_PREFS, FirstChart(app));
        },
        [](QelApp&) {},
        [](QelApp& app) {
            EXPECT_EQ(Labels(FirstChart(app)->PreferencesWindow()), "Allgemein Farben Quellen Schriften Messung ");
            ExpectNothingIsCut();
        },
    };
    for (int32 page = 1; page < 5; page++) {
        steps.push_back([page](QelApp& app) { Tabs(FirstChart(app)->PreferencesWindow())->Select(page); });
        steps.push_back([](QelApp&) {});
        steps.push_back([](QelApp&) { ExpectNothingIsCut(); });
    }
    Run(std::move(steps));
}
