// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/storage/File.h"
#include "kits/storage/Resources.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "src/app/Defaults.h"
#include "src/support/Qel.h"
#include "tests/support/ReplaceValue.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// Writes a user's store with this many charts and this delay between samples, for bench/footprint:
///   bench_store CHARTS DELAY FILE [transparent] [desktop FILE]
/// The charts are those of the first start, over and over; for three of them the window has the size of the first
/// start, and it grows so that each chart has at least 40 pixels. The first one can be transparent. A second file gets
/// the store of the program that shows charts on the desktop, with the same charts, one below the other, on the right.

namespace {

constexpr float kLeastHeight = 40;

status_t Write(const BMessage& store, const char* path)
{
    BFile file(path, B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE);
    const status_t status = file.InitCheck();
    return status == B_OK ? store.Flatten(&file) : status;
}

status_t WriteDesktop(const std::vector<BMessage>& charts, const char* path)
{
    constexpr BRect kFirst(690, 20, 1259, 137);
    constexpr float kDistance = 130;
    BMessage store;
    BRect frame = kFirst;
    for (BMessage chart : charts) {
        chart.AddString("class", "ChartView");
        chart.AddString("add_on", signature);
        BMessage place;
        place.AddString("Screens", "");
        place.AddRect("Frame", frame);
        frame.OffsetBy(0, kDistance);
        BMessage saved;
        saved.AddMessage("Archive", &chart);
        saved.AddMessage("Place", &place);
        store.AddMessage("Replicant", &saved);
    }
    store.AddString("Version", kVersion);
    return Write(store, path);
}

bool Arrange(BMessage& store, int charts, bool transparent, std::vector<BMessage>* all)
{
    BMessage window;
    BMessage holder;
    if (store.FindMessage("MainWindow", &window) != B_OK || window.FindMessage("ChartViewHolder", &holder) != B_OK)
        return false;
    std::vector<BMessage> first;
    BMessage chart;
    for (int32 i = 0; holder.FindMessage("Chart", &chart, i) == B_OK; i++)
        first.push_back(chart);
    if (first.empty())
        return false;
    holder.RemoveName("Chart");
    for (int i = 0; i < charts; i++) {
        all->push_back(first[static_cast<size_t>(i) % first.size()]);
        if (transparent && i == 0)
            all->back().AddBool("Transparent", true);
        holder.AddMessage("Chart", &all->back());
    }

    BRect frame;
    window.FindRect("WindowFrameWithCharts", &frame);
    if (frame.Height() < kLeastHeight * static_cast<float>(charts))
        frame.bottom = frame.top + kLeastHeight * static_cast<float>(charts);
    test::ReplaceRect(window, "WindowFrameWithCharts", frame);
    test::ReplaceRect(window, "_frame", frame);
    window.ReplaceMessage("ChartViewHolder", &holder);
    store.ReplaceMessage("MainWindow", &window);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    bool transparent = false;
    const char* desktop = nullptr;
    size_t used = 3;
    for (; used < arguments.size(); used++)
        if (arguments[used] == "transparent")
            transparent = true;
        else if (arguments[used] == "desktop" && used + 1 < arguments.size())
            desktop = arguments[++used].c_str();
        else
            break;
    if (used != arguments.size()) {
        std::fprintf(stderr, "usage: %s CHARTS DELAY FILE [transparent] [desktop FILE]\n", argv[0]);
        return 2;
    }
    BResources resources;
    size_t size = 0;
    const void* defaults = resources.LoadResource(B_ANY_TYPE, "Defaults", &size);
    BMessage store;
    system_info info;
    if (defaults == nullptr ||
        store.Unflatten(static_cast<const char*>(defaults), static_cast<ssize_t>(size)) != B_OK ||
        get_system_info(&info) != B_OK)
        return 1;
    AdaptDefaultsToMachine(&store, info.cpu_count);
    std::vector<BMessage> charts;
    if (!Arrange(store, std::atoi(argv[1]), transparent, &charts))
        return 1;
    BMessage sampler;
    sampler.AddInt64("Delay", std::atoll(argv[2]));
    sampler.AddInt16("NodesToKeep", 10);
    store.AddMessage("Sysinfo", &sampler);
    store.AddString("Version", kVersion);
    if (desktop != nullptr && WriteDesktop(charts, desktop) != B_OK)
        return 1;
    return Write(store, argv[3]) == B_OK ? 0 : 1;
}
