// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/InterfaceLock.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "tests/support/Loop.h"
#include "tests/support/RuntimeFolder.h"

#include <gtest/gtest.h>
#include <sys/types.h>

#include <memory>
#include <string>

namespace test {

inline constexpr const char* kPartnerSignature = "application/x-vnd.test-kits_partner";

/// Returns the path of a program beside this one.
std::string ProgramBeside(const std::string& name);
/// Returns the path of the partner's program.
std::string PartnerProgram();

/// Another process with an application object, see partner/Partner.cpp. The destructor kills it if it has not ended by
/// then.
class Partner {
public:
    /// @param mode     hidden, listed, single or starting; the second argument of other programs
    /// @param program  takes the signature of its application as its first argument
    explicit Partner(const std::string& signature = kPartnerSignature, const std::string& mode = "listed",
                     const std::string& program = PartnerProgram());
    ~Partner();
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;

    pid_t Process() const { return fProcess; }
    /// Waits until the partner's application can be found, and returns it.
    BMessenger Application() const;
    /// Sends a signal. After SIGSTOP, returns when all threads stand still.
    void Signal(int number) const;
    /// Waits for its end.
    /// @return its exit status, or minus the signal that ended it
    int Await();

private:
    std::string fSignature;
    pid_t fProcess = -1;
};

/// This process as one of two teams.
class TeamTest : public testing::Test {
protected:
    TeamTest();
    ~TeamTest() override;

    /// Sends and waits for the reply; returns an empty message of code 'fail' if there was none.
    static BMessage Ask(const BMessenger& messenger, const BMessage& message);
    static BMessage Ask(const BMessenger& messenger, uint32 code) { return Ask(messenger, BMessage(code)); }
    /// Returns a number that the partner reports about itself.
    static int32 AskNumber(const BMessenger& messenger, const char* name);

    RuntimeFolder fRuntime;
    const kits::InterfaceLocker fLocker;
    RecordingLooper* const fLooper = new RecordingLooper;
};

} // namespace test
