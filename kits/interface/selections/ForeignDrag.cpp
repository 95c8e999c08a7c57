#include "kits/interface/selections/ForeignDrag.h"

#include "kits/application/MainThread.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/interface/selections/ForeignOffer.h"
#include "kits/interface/selections/Selections.h"
#include "kits/interface/selections/XDragWatch.h"
#include "kits/interface/selections/XSelections.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QPointer>
#include <QWindow>

#include <memory>
#include <utility>

namespace kits::ForeignDrag {

namespace {

std::unique_ptr<XDragWatch> sWatch;
/// What is over our windows; null when nothing is.
std::shared_ptr<ForeignOffer> sOffer;

/// Tells one drag from another.
struct Identity {
    const void* data = nullptr; ///< only to be compared
    uint64_t number = 0;
    bool operator==(const Identity&) const = default;
};
Identity sIdentity;
/// False while a window is told that a drag has left it that is still the current one.
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

void Enter(QWindow& window, const QDropEvent& event)
{
    sLeaves = false;
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&window, &leave);
    sLeaves = true;
    QDragEnterEvent enter(event.position().toPoint(), event.possibleActions(), sOffer.get(), event.buttons(),
                          event.modifiers());
    QCoreApplication::sendEvent(&window, &enter);
}

/// A drop that the toolkit has forgotten when its data come.
struct HeldDrop {
    QPointer<QWindow> window;
    QPointF place;
    Qt::DropActions actions;
    Qt::MouseButtons buttons;
    Qt::KeyboardModifiers modifiers;
    std::shared_ptr<ForeignOffer> offer;

    void CarryOut() const
    {
        if (offer->IsLate())
            beep();
        if (window == nullptr)
            return;
        // The drag has left the window since.
        const QPoint point = place.toPoint();
        QDragEnterEvent enter(point, actions, offer.get(), buttons, modifiers);
        QCoreApplication::sendEvent(window, &enter);
        QDragMoveEvent move(point, actions, offer.get(), buttons, modifiers);
        move.setAccepted(enter.isAccepted());
        if (window != nullptr)
            QCoreApplication::sendEvent(window, &move);
        QDropEvent drop(place, actions, offer.get(), buttons, modifiers);
        if (window != nullptr)
            QCoreApplication::sendEvent(window, &drop);
    }
};

/// @return true if it is held back
bool HoldBack(QWindow& window, QDropEvent& event)
{
    if (sOffer->IsReadyForDrop())
        return false;
    const auto held = std::make_shared<HeldDrop>(
        HeldDrop{&window, event.position(), event.possibleActions(), event.buttons(), event.modifiers(), sOffer});
    // What is at hand comes in this call.
    const auto isHere = std::make_shared<bool>(false);
    const auto isHeld = std::make_shared<bool>(false);
    held->offer->FetchForDrop([held, isHere, isHeld] {
        *isHere = true;
        if (*isHeld)
            RunOnMainThread([held] { held->CarryOut(); });
        // It holds the offer, which holds this.
    });
    *isHeld = !*isHere;
    if (*isHeld)
        event.acceptProposedAction();
    return *isHeld;
}

} // namespace

void Start()
{
    if (XSelections::IsHere())
        sWatch = std::make_unique<XDragWatch>([] { return sOffer.get(); });
}

void Stop()
{
    sWatch.reset();
    sOffer.reset();
}

bool Deliver(QWindow& window, QEvent& event)
{
    switch (event.type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    case QEvent::DragLeave:
        // After it has been delivered.
        RunOnMainThread([left = sLeaves ? sOffer : nullptr] {
            if (left != nullptr && sOffer == left)
                sOffer.reset();
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
    // One that died over the window has not left it, and the toolkit takes the next one for the same.
    if (isNew && event.type() == QEvent::DragMove)
        Enter(window, drop);
    if (event.type() == QEvent::DragEnter) {
        DeliverAs(window, static_cast<QDragEnterEvent&>(event));
    } else if (event.type() == QEvent::DragMove) {
        DeliverAs(window, static_cast<QDragMoveEvent&>(event));
    } else if (!HoldBack(window, drop)) {
        if (sOffer->IsLate())
            beep();
        DeliverAs(window, drop);
        sOffer.reset();
    }
    return true;
}

} // namespace kits::ForeignDrag
