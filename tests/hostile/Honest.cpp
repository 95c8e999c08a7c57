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

/// For how long the threads of these two programs that take part have waited for a processor, in microseconds: what
/// else runs on the machine is not what is measured.
bigtime_t TimeInTheQueue(team_id other)
{
    bigtime_t sum = 0;
    for (const std::string& process : {std::string("self"), std::to_string(other)}) {
        long long run = 0;
        long long waited = 0;
        if (std::ifstream("/proc/" + process + "/schedstat") >> run >> waited)
            sum += waited / 1000;
    }
    return sum;
}

} // namespace

int AskHonestly(const char* signature, bool once)
{
    const BApplication self("application/x-vnd.test-honest", nullptr, kits::Presence::kHidden);
    const BMessenger application(signature);
    const team_id team = application.Team();
    bigtime_t longest = 0;
    bigtime_t longestOfItsOwn = 0;
    int countAnswers = 0;
    int countFailures = 0;
    pollfd end{STDIN_FILENO, POLLIN, 0};
    do {
        const bigtime_t queued = TimeInTheQueue(team);
        const bigtime_t begun = system_time();
        const BMessage question('who?');
        BMessage answer;
        if (application.SendMessage(&question, &answer, kPatience, kPatience) == B_OK) {
            ++countAnswers;
            const bigtime_t time = system_time() - begun;
            longest = std::max(longest, time);
            longestOfItsOwn = std::max(longestOfItsOwn, time - (TimeInTheQueue(team) - queued));
        } else {
            ++countFailures;
        }
        if (countAnswers + countFailures == 1) {
            std::puts("ready");
            std::fflush(stdout);
        }
    } while (!once && poll(&end, 1, 20) == 0);
    std::printf("%d answers %d failures %lld longest %lld own\n", countAnswers, countFailures,
                static_cast<long long>(longest), static_cast<long long>(longestOfItsOwn));
    return countFailures == 0 && countAnswers > 0 ? 0 : 1;
}
