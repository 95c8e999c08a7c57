// SPDX-License-Identifier: MIT
#include "kits/application/delivery/WakeSet.h"

#include "kits/kernel/StandardStreams.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>

namespace kits::WakeSet {

namespace {

// The number of the eventfd that a wake writes to.
constexpr Number kWoken = 0;

struct Descriptors {
    int woken;
    int all;
};

Descriptors Make()
{
    // These are the first descriptors that the process makes, before `main`.
    FillStandardStreams();
    Descriptors made;
    made.woken = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    made.all = epoll_create1(EPOLL_CLOEXEC);
    // Edge-triggered: the eventfd is never read.
    epoll_event event = {.events = EPOLLIN | EPOLLET, .data = {.u64 = kWoken}};
    if (made.woken < 0 || made.all < 0 || epoll_ctl(made.all, EPOLL_CTL_ADD, made.woken, &event) != 0)
        std::abort(); // no file descriptor is left at the very start: nothing would ever be handled
    return made;
}

const Descriptors sDescriptors = Make();
std::atomic<bool> sIsWoken = false;

} // namespace

int Descriptor()
{
    return sDescriptors.all;
}

void Wake()
{
    if (!sIsWoken.exchange(true))
        eventfd_write(sDescriptors.woken, 1);
}

bool Add(int descriptor, Number number)
{
    epoll_event event = {.events = EPOLLIN, .data = {.u64 = number}};
    return epoll_ctl(sDescriptors.all, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

void Remove(int descriptor)
{
    epoll_event unused = {};
    epoll_ctl(sDescriptors.all, EPOLL_CTL_DEL, descriptor, &unused);
}

std::span<const Number> Clear(std::span<Number> space)
{
    std::array<epoll_event, 16> events;
    const int most = static_cast<int>(std::min(events.size(), space.size()));
    const int count = epoll_wait(sDescriptors.all, events.data(), most, 0);
    sIsWoken.exchange(false);
    size_t found = 0;
    for (int i = 0; i < count; ++i) {
        const Number number = events[static_cast<size_t>(i)].data.u64;
        if (number != kWoken)
            space[found++] = number;
    }
    return space.first(found);
}

} // namespace kits::WakeSet
