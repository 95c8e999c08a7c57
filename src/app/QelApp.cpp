// SPDX-License-Identifier: MIT
#include "src/app/QelApp.h"

#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "kits/interface/Alert.h"
#include "kits/interface/Screen.h"
#include "kits/kernel/Clock.h"
#include "src/app/AboutFiles.h"
#include "src/app/AboutWindow.h"
#include "src/app/DesktopKeeper.h"
#include "src/app/MainWindow.h"
#include "src/pages/ChartPreferences.h"
#include "src/pages/SysinfoTab.h"
#include "src/prefs/PrefsWindow.h"
#include "src/prefs/StoreAlerts.h"
#include "src/prefs/store/Autosave.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/ConnectionRequest.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace {

constexpr bigtime_t kPulse = 600'000'000;
constexpr int16 kHistory = 10;
constexpr BRect kFirstFrame(50, 50, 400, 200);
constexpr BRect kFirstPrefsFrame(50, 50, 450, 290);

/// Archives a window; if that fails, the previous archive stays.
void Archive(const SmartWindow& window, BMessage* archive)
{
    BMessage fresh;
    const status_t status = window.Archive(&fresh, false);
    if (status == B_OK)
        *archive = std::move(fresh);
    if (prefs_user != nullptr)
        prefs_user->NoteError(status);
}

void EnterFolderOfExecutable()
{
    app_info info;
    if (be_app->GetAppInfo(&info) == B_OK) {
        std::error_code error;
        std::filesystem::current_path(info.ref.directory, error);
    }
}

} // namespace

QelApp::QelApp(Mode mode)
    : BApplication(signature, nullptr, mode == Mode::kSession ? kits::Presence::kSingle : kits::Presence::kHidden)
    , fMode(mode)
    , fStartTime(system_time())
{
    UseChartPreferences();
    SetPulseRate(kPulse);
    EnterFolderOfExecutable();
}

QelApp::~QelApp()
{
    fAutosave.reset();
    if (prefs_user == nullptr)
        return;
    if (!fPrefsWindowArchive.IsEmpty())
        prefs_user->Set(kGlobalPrefsWindowField, fPrefsWindowArchive);
    if (!fMainWindowArchive.IsEmpty())
        prefs_user->Set(kMainWindowField, fMainWindowArchive);
}

void QelApp::ReadyToRun()
{
    fSampler = std::make_unique<Sysinfo>(kHistory);
    application_sampler = fSampler.get();

    prefs_common->Claim(kUptimesField);
    fUptimes.SetTo(kUptimesField.Get(*prefs_common));

    OpenMainWindow();
    prefs_user->Claim(kWindowOpenField);
    if (fShowMainWindow && kWindowOpenField.Get(*prefs_user))
        PostMessage(MSG_CW_OPEN);
    SaveUptimes();
    if (fMode == Mode::kSession) {
        fAutosave = std::make_unique<Autosave>(
            std::vector<const Preferences*>{prefs_common, prefs_user}, [this] { return StoreArrangement(); },
            [alarm = SaveAlarm()](const StoreWriter& writer) mutable {
                alarm.Look(writer, {prefs_common, prefs_user});
            });
        fAutosave->Start();
        fDesktopKeeper = std::make_unique<DesktopKeeper>(*fAutosave);
        // If the program was killed while the colour page had painted the desktop, it is still painted.
        BScreen().RestoreDesktop();
        TellAboutKeptFiles({prefs_common, prefs_user});
    }
}

void QelApp::OpenMainWindow()
{
    if (prefs_user->Claim(kMainWindowField) && kMainWindowField.Find(*prefs_user, &fMainWindowArchive))
        fMainWindow = new MainWindow(&fMainWindowArchive, &fMainWindow);
    else
        fMainWindow = new MainWindow(kFirstFrame, &fMainWindow);
    fMainWindow->Minimize(!fShowMainWindow);
    fMainWindow->Show();
}

void QelApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_SET_DELAY: {
        int64 delay = 0;
        if (fSampler && kDelayField.Find(*message, &delay))
            fSampler->SetSamplingDelay(delay);
        break;
    }
    case MSG_SET_NODES_TO_KEEP: {
        int16 nodes = 0;
        if (fSampler && kNodesToKeepField.Find(*message, &nodes) && nodes >= 2)
            fSampler->SetNodesToKeep(Sysinfo::HoldNodesToKeep(nodes));
        break;
    }
    case MSG_LAUNCHED_BY_REPLICANT:
        fShowMainWindow = false;
        break;
    case B_SILENT_RELAUNCH:
        BringToFront();
        break;
    case B_SOME_APP_DIED:
        if (fDesktopKeeper)
            fDesktopKeeper->AppDied(*message);
        break;
    case B_SOME_APP_LAUNCHED:
        if (fDesktopKeeper)
            fDesktopKeeper->AppLaunched(*message);
        break;
    case B_REPLICANT_TAKEN:
        if (fDesktopKeeper)
            fDesktopKeeper->Taken(*message);
        break;
    case MSG_CONNECT:
    case MSG_DISCONNECT:
        AnswerConnectionRequest(message, fSampler.get());
        break;
    case MSG_OPEN_GLOBAL_PREFS:
        OpenPrefsWindow();
        break;
    case MSG_WINDOW_CLOSED:
        WindowClosed(message);
        break;
    default:
        BApplication::MessageReceived(message);
        break;
    }
}

void QelApp::BringToFront()
{
    if (fMainWindow != nullptr) {
        fMainWindow->SetWorkspaces(B_CURRENT_WORKSPACE);
        fMainWindow->Minimize(false);
        fMainWindow->Activate(true);
    }
    BAlert::ActivateOpen();
}

void QelApp::OpenPrefsWindow()
{
    if (fPrefsWindow != nullptr) {
        fPrefsWindow->Activate(true);
        return;
    }
    const char* const title = Tr("Global preferences");
    PrefsWindow* window = nullptr;
    prefs_user->Claim(kGlobalPrefsWindowField);
    if (!fPrefsWindowArchive.IsEmpty() || kGlobalPrefsWindowField.Find(*prefs_user, &fPrefsWindowArchive))
        window = new PrefsWindow(&fPrefsWindowArchive, title, nullptr, &fPrefsWindow);
    else
        window = new PrefsWindow(kFirstPrefsFrame, title, nullptr, &fPrefsWindow);
    fPrefsWindow = window;
    window->AddPrefsTab(new SysinfoTab(fSampler.get()));
    window->SetSizeLimits(400, 100'000, 240, 100'000);
    window->Show();
}

void QelApp::WindowClosed(BMessage* message)
{
    const void* container = kContainerField.Get(*message);
    if (container == &fMainWindow) {
        kArchiveField.Find(*message, &fMainWindowArchive);
        PostMessage(B_QUIT_REQUESTED);
    } else if (container == &fPrefsWindow) {
        kArchiveField.Find(*message, &fPrefsWindowArchive);
    }
}

void QelApp::Pulse()
{
    SaveUptimes();
    if (fAutosave)
        fAutosave->Save();
}

void QelApp::AboutRequested()
{
    if (fAboutWindow != nullptr) {
        fAboutWindow->Activate(true);
        return;
    }
    fAboutWindow = new AboutWindow(AboutWindow::FrameOn(BScreen().Frame()), &fAboutWindow);
    fAboutWindow->Show();
}

bool QelApp::IsAboutToEnd() const
{
    return (fSampler != nullptr && fMainWindow == nullptr) || BApplication::IsAboutToEnd();
}

bool QelApp::QuitRequested()
{
    // A window that has just closed has sent its archive, which may wait behind this request, and behind further ones.
    const BMessage* request = CurrentMessage();
    const bool isLast = request != nullptr && kLastRequestField.IsIn(*request);
    if (!isLast && CountMessages() > 0) {
        BMessage again(B_QUIT_REQUESTED);
        kLastRequestField.Add(&again, true);
        if (PostMessage(&again) == B_OK)
            return false;
    }
    CleanUp();
    return true;
}

void QelApp::CleanUp()
{
    fDesktopKeeper.reset();
    // Writing may take long on a slow disk, and until the application has quit, others find it.
    if (fAutosave) {
        fAutosave->Stop();
        prefs_user->ForgetErrors();
    }
    application_sampler = nullptr;
    fSampler.reset();
    Close(fPrefsWindow, &fPrefsWindowArchive);
    Close(fMainWindow, &fMainWindowArchive);
    if (fMode == Mode::kSession)
        RemoveAboutFiles();
}

void QelApp::Close(SmartWindow* window, BMessage* archive)
{
    if (window != nullptr && window->Lock()) {
        Archive(*window, archive);
        window->Quit();
    }
}

status_t QelApp::StoreArrangement()
{
    prefs_user->ForgetErrors();
    auto store = [](const kits::Field<BMessage>& field, const SmartWindow* window, BMessage& archive) {
        if (window != nullptr)
            Archive(*window, &archive);
        if (!archive.IsEmpty())
            prefs_user->Set(field, archive);
    };
    store(kMainWindowField, fMainWindow, fMainWindowArchive);
    store(kGlobalPrefsWindowField, fPrefsWindow, fPrefsWindowArchive);
    if (fSampler) {
        BMessage settings;
        prefs_user->NoteError(fSampler->SavePrefsTo(&settings));
        prefs_user->Set(kSamplerSettingsField, settings);
    }
    // The store now holds settings of this version, whatever it was loaded from.
    prefs_user->Set(kVersionField, kVersion);
    return prefs_user->Error();
}

void QelApp::UpdateUptimes()
{
    if (kits::ClockIsPlausible())
        fUptimes.Update(system_time(), kits::MomentOfBoot());
}

void QelApp::SaveUptimes()
{
    if (!kits::ClockIsPlausible())
        return;
    UpdateUptimes();
    prefs_common->ForgetErrors();
    prefs_common->Set(kUptimesField, fUptimes.Record());
    UptimeTotals totals = UptimeTotals::TakeFrom(prefs_common);
    totals.Count(system_time(), kits::MomentOfBoot());
    totals.StoreIn(prefs_common);
}
