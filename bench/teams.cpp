// SPDX-License-Identifier: MIT
#include "bench/Measure.h"
#include "bench/teams_partner.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Threads.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"

#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// Measures what it costs to send a sample to another process: how long until a handler there has it, next to the round
/// trip of as many bytes through a bare socket between the same processes; and what one more handler there adds to a
/// round of the sampler.
///
/// Round trip and sample take turns and are paced alike: either both follow the same pause, so that parts of the
/// machine that go to sleep between samples (processors, caches) may also go to sleep between round trips, or both
/// follow none. The clock is read right before the call that sends, and after the last byte has come back, or first
/// thing in the handler.

namespace {

constexpr bigtime_t kHour = 3600LL * 1000000;

/// The other process, which alone shares a runtime folder with this one.
class Partner {
public:
    Partner()
    {
        char name[] = "/tmp/qel-bench-XXXXXX";
        fFolder = mkdtemp(name);
        setenv("XDG_RUNTIME_DIR", fFolder.c_str(), 1);
        int echo[2], moments[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, echo) != 0 ||
            socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, moments) != 0)
            std::abort();
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        // Moves the descriptors out of each other's way first.
        posix_spawn_file_actions_adddup2(&actions, echo[1], 100);
        posix_spawn_file_actions_adddup2(&actions, moments[1], 101);
        posix_spawn_file_actions_adddup2(&actions, 100, kEchoDescriptor);
        posix_spawn_file_actions_adddup2(&actions, 101, kMomentsDescriptor);
        std::string program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "bench_teams_receiver";
        char* arguments[] = {program.data(), nullptr};
        if (posix_spawn(&fProcess, program.c_str(), &actions, nullptr, arguments, environ) != 0)
            std::abort();
        posix_spawn_file_actions_destroy(&actions);
        close(echo[1]);
        close(moments[1]);
        fEcho = kits::FileDescriptor(echo[0]);
        fMoments = kits::FileDescriptor(moments[0]);
        do {
            snooze(1000);
            fApplication = BMessenger(kReceiverSignature);
        } while (!fApplication.IsValid());
    }
    ~Partner()
    {
        fEcho.Close();
        waitpid(fProcess, nullptr, 0);
        std::error_code error;
        std::filesystem::remove_all(fFolder, error);
    }

    static Partner& Get()
    {
        static Partner partner;
        return partner;
    }

    std::vector<BMessenger> MakeHandlers(int32 count) const
    {
        const kits::InterfaceLocker lock;
        BMessage question(kMakeHandlers), answer;
        question.AddInt32("count", count);
        fApplication.SendMessage(&question, &answer);
        std::vector<BMessenger> handlers(static_cast<size_t>(count));
        for (int32 i = 0; i < count; i++)
            answer.FindMessenger("messenger", &handlers[static_cast<size_t>(i)], i);
        return handlers;
    }

    /// Waits until the last handler has got its message, and returns that moment.
    int64 TakeMoment() const
    {
        int64 moment = 0;
        if (read(fMoments.Get(), &moment, sizeof(moment)) != sizeof(moment))
            std::abort();
        return moment;
    }

    /// Discards the moments of earlier messages that nobody read.
    void DropMoments() const
    {
        constexpr int kLongEnough = 200;
        pollfd descriptor{fMoments.Get(), POLLIN, 0};
        while (poll(&descriptor, 1, kLongEnough) > 0)
            TakeMoment();
    }

    /// Sends this many bytes there and back.
    void Echo(size_t size)
    {
        fBuffer.resize(size);
        size_t got = 0;
        if (write(fEcho.Get(), fBuffer.data(), size) != static_cast<ssize_t>(size))
            std::abort();
        while (got < size) {
            const ssize_t part = read(fEcho.Get(), fBuffer.data(), size - got);
            if (part <= 0)
                std::abort();
            got += static_cast<size_t>(part);
        }
    }

private:
    std::string fFolder;
    pid_t fProcess = -1;
    kits::FileDescriptor fEcho, fMoments;
    std::vector<char> fBuffer;
    BMessenger fApplication;
};

/// A sampler that makes a round on request.
class Rounds {
public:
    Rounds()
    {
        fSampler.SetSamplingDelay(kHour);
        // With so short a history, no round ever comes too early.
        fSampler.SetNodesToKeep(2);
    }

    Sysinfo& Sampler() { return fSampler; }

private:
    Sysinfo fSampler{2};
};

/// Before each round trip and each sample comes this pause, in microseconds.
void BM_SampleToAnotherProcess(benchmark::State& state)
{
    const bigtime_t pause = state.range(0);
    const auto rest = [pause] {
        if (pause > 0)
            snooze(pause);
    };
    Partner& partner = Partner::Get();
    const std::vector<BMessenger> targets = partner.MakeHandlers(1);
    Rounds rounds;
    rounds.Sampler().AddMessenger(targets[0]);
    rounds.Sampler().Sample();
    BMessage sample(MSG_SYSINFO_SAMPLE);
    sample.SetNewestWins(true);
    rounds.Sampler().GhostArchive(&sample);
    const auto size = static_cast<size_t>(sample.FlattenedSize());
    partner.DropMoments();
    Times floor, measured;
    for (auto _ : state) {
        rest();
        floor.Add(Nanoseconds([&] { partner.Echo(size); }));
        rest();
        const int64 begin = MonotonicNanoseconds();
        BMessenger::SendToAll(targets, &sample);
        const auto time = static_cast<double>(partner.TakeMoment() - begin);
        measured.Add(time);
        state.SetIterationTime(time * 1e-9);
    }
    Report(state, floor, measured);
    state.counters["measured_99_ns"] = measured.Part(0.99);
    state.counters["floor_99_ns"] = floor.Part(0.99);
    state.counters["bytes"] = static_cast<double>(size);
}

void BM_RoundToHandlers(benchmark::State& state)
{
    Partner& partner = Partner::Get();
    Rounds rounds;
    for (const BMessenger& target : partner.MakeHandlers(static_cast<int32>(state.range(0))))
        rounds.Sampler().AddMessenger(target);
    rounds.Sampler().Sample();
    partner.DropMoments();
    Times measured;
    for (auto _ : state) {
        const double time = Nanoseconds([&] { rounds.Sampler().Sample(); });
        measured.Add(time);
        partner.TakeMoment();
        state.SetIterationTime(time * 1e-9);
    }
    state.counters["measured_ns"] = measured.Median();
}

} // namespace

// Enough that the 99th percentile means something; at five samples a second that would take too long.
BENCHMARK(BM_SampleToAnotherProcess)->Arg(0)->Iterations(20000)->UseManualTime();
BENCHMARK(BM_SampleToAnotherProcess)->Arg(10000)->Iterations(1000)->UseManualTime();
BENCHMARK(BM_SampleToAnotherProcess)->Arg(200000)->Iterations(60)->UseManualTime();
BENCHMARK(BM_RoundToHandlers)->Arg(1)->Arg(10)->Arg(100)->Arg(500)->UseManualTime();
