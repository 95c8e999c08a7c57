// SPDX-License-Identifier: MIT
#include "kits/interface/core/Drag.h"

#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Shelf.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/DragCourse.h"
#include "kits/interface/core/DragCursor.h"
#include "kits/interface/core/DragShape.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"
#include "kits/interface/drawing/PixelGrid.h"
#include "kits/interface/platform/DesktopColor.h"
#include "kits/interface/platform/Display.h"
#include "kits/interface/platform/selections/DropMessage.h"
#include "kits/interface/platform/selections/ForeignOffer.h"
#include "kits/interface/platform/x11/DesktopLayer.h"
#include "kits/support/Identity.h"

#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QWindow>

#include <memory>
#include <optional>

namespace kits::Drag {

namespace {

/// The next drag; the newest request counts.
std::unique_ptr<Request> sQueued;
/// The current drag out of this process.
std::unique_ptr<Request> sCurrent;
/// The message that is dragged over our windows; null until it is known.
std::unique_ptr<BMessage> sOver;
/// The last reported place of the drag.
struct Place {
    const WindowImpl* window = nullptr; ///< only to be compared
    BPoint where;
};
Place sPlace;
/// The offer of another program that drags over our windows.
QPointer<ForeignOffer> sForeign;
/// The course of our own drag, as long as the toolkit carries it out.
std::optional<DragCourse> sCourse;
DragCursor* sCursor = nullptr;

/// Carries a drag out in place of the toolkit, unless it is empty.
std::function<void(const Request&)> sRunner;

QPixmap PictureOf(const Request& request)
{
    if (request.bitmap != nullptr && request.bitmap->IsValid()) {
        const BRect bounds = request.bitmap->Bounds();
        // The picture must be visible: alpha in its pixels is no transparency, except for the magic colour.
        const int width = static_cast<int>(bounds.Width()) + 1;
        const int height = static_cast<int>(bounds.Height()) + 1;
        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        const auto* words = static_cast<const uint32*>(request.bitmap->Bits());
        for (int y = 0; y < height; y++) {
            auto* row = reinterpret_cast<uint32*>(image.scanLine(y));
            for (int x = 0; x < width; x++, words++)
                row[x] = *words == B_TRANSPARENT_MAGIC_RGBA32 ? 0 : *words | 0xFF000000;
        }
        return QPixmap::fromImage(image);
    }
    const PixelRect rect = ToPixels(request.rect);
    constexpr int32 kMaxSide = 2000;
    QPixmap picture(std::clamp(rect.Width(), 1, kMaxSide), std::clamp(rect.Height(), 1, kMaxSide));
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    // On any ground, one of the two colours stands out.
    painter.setPen(QColor(64, 64, 64));
    painter.drawRect(0, 0, picture.width() - 1, picture.height() - 1);
    painter.setPen(QColor(224, 224, 224));
    painter.drawRect(1, 1, picture.width() - 3, picture.height() - 3);
    return picture;
}

QObject* Source()
{
    // Not a widget, because widgets may go during a drag.
    static QObject source;
    return &source;
}

/// Receives keys while something is dragged out of a window without the focus, so that Escape ends that drag too.
class KeyboardHold {
public:
    KeyboardHold()
    {
        if (QGuiApplication::focusWindow() != nullptr)
            return;
        QWindow* from = nullptr;
        for (WindowImpl* window : WindowImpl::All())
            if (window->CanShow() &&
                window->fWindow->Bounds().Contains(window->fWindow->ConvertFromScreen(Pointer::Where())))
                from = window->fPane->windowHandle();
        if (from == nullptr)
            return;
        if (Display::IsX11())
            from = MakeEar();
        fWindow = from;
        if (!from->setKeyboardGrabEnabled(true))
            fWindow = nullptr;
    }
    ~KeyboardHold()
    {
        if (fWindow != nullptr)
            fWindow->setKeyboardGrabEnabled(false);
    }
    KeyboardHold(const KeyboardHold&) = delete;
    KeyboardHold& operator=(const KeyboardHold&) = delete;

private:
    /// If one of KWin's windows holds the keyboard, KWin takes it for the active window, and afterwards has no active
    /// window at all. So window managers do not manage this one. It must be shown to get the keyboard, so it lies
    /// beside the screen.
    QWindow* MakeEar()
    {
        fEar = std::make_unique<QWindow>();
        fEar->setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                       Qt::WindowDoesNotAcceptFocus);
        fEar->setGeometry(-1, -1, 1, 1);
        fEar->show();
        return fEar.get();
    }

    std::unique_ptr<QWindow> fEar;
    QPointer<QWindow> fWindow;
};

DragCourse::Taker TakerOf(const BMessage& message)
{
    if (message.what == B_ARCHIVED_OBJECT)
        return DragCourse::Taker::kDesktop;
    return DropMessage::ColorOf(message).has_value() ? DragCourse::Taker::kBareDesktop : DragCourse::Taker::kPrograms;
}

/// Carries out a drop on the desktop: the desktop takes a colour for good, and the source view of an archive is
/// notified.
void DropOnDesktop(const Request& request, BPoint where)
{
    if (const std::optional<rgb_color> color = DropMessage::ColorOf(request.message)) {
        DesktopColor::Change(*color);
        return;
    }
    BMessage message(B_DROPPED_ON_DESKTOP);
    kWhereField.Add(&message, where);
    kOffsetField.Add(&message, request.offset);
    request.replyTo.SendMessage(&message);
}

void RunDrag(const Request& request)
{
    auto* drag = new QDrag(Source());
    drag->setMimeData(DropMessage::Encode(request.message).release());
    drag->setPixmap(PictureOf(request));
    drag->setHotSpot(QPoint(ToPixel(request.offset.x), ToPixel(request.offset.y)));
    sCourse.emplace(TakerOf(request.message));
    const NestedLoop loop([] {
        sCourse->GiveUp();
        QDrag::cancel();
    });
    const KeyboardHold keyboard;
    const DragShape shape(drag->pixmap());
    DragCursor cursor(TakerOf(request.message), request.isFromDesktop);
    sCursor = &cursor;
    drag->exec(Qt::CopyAction);
    sCursor = nullptr;
    const std::optional<BPoint> dropOnDesktop = sCourse->DropOnDesktop();
    sCourse.reset();
    if (dropOnDesktop.has_value())
        DropOnDesktop(request, *dropOnDesktop);
}

void Start()
{
    std::unique_ptr<Request> request = std::move(sQueued);
    if (request == nullptr || Pointer::Buttons() == 0 || sCurrent != nullptr)
        return;
    sCurrent = std::move(request);
    Pointer::Moved(nullptr, Pointer::Where(), nullptr);
    if (sRunner)
        sRunner(*sCurrent);
    else
        RunDrag(*sCurrent);
    sCurrent = nullptr;
    // The toolkit has kept the pointer's events to itself meanwhile.
    Pointer::AskSystem();
}

/// Returns the shelf that accepts the dragged archive over this view, or null.
BShelf* ShelfFor(const BView* view, const BMessage& archive)
{
    // This process can move what it shows already without a shelf.
    if (sCurrent != nullptr)
        return nullptr;
    for (; view != nullptr; view = view->Parent()) {
        BShelf* const shelf = ViewImpl::Of(view).fShelf;
        if (shelf != nullptr && shelf->CanAddReplicant(&archive))
            return shelf;
    }
    return nullptr;
}

bool PutOnShelf(BShelf& shelf, BMessage* archive, BPoint where)
{
    BMessenger source;
    archive->FindMessenger(kSourceField, &source);
    archive->RemoveName(kSourceField);
    std::string identity;
    archive->FindString(kDragField, &identity);
    archive->RemoveName(kDragField);
    const DispatchScope scope;
    return shelf.AddReplicant(archive, shelf.View()->ConvertFromScreen(where), identity, source);
}

bool IsOurs(const QDropEvent& event)
{
    return sCurrent != nullptr && event.source() == Source();
}

/// The other program's message has arrived. Notifies the view under the pointer, as if the pointer entered it now.
void ForeignIsHere()
{
    if (sForeign == nullptr || sOver != nullptr)
        return;
    sOver = std::make_unique<BMessage>(*sForeign->Message());
    for (const WindowImpl* window : WindowImpl::All())
        if (window == sPlace.window)
            Pointer::Moved(window->fWindow, sPlace.where, sOver.get());
}

/// Sets the message that is dragged over our windows, or starts to fetch it.
void Look(const QDropEvent& event)
{
    if (IsOurs(event)) {
        sOver = std::make_unique<BMessage>(sCurrent->message); // including pointers
        return;
    }
    // The event's data are constant, but the object is ours.
    sForeign = const_cast<ForeignOffer*>(dynamic_cast<const ForeignOffer*>(event.mimeData()));
    if (sForeign == nullptr)
        return;
    sForeign->CallWhenHere(ForeignIsHere);
    if (sForeign->Want() == ForeignOffer::State::kHere)
        ForeignIsHere();
}

BPoint ScreenPoint(const WindowImpl& window, const QDropEvent& event)
{
    const QPoint point = window.fPane->mapToGlobal(event.position().toPoint());
    return {static_cast<float>(point.x()), static_cast<float>(point.y())};
}

} // namespace

void Queue(const BView& view, const BMessage& message, BRect rect, std::unique_ptr<BBitmap> bitmap, BPoint offset,
           BHandler* replyTo)
{
    auto request = std::make_unique<Request>();
    request->message = message;
    request->replyTo = BMessenger(replyTo != nullptr ? replyTo : &view);
    if (bitmap == nullptr) {
        request->rect = view.ConvertToScreen(rect);
        offset = Pointer::Where() - request->rect.LeftTop();
    }
    request->bitmap = std::move(bitmap);
    request->offset = offset;
    const BWindow* const window = view.Window();
    request->isFromDesktop = window != nullptr && WindowImpl::Of(window).fSettings.feel == B_DESKTOP_WINDOW_FEEL;
    sQueued = std::move(request);
    RunAtOutermostLoop(Start);
}

bool IsUnderWay()
{
    return sCurrent != nullptr;
}

void NoteEscape()
{
    if (sCourse.has_value())
        sCourse->GiveUp();
}

void NoteMove(BPoint where)
{
    if (sCursor != nullptr)
        sCursor->Moved(where);
}

void NoteRelease(BPoint where)
{
    using DesktopLayer::Ground;
    if (!sCourse.has_value())
        return;
    if (sCourse->Release(where, sCourse->IsForDesktop() ? DesktopLayer::GroundAt(where) : Ground::kProgram))
        QDrag::cancel();
}

bool Entered(const QDropEvent& event)
{
    sOver = nullptr;
    sPlace = {};
    Look(event);
    // If a window refuses here, the toolkit asks no further until the pointer enters it again.
    return sOver != nullptr || (sForeign != nullptr && sForeign->MayCome());
}

bool Over(WindowImpl& window, const QDropEvent& event)
{
    const BPoint where = ScreenPoint(window, event);
    sPlace = {&window, where};
    if (sOver == nullptr)
        Look(event);
    BWindow* const target = window.fWindow;
    if (sOver == nullptr)
        // A view may take it when it has arrived.
        return sForeign != nullptr && sForeign->IsComing() &&
               target->FindView(target->ConvertFromScreen(where)) != nullptr;
    Pointer::Moved(target, where, sOver.get());
    const BView* const view = target->FindView(target->ConvertFromScreen(where));
    if (sOver->what == B_ARCHIVED_OBJECT)
        return ShelfFor(view, *sOver) != nullptr;
    return view != nullptr;
}

void Left()
{
    Pointer::Moved(nullptr, Pointer::Where(), sOver.get());
    sOver = nullptr;
    sPlace = {};
    if (sForeign != nullptr)
        sForeign->Unwant();
}

bool Dropped(WindowImpl& window, const QDropEvent& event)
{
    sPlace = {};
    const std::unique_ptr<BMessage> message = std::move(sOver);
    const BPoint where = ScreenPoint(window, event);
    BView* const view = window.fWindow->FindView(window.fWindow->ConvertFromScreen(where));
    if (message == nullptr || view == nullptr)
        return false;
    if (message->what == B_ARCHIVED_OBJECT) {
        BShelf* const shelf = ShelfFor(view, *message);
        return shelf != nullptr && PutOnShelf(*shelf, message.get(), where);
    }
    const bool ours = IsOurs(event);
    MessageAccess::SetDropped(*message, where, ours ? sCurrent->offset : BPoint());
    BMessenger(view).SendMessage(message.get(), ours ? sCurrent->replyTo : BMessenger());
    return true;
}

void SetRunner(std::function<void(const Request&)> runner)
{
    sRunner = std::move(runner);
}

} // namespace kits::Drag
