#include "tests/src/app/AppTest.h"

#include "kits/interface/TabView.h"
#include "src/app/MainWindow.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/prefs/Preferences.h"
#include "src/support/FieldRanges.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"

#include <fstream>
#include <map>
#include <sstream>

// Nothing is read from outside, nor written, that neither table knows: every field of what the whole program archives
// is looked up, and every field that the sources name.

namespace {

const kits::FieldRange* RangeOf(const std::string& key)
{
    const kits::FieldRange* const own = kFields.RangeOf(key.c_str());
    return own != nullptr ? own : kits::kKitFields.RangeOf(key.c_str());
}

void ExpectKnown(const std::string& key, type_code type, const std::string& where)
{
    const kits::FieldRange* const range = RangeOf(key);
    if (range == nullptr)
        ADD_FAILURE() << where << ": \"" << key << "\" stands in no table";
    else
        EXPECT_EQ(range->type, type) << where << ": \"" << key << "\" has another type in the table";
}

/// All fields, and those of the messages in it. Returns how many.
int WalkThrough(const BMessage& archive, const std::string& where)
{
    int fields = 0;
    const char* key = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; archive.GetInfo(B_ANY_TYPE, i, &key, &type, &count) == B_OK; i++) {
        fields++;
        ExpectKnown(key, type, where);
        BMessage inner;
        for (int32 index = 0; type == B_MESSAGE_TYPE && archive.FindMessage(key, index, &inner) == B_OK; index++)
            fields += WalkThrough(inner, where + "/" + key);
    }
    return fields;
}

const std::map<std::string, type_code> kTypes = {
    {"Bool", B_BOOL_TYPE},       {"Int16", B_INT16_TYPE},     {"Int32", B_INT32_TYPE},        {"Int64", B_INT64_TYPE},
    {"Float", B_FLOAT_TYPE},     {"String", B_STRING_TYPE},   {"Point", B_POINT_TYPE},        {"Rect", B_RECT_TYPE},
    {"Pointer", B_POINTER_TYPE}, {"Message", B_MESSAGE_TYPE}, {"Messenger", B_MESSENGER_TYPE}};

/// The names in a source that come right after this, and where.
void LookThrough(const std::filesystem::path& path, int* found)
{
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    const std::string source = text.str();
    for (const char* verb : {"Find", "Add", "Replace"}) {
        for (const auto& [name, type] : kTypes) {
            const std::string call = verb + name + "(\"";
            for (size_t at = source.find(call); at != std::string::npos; at = source.find(call, at + 1)) {
                const size_t begin = at + call.size();
                ExpectKnown(source.substr(begin, source.find('"', begin) - begin), type, path.filename());
                ++*found;
            }
        }
    }
}

BTabView* Tabs(QelApp& app)
{
    for (int32 i = 0; i < app.Window()->CountChildren(); i++) {
        if (auto* tabs = dynamic_cast<BTabView*>(app.Window()->ChildAt(i)))
            return tabs;
    }
    return nullptr;
}

ChartView* FirstChart(QelApp& app)
{
    return dynamic_cast<ChartViewHolder&>(*Tabs(app)->TabAt(1)->View()).ChartAt(0);
}

} // namespace

class FieldKeysTest : public AppTest {};

TEST_F(FieldKeysTest, EverythingThatIsStoredIsInATable)
{
    Run({[](QelApp& app) { Tabs(app)->Select(1); },
         [this](QelApp& app) {
             app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
             app.Window()->PostMessage(MSG_CHART_PREFS, FirstChart(app));
             Await(
                 [&] { return app.PreferencesWindow() != nullptr && FirstChart(app)->PreferencesWindow() != nullptr; });
         },
         [this](QelApp& app) {
             // Closed they are archived too.
             app.PreferencesWindow()->PostMessage(B_QUIT_REQUESTED);
             FirstChart(app)->PreferencesWindow()->PostMessage(B_QUIT_REQUESTED);
             Await(
                 [&] { return app.PreferencesWindow() == nullptr && FirstChart(app)->PreferencesWindow() == nullptr; });
         }});
    Finish();
    int fields = 0;
    for (const bool common : {false, true}) {
        const Preferences store(signature, common);
        fields += WalkThrough(store, common ? "the store of all" : "the user's store");
    }
    EXPECT_GT(fields, 100);
}

TEST_F(FieldKeysTest, EverythingThatASourceNamesIsInATable)
{
    int found = 0;
    const std::filesystem::path root = std::filesystem::path(QEL_TEST_DATA) / "../..";
    for (const char* part : {"src", "kits"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / part)) {
            // Translations are linked into the programs.
            if (entry.path().extension() == ".cpp" && entry.path().filename() != "Language.cpp")
                LookThrough(entry.path(), &found);
        }
    }
    EXPECT_GT(found, 100);
}

TEST(FieldTablesTest, NoKeyStandsTwice)
{
    std::map<std::string, int> keys;
    for (const kits::FieldRanges* table : {&kFields, &kits::kKitFields}) {
        for (const kits::FieldRange& range : *table) {
            EXPECT_EQ(++keys[range.key], 1) << range.key;
            EXPECT_LE(range.low, range.high) << range.key;
            EXPECT_EQ(table->RangeOf(range.key), &range);
        }
    }
}
