#include "kits/interface/Clipboard.h"

#include "kits/application/MainThread.h"
#include "kits/application/MessagePrivate.h"
#include "kits/application/Messenger.h"
#include "kits/interface/View.h"
#include "kits/interface/dragging/DropMessage.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kits {

bool CopyFrom(BView* view)
{
    BMessage message;
    if (!view->CopyRequested(&message))
        return false;
    QGuiApplication::clipboard()->setMimeData(DropMessage::Encode(message).release());
    return true;
}

bool PasteOnto(BView* view)
{
    BPoint where;
    if (!view->PasteRequested(&where))
        return false;
    const std::unique_ptr<BMessage> message = ClipboardMessage();
    if (message == nullptr)
        return false;
    MessageAccess::SetDropped(*message, view->ConvertToScreen(where), BPoint());
    return BMessenger(view).SendMessage(message.get()) == B_OK;
}

std::unique_ptr<BMessage> ClipboardMessage()
{
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    std::unique_ptr<BMessage> message = data != nullptr ? DropMessage::Decode(*data) : nullptr;
    // Archives are for shelves, and come there with the pointer only.
    return message != nullptr && message->what != B_ARCHIVED_OBJECT ? std::move(message) : nullptr;
}

} // namespace kits
