// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/ForeignOffer.h"

#include "kits/kernel/Bounds.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

namespace {

using kits::ForeignOffer;
using kits::SelectionForm;
using kits::SelectionSource;
using State = ForeignOffer::State;

/// Answers on the test's command.
class FakeSource : public SelectionSource {
public:
    explicit FakeSource(std::function<void(Data)>& answer)
        : fAnswer(answer)
    {
    }
    ~FakeSource() override { fAnswer = nullptr; }
    void AskOffers(std::function<void(Offers)> answer) override { answer(std::nullopt); }
    void Ask(const SelectionForm& form, std::function<void(Data)> answer) override
    {
        // Offers only text.
        if (form.name == "UTF8_STRING")
            fAnswer = std::move(answer);
        else
            answer(std::nullopt);
    }

private:
    std::function<void(Data)>& fAnswer;
};

class ForeignOfferTest : public testing::Test {
protected:
    ForeignOfferTest()
    {
        fOffer.emplace(
            QStringList{QStringLiteral("text/plain")},
            [this] {
                fMade++;
                return std::make_unique<FakeSource>(fAnswer);
            });
        fOffer->CallWhenHere([this] { fHeard++; });
        fOffer->SetClock([this] { return fNow; });
    }
    ~ForeignOfferTest() override
    {
        fOffer.reset();
        test::Turn();
    }
    void FetchForDrop()
    {
        fOffer->FetchForDrop([this] { fReady++; });
    }
    void Elapse()
    {
        EXPECT_TRUE(test::WaitFor([this] { return fOffer->IsLate(); }));
    }

    std::function<void(SelectionSource::Data)> fAnswer;
    int64_t fNow = 0;
    int fMade = 0;
    int fHeard = 0;
    int fReady = 0;
    std::optional<ForeignOffer> fOffer;
};

} // namespace

TEST_F(ForeignOfferTest, FetchesItsMessageWhenAViewWantsIt)
{
    EXPECT_TRUE(fOffer->hasFormat("text/plain"));
    EXPECT_EQ(fMade, 0);
    EXPECT_EQ(fOffer->Want(), State::kComing);
    EXPECT_EQ(fOffer->Want(), State::kComing);
    EXPECT_EQ(fMade, 1);
    EXPECT_FALSE(fOffer->IsReadyForDrop());
    fAnswer("words");
    EXPECT_EQ(fHeard, 1);
    EXPECT_EQ(fOffer->Want(), State::kHere);
    ASSERT_NE(fOffer->Message(), nullptr);
    EXPECT_TRUE(fOffer->IsReadyForDrop());
    EXPECT_EQ(fMade, 1);
}

TEST_F(ForeignOfferTest, AsksAgainWhenTheFirstQuestionWasLost)
{
    fOffer->Want();
    fNow = kits::bounds::kAskDragAgain;
    fOffer->Want();
    EXPECT_EQ(fMade, 1);
    fNow++;
    EXPECT_EQ(fOffer->Want(), State::kComing);
    EXPECT_EQ(fMade, 2);
    ASSERT_TRUE(fAnswer);
    fAnswer("words");
    EXPECT_EQ(fOffer->Want(), State::kHere);
}

TEST_F(ForeignOfferTest, LeavesTheLastQuestionUnderWay)
{
    for (int i = 0; i < 2 * kits::bounds::kMostAskedOfADrag; i++) {
        fOffer->Want();
        fNow += 2 * kits::bounds::kAskDragAgain;
    }
    EXPECT_EQ(fMade, kits::bounds::kMostAskedOfADrag);
    ASSERT_TRUE(fAnswer);
    fAnswer("words");
    EXPECT_EQ(fOffer->Want(), State::kHere);
}

TEST_F(ForeignOfferTest, ADropWaitsForWhatIsUnderWay)
{
    fOffer->Want();
    FetchForDrop();
    EXPECT_EQ(fReady, 0);
    // On Wayland the drag leaves the window after its drop.
    fOffer->Unwant();
    fAnswer("words");
    EXPECT_EQ(fReady, 1);
    EXPECT_NE(fOffer->Message(), nullptr);
    EXPECT_EQ(fMade, 1);
}

TEST_F(ForeignOfferTest, ADropAsksOnceMoreIfTheSourceWasNotReady)
{
    fOffer->Want();
    fAnswer(std::nullopt);
    EXPECT_EQ(fOffer->Message(), nullptr);
    EXPECT_TRUE(fOffer->MayCome());
    EXPECT_FALSE(fOffer->IsReadyForDrop());
    FetchForDrop();
    EXPECT_EQ(fMade, 2);
    fAnswer(std::nullopt);
    EXPECT_EQ(fReady, 1);
    EXPECT_TRUE(fOffer->IsReadyForDrop());
    EXPECT_FALSE(fOffer->MayCome());
}

TEST_F(ForeignOfferTest, ASourceThatDoesNotAnswerIsNotAskedAgain)
{
    fOffer->Want();
    FetchForDrop();
    Elapse();
    EXPECT_EQ(fReady, 1);
    EXPECT_TRUE(fOffer->IsReadyForDrop());
    EXPECT_EQ(fOffer->Want(), State::kNot);
    EXPECT_FALSE(fOffer->MayCome());
    EXPECT_EQ(fMade, 1);
}

TEST_F(ForeignOfferTest, AFieldOfTheToolkitGetsTheTextWithTheDrop)
{
    EXPECT_FALSE(fOffer->IsReadyForDrop());
    EXPECT_EQ(fOffer->text(), "");
    EXPECT_EQ(fMade, 0);
    FetchForDrop();
    EXPECT_EQ(fMade, 1);
    fAnswer("gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(fReady, 1);
    EXPECT_EQ(fOffer->text(), QString::fromUtf8("gr\xC3\xBC\xC3\x9F"));
    EXPECT_TRUE(fOffer->IsReadyForDrop());
}

TEST_F(ForeignOfferTest, NothingIsAskedOfWhatNobodyCanUse)
{
    ForeignOffer picture({QStringLiteral("image/png")}, [this] {
        fMade++;
        return nullptr;
    });
    EXPECT_EQ(picture.Want(), State::kNot);
    EXPECT_TRUE(picture.IsReadyForDrop());
    EXPECT_EQ(fMade, 0);
}

TEST_F(ForeignOfferTest, LeavingTheWindowGivesUp)
{
    fOffer->Want();
    fOffer->Unwant();
    test::Turn();
    EXPECT_EQ(fAnswer, nullptr);
    EXPECT_EQ(fHeard, 0);
}

TEST_F(ForeignOfferTest, ItMayGoWhileItIsBeingFetched)
{
    fOffer->Want();
    fOffer.reset();
    test::Turn();
    EXPECT_EQ(fAnswer, nullptr);
}

TEST_F(ForeignOfferTest, OnlyAFewAreFetchedAtOnce)
{
    std::vector<std::unique_ptr<ForeignOffer>> others;
    std::function<void(SelectionSource::Data)> answer;
    for (size_t i = 0; i < kits::bounds::kMostFetches; i++) {
        others.push_back(std::make_unique<ForeignOffer>(QStringList{QStringLiteral("text/plain")},
                                                        [&answer] { return std::make_unique<FakeSource>(answer); }));
        EXPECT_EQ(others.back()->Want(), State::kComing);
    }
    EXPECT_EQ(fOffer->Want(), State::kNot);
    others.clear();
    EXPECT_EQ(fOffer->Want(), State::kComing);
    test::Turn();
}
