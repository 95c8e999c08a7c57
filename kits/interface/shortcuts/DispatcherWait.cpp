// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/DispatcherWait.h"

#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"

#include <dlfcn.h>

#include <algorithm>

namespace kits {

namespace {

constexpr bigtime_t kLongest = 3600000;

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

DispatcherWait::DispatcherWait(int ours)
    : fOurs(ours)
    , fUntil(0)
{
    fDescriptors.reserve(16);
}

bool DispatcherWait::Begin()
{
    const MainContext& context = MainContext::Get();
    int milliseconds = -1;
    if (!context.IsThere() || !context.Ask(&fDescriptors, &milliseconds))
        return false;
    fUntil = milliseconds < 0 ? B_INFINITE_TIMEOUT : system_time() + bigtime_t{milliseconds} * 1000;
    // If our descriptor is not among them, the dispatcher is another one, or about to go.
    return std::any_of(fDescriptors.begin(), fDescriptors.end(), [this](const pollfd& it) { return it.fd == fOurs; });
}

bool DispatcherWait::Await()
{
    int milliseconds = -1;
    if (fUntil != B_INFINITE_TIMEOUT)
        milliseconds = static_cast<int>(std::clamp((fUntil - system_time() + 999) / 1000, bigtime_t{0}, kLongest));
    const int ready = poll(fDescriptors.data(), fDescriptors.size(), milliseconds);
    return ready == 1 && std::any_of(fDescriptors.begin(), fDescriptors.end(),
                                     [this](const pollfd& it) { return it.fd == fOurs && it.revents == POLLIN; });
}

} // namespace kits
