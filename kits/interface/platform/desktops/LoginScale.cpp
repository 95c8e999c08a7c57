// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/LoginScale.h"

#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/x11/XSettings.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace kits {

namespace {

constexpr const char* kFactor = "QT_SCALE_FACTOR";
constexpr const char* kResolution = "QT_FONT_DPI";
constexpr const char* kOfUser[] = {"QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING", "QT_USE_PHYSICAL_DPI"};

char* EntryOf(std::string_view name)
{
    for (char** entry = environ; entry != nullptr && *entry != nullptr; entry++) {
        const std::string_view text(*entry);
        if (text.size() > name.size() && text.substr(0, name.size()) == name && text[name.size()] == '=')
            return *entry;
    }
    return nullptr;
}

} // namespace

bool LoginScale::IsInEnvironment()
{
    using Environment::Value;
    const std::string factor = Value(kFactor);
    const bool isWhole = factor.find_first_not_of("0123456789") == factor.npos;
    return (!factor.empty() || !Value(kResolution).empty()) && isWhole && Environment::IsSessionOf("MATE") &&
           std::all_of(std::begin(kOfUser), std::end(kOfUser), [](const char* name) { return Value(name).empty(); });
}

LoginScale::LoginScale(const XSettings& settings)
{
    if (!IsInEnvironment() || !settings.Integer("Gdk/WindowScalingFactor") || !settings.Integer("Xft/DPI"))
        return;
    for (const char* name : {kFactor, kResolution}) {
        if (char* const entry = EntryOf(name)) {
            // Renames the entry in place: removing and adding entries moves the list, which threads of the toolkit may
            // be reading.
            *entry = '_';
            fHidden.push_back(entry);
        }
    }
}

LoginScale::~LoginScale()
{
    for (char* const entry : fHidden)
        *entry = 'Q';
}

} // namespace kits
