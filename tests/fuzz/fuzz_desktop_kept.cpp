// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/interface/platform/desktops/DesktopKept.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "tests/fuzz/FlatMessage.h"
#include "tests/fuzz/Fuzz.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

// The file that says how a painted desktop is restored: as it lies on the disk, and the settings that it makes a
// desktop set.

namespace {

constexpr const char* kPlain = "0";
constexpr const char* kPaint = "1 2 3";

std::string sFolder;

/// A desktop that keeps its settings in a map and records every change.
class MapDesktop : public kits::SettingsDesktop {
public:
    explicit MapDesktop(unsigned painted)
    {
        // The bits say which of them have been painted over.
        for (const Setting& setting : Names()) {
            fValues[setting.key] = (painted & 1) == 0 ? "7 7 7" : setting.kind == Kind::kStyle ? kPlain : kPaint;
            painted >>= 1;
        }
    }

    const char* Name() const override { return "map"; }
    const std::map<std::string, std::string>& Values() const { return fValues; }
    int Calls(const std::string& key) const
    {
        const auto found = fCalls.find(key);
        return found != fCalls.end() ? found->second : 0;
    }

    static Settings Names()
    {
        return {{"/a/rgba1", Kind::kColor, {}, true},
                {"/b/rgba1", Kind::kColor, {}, true},
                {"/a/style", Kind::kStyle, {}, true},
                {"/b/style", Kind::kStyle, {}, true},
                {"/a/image", Kind::kRead, {}, true}};
    }

protected:
    std::optional<Settings> Current() const override
    {
        Settings settings = Names();
        for (Setting& setting : settings)
            if (const auto value = fValues.find(setting.key); value != fValues.end())
                setting.value = value->second;
        return settings;
    }
    bool Set(const std::string& key, const std::string& value) override
    {
        fCalls[key]++;
        fValues[key] = value;
        return true;
    }
    bool Unset(const std::string& key) override
    {
        fCalls[key]++;
        fValues.erase(key);
        return true;
    }
    std::string PlainStyle(const std::string&) const override { return kPlain; }
    std::string FormatColor(rgb_color) const override { return kPaint; }
    std::optional<rgb_color> ParseColor(const std::string& value) const override
    {
        return value == kPaint ? std::optional(make_color(1, 2, 3)) : std::nullopt;
    }
    std::optional<rgb_color> Shown(const Settings&) const override { return std::nullopt; }

private:
    std::map<std::string, std::string> fValues;
    std::map<std::string, int> fCalls;
};

/// @param painted    which settings have been painted over
/// @param isPainter  whether this process has painted
void CheckRestore(const BMessage& kept, unsigned painted, bool isPainter)
{
    MapDesktop desktop(painted);
    if (isPainter)
        desktop.Paint(make_color(1, 2, 3), BMessage());
    const std::map<std::string, std::string> before = desktop.Values();
    Expect(desktop.Restore(kept));
    for (const auto& [key, value] : desktop.Values())
        Expect(before.count(key) == 1); // nothing is set that this desktop does not have
    for (const auto& setting : MapDesktop::Names()) {
        const bool isColor = setting.kind == MapDesktop::Kind::kColor;
        const bool isStyle = setting.kind == MapDesktop::Kind::kStyle;
        const std::string& value = before.at(setting.key);
        const bool isOurs = (isStyle && value == kPlain) || (isColor && (!isPainter || value == kPaint));
        // Settings that somebody else has changed stay theirs, and each is set once, however often the file names it.
        Expect(desktop.Calls(setting.key) <= (isOurs ? 1 : 0));
    }
}

void CheckFile(std::string_view bytes)
{
    const std::string path = sFolder + "/kits-desktop.kept";
    std::FILE* file = std::fopen(path.c_str(), "wb");
    Expect(file != nullptr);
    Expect(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
    std::fclose(file);
    kits::DesktopKept kept;
    const std::optional<BMessage> left = kept.TakeLeft();
    // A file that is no whole message is removed; any other stays until the desktop is restored.
    Expect(kits::DesktopKept::Exists() == left.has_value());
    if (!left)
        return;
    kits::DesktopKept other;
    Expect(!other.TakeLeft() && other.Save(BMessage('othr')) == B_BUSY); // the file is locked
    BMessage state;
    if (left->FindMessage("Kept", &state) == B_OK)
        CheckRestore(state, 0x1F, false);
    kept.Remove();
    Expect(!kits::DesktopKept::Exists());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    std::string name = "/dev/shm/fuzz-desktop-XXXXXX";
    Expect(mkdtemp(name.data()) != nullptr);
    sFolder = name;
    setenv("XDG_CONFIG_HOME", sFolder.c_str(), 1);
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(sFolder, ignored);
    });
    return 0;
}

// The first byte says whether the rest is a file or the fields of a kept message, and how the desktop looks.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view rest = TextOf(data + 1, size - 1);
    if ((data[0] & 0x80) != 0) {
        CheckFile(rest);
        return 0;
    }
    BMessage kept;
    if (kits::ReadMessage(FlatMessage(std::string(rest)), &kept) == B_OK)
        CheckRestore(kept, data[0] & 0x1F, (data[0] & 0x20) != 0);
    return 0;
}
