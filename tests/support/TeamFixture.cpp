// SPDX-License-Identifier: MIT
#include "tests/support/TeamFixture.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace test {

Partner::Partner(const std::string& signature, const std::string& mode, const std::string& program)
    : fSignature(signature)
{
    std::string name = program, first = signature, second = mode;
    char* arguments[] = {name.data(), first.data(), second.data(), nullptr};
    EXPECT_EQ(posix_spawn(&fProcess, program.c_str(), nullptr, nullptr, arguments, environ), 0);
}

Partner::~Partner()
{
    if (fProcess > 0) {
        Signal(SIGKILL);
        Await();
    }
}

BMessenger Partner::Application() const
{
    BMessenger messenger;
    EXPECT_TRUE(test::Await([this, &messenger] {
        messenger = BMessenger(fSignature.c_str(), fProcess);
        return messenger.IsValid();
    }));
    return messenger;
}

void Partner::Signal(int number) const
{
    kill(fProcess, number);
    if (number != SIGSTOP)
        return;
    siginfo_t info;
    while (waitid(P_PID, static_cast<id_t>(fProcess), &info, WSTOPPED | WEXITED | WNOWAIT) < 0 && errno == EINTR) {
    }
}

int Partner::Await()
{
    int status = 0;
    while (waitpid(fProcess, &status, 0) < 0 && errno == EINTR) {
    }
    fProcess = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string ProgramBeside(const std::string& name)
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

std::string PartnerProgram()
{
    return ProgramBeside("kits_partner");
}

TeamTest::TeamTest()
{
    fLooper->Run();
}

TeamTest::~TeamTest()
{
    fLooper->Quit();
}

BMessage TeamTest::Ask(const BMessenger& messenger, const BMessage& message)
{
    BMessage reply('fail');
    EXPECT_EQ(messenger.SendMessage(&message, &reply, 0, 30000000), B_OK);
    return reply;
}

int32 TeamTest::AskNumber(const BMessenger& messenger, const char* name)
{
    int32 number = -1;
    EXPECT_EQ(Ask(messenger, 'log?').FindInt32(name, &number), B_OK);
    return number;
}

} // namespace test
