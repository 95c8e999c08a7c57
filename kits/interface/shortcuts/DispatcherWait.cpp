// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/DispatcherWait.h"

#include "kits/application/EventLoop.h"

#include <QCoreApplication>

#include <dlfcn.h>
#include <poll.h>

#include <algorithm>
#include <vector>

namespace kits::DispatcherWait {

namespace {

/// The few functions of GLib's main context that are needed, as its manual describes them, bound at run time: the
/// toolkit may have been built without GLib. Its GPollFD has the layout of a pollfd.
class MainContext {
public:
    static const MainContext& Get()
    {
        static const MainContext sContext;
        return sContext;
    }

    bool IsThere() const { return fIsOwned; }

    /// Returns false if some source is ready.
    bool Ask(std::vector<pollfd>* descriptors, int* milliseconds) const
    {
        int priority = 0;
        if (fPrepare(fContext, &priority) != 0)
            return false;
        descriptors->resize(descriptors->capacity());
        const auto query = [&] {
            return static_cast<size_t>(
                fQuery(fContext, priority, milliseconds, descriptors->data(), static_cast<int>(descriptors->size())));
        };
        size_t count = query();
        while (count > descriptors->size()) {
            descriptors->resize(count);
            count = query();
        }
        descriptors->resize(count);
        return true;
    }

private:
    MainContext()
        : fLibrary(dlopen("libglib-2.0.so.0", RTLD_NOLOAD | RTLD_LAZY))
    {
        void* (*getDefault)() = nullptr;
        int (*acquire)(void*) = nullptr;
        if (fLibrary == nullptr || !Bind("g_main_context_default", &getDefault) ||
            !Bind("g_main_context_acquire", &acquire) || !Bind("g_main_context_prepare", &fPrepare) ||
            !Bind("g_main_context_query", &fQuery))
            return;
        fContext = getDefault();
        // Owned for good: other threads wake only a context that has an owner.
        fIsOwned = fContext != nullptr && acquire(fContext) != 0;
    }

    template <class Function> bool Bind(const char* name, Function* function) const
    {
        *function = reinterpret_cast<Function>(dlsym(fLibrary, name));
        return *function != nullptr;
    }

    void* const fLibrary;
    void* fContext = nullptr;
    bool fIsOwned = false;
    int (*fPrepare)(void*, int*) = nullptr;
    int (*fQuery)(void*, int, int*, pollfd*, int) = nullptr;
};

} // namespace

void Run(QtEventLoop& loop)
{
    // Samples come several times a second for as long as the program runs.
    while (Await(EventLoop::WakeDescriptor())) {
        loop.Held();
        const bool wasAll = EventLoop::RunIfOnlyStreams();
        // The dispatcher takes deletions requested outside of any event for older than its loop, and would never carry
        // them out.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        loop.BeginWait();
        if (!wasAll)
            return;
        loop.TellOthers();
    }
}

bool Await(int ours)
{
    static std::vector<pollfd> sDescriptors(16);
    const MainContext& context = MainContext::Get();
    int milliseconds = -1;
    const auto isOurs = [ours](const pollfd& it) { return it.fd == ours; };
    // If our descriptor is not among them, the dispatcher is another one, or about to go.
    if (!context.IsThere() || !context.Ask(&sDescriptors, &milliseconds) ||
        std::none_of(sDescriptors.begin(), sDescriptors.end(), isOurs))
        return false;
    const int ready = poll(sDescriptors.data(), sDescriptors.size(), milliseconds);
    return ready == 1 && std::any_of(sDescriptors.begin(), sDescriptors.end(),
                                     [&](const pollfd& it) { return isOurs(it) && it.revents == POLLIN; });
}

} // namespace kits::DispatcherWait
