// SPDX-License-Identifier: MIT
#include "src/sampling/list/SourceListView.h"

#include "kits/kernel/SystemInfo.h"
#include "kits/support/TypeConstants.h"
#include "src/support/MessageCodes.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// A recorded machine of two processors, which exists before anything asks for a figure.
class TwoProcessors {
public:
    TwoProcessors()
        : fRoot(fs::temp_directory_path() / ("two-processors-" + std::to_string(getpid())))
    {
        fs::create_directories(fRoot / "proc");
        fs::create_directories(fRoot / "sys/devices/system/cpu");
        std::ofstream(fRoot / "sys/devices/system/cpu/online") << "0-1\n";
        std::ofstream(fRoot / "proc/stat") << "cpu  0 0 0 0 0 0 0 0 0 0\ncpu0 0 0 0 0 0 0 0 0 0 0\ncpu1 0 0 0 0 0 0 0 "
                                              "0 0 0\n";
        setenv("KITS_ROOT", fRoot.c_str(), 1);
    }
    ~TwoProcessors()
    {
        std::error_code ignored;
        fs::remove_all(fRoot, ignored);
    }

private:
    fs::path fRoot;
};

const TwoProcessors sMachine;

typedef std::pair<vptarget_t, int32> Row;

Row RowOf(const BListItem* item)
{
    const auto* row = dynamic_cast<const SourceListItem*>(item);
    return {row->Target(), row->Flags()};
}

std::vector<Row> RowsUnder(const SourceListView& list, BListItem* superitem)
{
    std::vector<Row> rows;
    for (int32 i = 0; BListItem* item = list.ItemUnderAt(superitem, true, i); i++)
        rows.push_back(RowOf(item));
    return rows;
}

BListItem* FindRow(const SourceListView& list, const char* text)
{
    for (int32 i = 0; BListItem* item = list.FullListItemAt(i); i++)
        if (std::string(item->Text()) == text)
            return item;
    return nullptr;
}

std::vector<Row> SourcesIn(const BMessage& message)
{
    std::vector<Row> rows;
    BMessage archive;
    for (int32 i = 0; message.FindMessage("ValueProvider", &archive, i) == B_OK; i++) {
        const ValueProvider provider(&archive);
        rows.emplace_back(provider.Target(), provider.Flags());
    }
    return rows;
}

} // namespace

TEST(SourceListView, BeginsWithWhatEveryMachineHas)
{
    const SourceListView list;
    const std::vector<Row> expected = {
        {2051, 0}, {2051, 2}, {2051, 1}, {2051, 3}, {2050, 0}, {2050, 2}, {2050, 1}, {2050, 3},
        {2052, 0}, {2052, 2}, {2053, 0}, {2053, 2}, {2058, 0}, {2059, 0}, {2061, 0}, {2062, 0},
        {2055, 0}, {2056, 0}, {2064, 0}, {2065, 0}, {0, 0},    {0, 0},    {0, 0},    {0, 0},
    };
    EXPECT_EQ(RowsUnder(list, nullptr), expected);
    for (int32 i = 20; i < 24; i++)
        EXPECT_STREQ(list.ItemUnderAt(nullptr, true, i)->Text(),
                     (std::vector<const char*>{"CPUs", "CPU averages", "CPU idles", "CPU average idles"})[i - 20]);
}

TEST(SourceListView, RowsHaveTheNamesOfTheirSources)
{
    const SourceListView list;
    for (int32 i = 0; const auto* row = dynamic_cast<SourceListItem*>(list.FullListItemAt(i)); i++)
        if (row->Target() != VP_NONE)
            EXPECT_EQ(row->Text(), ValueProvider::Name(row->Target(), row->Flags()));
}

TEST(SourceListView, EachGroupHasEveryProcessorPlainAndSmoothed)
{
    const SourceListView list;
    const std::pair<const char*, std::vector<Row>> groups[] = {
        {"CPUs", {{2, 2}, {2, 0}, {4, 2}, {4, 0}}},
        {"CPU averages", {{2, 3}, {2, 1}, {4, 3}, {4, 1}}},
        {"CPU idles", {{1, 2}, {1, 0}, {3, 2}, {3, 0}}},
        {"CPU average idles", {{1, 3}, {1, 1}, {3, 3}, {3, 1}}},
    };
    for (const auto& [name, rows] : groups)
        EXPECT_EQ(RowsUnder(list, FindRow(list, name)), rows) << name;
    EXPECT_EQ(list.FullListCountItems(), 24 + 16);
    EXPECT_NE(FindRow(list, "CPU 2 (exp. averaged)"), nullptr);
}

TEST(SourceListView, IsAsThePageWantsIt)
{
    const SourceListView list;
    EXPECT_EQ(list.ResizingMode(), uint32(B_FOLLOW_ALL_SIDES));
    EXPECT_STREQ(list.Name(), "");
}

TEST(SourceListView, ARowCarriesItself)
{
    SourceListView list;
    BMessage message;
    ASSERT_TRUE(list.AddSourcesTo(&message, list.IndexOf(FindRow(list, "Free memory"))));
    EXPECT_EQ(message.what, uint32(MSG_SOURCE_DROP));
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 1);
    EXPECT_EQ(SourcesIn(message), (std::vector<Row>{{2052, 0}}));
}

TEST(SourceListView, AGroupCarriesWhatIsUnderIt)
{
    SourceListView list;
    BMessage message;
    ASSERT_TRUE(list.AddSourcesTo(&message, list.IndexOf(FindRow(list, "CPU idles"))));
    EXPECT_EQ(SourcesIn(message), RowsUnder(list, FindRow(list, "CPU idles")));
    std::set<vptarget_t> targets;
    for (const Row& row : SourcesIn(message))
        targets.insert(row.first);
    EXPECT_EQ(targets, (std::set<vptarget_t>{1, 3}));
}

TEST(SourceListView, NoRowCarriesNothing)
{
    SourceListView list;
    BMessage message;
    EXPECT_FALSE(list.AddSourcesTo(&message, -1));
    EXPECT_FALSE(list.AddSourcesTo(&message, list.CountItems()));
    EXPECT_FALSE(list.InitiateDrag(BPoint(0, 0), list.CountItems(), false));
    EXPECT_EQ(message.what, 0u);
    EXPECT_TRUE(message.IsEmpty());
}

TEST(SourceListView, TheFilterKeepsWhatHasAllItsWords)
{
    SourceListView list;
    list.SetFilter("memory");
    EXPECT_EQ(RowsUnder(list, nullptr), (std::vector<Row>{{2052, 0}, {2052, 2}, {2053, 0}, {2053, 2}}));
    list.SetFilter("  USED   mem ");
    EXPECT_EQ(RowsUnder(list, nullptr), (std::vector<Row>{{2053, 0}, {2053, 2}}));
    list.SetFilter("cpu 2");
    // "All CPUs" has no 2 in it.
    EXPECT_EQ(RowsUnder(list, nullptr), (std::vector<Row>{{0, 0}, {0, 0}, {0, 0}, {0, 0}}));
    EXPECT_EQ(RowsUnder(list, FindRow(list, "CPUs")), (std::vector<Row>{{4, 2}, {4, 0}}));
    list.SetFilter("nothing is called so");
    EXPECT_EQ(list.FullListCountItems(), 0);
    list.SetFilter("");
    EXPECT_EQ(list.FullListCountItems(), 24 + 16);
}

TEST(SourceListView, TheFilterFindsTheNamesOfGroups)
{
    SourceListView list;
    list.SetFilter("CPU idles");
    EXPECT_EQ(RowsUnder(list, nullptr), (std::vector<Row>{{0, 0}, {0, 0}})) << "the average idles too";
    EXPECT_EQ(RowsUnder(list, FindRow(list, "CPU idles")).size(), 4u);
    EXPECT_EQ(RowOf(list.ItemAt(list.CurrentSelection())), Row(1, 0));
    list.SetFilter("idles 2");
    EXPECT_EQ(RowsUnder(list, FindRow(list, "CPU idles")), (std::vector<Row>{{3, 2}, {3, 0}}));
}

TEST(SourceListView, TheFilterSelectsThePlainFormOfTheSourceThatFitsBest)
{
    SourceListView list;
    list.SetFilter("cpu 2");
    EXPECT_EQ(RowOf(list.ItemAt(list.CurrentSelection())), Row(4, 0));
    list.SetFilter("idle average");
    EXPECT_EQ(RowOf(list.ItemAt(list.CurrentSelection())), Row(2050, 1));
    list.SetFilter("cpu 1 idle exp");
    EXPECT_EQ(RowOf(list.ItemAt(list.CurrentSelection())), Row(1, 2));
}

TEST(SourceListView, AnEmptyFilterBringsBackWhatWasOpenAndSelected)
{
    SourceListView list;
    list.Collapse(FindRow(list, "CPUs"));
    list.Collapse(FindRow(list, "CPU idles"));
    list.Select(list.IndexOf(FindRow(list, "CPU 1 average")));
    const int32 rows = list.CountItems();
    list.SetFilter("m");
    list.SetFilter("memory");
    EXPECT_EQ(RowOf(list.ItemAt(list.CurrentSelection())), Row(2052, 0));
    list.SetFilter(" ");
    EXPECT_EQ(list.CountItems(), rows);
    EXPECT_EQ(RowOf(list.ItemAt(list.CurrentSelection())), Row(2, 1));
    EXPECT_FALSE(list.IsExpanded(list.FullListIndexOf(FindRow(list, "CPUs"))));
    EXPECT_TRUE(list.IsExpanded(list.FullListIndexOf(FindRow(list, "CPU averages"))));
    EXPECT_FALSE(list.IsExpanded(list.FullListIndexOf(FindRow(list, "CPU idles"))));

    list.DeselectAll();
    list.SetFilter("memory");
    list.SetFilter("");
    EXPECT_EQ(list.CurrentSelection(), -1);
}

TEST(SourceListView, AFilteredGroupCarriesWhatIsLeft)
{
    SourceListView list;
    list.SetFilter("cpu 2 idle");
    BMessage message;
    ASSERT_TRUE(list.AddSourcesTo(&message, list.IndexOf(FindRow(list, "CPU idles"))));
    EXPECT_EQ(SourcesIn(message), (std::vector<Row>{{3, 2}, {3, 0}}));
}

TEST(SourceListView, DragsARow)
{
    auto* window = new BWindow(BRect(100, 100, 400, 400), "sources", B_TITLED_WINDOW, 0);
    auto* list = new SourceListView;
    list->ResizeTo(300, 300);
    window->AddChild(list);
    window->Show();
    test::Turn();
    test::CatchDrags();
    const int32 index = list->IndexOf(FindRow(*list, "Free memory"));
    const BRect frame = list->ItemFrame(index);
    const BPoint middle(frame.left + 30, (frame.top + frame.bottom) / 2);
    test::Press(list, middle);
    test::MoveTo(list, BPoint(middle.x + 40, middle.y));
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(SourcesIn(drag->message), (std::vector<Row>{{2052, 0}}));
    EXPECT_EQ(drag->rect, list->ConvertToScreen(frame));
    test::Release(list, middle);
    window->Quit();
    test::Turn();
}

TEST(SourceListView, CopiesTheSelectedRow)
{
    SourceListView list;
    BMessage message;
    EXPECT_FALSE(list.CopyRequested(&message));
    list.Select(list.IndexOf(FindRow(list, "Free memory")));
    ASSERT_TRUE(list.CopyRequested(&message));
    EXPECT_EQ(message.what, uint32(MSG_SOURCE_DROP));
    EXPECT_EQ(SourcesIn(message), (std::vector<Row>{{2052, 0}}));
}
