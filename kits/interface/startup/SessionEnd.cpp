#include "kits/interface/startup/SessionEnd.h"

#include <csignal>
#include <dlfcn.h>

namespace kits::SessionEnd {

namespace {

using Handler = void (*)(void* connection);

/// The library goes on when this returns, and calls it again for everything that fails afterwards.
void Quit(void*)
{
    static bool isTold = false;
    if (!isTold)
        std::raise(SIGTERM);
    isTold = true;
}

} // namespace

void Watch()
{
    std::signal(SIGPIPE, SIG_IGN);
    // Only where the toolkit has loaded it; it stays loaded.
    void* const library = dlopen("libICE.so.6", RTLD_NOLOAD | RTLD_LAZY);
    if (library == nullptr)
        return;
    if (const auto set = reinterpret_cast<Handler (*)(Handler)>(dlsym(library, "IceSetIOErrorHandler")))
        set(Quit);
    dlclose(library);
}

} // namespace kits::SessionEnd
