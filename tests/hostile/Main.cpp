// SPDX-License-Identifier: MIT
#include "tests/hostile/Attack.h"
#include "tests/hostile/Honest.h"
#include "tests/hostile/Mutations.h"
#include "tests/hostile/Record.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

/// Attacks an application of this user, or asks it questions as honest programs do, until stdin closes:
///   hostile pings|names|silence|honest|question SIGNATURE
///   hostile deaf SIGNATURE NAMES
///   hostile halves SIGNATURE BYTES
///   hostile mutations SIGNATURE FILE COUNT SEED
///   hostile record SIGNATURE FILE [SIGNATURE]

int main(int argc, char** argv)
{
    // Nothing outlives the process that has started it.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    rlimit files = {};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);

    const std::string attack = argc > 2 ? argv[1] : "";
    const unsigned long number = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 0;
    if (attack == "honest" || attack == "question")
        return AskHonestly(argv[2], attack == "question");
    if (attack == "mutations" && argc > 5)
        return SendMutations(argv[2], argv[3], std::strtoull(argv[4], nullptr, 10),
                             static_cast<uint32>(std::strtoul(argv[5], nullptr, 10)));
    if (attack == "record" && argc > 3)
        return RecordFrames(argv[2], argv[3], argc > 4 ? argv[4] : nullptr);
    const std::map<std::string, std::function<void(Attacker&)>> attacks = {
        {"pings", FloodWithPings},
        {"names", ClaimNames},
        {"deaf", [number](Attacker& attacker) { NeverRead(attacker, static_cast<int>(number)); }},
        {"halves", [number](Attacker& attacker) { SendHalves(attacker, number); }},
        {"silence", KeepSilent},
    };
    const auto found = attacks.find(attack);
    if (found == attacks.end()) {
        std::fprintf(stderr, "usage: %s ATTACK SIGNATURE [NUMBER]\n", argv[0]);
        return 2;
    }
    const Door door(argv[2]);
    Attacker attacker(door);
    found->second(attacker);
    return 0;
}
