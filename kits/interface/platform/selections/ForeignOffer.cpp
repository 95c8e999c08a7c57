// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/ForeignOffer.h"

#include "kits/interface/platform/selections/DropMessage.h"
#include "kits/interface/platform/selections/Fetches.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"

#include <algorithm>
#include <utility>

namespace kits {

ForeignOffer::ForeignOffer(QStringList formats, MakeSource make)
    : fFormats(std::move(formats))
    , fMake(std::move(make))
    , fClock(system_time)
{
}

ForeignOffer::~ForeignOffer()
{
    Fetches::Cancel(fFetch);
}

bool ForeignOffer::MayAsk() const
{
    return fMessage == nullptr && !fIsLate && fAsked < bounds::kMostAskedOfADrag && DropMessage::CanDecode(fFormats);
}

bool ForeignOffer::MayCome() const
{
    return fMessage != nullptr || fIsFetching || MayAsk();
}

bool ForeignOffer::MayAskForText() const
{
    const std::vector<SelectionForm> forms = Fetches::TextForms();
    return !fWasAskedForText && std::any_of(forms.begin(), forms.end(), [this](const SelectionForm& form) {
        return fFormats.contains(QString::fromStdString(form.name));
    });
}

ForeignOffer::State ForeignOffer::Want()
{
    fIsWanted = true;
    // A source that has just begun its drag may lose the first question.
    if (fIsFetching && fClock() - fAskedAt > bounds::kAskDragAgain && MayAsk()) {
        fIsFetching = false;
        Fetches::Cancel(std::exchange(fFetch, 0));
    }
    if (!fIsFetching && MayAsk()) {
        fAsked++;
        fAskedAt = fClock();
        Fetch(DropMessage::Forms(), [this](const SelectionForm& form, const std::string& data) {
            fMessage = DropMessage::Decode(form.name, data);
            return fMessage != nullptr;
        });
    }
    if (fMessage != nullptr)
        return State::kHere;
    return fIsFetching ? State::kComing : State::kNot;
}

void ForeignOffer::Unwant()
{
    // A waiting drop needs the data.
    if (fReady != nullptr)
        return;
    fIsWanted = false;
    if (!std::exchange(fIsFetching, false))
        return;
    Fetches::Cancel(std::exchange(fFetch, 0));
}

bool ForeignOffer::IsReadyForDrop() const
{
    return !fIsFetching && !(fIsWanted ? MayAsk() : MayAskForText());
}

void ForeignOffer::FetchForDrop(std::function<void()> ready)
{
    fReady = std::move(ready);
    if (fIsWanted) {
        // The last try. A fetch under way continues.
        Want();
        fAsked = bounds::kMostAskedOfADrag;
    } else if (!fIsFetching && MayAskForText()) {
        fWasAskedForText = true;
        Fetch(Fetches::TextForms(), [this](const SelectionForm&, const std::string& data) {
            setText(QString::fromStdString(Fetches::TextOf(data)));
            return true;
        });
    }
    if (!fIsFetching && fReady)
        std::exchange(fReady, nullptr)();
}

void ForeignOffer::Fetch(std::vector<SelectionForm> forms, SelectionFetch::Use use)
{
    std::unique_ptr<SelectionSource> source = fMake();
    if (source == nullptr)
        return;
    fIsFetching = true;
    const uint64_t fetch = Fetches::Start(std::move(source), std::move(forms), std::move(use),
                                          [this](SelectionFetch::State state) { Ended(state); });
    fFetch = fIsFetching ? fetch : 0;
}

void ForeignOffer::Ended(SelectionFetch::State state)
{
    fIsFetching = false;
    fIsLate = fIsLate || (state == SelectionFetch::State::kLate && fReady != nullptr);
    if (fMessage != nullptr && fHere)
        fHere();
    // A source that was not ready is asked again when the pointer moves.
    if (fReady)
        std::exchange(fReady, nullptr)();
}

} // namespace kits
