// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/kernel/Threads.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>

/// Figures that both partners report about their process, and how they break connections off.
namespace test {

inline int32 CountOpenFiles()
{
    return static_cast<int32>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator()));
}

/// Returns how much memory of this process is resident, in kilobytes.
inline int32 ResidentMemory()
{
    std::ifstream statm("/proc/self/statm");
    int32 size = 0, resident = 0;
    statm >> size >> resident;
    return resident * 4;
}

/// Breaks all connections off at random moments and returns, like a process that dies and another one that takes its
/// place.
class Flapping {
public:
    ~Flapping() { Join(); }

    void Start(const std::string& signature, int32 count)
    {
        Join();
        fLeft = count;
        fThread = std::thread([this, signature] {
            std::mt19937 random(3);
            for (; fLeft > 0; --fLeft) {
                Pause(random() % 6000);
                kits::TeamPort::Get().Close();
                Pause(random() % 500);
                kits::TeamPort::Get().SetSignature(signature);
            }
        });
    }
    int32 CountLeft() const { return fLeft; }

private:
    static void Pause(uint32 microseconds) { std::this_thread::sleep_for(std::chrono::microseconds(microseconds)); }
    void Join()
    {
        if (fThread.joinable())
            fThread.join();
    }

    std::atomic<int32> fLeft = 0;
    std::thread fThread;
};

} // namespace test
