// SPDX-License-Identifier: MIT
#include "kits/interface/platform/DisplayCheck.h"

#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/x11/XWindows.h"
#include "kits/kernel/FileDescriptor.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QPluginLoader>

#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <utility>

namespace kits {

namespace {

bool ConnectsTo(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof(address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return connect(descriptor.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

/// Looks at the files of the plug-ins, and loads none.
bool HasPlatform(const std::string& name)
{
    QStringList folders = QCoreApplication::libraryPaths();
    for (QString& folder : folders)
        folder += QStringLiteral("/platforms");
    folders.append(qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH").split(QLatin1Char(':'), Qt::SkipEmptyParts));
    for (const QString& folder : folders) {
        for (const QString& file : QDir(folder).entryList({QStringLiteral("*.so")}, QDir::Files)) {
            const QJsonObject about = QPluginLoader(folder + QLatin1Char('/') + file).metaData();
            const QJsonArray keys =
                about.value(QLatin1String("MetaData")).toObject().value(QLatin1String("Keys")).toArray();
            for (const QJsonValue& key : keys)
                if (key.toString().compare(QString::fromStdString(name), Qt::CaseInsensitive) == 0)
                    return true;
        }
    }
    return false;
}

XWindows::Connection sKept;

bool ReachesX(const std::string& display)
{
    // Connects completely: a server that refuses us counts as none.
    XWindows::Connection connection = XWindows::Connect(display.c_str());
    if (connection == nullptr)
        return false;
    sKept = std::move(connection);
    return true;
}

/// Returns the platform that was requested by name, without its parameters; "" if the choice is left to the toolkit.
std::string AskedPlatform(const std::vector<std::string>& arguments, const DisplayCheck::Surroundings& surroundings)
{
    std::string asked = surroundings.variable("QT_QPA_PLATFORM");
    for (size_t i = 1; i < arguments.size(); i++)
        if ((arguments[i] == "-platform" || arguments[i] == "--platform") && i + 1 < arguments.size())
            asked = arguments[i + 1];
    return asked;
}

} // namespace

std::string DisplayCheck::WhyNone(const std::vector<std::string>& arguments, const Surroundings& surroundings)
{
    const std::string display = surroundings.variable("DISPLAY");
    std::string wayland = surroundings.variable("WAYLAND_DISPLAY");
    if (!wayland.empty() && wayland.front() != '/') {
        const std::string folder = surroundings.variable("XDG_RUNTIME_DIR");
        wayland = folder.empty() ? "" : folder + "/" + wayland;
    }
    const auto hasX = [&] { return !display.empty() && surroundings.reachesX(display); };
    const auto hasWayland = [&] {
        return !wayland.empty() && surroundings.hasWaylandPlugin() && surroundings.reachesWayland(wayland);
    };

    // The user may request several; the first one that works is used.
    std::string asked = AskedPlatform(arguments, surroundings);
    bool isAsked = false;
    std::string unknown;
    while (!asked.empty()) {
        const size_t end = asked.find(';');
        std::string name = asked.substr(0, end);
        asked = end == std::string::npos ? "" : asked.substr(end + 1);
        name = name.substr(0, name.find(':'));
        if (name.empty())
            continue;
        isAsked = true;
        const bool isX = name == "xcb";
        const bool isWayland = name.rfind("wayland", 0) == 0;
        if (isX ? hasX() : isWayland ? hasWayland() : surroundings.hasPlatform(name))
            return "";
        if (!isX && !isWayland)
            unknown = name;
    }
    if (!unknown.empty())
        return "QT_QPA_PLATFORM names a platform that is not installed: \"" + unknown + "\"";
    if (!isAsked && (hasX() || hasWayland()))
        return "";

    if (display.empty() && wayland.empty())
        return "there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
    if (!display.empty())
        return "cannot reach the display \"" + display + "\"";
    return surroundings.hasWaylandPlugin() ? "cannot reach the Wayland display \"" + wayland + "\""
                                           : "there is only a Wayland display, and the package qt6-wayland is missing";
}

DisplayCheck::Surroundings DisplayCheck::Real()
{
    Surroundings real;
    real.variable = Environment::Value;
    real.reachesX = ReachesX;
    real.reachesWayland = ConnectsTo;
    real.hasWaylandPlugin = [] {
        const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
        return !plugins.entryList({QStringLiteral("libqwayland*.so")}, QDir::Files).isEmpty();
    };
    real.hasPlatform = HasPlatform;
    return real;
}

xcb_connection_t* DisplayCheck::Connection()
{
    return sKept.get();
}

void DisplayCheck::Done()
{
    sKept.reset();
}

} // namespace kits
