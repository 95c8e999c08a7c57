// SPDX-License-Identifier: MIT
#include "kits/interface/startup/Theme.h"

#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/platform/desktops/DarkSigns.h"
#include "kits/interface/platform/desktops/DesktopColors.h"
#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/x11/XSettings.h"
#include "kits/interface/startup/DarkStyle.h"
#include "kits/interface/startup/Palettes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <QTimer>

#include <cstdlib>
#include <optional>
#include <string>

namespace kits::Theme {

namespace {

/// After the windows of the start are drawn.
constexpr int kAskLater = 300;
/// Several settings change together.
constexpr int kAskAgain = 50;
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kPortalSettings = "org.freedesktop.portal.Settings";

bool sRuns = false;
DarkSigns sSigns;
/// The verdict of the signs; without one, the toolkit's own colours decide.
std::optional<bool> sIsDark;
bool sApplying = false;

bool IsDarkColor(const QColor& color)
{
    return qGray(color.rgb()) < 128;
}

void Apply()
{
    sApplying = true;
    // Without a palette of ours: what the toolkit took from the desktop, in some cases at its start.
    QGuiApplication::setPalette(QPalette());
    const bool toolkitIsDark = IsDarkColor(QGuiApplication::palette().color(QPalette::Base));
    const bool dark = sIsDark.value_or(toolkitIsDark);
    if (dark)
        DarkStyle::Install();
    if (dark != toolkitIsDark)
        QGuiApplication::setPalette(dark ? Palettes::Dark() : Palettes::Light());
    else if (!dark)
        QGuiApplication::setPalette(Palettes::LightPanels());
    sApplying = false;
    for (WindowImpl* window : WindowImpl::All())
        window->ForEachView([](BView* view) { ViewImpl::Of(view).ThemeChanged(); });
}

bool GtkFilesAreDark()
{
    const std::string settings = Environment::OwnSettings();
    if (settings.empty())
        return false;
    for (const char* folder : {"/gtk-4.0", "/gtk-3.0"})
        if (SettingsAreDark(IniFile::TextOf(settings + folder + "/settings.ini").value_or("")))
            return true;
    return false;
}

/// Reads the signs that are available without waiting; the portal's sign is its last answer.
void ReadSigns()
{
    sSigns.environment = Environment::Value("GTK_THEME");
    sSigns.fileIsDark = GtkFilesAreDark();
    sSigns.desktop = DesktopColors::AreDark();
    const XSettings& settings = XSettingsWatch::Current();
    sSigns.themeName = settings.Text("Net/ThemeName");
    sSigns.prefersDark = settings.Integer("Gtk/ApplicationPreferDarkTheme").value_or(0) != 0;
}

void Judge()
{
    if (sRuns)
        SetDesktopIsDark(sSigns.IsDark());
}

/// Makes a timer that calls once, a moment after its last start.
QTimer* MakeSoon(void (*call)())
{
    auto* soon = new QTimer(qApp);
    soon->setSingleShot(true);
    soon->setInterval(kAskAgain);
    QObject::connect(soon, &QTimer::timeout, qApp, call);
    return soon;
}

void ReadAndJudge()
{
    ReadSigns();
    Judge();
}

/// Reads the desktop's own settings again whenever they change.
void FollowFiles()
{
    const std::vector<std::string> names = DesktopColors::Files();
    if (!sRuns || names.empty())
        return;
    static QPointer<QFileSystemWatcher> watcher;
    if (watcher != nullptr)
        return;
    watcher = new QFileSystemWatcher(qApp);
    // A replaced file must be watched again, which the watch on its folder reports.
    const auto watch = [names] {
        QStringList paths;
        for (const std::string& name : names) {
            const QFileInfo file(QString::fromStdString(name));
            for (const QString& path : {file.path(), file.filePath()})
                if (QFileInfo::exists(path))
                    paths << path;
        }
        if (!paths.isEmpty())
            watcher->addPaths(paths);
    };
    QTimer* soon = MakeSoon(ReadAndJudge);
    const auto changed = [watch, soon] {
        watch();
        soon->start();
    };
    QObject::connect(watcher, &QFileSystemWatcher::fileChanged, qApp, changed);
    QObject::connect(watcher, &QFileSystemWatcher::directoryChanged, qApp, changed);
    watch();
    // Takes in changes since the start.
    ReadAndJudge();
}

/// Asks the portal, if it runs. Starts it for this only on GNOME, where nothing else knows, and where the desktop's own
/// programs start it as well.
void AskPortal()
{
    if (!sRuns || std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        return;
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QString::fromLatin1(kPortalPath),
        QString::fromLatin1(kPortalSettings), QStringLiteral("Read"));
    question.setAutoStartService(Environment::IsSessionOf("GNOME"));
    question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), qApp);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, qApp, [](QDBusPendingCallWatcher* watcher) {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        QVariant value;
        if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
            value = reply.arguments().first();
        while (value.canConvert<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        sSigns.portal = value.toUInt();
        Judge();
    });
}

/// Asks the portal, and asks again whenever it reports a changed setting.
void FollowPortal()
{
    if (!sRuns || std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        return;
    static QPointer<QTimer> soon;
    if (soon == nullptr) {
        soon = MakeSoon(AskPortal);
        // From any sender: looking up the portal's name would wait for an answer, and the signal only leads to a
        // question.
        QDBusConnection::sessionBus().connect(QString(), QString::fromLatin1(kPortalPath),
                                              QString::fromLatin1(kPortalSettings), QStringLiteral("SettingChanged"),
                                              soon, SLOT(start()));
    }
    AskPortal();
}

} // namespace

void Start()
{
    sRuns = true;
    sSigns = {};
    ReadSigns();
    sIsDark = sSigns.IsDark();
    Apply();
    XSettingsWatch::CallOnChange(ReadAndJudge);
    QTimer::singleShot(kAskLater, qApp, FollowPortal);
    QTimer::singleShot(kAskLater, qApp, FollowFiles);
}

void Stop()
{
    sRuns = false;
}

void Watch(int eventType)
{
    if (!sRuns || sApplying)
        return;
    if (eventType == QEvent::ApplicationPaletteChange)
        Apply();
    else if (eventType == QEvent::ApplicationActivate)
        AskPortal();
}

void SetDesktopIsDark(std::optional<bool> dark)
{
    if (dark == sIsDark)
        return;
    sIsDark = dark;
    Apply();
}

} // namespace kits::Theme
