// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/sem.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <vector>

/// The bare minimum that every monitor needs, for bench/footprint:
///   bare_monitor CHARTS DELAY
/// A thread sleeps for DELAY microseconds and reads the same parts of the same files as the sampler; another thread
/// waits for it and sends the X server a new column for each chart. Nothing is computed, stored or drawn.

namespace {

constexpr uint16_t kWidth = 581;
constexpr uint16_t kHeight = 420;
constexpr uint32_t kBackground = 0x10151D;
constexpr uint32_t kColumn = 0x40C040;
// The part of /proc/vmstat that contains the needed lines.
constexpr size_t kPartOfVmStat = 2048;

struct Reads {
    int file;
    size_t size;
};

Reads Opened(const char* path, size_t size)
{
    return {open(path, O_RDONLY | O_CLOEXEC), size};
}

[[noreturn]] void Sample(std::chrono::microseconds delay, int wake)
{
    std::vector<char> buffer(16384);
    const std::array<Reads, 5> files = {Opened("/proc/stat", buffer.size()), Opened("/proc/meminfo", buffer.size()),
                                        Opened("/proc/vmstat", kPartOfVmStat), Opened("/proc/loadavg", buffer.size()),
                                        Opened("/proc/net/sockstat", buffer.size())};
    const int processes = open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    while (true) {
        std::this_thread::sleep_for(delay);
        for (const Reads& one : files)
            if (pread(one.file, buffer.data(), one.size, 0) < 0)
                std::exit(1);
        struct stat status;
        seminfo semaphores;
        if (fstat(processes, &status) != 0 || semctl(0, 0, SEM_INFO, &semaphores) < 0 || eventfd_write(wake, 1) != 0)
            std::exit(1);
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    const int charts = std::atoi(arguments[1]);
    const std::chrono::microseconds delay(std::atoi(arguments[2]));
    if (charts < 1 || charts > kHeight)
        return 2;

    xcb_connection_t* const server = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(server) != 0)
        return 1;
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
    const xcb_window_t window = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, screen->root, 100, 50, kWidth, kHeight, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL, &kBackground);
    const xcb_gcontext_t context = xcb_generate_id(server);
    xcb_create_gc(server, context, window, 0, nullptr);
    xcb_map_window(server, window);
    xcb_flush(server);

    const int wake = eventfd(0, EFD_CLOEXEC);
    std::thread(Sample, delay, wake).detach();

    const auto height = static_cast<uint16_t>(kHeight / charts);
    const std::vector<uint32_t> column(height, kColumn);
    pollfd waited{wake, POLLIN, 0};
    for (int16_t at = 0; poll(&waited, 1, -1) == 1; at = static_cast<int16_t>((at + 1) % kWidth)) {
        eventfd_t taken;
        eventfd_read(wake, &taken);
        for (int i = 0; i < charts; ++i) {
            xcb_put_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, 1, height, at,
                          static_cast<int16_t>(i * height), 0, screen->root_depth,
                          static_cast<uint32_t>(column.size() * sizeof(uint32_t)),
                          reinterpret_cast<const uint8_t*>(column.data()));
        }
        if (xcb_flush(server) <= 0)
            return 1;
    }
    return 1;
}
