// SPDX-License-Identifier: MIT
#include "kits/support/Identity.h"

#include <gtest/gtest.h>

#include <set>

using kits::Identities;

TEST(Identity, NoTwoAreTheSame)
{
    constexpr size_t kCount = 1000;
    std::set<std::string> seen;
    while (seen.size() < kCount) {
        const std::string identity = kits::NewIdentity();
        EXPECT_EQ(identity.size(), 32U);
        EXPECT_EQ(identity.find_first_not_of("0123456789abcdef"), std::string::npos) << identity;
        EXPECT_TRUE(seen.insert(identity).second) << identity;
    }
}

TEST(Identities, RememberTheNewest)
{
    Identities identities(3);
    EXPECT_FALSE(identities.Has("a"));
    for (const char* identity : {"a", "b", "c"})
        identities.Add(identity);
    EXPECT_TRUE(identities.Has("a"));
    identities.Add("d");
    EXPECT_FALSE(identities.Has("a"));
    EXPECT_EQ(identities.All(), (std::deque<std::string>{"b", "c", "d"}));
}

TEST(Identities, OneThatIsKnownPushesNoOtherOut)
{
    Identities identities(2);
    identities.Add("a");
    identities.Add("b");
    identities.Add("b");
    identities.Add("a");
    EXPECT_EQ(identities.All(), (std::deque<std::string>{"a", "b"}));
}

TEST(Identities, ForgetWhatIsNone)
{
    Identities identities(8);
    identities.Add("");
    identities.Add(std::string(Identities::kLongest + 1, 'x'));
    EXPECT_TRUE(identities.All().empty());
    EXPECT_FALSE(identities.Has(""));
    const std::string longest(Identities::kLongest, 'x');
    identities.Add(longest);
    EXPECT_TRUE(identities.Has(longest));
}
