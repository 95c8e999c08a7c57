// SPDX-License-Identifier: MIT
#include "src/chart/DesktopSender.h"

#include "kits/application/Roster.h"
#include "kits/kernel/Threads.h"
#include "kits/support/Identity.h"
#include "src/chart/DesktopCharts.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"
#include "src/support/Qel.h"

namespace {

constexpr size_t kMostJobs = 32;
constexpr int kMostTries = 4;
constexpr bigtime_t kPause = 100'000;

/// Waits for the answer of the running program without a time limit.
/// @return `B_BAD_HANDLER` if no program runs, or if it ended and left the request undone
status_t HandOver(const BMessage& request, uint32* answer)
{
    const BMessenger host(kDesktopSignature);
    if (!host.IsValid())
        return B_BAD_HANDLER;
    BMessage reply;
    const status_t status = host.SendMessage(&request, &reply, B_INFINITE_TIMEOUT, B_INFINITE_TIMEOUT);
    *answer = reply.what;
    return status == B_OK && reply.what == B_NO_REPLY ? B_BAD_HANDLER : status;
}

} // namespace

status_t DesktopSender::Send(const BMessage& request, const BMessenger& teller)
{
    std::erase_if(fJobs, [](const std::unique_ptr<Job>& job) { return job->thread->State() == 0; });
    if (fJobs.size() >= kMostJobs)
        return B_WOULD_BLOCK;
    auto job = std::make_unique<Job>(Job{request, teller, nullptr});
    kRequestField.Add(&job->request, kits::NewIdentity());
    auto work = std::make_unique<OneParamFunctionObject<Job*>>(Deliver, job.get());
    job->thread = FireAndForgetThread::Launch(std::move(work), "Chart to the desktop", B_NORMAL_PRIORITY);
    if (job->thread == nullptr)
        return B_NO_MORE_THREADS;
    fJobs.push_back(std::move(job));
    return B_OK;
}

void DesktopSender::Deliver(Job* job)
{
    const bool onlyActivates = job->request.what == MSG_ACTIVATE_REPLICANTS;
    BMessage failure(onlyActivates ? MSG_NOTHING_ON_DESKTOP : MSG_NOT_ON_DESKTOP);
    for (int i = 0; i < kMostTries;) {
        uint32 answer = 0;
        const status_t status = HandOver(job->request, &answer);
        if (status == B_OK && answer == 0)
            return;
        if (status == B_OK) {
            kRefusedField.Add(&failure, true);
            break;
        }
        if (status == B_WOULD_BLOCK) {
            snooze(kPause);
            continue;
        }
        // A program that was started here brings the request along, and the next turn asks whether it was performed:
        // the program may end, with the last chart on it or by a signal, before it has reached it.
        i++;
        if (onlyActivates && !HasDesktopCharts())
            break;
        const status_t launched = be_roster->Launch(kDesktopSignature, &job->request);
        if (launched != B_OK && launched != B_ALREADY_RUNNING && launched != B_TIMED_OUT)
            break;
    }
    job->teller.SendMessage(&failure);
}
