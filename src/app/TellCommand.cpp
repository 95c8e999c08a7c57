// SPDX-License-Identifier: MIT
#include "src/app/TellCommand.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"
#include "src/app/CommandLine.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "src/support/ui/ProgramStart.h"

#include <cstdio>
#include <vector>

namespace {

constexpr const char* kOwnSignature = "application/x-vnd.kvt-Qel-command";
constexpr bigtime_t kLongestWait = 5'000'000;
constexpr bigtime_t kPause = 50'000;

std::vector<BMessage> MessagesFor(const CommandLine& line)
{
    std::vector<BMessage> messages;
    if (line.setDelay > 0)
        kDelayField.Add(&messages.emplace_back(MSG_SET_DELAY), line.setDelay);
    if (line.setHistory > 0)
        kNodesToKeepField.Add(&messages.emplace_back(MSG_SET_NODES_TO_KEEP), line.setHistory);
    if (line.quit)
        messages.emplace_back(B_QUIT_REQUESTED);
    return messages;
}

/// Nobody replies to these messages; the automatic reply says that the message has been handled.
status_t Tell(const BMessenger& application, const BMessage& message)
{
    const bigtime_t end = system_time() + kLongestWait;
    for (;;) {
        BMessage reply;
        const status_t status = application.SendMessage(&message, &reply, kLongestWait, kLongestWait);
        // The backlog of its socket may be full of other connections.
        if (status != B_WOULD_BLOCK || system_time() > end)
            return status;
        snooze(kPause);
    }
}

} // namespace

int RunTellCommand(const CommandLine& line)
{
    BApplication self(kOwnSignature);
    const BMessenger application(signature);
    if (!application.IsValid()) {
        if (CanReachOthers("qel", nullptr))
            std::fprintf(stderr, "qel: the program is not running\n");
        return 1;
    }
    for (const BMessage& message : MessagesFor(line)) {
        const status_t status = Tell(application, message);
        const bool hasQuit = message.what == B_QUIT_REQUESTED && status == B_BAD_HANDLER;
        if (status != B_OK && !hasQuit) {
            std::fprintf(stderr, "qel: the running program does not answer\n");
            return 1;
        }
    }
    return 0;
}
