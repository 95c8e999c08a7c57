// SPDX-License-Identifier: MIT
#include "kits/application/Looper.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Message.h"
#include "kits/application/delivery/Delivery.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/kernel/Bounds.h"

#include <algorithm>

using kits::InterfaceLock;
using kits::PostOffice;

static_assert(BLooper::kQueueCapacity == kits::bounds::kMostQueued); // as in Message.cpp

BLooper::BLooper(const char* name)
    : BHandler(name)
    , fHandlers{this}
{
    fLooper = this;
    PostOffice::Get().MakeLooper(Token(), this);
}

BLooper::~BLooper()
{
    const kits::KillShield shield;
    const kits::InterfaceLocker locker;
    PostOffice::Get().Close(Token());
    while (fHandlers.size() > 1)
        RemoveHandler(fHandlers.back());
    fLooper = nullptr;
}

thread_id BLooper::Run()
{
    PostOffice::Get().Start(Token());
    return Thread();
}

void BLooper::Quit()
{
    const kits::token_t token = Token();
    if (!PostOffice::Get().Close(token))
        return;
    if (kits::IsMainThread() && kits::IsOutermost()) {
        delete this;
        return;
    }
    kits::RunAtOutermostLoop([token] { delete PostOffice::Get().LooperAt(token); });
}

bool BLooper::QuitRequested()
{
    return true;
}

status_t BLooper::PostMessage(uint32 code, BHandler* handler, BHandler* replyTo)
{
    const BMessage message(code);
    return PostMessage(&message, handler, replyTo);
}

status_t BLooper::PostMessage(const BMessage* message, BHandler* handler, BHandler* replyTo)
{
    if (message == nullptr)
        return B_BAD_VALUE;
    const kits::token_t target = handler != nullptr ? handler->Token() : Token();
    if (handler != nullptr && PostOffice::Get().LooperOf(target) != Token())
        return B_MISMATCHED_VALUES;
    return kits::DeliverCopy({kits::ThisTeam(), target}, *message, kits::AddressOf(replyTo), false);
}

void BLooper::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (message->what == B_QUIT_REQUESTED && handler == this) {
        if (QuitRequested())
            Quit();
    } else {
        handler->MessageReceived(message);
    }
}

void BLooper::DeliverNow(std::unique_ptr<BMessage> message, BHandler* handler)
{
    if (message->what == B_QUIT_REQUESTED && handler == this && !kits::IsOutermost()) {
        // Quitting destroys objects, so the question is asked only when no code of theirs is on the stack. A
        // std::function must be copyable.
        struct Kept {
            std::unique_ptr<BMessage> message;
            std::unique_ptr<kits::PeerWork> work;
        };
        const auto kept = std::make_shared<Kept>(Kept{nullptr, PostOffice::Get().TakeWork(*message)});
        kept->message = std::move(message);
        ++fCountHeldBack;
        kits::RunAtOutermostLoop([kept, token = Token()] {
            BLooper* looper = PostOffice::Get().LooperAt(token);
            if (looper == nullptr || !PostOffice::Get().IsOpen(token))
                return;
            --looper->fCountHeldBack;
            looper->DeliverNow(std::move(kept->message), looper);
        });
        return;
    }
    const kits::DispatchScope scope;
    fCurrent.push_back(message.get());
    DispatchMessage(message.get(), handler);
    fCurrent.pop_back();
}

bool BLooper::IsQuitRequestWaiting() const
{
    return fCountHeldBack > 0 || PostOffice::Get().HasWaiting(Token(), B_QUIT_REQUESTED);
}

BMessage* BLooper::CurrentMessage() const
{
    return fCurrent.empty() ? nullptr : fCurrent.back();
}

int32 BLooper::CountMessages() const
{
    return PostOffice::Get().CountWaiting(Token());
}

void BLooper::AddHandler(BHandler* handler)
{
    const kits::InterfaceLocker locker;
    if (handler == nullptr || handler->fLooper != nullptr)
        return;
    fHandlers.push_back(handler);
    handler->fLooper = this;
    PostOffice::Get().SetLooper(handler->Token(), Token());
}

bool BLooper::RemoveHandler(BHandler* handler)
{
    const kits::InterfaceLocker locker;
    const auto found = std::find(fHandlers.begin(), fHandlers.end(), handler);
    if (handler == this || found == fHandlers.end())
        return false;
    fHandlers.erase(found);
    handler->fLooper = nullptr;
    PostOffice::Get().SetLooper(handler->Token(), 0);
    return true;
}

status_t BLooper::LockWithTimeout(bigtime_t timeout)
{
    // Uses only the token: by the time the lock is held, this object may be gone.
    return InterfaceLock::Get().LockIf([token = Token()] { return PostOffice::Get().IsOpen(token); }, timeout);
}

void BLooper::Unlock()
{
    InterfaceLock::Get().Unlock();
}

thread_id BLooper::Thread() const
{
    return kits::MainThreadId();
}
