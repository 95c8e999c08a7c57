// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/SelectionFetch.h"

#include <algorithm>
#include <utility>

namespace kits {

SelectionFetch::SelectionFetch(std::unique_ptr<SelectionSource> source, std::vector<SelectionForm> wanted, Use use,
                               std::function<void(State)> ended)
    : fSource(std::move(source))
    , fWanted(std::move(wanted))
    , fUse(std::move(use))
    , fEnded(std::move(ended))
{
}

void SelectionFetch::Start()
{
    fState = State::kAsking;
    const uint64 question = ++fQuestion;
    fSource->AskOffers([this, question](const SelectionSource::Offers& offers) {
        if (fState != State::kAsking || question != fQuestion)
            return;
        if (offers.has_value())
            std::erase_if(fWanted, [&offers](const SelectionForm& form) {
                return std::find(offers->begin(), offers->end(), form.name) == offers->end();
            });
        AskNext();
    });
}

void SelectionFetch::GiveUp()
{
    if (fState == State::kAsking)
        End(State::kLate);
}

void SelectionFetch::AskNext()
{
    if (fNext == fWanted.size()) {
        End(State::kNothing);
        return;
    }
    const uint64 question = ++fQuestion;
    fSource->Ask(fWanted[fNext++], [this, question](const SelectionSource::Data& data) {
        if (fState != State::kAsking || question != fQuestion)
            return;
        const SelectionForm& form = fWanted[fNext - 1];
        if (data.has_value() && data->size() <= form.limit && fUse(form, *data))
            End(State::kTaken);
        else
            AskNext();
    });
}

void SelectionFetch::End(State state)
{
    fState = state;
    fQuestion++;
    fEnded(state);
}

} // namespace kits
