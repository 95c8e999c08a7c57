// SPDX-License-Identifier: MIT
#include "src/prefs/store/Preferences.h"
#include "src/support/FieldRanges.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "tests/src/app/AppTest.h"
#include "tests/src/app/AppWindows.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

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

/// The types of the calls that take and give fields; 0 where the call does not say it.
const std::map<std::string, type_code> kTypes = {{"Bool", B_BOOL_TYPE},
                                                 {"Int8", B_INT8_TYPE},
                                                 {"Int16", B_INT16_TYPE},
                                                 {"Int32", B_INT32_TYPE},
                                                 {"Int64", B_INT64_TYPE},
                                                 {"Float", B_FLOAT_TYPE},
                                                 {"Double", B_DOUBLE_TYPE},
                                                 {"String", B_STRING_TYPE},
                                                 {"Point", B_POINT_TYPE},
                                                 {"Rect", B_RECT_TYPE},
                                                 {"Pointer", B_POINTER_TYPE},
                                                 {"Message", B_MESSAGE_TYPE},
                                                 {"Data", 0},
                                                 {"Flat", 0},
                                                 {"Messenger", B_MESSENGER_TYPE}};

/// Every program file of the project but those of the tables, and its text.
std::map<std::filesystem::path, std::string> Sources()
{
    std::map<std::filesystem::path, std::string> sources;
    const std::filesystem::path root = std::filesystem::path(QEL_TEST_DATA) / "../..";
    for (const char* part : {"src", "kits"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / part)) {
            const std::filesystem::path& path = entry.path();
            const std::string name = path.filename();
            // Translations are linked into the programs.
            if ((path.extension() != ".cpp" && path.extension() != ".h") || name == "Language.cpp" ||
                name == "FieldRanges.cpp" || name == "KitFields.cpp")
                continue;
            std::ifstream file(path);
            std::stringstream text;
            text << file.rdbuf();
            sources[path] = text.str();
        }
    }
    return sources;
}

/// The names that come right after this in a source, or as the second argument.
std::vector<std::string> NamesAfter(const std::string& source, const std::string& call, bool isSecond = false)
{
    std::vector<std::string> names;
    for (size_t at = source.find(call); at != std::string::npos; at = source.find(call, at + 1)) {
        size_t begin = at + call.size();
        if (isSecond)
            begin = source.find_first_of(",)", begin);
        begin = source.find_first_not_of(", \n", begin);
        if (begin == std::string::npos || source[begin] != '"')
            continue;
        names.push_back(source.substr(begin + 1, source.find('"', begin + 1) - begin - 1));
    }
    return names;
}

/// The names of fields in a source.
void LookThrough(const std::string& source, const std::string& where, int* found)
{
    for (const char* verb : {"Find", "Add", "Replace", "Has", "Set"}) {
        for (const auto& [name, type] : kTypes) {
            for (const std::string& key : NamesAfter(source, verb + name + "(")) {
                const kits::FieldRange* const range = RangeOf(key);
                ExpectKnown(key, type != 0 || range == nullptr ? type : range->type, where);
                ++*found;
            }
        }
    }
    for (const char* call : {"FindInRange(", "kKitFields.Find("}) {
        for (const std::string& key : NamesAfter(source, call, true)) {
            EXPECT_NE(RangeOf(key), nullptr) << where << ": \"" << key << "\" stands in no table";
            ++*found;
        }
    }
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

TEST(FieldTablesTest, EverythingThatASourceNamesIsInATable)
{
    int found = 0;
    for (const auto& [path, source] : Sources())
        LookThrough(source, path.filename(), &found);
    EXPECT_GT(found, 200);
}

TEST(FieldTablesTest, EverythingInATableIsNamedBySomeSource)
{
    const auto sources = Sources();
    for (const kits::FieldRanges* table : {&kFields, &kits::kKitFields}) {
        for (const kits::FieldRange& range : *table) {
            const std::string name = '"' + std::string(range.key) + '"';
            const auto isNamed = [&name](const auto& source) { return source.second.find(name) != std::string::npos; };
            EXPECT_TRUE(std::any_of(sources.begin(), sources.end(), isNamed)) << range.key;
        }
    }
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
