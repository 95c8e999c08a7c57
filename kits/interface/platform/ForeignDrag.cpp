// SPDX-License-Identifier: MIT
#include "kits/interface/platform/ForeignDrag.h"

#include "kits/application/MainThread.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/interface/platform/Display.h"
#include "kits/interface/platform/Selections.h"
#include "kits/interface/platform/selections/ForeignOffer.h"
#include "kits/interface/platform/x11/XDragWatch.h"
#include "kits/interface/platform/x11/XSelections.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QPointer>
#include <QWindow>

#include <memory>
#include <set>
#include <utility>

namespace kits::ForeignDrag {

namespace {

std::unique_ptr<XDragWatch> sWatch;
/// The offer that is dragged over our windows, or null.
std::shared_ptr<ForeignOffer> sOffer;

/// Identifies a drag: the address of its data, and its number.
using Identity = std::pair<const void*, uint64_t>;
Identity sIdentity;
/// False while we tell a window that a drag has left, although the drag continues.
bool sLeaves = true;

Identity IdentityOf(const QMimeData& data)
{
    return {&data, sWatch != nullptr ? sWatch->Current().number : 0};
}

bool IsOfOffer(const QDropEvent& event)
{
    return dynamic_cast<const ForeignOffer*>(event.mimeData()) != nullptr;
}

std::shared_ptr<ForeignOffer> MakeOffer(const QMimeData& data)
{
    const auto make = [dragged = QPointer<const QMimeData>(&data)]() -> std::unique_ptr<SelectionSource> {
        if (sWatch != nullptr)
            return XSelections::SourceOf(sWatch->Current());
        return dragged != nullptr ? Selections::SourceOf(*dragged) : nullptr;
    };
    return std::make_shared<ForeignOffer>(data.formats(), make);
}

template <class Event> void DeliverAs(QWindow& window, Event& event)
{
    // The offer may be replaced meanwhile.
    const std::shared_ptr<ForeignOffer> offer = sOffer;
    const auto place = [&event] {
        if constexpr (std::is_same_v<Event, QDropEvent>)
            return event.position();
        else
            return event.position().toPoint();
    };
    Event own(place(), event.possibleActions(), offer.get(), event.buttons(), event.modifiers());
    own.setDropAction(event.dropAction());
    own.setAccepted(event.isAccepted());
    QCoreApplication::sendEvent(&window, &own);
    event.setDropAction(own.dropAction());
    event.setAccepted(own.isAccepted());
    if constexpr (std::is_same_v<Event, QDragMoveEvent>) {
        if (own.isAccepted())
            event.accept(own.answerRect());
        else
            event.ignore(own.answerRect());
    }
}

void Leave(QWindow& window)
{
    sLeaves = false;
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&window, &leave);
    sLeaves = true;
}

/// One place of a drag over a window.
struct Moment {
    QPointer<QWindow> window;
    QPointF place;
    Qt::DropActions actions;
    Qt::MouseButtons buttons;
    Qt::KeyboardModifiers modifiers;
    std::shared_ptr<ForeignOffer> offer;

    /// @return true if the drag was accepted
    bool Enter() const
    {
        QDragEnterEvent enter(place.toPoint(), actions, offer.get(), buttons, modifiers);
        if (window != nullptr)
            QCoreApplication::sendEvent(window, &enter);
        return enter.isAccepted();
    }

    void Arrive() const
    {
        const bool isAccepted = Enter();
        QDragMoveEvent move(place.toPoint(), actions, offer.get(), buttons, modifiers);
        move.setAccepted(isAccepted);
        if (window != nullptr)
            QCoreApplication::sendEvent(window, &move);
    }
};
/// The last moment of the current drag.
Moment sLast;

Moment MomentOf(QWindow& window, const QDropEvent& event)
{
    return {&window, event.position(), event.possibleActions(), event.buttons(), event.modifiers(), sOffer};
}

void Forget()
{
    sLast = {};
    sOffer.reset();
}

/// Drops that wait for their data.
std::set<std::shared_ptr<Moment>> sHeld;

/// Carries out a drop whose data have arrived. The toolkit has forgotten it by then.
void CarryOut(const Moment& held)
{
    if (held.offer->IsLate())
        beep();
    // The drag of this drop is gone. Another one may be over the window; it continues afterwards.
    const Moment current = sLast;
    if (current.window != nullptr)
        Leave(*current.window);
    held.Arrive();
    QDropEvent drop(held.place, held.actions, held.offer.get(), held.buttons, held.modifiers);
    if (held.window != nullptr)
        QCoreApplication::sendEvent(held.window, &drop);
    if (current.offer != nullptr && current.offer == sOffer)
        current.Arrive();
}

/// @return true if it is held back
bool HoldBack(QWindow& window, QDropEvent& event)
{
    if (sOffer->IsReadyForDrop())
        return false;
    const auto held = std::make_shared<Moment>(MomentOf(window, event));
    // Data that this process holds arrive during this call.
    const auto isHere = std::make_shared<bool>(false);
    const auto isHeld = std::make_shared<bool>(false);
    // The drop owns the offer, and the offer this function: a shared pointer here would keep both forever.
    held->offer->FetchForDrop([drop = std::weak_ptr(held), isHere, isHeld] {
        *isHere = true;
        if (*isHeld)
            RunOnMainThread([drop] {
                const std::shared_ptr<Moment> ready = drop.lock();
                if (ready == nullptr)
                    return;
                sHeld.erase(ready);
                CarryOut(*ready);
            });
    });
    *isHeld = !*isHere;
    if (*isHeld) {
        sHeld.insert(held);
        event.acceptProposedAction();
    }
    return *isHeld;
}

} // namespace

void Start()
{
    if (Display::IsX11())
        sWatch = std::make_unique<XDragWatch>([] { return sOffer.get(); });
}

void Stop()
{
    sWatch.reset();
    sHeld.clear();
    Forget();
}

bool Deliver(QWindow& window, QEvent& event)
{
    switch (event.type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    case QEvent::DragLeave:
        if (sLeaves)
            sLast = {};
        // Views still use the offer while they handle the leave.
        RunOnMainThread([left = sLeaves ? sOffer : nullptr] {
            if (left != nullptr && sOffer == left)
                Forget();
        });
        return false;
    default:
        return false;
    }
    auto& drop = static_cast<QDropEvent&>(event);
    if (drop.source() != nullptr || drop.mimeData() == nullptr || IsOfOffer(drop))
        return false;
    const Identity identity = IdentityOf(*drop.mimeData());
    const bool isNew = sOffer == nullptr || identity != sIdentity;
    if (isNew || event.type() == QEvent::DragEnter) {
        sIdentity = identity;
        sOffer = MakeOffer(*drop.mimeData());
    }
    const Moment now = MomentOf(window, drop);
    sLast = now;
    // A source that died over the window sent no leave, and the toolkit takes the next drag for the same one.
    if (isNew && event.type() == QEvent::DragMove) {
        Leave(window);
        now.Enter();
    }
    if (event.type() == QEvent::DragEnter) {
        DeliverAs(window, static_cast<QDragEnterEvent&>(event));
    } else if (event.type() == QEvent::DragMove) {
        DeliverAs(window, static_cast<QDragMoveEvent&>(event));
    } else {
        if (!HoldBack(window, drop)) {
            if (sOffer->IsLate())
                beep();
            DeliverAs(window, drop);
        }
        Forget();
    }
    return true;
}

} // namespace kits::ForeignDrag
