// SPDX-License-Identifier: MIT
#include "kits/interface/Clipboard.h"

#include "kits/application/MainThread.h"
#include "kits/application/Messenger.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/interface/View.h"
#include "kits/interface/platform/Selections.h"
#include "kits/interface/platform/selections/DropMessage.h"
#include "kits/interface/platform/selections/Fetches.h"

#include <QClipboard>
#include <QGuiApplication>

#include <memory>

namespace kits {

namespace {

/// Archives are for shelves, and reach them with the pointer only.
bool MayBePasted(const BMessage* message)
{
    return message != nullptr && message->what != B_ARCHIVED_OBJECT;
}

void DropOn(const BMessenger& target, BMessage& message)
{
    const DispatchScope scope;
    auto* const view = dynamic_cast<BView*>(target.Target(nullptr));
    BPoint where;
    if (view == nullptr || view->Window() == nullptr || !view->PasteRequested(&where))
        return;
    MessageAccess::SetDropped(message, view->ConvertToScreen(where), BPoint());
    target.SendMessage(&message);
}

} // namespace

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
    return view->PasteRequested(&where) &&
           FetchClipboard([target = BMessenger(view)](BMessage& message) { DropOn(target, message); });
}

bool FetchClipboard(std::function<void(BMessage&)> taken)
{
    if (const QMimeData* const data = Selections::AtHand(Selections::Name::kClipboard)) {
        const std::unique_ptr<BMessage> message = DropMessage::Decode(*data);
        if (!MayBePasted(message.get()))
            return false;
        taken(*message);
        return true;
    }
    std::unique_ptr<SelectionSource> source = Selections::SourceOf(Selections::Name::kClipboard);
    if (source == nullptr)
        return false;
    const auto fetched = std::make_shared<std::unique_ptr<BMessage>>();
    const auto use = [fetched](const SelectionForm& form, const std::string& data) {
        *fetched = DropMessage::Decode(form.name, data);
        return *fetched != nullptr;
    };
    const auto ended = [fetched, taken = std::move(taken)](SelectionFetch::State) {
        if (MayBePasted(fetched->get()))
            taken(**fetched);
        else
            beep();
    };
    Fetches::Start(std::move(source), DropMessage::Forms(), use, ended);
    return true;
}

} // namespace kits
