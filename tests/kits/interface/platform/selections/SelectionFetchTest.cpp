// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/SelectionFetch.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using kits::SelectionFetch;
using kits::SelectionForm;
using kits::SelectionSource;
using State = SelectionFetch::State;

/// An owner that answers on the test's command.
struct Owner {
    std::function<void(SelectionSource::Offers)> offers;
    std::vector<std::pair<std::string, std::function<void(SelectionSource::Data)>>> questions;
    bool isGone = false;
};

class FakeSource : public SelectionSource {
public:
    explicit FakeSource(Owner& owner)
        : fOwner(owner)
    {
    }
    ~FakeSource() override { fOwner.isGone = true; }
    void AskOffers(std::function<void(Offers)> answer) override { fOwner.offers = std::move(answer); }
    void Ask(const SelectionForm& form, std::function<void(Data)> answer) override
    {
        fOwner.questions.emplace_back(form.name, std::move(answer));
    }

private:
    Owner& fOwner;
};

class SelectionFetchTest : public testing::Test {
protected:
    SelectionFetchTest()
        : fFetch(
              std::make_unique<FakeSource>(fOwner), {{"message", 100}, {"color", 8}, {"text", 10}},
              [this](const SelectionForm& form, const std::string& data) {
                  fTried.push_back(form.name + "=" + data);
                  return data.starts_with("good");
              },
              [this](State state) { fEnds.push_back(state); })
    {
        fFetch.Start();
    }

    std::vector<std::string> Asked() const
    {
        std::vector<std::string> names;
        for (const auto& question : fOwner.questions)
            names.push_back(question.first);
        return names;
    }
    void Answer(size_t question, SelectionSource::Data data) { fOwner.questions.at(question).second(std::move(data)); }

    Owner fOwner;
    std::vector<std::string> fTried;
    std::vector<State> fEnds;
    SelectionFetch fFetch;
};

} // namespace

TEST_F(SelectionFetchTest, AsksForThePreferredFormThatIsOffered)
{
    fOwner.offers(std::vector<std::string>{"text", "color", "picture"});
    EXPECT_EQ(Asked(), (std::vector<std::string>{"color"}));
    Answer(0, "good");
    EXPECT_EQ(fTried, (std::vector<std::string>{"color=good"}));
    EXPECT_EQ(fEnds, (std::vector<State>{State::kTaken}));
    EXPECT_EQ(fFetch.Current(), State::kTaken);
}

TEST_F(SelectionFetchTest, TriesAllFormsOfAnOwnerThatDoesNotSayWhatItOffers)
{
    fOwner.offers(std::nullopt);
    Answer(0, std::nullopt);
    Answer(1, "bad");
    Answer(2, "good");
    EXPECT_EQ(Asked(), (std::vector<std::string>{"message", "color", "text"}));
    EXPECT_EQ(fTried, (std::vector<std::string>{"color=bad", "text=good"}));
    EXPECT_EQ(fEnds, (std::vector<State>{State::kTaken}));
}

TEST_F(SelectionFetchTest, EndsWithNothingWhenAllIsRefusedOrNothingIsOffered)
{
    fOwner.offers(std::vector<std::string>{"text"});
    Answer(0, std::nullopt);
    EXPECT_EQ(fEnds, (std::vector<State>{State::kNothing}));

    std::vector<State> ends;
    Owner owner;
    SelectionFetch other(std::make_unique<FakeSource>(owner), {{"text", 10}}, nullptr,
                         [&ends](State state) { ends.push_back(state); });
    other.Start();
    owner.offers(std::vector<std::string>{});
    EXPECT_EQ(ends, (std::vector<State>{State::kNothing}));
    EXPECT_TRUE(owner.questions.empty());
}

TEST_F(SelectionFetchTest, RefusesWhatIsLongerThanItsForm)
{
    fOwner.offers(std::vector<std::string>{"color", "text"});
    Answer(0, "good, but nine");
    Answer(1, "good");
    EXPECT_EQ(fTried, (std::vector<std::string>{"text=good"}));
}

TEST_F(SelectionFetchTest, HasNoUseForWhatComesAfterItsEnd)
{
    fOwner.offers(std::nullopt);
    fFetch.GiveUp();
    EXPECT_EQ(fEnds, (std::vector<State>{State::kLate}));
    Answer(0, "good");
    fOwner.offers(std::nullopt);
    fFetch.GiveUp();
    EXPECT_TRUE(fTried.empty());
    EXPECT_EQ(fEnds.size(), 1u);
    EXPECT_EQ(fOwner.questions.size(), 1u);
}

TEST_F(SelectionFetchTest, IsGivenUpBeforeTheOwnerSaysWhatItOffers)
{
    fFetch.GiveUp();
    EXPECT_EQ(fEnds, (std::vector<State>{State::kLate}));
    fOwner.offers(std::nullopt);
    EXPECT_TRUE(fOwner.questions.empty());
}

TEST_F(SelectionFetchTest, TakesOneAnswerToAQuestion)
{
    fOwner.offers(std::nullopt);
    fOwner.offers(std::nullopt);
    EXPECT_EQ(Asked(), (std::vector<std::string>{"message"}));
    Answer(0, "bad");
    Answer(0, "good");
    Answer(0, std::nullopt);
    EXPECT_EQ(Asked(), (std::vector<std::string>{"message", "color"}));
    EXPECT_EQ(fTried, (std::vector<std::string>{"message=bad"}));
    EXPECT_TRUE(fEnds.empty());
    Answer(1, "good");
    Answer(1, "good");
    EXPECT_EQ(fEnds, (std::vector<State>{State::kTaken}));
    EXPECT_EQ(fTried.size(), 2u);
}

TEST(SelectionFetch, TakesItsQuestionsBackWhenItGoes)
{
    Owner owner;
    {
        SelectionFetch fetch(std::make_unique<FakeSource>(owner), {{"text", 10}}, nullptr, nullptr);
        fetch.Start();
        EXPECT_FALSE(owner.isGone);
    }
    EXPECT_TRUE(owner.isGone);
}
