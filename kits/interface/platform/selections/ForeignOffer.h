// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/interface/platform/selections/SelectionFetch.h"

#include <QMimeData>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace kits {

/// The data that another program drags over our windows. The offer knows their forms at once, and fetches the data
/// themselves when a view wants them. It replaces the toolkit's object in all events of the drag, so reading data from
/// it never waits. Main thread, with the interface lock held.
class ForeignOffer : public QMimeData {
public:
    enum class State {
        kNot,    ///< not there, and not being fetched
        kComing, ///< being fetched
        kHere
    };
    using MakeSource = std::function<std::unique_ptr<SelectionSource>()>;

    /// @param formats  the toolkit's names
    /// @param make     returns a new source each time
    ForeignOffer(QStringList formats, MakeSource make);
    ~ForeignOffer() override;

    /// A view wants the message. Starts to fetch it, repeatedly, up to bounds::kMostAskedOfADrag times: a program that
    /// has just begun its drag may refuse, or lose the question.
    State Want();
    /// No view wants the message any more. Cancels the current fetch, unless a drop waits for it.
    void Unwant();
    /// Null until it has arrived.
    const BMessage* Message() const { return fMessage.get(); }
    bool IsComing() const { return fIsFetching; }
    /// False if the message can no longer arrive.
    bool MayCome() const;
    /// Called when the message has arrived.
    void CallWhenHere(std::function<void()> here) { fHere = std::move(here); }

    /// True if a drop need not wait: the data are here, or none will arrive.
    bool IsReadyForDrop() const;
    /// Fetches the data for a drop: the message if a view wants it, otherwise the text.
    /// @param ready  called once, when they are here or none will arrive; possibly during this call
    void FetchForDrop(std::function<void()> ready);
    /// True if the program has not answered in time.
    bool IsLate() const { return fIsLate; }
    /// For tests: replaces the clock, in microseconds, that decides when an unanswered question is asked again.
    void SetClock(std::function<int64_t()> clock) { fClock = std::move(clock); }

    QStringList formats() const override { return fFormats; }
    bool hasFormat(const QString& format) const override { return fFormats.contains(format); }

private:
    bool MayAsk() const;
    bool MayAskForText() const;
    void Fetch(std::vector<SelectionForm> forms, SelectionFetch::Use use);
    void Ended(SelectionFetch::State state);

    const QStringList fFormats;
    const MakeSource fMake;
    std::unique_ptr<BMessage> fMessage;
    std::function<void()> fHere;
    std::function<void()> fReady;
    uint64_t fFetch = 0;
    bool fIsFetching = false;
    bool fIsWanted = false;
    bool fWasAskedForText = false;
    bool fIsLate = false;
    int fAsked = 0;
    int64_t fAskedAt = 0; ///< the time of the last question
    std::function<int64_t()> fClock;
};

} // namespace kits
