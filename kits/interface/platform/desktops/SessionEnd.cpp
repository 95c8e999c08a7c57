// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/SessionEnd.h"

#include "kits/interface/platform/desktops/Environment.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QTimer>

#include <dlfcn.h>

#include <csignal>
#include <cstdlib>

namespace kits::SessionEnd {

namespace {

using Handler = void (*)(void* connection);

/// After the start's windows are drawn, and before the desktop's portal is asked.
constexpr int kLater = 200;

/// The library continues when this returns, and calls it again for every later error.
void Quit(void*)
{
    static bool isTold = false;
    if (!isTold)
        std::raise(SIGTERM);
    isTold = true;
}

void WatchLxqt()
{
    auto* watcher = new QDBusServiceWatcher(QStringLiteral("org.lxqt.session"), QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForUnregistration, QCoreApplication::instance());
    QObject::connect(watcher, &QDBusServiceWatcher::serviceUnregistered, watcher, [] { Quit(nullptr); });
}

} // namespace

void Watch()
{
    std::signal(SIGPIPE, SIG_IGN);
    if (Environment::IsSessionOf("LXQt") && std::getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr)
        QTimer::singleShot(kLater, QCoreApplication::instance(), WatchLxqt);
    // Only if the toolkit has loaded it; it stays loaded.
    void* const library = dlopen("libICE.so.6", RTLD_NOLOAD | RTLD_LAZY);
    if (library == nullptr)
        return;
    if (const auto set = reinterpret_cast<Handler (*)(Handler)>(dlsym(library, "IceSetIOErrorHandler")))
        set(Quit);
    dlclose(library);
}

} // namespace kits::SessionEnd
