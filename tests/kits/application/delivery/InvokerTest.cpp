// SPDX-License-Identifier: MIT
#include "kits/application/Invoker.h"

#include "kits/application/InterfaceLock.h"
#include "kits/kernel/Errors.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

using test::Recorder;
using test::RecordingLooper;

TEST(Invoker, SendsItsMessageToItsTarget)
{
    auto* looper = new RecordingLooper;
    looper->Run();
    Recorder handler;
    looper->AddHandler(&handler);
    BInvoker invoker(new BMessage(1), &handler);
    EXPECT_EQ(invoker.Command(), 1u);
    EXPECT_TRUE(invoker.IsTargetLocal());
    BLooper* owner = nullptr;
    EXPECT_EQ(invoker.Messenger().Target(&owner), &handler);
    EXPECT_EQ(owner, looper);
    EXPECT_EQ(invoker.Invoke(), B_OK);
    BMessage other(2);
    EXPECT_EQ(invoker.Invoke(&other), B_OK);
    EXPECT_EQ(invoker.SetTarget(nullptr, looper), B_OK);
    EXPECT_EQ(invoker.Messenger().Target(nullptr), looper);
    EXPECT_EQ(invoker.SetMessage(new BMessage(3)), B_OK);
    EXPECT_EQ(invoker.Invoke(), B_OK);
    EXPECT_EQ(invoker.SetTarget(BMessenger(&handler)), B_OK);
    EXPECT_EQ(invoker.SetMessage(invoker.Message()), B_OK);
    EXPECT_EQ(invoker.Invoke(), B_OK);
    EXPECT_TRUE(test::RunUntil([&handler] { return handler.codes.size() == 3; }));
    EXPECT_EQ(handler.codes, (std::vector<uint32>{1, 2, 3}));
    EXPECT_EQ(looper->codes, std::vector<uint32>{3});
    const kits::InterfaceLocker locker;
    looper->RemoveHandler(&handler);
    looper->Quit();
    EXPECT_EQ(invoker.Invoke(), B_BAD_HANDLER);
    EXPECT_EQ(invoker.Messenger().Target(nullptr), nullptr);
}

TEST(Invoker, NeedsAMessageAndATarget)
{
    BInvoker invoker(nullptr, nullptr);
    EXPECT_EQ(invoker.Message(), nullptr);
    EXPECT_EQ(invoker.Command(), 0u);
    EXPECT_EQ(invoker.Invoke(), B_BAD_VALUE);
    EXPECT_FALSE(invoker.IsTargetLocal());
    EXPECT_FALSE(invoker.Messenger().IsValid());
    invoker.SetMessage(new BMessage(1));
    EXPECT_EQ(invoker.Invoke(), B_BAD_HANDLER);
    Recorder stranger;
    EXPECT_EQ(invoker.SetTarget(&stranger), B_BAD_HANDLER);
    EXPECT_EQ(invoker.SetTarget(nullptr), B_BAD_VALUE);
    EXPECT_EQ(invoker.SetMessage(nullptr), B_OK);
    EXPECT_EQ(invoker.Invoke(), B_BAD_VALUE);
}
