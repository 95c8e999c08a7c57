// SPDX-License-Identifier: MIT
#include "src/desktop/DesktopApp.h"

#include "kits/application/Invoker.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Screen.h"
#include "kits/interface/View.h"
#include "src/chart/ChartShelf.h"
#include "src/chart/DesktopCharts.h"
#include "src/desktop/Autostart.h"
#include "src/desktop/Placement.h"
#include "src/desktop/ReplicantClasses.h"
#include "src/desktop/ReplicantWindow.h"
#include "src/pages/ChartPreferences.h"
#include "src/prefs/StoreAlerts.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"
#include "src/support/OneLine.h"
#include "src/support/Qel.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr uint32 kRefused = 0xffffffff;

/// Returns the size in a view's archive, held to what the screens can show.
BRect FrameIn(const BMessage& archive, const std::vector<BRect>& screens)
{
    BRect frame;
    if (!kits::kFrameField.Find(archive, &frame) || !frame.IsValid())
        frame = BRect(0, 0, 0, 0);
    frame.OffsetTo(0, 0);
    return HeldToScreens(frame, screens);
}

std::unique_ptr<BView> ViewOf(BMessage archive, const BRect& frame, std::string* why)
{
    kits::kFrameField.Remove(&archive);
    BRect size = frame;
    size.OffsetTo(0, 0);
    kits::kFrameField.Add(&archive, size);
    return InstantiateReplicant(&archive, why);
}

} // namespace

DesktopApp::DesktopApp(status_t* status)
    : BApplication(kDesktopSignature, status, kits::Presence::kSingle)
    , fStore(kDesktopSignature, false, InitCheck() != B_OK)
    , fAutosave(
          {&fStore}, [this] { return Archive(); },
          [this, alarm = SaveAlarm()](const StoreWriter& writer) mutable { alarm.Look(writer, {&fStore}); })
{
    UseChartPreferences();
}

DesktopApp::~DesktopApp()
{
    FinishAutostart();
}

void DesktopApp::Restore()
{
    BMessage saved;
    fStore.Claim(kVersionField);
    fStore.Claim(kReplicantField);
    for (int32 i = 0; kReplicantField.Find(fStore, &saved, i); i++)
        RestoreOne(&saved);
    fStore.Claim(kRequestField);
    for (int32 i = 0; i < kRequestField.Count(fStore); i++)
        fDone.Add(kRequestField.Get(fStore, i));
}

void DesktopApp::RestoreOne(BMessage* saved)
{
    BMessage archive;
    std::string why;
    if (fWindows.size() + fForeign.size() >= kMost)
        return;
    if (!kArchiveField.Find(*saved, &archive) || !IsReplicantArchive(archive, &why)) {
        std::fprintf(stderr, "qel-desktop: cannot show a stored chart: %s\n",
                     why.empty() ? "it is empty" : why.c_str());
        fForeign.push_back(*saved);
        return;
    }
    Places places;
    places.LoadFrom(*saved);
    const std::vector<BRect> screens = kits::ScreenFrames();
    BRect frame = places.For(ArrangementOf(screens));
    if (!frame.IsValid())
        frame = FrameIn(archive, screens);
    frame = InReach(HeldToScreens(frame, screens), screens);
    std::unique_ptr<BView> view = ViewOf(archive, frame, nullptr);
    if (view != nullptr)
        Show(std::move(view), frame, saved);
}

void DesktopApp::Show(std::unique_ptr<BView> view, BRect frame, const BMessage* saved)
{
    Places places;
    if (saved != nullptr)
        places.LoadFrom(*saved);
    else
        places.Wish(ArrangementOf(kits::ScreenFrames()), frame);
    std::string identity = kits::NewIdentity();
    if (saved != nullptr)
        kIdentityField.Find(*saved, &identity);
    auto* window = new ReplicantWindow(this, frame, std::move(view), std::move(places), identity);
    fWindows.push_back(window);
    window->Show();
}

bool DesktopApp::Add(BMessage* request, std::string* why)
{
    BMessage archive;
    if (!kArchiveField.Find(*request, &archive)) {
        *why = "it is not a chart";
        return false;
    }
    if (fWindows.size() + fForeign.size() >= kMost || fBytes + archive.FlattenedSize() > kMostBytes) {
        *why = "there are too many";
        return false;
    }
    const std::vector<BRect> screens = kits::ScreenFrames();
    BRect frame = FrameIn(archive, screens);
    BPoint where;
    if (kPlaceField.Find(*request, &where)) {
        frame.OffsetTo(where);
        frame = InReach(frame, screens);
    } else {
        std::vector<BRect> others;
        for (const ReplicantWindow* window : fWindows)
            others.push_back(window->Frame());
        frame.OffsetTo(FreePlace(frame.Width(), frame.Height(), others, kits::ScreenFrames(true)));
    }
    std::unique_ptr<BView> view = ViewOf(archive, frame, why);
    if (view == nullptr)
        return false;
    const bool isFirst = IsEmpty();
    Show(std::move(view), frame, nullptr);
    fBytes += archive.FlattenedSize();
    fHasTold = false;
    Changed();
    if (isFirst)
        UpdateAutostart();
    return true;
}

bool DesktopApp::Perform(BMessage* request)
{
    const std::string identity = kRequestField.Get(*request);
    if (fDone.Has(identity))
        return true;
    std::string why;
    const bool shown = Add(request, &why);
    if (shown)
        fDone.Add(identity);
    if (!shown && !fHasTold) {
        // One line, however many come.
        std::fprintf(stderr, "qel-desktop: what was dropped is ignored: %s\n", why.c_str());
        fHasTold = true;
    }
    return shown;
}

void DesktopApp::ReadyToRun()
{
    // A killed program may have left the desktop painted.
    BScreen().RestoreDesktop();
    UpdateAutostart();
    const BMessenger alert =
        TellAboutKeptFiles({&fStore}, std::make_unique<BInvoker>(new BMessage(MSG_KEPT_FILES_TOLD), this));
    if (!IsEmpty())
        fAutosave.Save();
    else if (!alert.IsValid())
        PostMessage(B_QUIT_REQUESTED);
    fAutosave.Start();
}

void DesktopApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_SHOW_ON_DESKTOP: {
        BMessage reply(Perform(message) ? 0 : kRefused);
        message->SendReply(&reply);
        break;
    }
    case B_REPLICANT_TAKEN:
        RemoveTaken(*message);
        break;
    case MSG_KEPT_FILES_TOLD:
        if (IsEmpty())
            PostMessage(B_QUIT_REQUESTED);
        break;
    case MSG_ACTIVATE_REPLICANTS: {
        if (!fWindows.empty())
            fWindows.front()->Activate();
        BMessage reply(fWindows.empty() ? kRefused : 0);
        message->SendReply(&reply);
        break;
    }
    case B_SCREEN_CHANGED:
        for (ReplicantWindow* window : fWindows)
            window->Arrange();
        break;
    default:
        BApplication::MessageReceived(message);
    }
}

void DesktopApp::Remove(ReplicantWindow* window)
{
    const auto place = std::find(fWindows.begin(), fWindows.end(), window);
    if (place == fWindows.end())
        return;
    if (window->IsActive())
        ActivateNext(window, false);
    fWindows.erase(place);
    fHasTold = false;
    window->Quit();
    Changed();
    if (IsEmpty()) {
        UpdateAutostart();
        fIsEnding = true;
        PostMessage(B_QUIT_REQUESTED);
    }
}

void DesktopApp::RemoveTaken(const BMessage& notice)
{
    for (int32 i = 0; i < kIdentityField.Count(notice); i++) {
        const std::string identity = kIdentityField.Get(notice, i);
        const auto place = std::find_if(fWindows.begin(), fWindows.end(), [&identity](const ReplicantWindow* window) {
            return window->Identity() == identity;
        });
        if (place != fWindows.end())
            Remove(*place);
    }
}

void DesktopApp::ActivateNext(const ReplicantWindow* window, bool back)
{
    const auto place = std::find(fWindows.begin(), fWindows.end(), window);
    if (place == fWindows.end() || fWindows.size() < 2)
        return;
    const size_t index = static_cast<size_t>(place - fWindows.begin()) + (back ? fWindows.size() - 1 : 1);
    fWindows[index % fWindows.size()]->Activate();
}

void DesktopApp::UpdateAutostart()
{
    // One at a time, so that the last one counts. The main thread waits only for the rare writer that is still running,
    // not for the disk in general.
    FinishAutostart();
    fAutostartJob.enable = !IsEmpty();
    fAutostart = FireAndForgetThread::Launch(
        std::make_unique<OneParamFunctionObject<AutostartJob*>>(WriteAutostart, &fAutostartJob), "Autostart entry",
        B_NORMAL_PRIORITY);
    if (fAutostart == nullptr)
        fAutostartJob.status = B_NO_MORE_THREADS;
}

void DesktopApp::FinishAutostart()
{
    if (fAutostart != nullptr)
        fAutostart->Join();
}

void DesktopApp::WriteAutostart(AutostartJob* job)
{
    app_info info;
    if (!job->enable)
        job->status = Autostart::Disable();
    else if (job->status = be_app->GetAppInfo(&info); job->status == B_OK)
        job->status = Autostart::Enable(info.ref.directory + "/" + info.ref.name);
}

void DesktopApp::PrintAutostartError() const
{
    const status_t status = fAutostartJob.status;
    const bool wasToBeWritten = fAutostartJob.enable;
    std::fprintf(stderr, "qel-desktop: the autostart entry %s could not be %s (%s), so %s\n",
                 OneLine(Autostart::Place()).c_str(), wasToBeWritten ? "written" : "removed",
                 status == B_NOT_ALLOWED ? "It is a link" : kits::StatusText(status),
                 wasToBeWritten ? "the charts on the desktop will not come back with the next session"
                                : "the next session will start this program with nothing to show");
}

void DesktopApp::Changed()
{
    fAutosave.SaveSoon();
}

status_t DesktopApp::Drain()
{
    FinishAutostart();
    const status_t status = FirstError(FirstError(fStore.InitCheck(), fAutosave.Drain()), fStore.Error());
    if (status != B_OK)
        PrintSaveError(fStore, status, "qel-desktop");
    else if (fAutostartJob.status != B_OK)
        PrintAutostartError(); // otherwise the next session has nothing to show, and one line is enough
    return status;
}

status_t DesktopApp::Archive()
{
    fStore.ForgetErrors();
    kReplicantField.Remove(&fStore);
    for (const ReplicantWindow* window : fWindows) {
        BMessage saved;
        window->SaveTo(&saved);
        fStore.NoteError(kReplicantField.Add(&fStore, saved));
    }
    for (const BMessage& saved : fForeign)
        fStore.NoteError(kReplicantField.Add(&fStore, saved));
    kRequestField.Remove(&fStore);
    for (const std::string& identity : fDone.All())
        fStore.NoteError(kRequestField.Add(&fStore, identity));
    fStore.Set(kVersionField, kVersion);
    fBytes = fStore.FlattenedSize();
    return fStore.Error();
}

bool DesktopApp::QuitRequested()
{
    if (CurrentMessage() != nullptr && kits::kShortcutField.Get(*CurrentMessage())) {
        // Ctrl+Q means the program as a whole; its charts on the desktop stay.
        BMessenger(signature).SendMessage(B_QUIT_REQUESTED);
        return false;
    }
    // Another chart came while the last one went.
    if (fIsEnding && !IsEmpty()) {
        fIsEnding = false;
        return false;
    }
    fAutosave.Stop();
    fAutosave.Save();
    fWindows.clear();
    return BApplication::QuitRequested();
}
