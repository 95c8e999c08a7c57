// SPDX-License-Identifier: MIT
#include "tests/hostile/Honest.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr bigtime_t kPatience = 60000000;

/// Times of the main thread of a process, in microseconds.
struct Times {
    bigtime_t worked = 0;
    bigtime_t queued = 0; ///< waiting for a processor
};

Times TimesOf(const std::string& process)
{
    long long worked = 0;
    long long queued = 0;
    std::ifstream("/proc/" + process + "/schedstat") >> worked >> queued;
    return {worked / 1000, queued / 1000};
}

} // namespace

int AskHonestly(const char* signature, bool once)
{
    const BApplication self("application/x-vnd.test-honest", nullptr, kits::Presence::kHidden);
    const BMessenger application(signature);
    const std::string other = std::to_string(application.Team());
    bigtime_t longest = 0;
    bigtime_t longestOfItsOwn = 0; // without the time that the machine spent on others
    bigtime_t longestWork = 0;
    int countAnswers = 0;
    int countFailures = 0;
    pollfd end{STDIN_FILENO, POLLIN, 0};
    do {
        const Times before = TimesOf(other);
        const bigtime_t queuedBefore = TimesOf("self").queued;
        const bigtime_t begun = system_time();
        const BMessage question('who?');
        BMessage answer;
        if (application.SendMessage(&question, &answer, kPatience, kPatience) == B_OK) {
            ++countAnswers;
            const bigtime_t time = system_time() - begun;
            longest = std::max(longest, time);
            const Times after = TimesOf(other);
            const bigtime_t queued = after.queued - before.queued + TimesOf("self").queued - queuedBefore;
            longestOfItsOwn = std::max(longestOfItsOwn, time - queued);
            longestWork = std::max(longestWork, after.worked - before.worked);
        } else {
            ++countFailures;
        }
        if (countAnswers + countFailures == 1) {
            std::puts("ready");
            std::fflush(stdout);
        }
    } while (!once && poll(&end, 1, 20) == 0);
    std::printf("%d answers %d failures %lld longest %lld own %lld work\n", countAnswers, countFailures,
                static_cast<long long>(longest), static_cast<long long>(longestOfItsOwn),
                static_cast<long long>(longestWork));
    return countFailures == 0 && countAnswers > 0 ? 0 : 1;
}
