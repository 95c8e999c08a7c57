// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kits {

/// A form in which data are offered, by the name on which programs have agreed.
struct SelectionForm {
    std::string name;
    size_t limit = 0; ///< longer data are refused, in bytes
};

/// A source of data that another program owns: the clipboard, the primary selection, a drag. Every question returns at
/// once. It is answered at most once, during this call or later, on the main thread with the interface lock held. One
/// question at a time. Destroying the source withdraws the question: no answer comes any more.
class SelectionSource {
public:
    /// Null if the owner does not say: then every form is worth a try.
    using Offers = std::optional<std::vector<std::string>>;
    /// Null if the owner refuses, sends too much or sends something else.
    using Data = std::optional<std::string>;

    virtual ~SelectionSource() = default;

    virtual void AskOffers(std::function<void(Offers)> answer) = 0;
    /// Answers with texts in UTF-8, in every form.
    virtual void Ask(const SelectionForm& form, std::function<void(Data)> answer) = 0;
};

/// Fetches another program's data in the first usable one of the wanted forms. It never waits: each answer of the
/// source takes it a step further. It ends when data were used, when no form is left to ask for, or when its owner
/// cancels it because the time is over. Late answers, second answers and answers to earlier questions change nothing.
///
/// Main thread. Uses no clock and no display, so that every order of events can be tested.
class SelectionFetch {
public:
    enum class State {
        kNew,
        kAsking,
        kTaken,   ///< the data were used
        kNothing, ///< the owner has nothing that can be used
        kLate     ///< cancelled
    };
    /// Returns true if the data can be used, and then has used them.
    using Use = std::function<bool(const SelectionForm& form, const std::string& data)>;

    /// @param wanted  the preferred one first
    /// @param ended   called once with the final state. It must not destroy this object
    SelectionFetch(std::unique_ptr<SelectionSource> source, std::vector<SelectionForm> wanted, Use use,
                   std::function<void(State)> ended);
    SelectionFetch(const SelectionFetch&) = delete;
    SelectionFetch& operator=(const SelectionFetch&) = delete;

    void Start();
    /// Does nothing if it is over already.
    void GiveUp();
    State Current() const { return fState; }

private:
    void AskNext();
    void End(State state);

    std::unique_ptr<SelectionSource> fSource;
    std::vector<SelectionForm> fWanted;
    Use fUse;
    std::function<void(State)> fEnded;
    State fState = State::kNew;
    size_t fNext = 0;
    uint64 fQuestion = 0;
};

} // namespace kits
