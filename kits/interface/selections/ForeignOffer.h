#pragma once

#include "kits/application/Message.h"
#include "kits/interface/selections/SelectionFetch.h"

#include <QMimeData>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace kits {

/// What another program drags over our windows: knows at once in which forms it is offered, and holds of its data what
/// has come so far. It takes the place of the toolkit's object in all events of the drag, so nobody waits for data by
/// asking for them. Main thread, with the interface lock held.
class ForeignOffer : public QMimeData {
public:
    enum class State {
        kNot,    ///< nothing has come, nor will by itself
        kComing, ///< being fetched
        kHere
    };
    using MakeSource = std::function<std::unique_ptr<SelectionSource>()>;

    /// @param formats  the toolkit's names
    /// @param make     gives a new source each time
    ForeignOffer(QStringList formats, MakeSource make);
    ~ForeignOffer() override;

    /// A view asks for the message in it: has it fetched, again if the program was not ready for that the first few
    /// times, but not if it did not answer.
    State Want();
    /// No view asks any more: what is under way is given up, unless a drop waits for it.
    void Unwant();
    /// Null until it has come.
    const BMessage* Message() const { return fMessage.get(); }
    bool IsComing() const { return fIsFetching; }
    /// False if there is no use in asking any more.
    bool MayCome() const;
    /// Called when the message has come.
    void CallWhenHere(std::function<void()> here) { fHere = std::move(here); }

    /// True if a drop now finds all that it will find.
    bool IsReadyForDrop() const;
    /// Has fetched what a drop needs: the message if a view has asked for it, else the text.
    /// @param ready  called once when it is there, or nothing will come; possibly in this call
    void FetchForDrop(std::function<void()> ready);
    /// True if the program has not answered in time.
    bool IsLate() const { return fIsLate; }
    /// Replaces the clock, in microseconds, that decides when an unanswered question is asked again.
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
    int64_t fAskedAt = 0; ///< when it was asked last
    std::function<int64_t()> fClock;
};

} // namespace kits
