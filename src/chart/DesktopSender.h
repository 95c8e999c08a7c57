#pragma once

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "src/sampling/ThreadMagic.h"

#include <memory>
#include <vector>

/// The way of a chart to the desktop: hands archives to the program that shows them there, and starts it when it does
/// not run. Each is sent on a thread of its own, since starting a program takes a moment; used in the main thread.
class DesktopSender {
public:
    DesktopSender() = default;
    /// What was not handed over by then is not.
    ~DesktopSender() = default;
    DesktopSender(const DesktopSender&) = delete;
    DesktopSender& operator=(const DesktopSender&) = delete;

    /// @param request  MSG_SHOW_ON_DESKTOP
    /// @param teller   gets MSG_NOT_ON_DESKTOP when that failed
    /// @return B_OK when it will be tried; B_WOULD_BLOCK while many are under way; or why no thread could be made
    status_t Send(const BMessage& request, const BMessenger& teller);

private:
    struct Job {
        BMessage request;
        BMessenger teller;
        std::unique_ptr<FireAndForgetThread> thread; // goes first: it uses the others
    };

    static void Deliver(Job* job);

    std::vector<std::unique_ptr<Job>> fJobs;
};
