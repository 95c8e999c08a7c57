// SPDX-License-Identifier: MIT
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

    /// The request gets an identity ("Request"), so that it is performed once however often it has to be sent: a
    /// program that is held up is waited for as long as that takes, and one that ends before it has answered is started
    /// again with the same request.
    /// @param request  MSG_SHOW_ON_DESKTOP; or MSG_ACTIVATE_REPLICANTS, which starts the program only if it has charts
    /// @param teller   gets MSG_NOTHING_ON_DESKTOP when there was none to be activated; for the other gets
    /// MSG_NOT_ON_DESKTOP when the program cannot be started, or, with "Refused" (bool), when it
    ///                 did not take the chart
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
