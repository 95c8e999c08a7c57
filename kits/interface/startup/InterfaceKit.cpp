// SPDX-License-Identifier: MIT
#include "kits/interface/InterfaceKit.h"

#include "kits/application/Application.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/Language.h"
#include "kits/application/Timer.h"
#include "kits/interface/core/ScaleWatch.h"
#include "kits/interface/core/ScreenList.h"
#include "kits/interface/core/ViewAccess.h"
#include "kits/interface/drawing/TextCache.h"
#include "kits/interface/drawing/UserFonts.h"
#include "kits/interface/platform/DesktopColor.h"
#include "kits/interface/platform/DisplayCheck.h"
#include "kits/interface/platform/ForeignDrag.h"
#include "kits/interface/platform/Selections.h"
#include "kits/interface/platform/desktops/LoginScale.h"
#include "kits/interface/platform/desktops/SessionBus.h"
#include "kits/interface/platform/desktops/SessionEnd.h"
#include "kits/interface/startup/FontsAhead.h"
#include "kits/interface/startup/QtEventLoop.h"
#include "kits/interface/startup/SettingsAhead.h"
#include "kits/interface/startup/Theme.h"
#include "kits/kernel/StartMemory.h"
#include "kits/storage/Resources.h"
#include "kits/support/TypeConstants.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QLibraryInfo>
#include <QPixmap>
#include <QTranslator>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace kits {

namespace {

/// Not destroyed automatically: a process that calls exit() somewhere leaves the toolkit as it is.
KitsApplication* sApplication = nullptr;
QtEventLoop* sLoop = nullptr;
std::string sError;
bool sPrefersX11 = false;
constexpr const char* kPlatform = "QT_QPA_PLATFORM";

/// By then the windows of the start have long been drawn.
constexpr bigtime_t kQuiet = 3000000;
Timer* sWhenQuiet = nullptr;

QtMessageHandler sToolkitsHandler = nullptr;

/// Without $XDG_RUNTIME_DIR the toolkit uses a folder under /tmp and says so, but the user cannot do anything about it.
void LeaveOutFolders(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!text.startsWith(QLatin1String("QStandardPaths: ")))
        sToolkitsHandler(type, context, text);
}

/// Installs the toolkit's translations for its own texts, for example in file dialogs.
void TranslateToolkit()
{
    if (*CurrentLanguage() == '\0')
        return;
    auto* translator = new QTranslator(sApplication);
    if (translator->load(QStringLiteral("qtbase_") + QString::fromUtf8(CurrentLanguage()),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

/// Makes the toolkit's application object, and meanwhile starts, on other threads, work that would take time later.
void MakeApplication(int& argc, char** argv)
{
    const bool isForX11 = sPrefersX11 && std::getenv(kPlatform) == nullptr &&
                          DisplayCheck::WhyNone({"", "-platform", "xcb"}, DisplayCheck::Real()).empty();
    if (isForX11)
        setenv(kPlatform, "xcb", 1);
    {
        const SessionBus bus;
        const std::jthread fonts = ReadFontsAhead();
        SettingsAhead settings;
        std::optional<LoginScale> scale;
        if (LoginScale::IsInEnvironment())
            scale.emplace(settings.Settings());
        sApplication = new KitsApplication(argc, argv);
        settings.Finish();
    }
    // Programs that this one starts choose for themselves.
    if (isForX11)
        unsetenv(kPlatform);
}

} // namespace

status_t InitInterface(int& argc, char** argv)
{
    if (sApplication != nullptr)
        return B_NOT_ALLOWED;
    sError = DisplayCheck::WhyNone({argv, argv + argc}, DisplayCheck::Real());
    if (!sError.empty())
        return B_NO_INIT;
    InterfaceLock::Get().Lock();
    sToolkitsHandler = qInstallMessageHandler(LeaveOutFolders);
    // Menu bars stand in their windows; asking the session bus for another place would only take time.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    MakeApplication(argc, argv);
    DisplayCheck::Done();
    SessionEnd::Watch();
    ScaleWatch::Start();
    Theme::Start();
    UseWantedLanguage();
    TranslateToolkit();
    sLoop = new QtEventLoop;
    sApplication->SetLoop(sLoop);
    EventLoop::SetCurrent(sLoop);
    ScreenList::Watch();
    EnableViewAccess();
    TextCache::Enable();
    UserFonts::Read();
    ForeignDrag::Start();
    sWhenQuiet = new Timer(GiveBackStartMemory);
    sWhenQuiet->Start(kQuiet, false);
    return B_OK;
}

void SetDesktopEntry(const char* name, const char* programName)
{
    QGuiApplication::setDesktopFileName(QString::fromUtf8(name));
    // The toolkit uses it as the class of the windows.
    QCoreApplication::setApplicationName(QString::fromUtf8(programName));
    size_t size = 0;
    const void* const bytes = BApplication::AppResources()->LoadResource(B_RAW_TYPE, "Icon", &size);
    // Not a picture file: to read one, the toolkit would load every picture plugin and ask each.
    uint32 sides[2] = {};
    if (bytes == nullptr || size < sizeof sides)
        return;
    std::memcpy(sides, bytes, sizeof sides);
    if (sides[0] == 0 || (size - sizeof sides) / sizeof(uint32) / sides[0] < sides[1])
        return;
    const QImage picture(static_cast<const uchar*>(bytes) + sizeof sides, static_cast<int>(sides[0]),
                         static_cast<int>(sides[1]), QImage::Format_ARGB32_Premultiplied);
    QGuiApplication::setWindowIcon(QIcon(QPixmap::fromImage(picture)));
}

void PreferX11()
{
    sPrefersX11 = true;
}

const char* InterfaceError()
{
    return sError.c_str();
}

void ExitInterface()
{
    if (sApplication == nullptr)
        return;
    delete std::exchange(sWhenQuiet, nullptr);
    ForeignDrag::Stop();
    Selections::Stop();
    // Widgets of windows that were destroyed last.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    DesktopColor::Stop();
    Theme::Stop();
    TextCache::Disable();
    UserFonts::Forget();
    ScreenList::Forget();
    XSettingsWatch::Stop();
    EventLoop::SetCurrent(nullptr);
    sApplication->SetLoop(nullptr);
    delete std::exchange(sLoop, nullptr);
    delete std::exchange(sApplication, nullptr);
    qInstallMessageHandler(nullptr);
    InterfaceLock::Get().Unlock();
}

} // namespace kits
