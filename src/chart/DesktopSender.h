// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "src/sampling/ThreadMagic.h"

#include <memory>
#include <vector>

/// Hands archives of charts to the program that shows them on the desktop, and starts it when it does not run. A thread
/// of its own sends each archive, since starting a program takes a moment. Used in the main thread.
class DesktopSender {
public:
    DesktopSender() = default;
    /// Drops requests that have not been handed over yet.
    ~DesktopSender() = default;
    DesktopSender(const DesktopSender&) = delete;
    DesktopSender& operator=(const DesktopSender&) = delete;

    /// Adds an identity ("Request") to the request, so that it is performed once however often it is sent. The thread
    /// waits without limit for a program that is held up, and starts a program that ended before it answered again with
    /// the same request.
    /// @param request  MSG_SHOW_ON_DESKTOP; or MSG_ACTIVATE_REPLICANTS, which starts the program only if it has charts
    /// @param teller   gets MSG_NOTHING_ON_DESKTOP when there was no chart to activate; after the other request it gets
    ///                 MSG_NOT_ON_DESKTOP when the program cannot be started, or, with "Refused" (bool), when it did
    ///                 not take the chart
    /// @return B_OK if it will try; B_WOULD_BLOCK while many requests are under way; or the error that kept a thread
    ///         from starting
    status_t Send(const BMessage& request, const BMessenger& teller);

private:
    struct Job {
        BMessage request;
        BMessenger teller;
        std::unique_ptr<FireAndForgetThread> thread; // destroyed first, since it uses the others
    };

    static void Deliver(Job* job);

    std::vector<std::unique_ptr<Job>> fJobs;
};
