// SPDX-License-Identifier: MIT
#include "kits/interface/Shortcuts.h"

#include "kits/interface/shortcuts/DispatcherWait.h"
#include "kits/interface/shortcuts/ScreenCopy.h"

#include <string>

namespace kits {

void UseShortcuts(const char* choice)
{
    const std::string names = choice == nullptr ? ",copy,pixels,wait," : "," + std::string(choice) + ",";
    const auto has = [&names](const char* name) { return names.find(name) != std::string::npos; };
    static ScreenCopy sScreenCopy;
    sScreenCopy.SetSendsPixels(has(",pixels,"));
    ScreenPath::SetCurrent(has(",copy,") ? &sScreenCopy : nullptr);
    QtEventLoop::SetWaitInPlace(has(",wait,") ? &DispatcherWait::Run : nullptr);
}

} // namespace kits
