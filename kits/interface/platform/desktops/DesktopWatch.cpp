// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopWatch.h"

#include "kits/interface/platform/desktops/PictureFile.h"
#include "kits/kernel/Clock.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace kits {

namespace {

/// Interval at which a desktop without notifications is read while callers ask for its colour.
constexpr bigtime_t kLookAgain = 2000000;

} // namespace

DesktopWatch::DesktopWatch(Maker make, rgb_color unknown, std::function<void()> changed)
    : fMake(std::move(make))
    , fChanged(std::move(changed))
    , fWake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , fEnd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , fColor(unknown)
{
    fIsBlind = fMake == nullptr;
    if (fIsBlind)
        return;
    const auto run = [](void* self) {
        static_cast<DesktopWatch*>(self)->Run();
        return B_OK;
    };
    fThread = spawn_thread(run, "Desktop colour", B_LOW_PRIORITY, this);
    resume_thread(fThread);
}

DesktopWatch::~DesktopWatch()
{
    {
        const std::lock_guard lock(fLock);
        fEnding = true;
    }
    eventfd_write(fEnd.Get(), 1);
    eventfd_write(fWake.Get(), 1);
    wait_for_thread(fThread, nullptr);
}

rgb_color DesktopWatch::Get()
{
    bool look = false;
    rgb_color color;
    {
        const std::lock_guard lock(fLock);
        color = fColor;
        look = fNeedsLooking && fOrder == Order::kNone && !fBefore && system_time() - fLooked > kLookAgain;
        if (look)
            fLooked = system_time();
    }
    if (look)
        Give(Order::kLook);
    return color;
}

template <class Function> void DesktopWatch::Update(Function function)
{
    bool isChanged = false;
    {
        const std::lock_guard lock(fLock);
        const rgb_color before = fColor;
        function();
        isChanged = fColor != before;
    }
    if (isChanged && fChanged)
        fChanged();
}

void DesktopWatch::Set(rgb_color color, bool permanent)
{
    Update([&] {
        if (!fBefore)
            fBefore = fColor;
        fColor = color;
        fOrdered = color;
        fPermanent = permanent;
    });
    Give(Order::kPaint);
}

void DesktopWatch::Restore()
{
    Update([&] {
        fColor = fBefore.value_or(fColor);
        fBefore.reset();
    });
    Give(Order::kRestore);
}

void DesktopWatch::Change(rgb_color color)
{
    Update([&] {
        fBefore.reset();
        fColor = color;
        fOrdered = color;
    });
    Give(Order::kChange);
}

void DesktopWatch::Ask(Answer answer)
{
    rgb_color color;
    {
        const std::lock_guard lock(fLock);
        color = fColor;
        if (!fIsBlind)
            fAnswers.push_back(std::exchange(answer, nullptr));
    }
    if (answer)
        answer(color);
    else
        Give(Order::kLook);
}

void DesktopWatch::Give(Order order)
{
    {
        const std::lock_guard lock(fLock);
        if (order == Order::kLook && fOrder != Order::kNone)
            return;
        fOrder = order;
    }
    eventfd_write(fWake.Get(), 1);
}

void DesktopWatch::Run()
{
    const PictureStop stop(fEnd.Get());
    fBackend = fMake();
    if (fBackend == nullptr) {
        std::unique_lock lock(fLock);
        fIsBlind = true;
        const std::vector<Answer> answers = std::exchange(fAnswers, {});
        const rgb_color color = fColor;
        lock.unlock();
        AnswerAll(answers, color);
        return;
    }
    fRestore.emplace(*fBackend);
    fRestore->RestoreLeft();
    Look();
    while (Obey()) {
        // Reading the colour may have taken in more news.
        while (fBackend->TakeNews())
            HearNews();
        WaitForNews();
    }
    fRestore.reset();
    fBackend.reset();
}

bool DesktopWatch::Obey()
{
    std::unique_lock lock(fLock);
    const Order order = std::exchange(fOrder, Order::kNone);
    // Only the questions from before the desktop is read.
    const std::vector<Answer> answers = std::exchange(fAnswers, {});
    const rgb_color color = fOrdered;
    const bool permanent = fPermanent;
    const bool ending = fEnding;
    lock.unlock();
    std::optional<rgb_color> seen;
    switch (order) {
    case Order::kPaint:
        fRestore->Paint(color, permanent);
        break;
    case Order::kRestore:
        fRestore->Restore();
        Look();
        break;
    case Order::kChange:
        fRestore->Change(color);
        break;
    case Order::kLook:
        seen = HearNews();
        break;
    case Order::kNone:
        break;
    }
    if (!answers.empty()) {
        lock.lock();
        const rgb_color known = fColor;
        lock.unlock();
        AnswerAll(answers, seen.value_or(known));
    }
    return !ending;
}

void DesktopWatch::AnswerAll(const std::vector<Answer>& answers, rgb_color color)
{
    for (const Answer& answer : answers)
        answer(color);
}

std::optional<rgb_color> DesktopWatch::HearNews()
{
    if (fRestore->IsPainted()) {
        if (fBackend->IsPainted())
            return std::nullopt;
        // Somebody else has set the desktop.
        fRestore->GiveUp();
        const std::lock_guard lock(fLock);
        fBefore.reset();
    }
    return Look();
}

std::optional<rgb_color> DesktopWatch::Look()
{
    const std::optional<rgb_color> color = fBackend->Read();
    Update([&] {
        fNeedsLooking = fBackend->NeedsLooking();
        fLooked = system_time();
        if (color)
            (fBefore ? *fBefore : fColor) = *color;
    });
    return color;
}

void DesktopWatch::WaitForNews()
{
    std::vector<pollfd> files = {{fWake.Get(), POLLIN, 0}};
    for (const int descriptor : fBackend->Descriptors())
        files.push_back({descriptor, POLLIN, 0});
    poll(files.data(), files.size(), -1);
    eventfd_t ignored;
    eventfd_read(fWake.Get(), &ignored);
}

} // namespace kits
