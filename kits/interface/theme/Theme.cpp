#include "kits/interface/theme/Theme.h"

#include "kits/interface/views/ViewImpl.h"
#include "kits/interface/windows/WindowImpl.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace kits::Theme {

namespace {

constexpr QColor kPanel(216, 216, 216);
/// After the start's windows are drawn.
constexpr int kAskLater = 300;
/// Several settings change together.
constexpr int kAskAgain = 50;
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kPortalSettings = "org.freedesktop.portal.Settings";

bool sRuns = false;
bool sDesktopIsDark = false;
bool sApplying = false;

bool IsDarkColor(const QColor& color)
{
    return qGray(color.rgb()) < 128;
}

/// The roles that make up panels and controls; the rest stays the user's.
QPalette LightSet()
{
    QPalette set;
    const auto put = [&set](QPalette::ColorRole role, const QColor& color) { set.setColor(role, color); };
    put(QPalette::Window, kPanel);
    put(QPalette::Button, QColor(232, 232, 232));
    put(QPalette::Midlight, QColor(228, 228, 228));
    put(QPalette::Mid, QColor(176, 176, 176));
    put(QPalette::Dark, QColor(148, 148, 148));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        set.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    return set;
}

QPalette DarkSet()
{
    const QColor text(230, 230, 230);
    const QColor dim(138, 138, 138);
    QPalette set(QColor(76, 76, 76), QColor(54, 54, 54));
    const auto put = [&set](QPalette::ColorRole role, const QColor& color) { set.setColor(role, color); };
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        put(role, text);
        set.setColor(QPalette::Disabled, role, dim);
    }
    put(QPalette::Base, QColor(28, 28, 28));
    put(QPalette::AlternateBase, QColor(38, 38, 38));
    put(QPalette::ToolTipBase, QColor(70, 70, 70));
    put(QPalette::PlaceholderText, dim);
    put(QPalette::Light, QColor(104, 104, 104));
    put(QPalette::Midlight, QColor(88, 88, 88));
    put(QPalette::Mid, QColor(36, 36, 36));
    put(QPalette::Dark, QColor(28, 28, 28));
    put(QPalette::Shadow, QColor(12, 12, 12));
    put(QPalette::Highlight, QColor(53, 132, 228));
    put(QPalette::HighlightedText, Qt::white);
    put(QPalette::Link, QColor(98, 160, 234));
    put(QPalette::BrightText, Qt::white);
    return set;
}

void TellViews()
{
    for (WindowImpl* window : WindowImpl::All())
        window->ForEachView([](BView* view) { ViewImpl::Of(view).ThemeChanged(); });
}

void Apply()
{
    sApplying = true;
    // Without ours: what the toolkit took from the desktop.
    QGuiApplication::setPalette(QPalette());
    if (!IsDarkColor(QGuiApplication::palette().color(QPalette::Base)))
        QGuiApplication::setPalette(sDesktopIsDark ? DarkSet() : LightSet());
    sApplying = false;
    TellViews();
}

bool GtkIsDark()
{
    if (const char* theme = std::getenv("GTK_THEME"); theme != nullptr && *theme != '\0')
        return ThemeNameIsDark(theme);
    BPath settings;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &settings) != B_OK)
        return false;
    for (const char* folder : {"/gtk-4.0", "/gtk-3.0"}) {
        std::ifstream file(std::string(settings.Path()) + folder + "/settings.ini");
        std::stringstream text;
        if (file && text << file.rdbuf() && SettingsAreDark(text.str()))
            return true;
    }
    return false;
}

/// Asks the portal, if it runs; it is not started for this.
void AskPortal()
{
    if (!sRuns || std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        return;
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QString::fromLatin1(kPortalPath),
        QString::fromLatin1(kPortalSettings), QStringLiteral("Read"));
    question.setAutoStartService(false);
    question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), qApp);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, qApp, [](QDBusPendingCallWatcher* watcher) {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (!sRuns || reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return;
        QVariant value = reply.arguments().first();
        while (value.canConvert<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        // 1 prefers dark, 2 light; of one without an opinion others may know.
        const uint scheme = value.toUInt();
        SetDesktopIsDark(scheme == 1 || (scheme != 2 && GtkIsDark()));
    });
}

/// Asks the portal, and whenever it says that a setting is another one.
void FollowPortal()
{
    if (!sRuns || std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        return;
    static QPointer<QTimer> soon;
    if (soon == nullptr) {
        soon = new QTimer(qApp);
        soon->setSingleShot(true);
        soon->setInterval(kAskAgain);
        QObject::connect(soon, &QTimer::timeout, qApp, AskPortal);
        // Of no certain sender: to look for that would wait for an answer, and this only leads to a question.
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
    sDesktopIsDark = GtkIsDark();
    Apply();
    QTimer::singleShot(kAskLater, qApp, FollowPortal);
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

bool IsDark()
{
    return IsDarkColor(QGuiApplication::palette().color(QPalette::Window));
}

void SetDesktopIsDark(bool dark)
{
    if (dark == sDesktopIsDark)
        return;
    sDesktopIsDark = dark;
    Apply();
}

bool ThemeNameIsDark(const std::string& name)
{
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    return lower.ends_with(":dark") || lower.ends_with("-dark");
}

bool SettingsAreDark(const std::string& ini)
{
    bool dark = false;
    std::istringstream lines(ini);
    for (std::string line; std::getline(lines, line);) {
        std::erase_if(line, [](unsigned char c) { return std::isspace(c) || c == '"'; });
        const size_t sign = line.find('=');
        if (sign == std::string::npos)
            continue;
        const std::string key = line.substr(0, sign);
        const std::string value = line.substr(sign + 1);
        if (key == "gtk-application-prefer-dark-theme")
            dark = dark || value == "1" || value == "true" || value == "yes";
        else if (key == "gtk-theme-name")
            dark = dark || ThemeNameIsDark(value);
    }
    return dark;
}

} // namespace kits::Theme
