#include "kits/interface/InterfaceKit.h"

#include "kits/application/InterfaceLock.h"
#include "kits/interface/private/DisplayCheck.h"
#include "kits/interface/private/QtEventLoop.h"
#include "kits/interface/private/ScreenList.h"
#include "kits/interface/private/TextCache.h"
#include "kits/interface/private/UserFonts.h"

#include <memory>
#include <string>

namespace kits {

namespace {

std::unique_ptr<KitsApplication> sApplication;
std::unique_ptr<QtEventLoop> sLoop;
std::string sError;

} // namespace

status_t InitInterface(int& argc, char** argv)
{
    if (sApplication != nullptr)
        return B_NOT_ALLOWED;
    sError = DisplayCheck::WhyNone({argv, argv + argc}, DisplayCheck::Real());
    if (!sError.empty())
        return B_NO_INIT;
    InterfaceLock::Get().Lock();
    sApplication = std::make_unique<KitsApplication>(argc, argv);
    DisplayCheck::Done();
    sLoop = std::make_unique<QtEventLoop>();
    sApplication->SetLoop(sLoop.get());
    EventLoop::SetCurrent(sLoop.get());
    ScreenList::Watch();
    TextCache::Enable();
    UserFonts::Read();
    return B_OK;
}

const char* InterfaceError()
{
    return sError.c_str();
}

void ExitInterface()
{
    if (sApplication == nullptr)
        return;
    // Widgets of windows that went last.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    TextCache::Disable();
    UserFonts::Forget();
    ScreenList::Forget();
    EventLoop::SetCurrent(nullptr);
    sApplication->SetLoop(nullptr);
    sLoop.reset();
    sApplication.reset();
    InterfaceLock::Get().Unlock();
}

} // namespace kits
