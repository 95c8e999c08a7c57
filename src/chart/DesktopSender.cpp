#include "src/chart/DesktopSender.h"

#include "kits/application/Roster.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"

namespace {

constexpr size_t kMostJobs = 32;
constexpr bigtime_t kPatience = 5'000'000;
constexpr int kTries = 3;

/// Whether the running program took it.
bool HandOver(const BMessage& request)
{
    const BMessenger host(kDesktopSignature);
    BMessage reply;
    return host.IsValid() && host.SendMessage(&request, &reply, kPatience, kPatience) == B_OK && reply.what == 0;
}

} // namespace

status_t DesktopSender::Send(const BMessage& request, const BMessenger& teller)
{
    std::erase_if(fJobs, [](const std::unique_ptr<Job>& job) { return job->thread->State() == 0; });
    if (fJobs.size() >= kMostJobs)
        return B_WOULD_BLOCK;
    auto job = std::make_unique<Job>(Job{request, teller, nullptr});
    auto work = std::make_unique<OneParamFunctionObject<Job*>>(Deliver, job.get());
    job->thread = FireAndForgetThread::Launch(std::move(work), "Chart to the desktop", B_NORMAL_PRIORITY);
    if (job->thread == nullptr)
        return B_NO_MORE_THREADS;
    fJobs.push_back(std::move(job));
    return B_OK;
}

void DesktopSender::Deliver(Job* job)
{
    // It may end, with the last chart on it, while it is being asked.
    for (int i = 0; i < kTries; i++) {
        if (HandOver(job->request))
            return;
        const status_t status = be_roster->Launch(kDesktopSignature, &job->request);
        if (status == B_OK)
            return;
        if (status != B_ALREADY_RUNNING)
            break;
    }
    job->teller.SendMessage(MSG_NOT_ON_DESKTOP);
}
