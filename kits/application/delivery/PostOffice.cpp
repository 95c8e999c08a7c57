// SPDX-License-Identifier: MIT
#include "kits/application/delivery/PostOffice.h"

#include "kits/application/EventLoop.h"
#include "kits/application/Looper.h"
#include "kits/application/MainThread.h"
#include "kits/application/delivery/ReplyWait.h"

#include <algorithm>
#include <utility>

namespace kits {

PostOffice& PostOffice::Get()
{
    // Never destroyed: threads may still post while the process ends.
    static PostOffice& office = *new PostOffice;
    return office;
}

token_t PostOffice::AddHandler(BHandler* handler)
{
    std::lock_guard lock(fMutex);
    fHandlers[++fLastToken].handler = handler;
    return fLastToken;
}

void PostOffice::MakeLooper(token_t token, BLooper* looper)
{
    std::lock_guard lock(fMutex);
    fLoopers[token].looper = looper;
    fHandlers[token].looper = token;
}

token_t PostOffice::AddReplyWait(std::shared_ptr<ReplyWait> wait, team_address team)
{
    std::lock_guard lock(fMutex);
    fReplyWaits[++fLastToken] = {std::move(wait), team};
    return fLastToken;
}

void PostOffice::FailReplyWaits(const std::function<bool(team_address)>& isFailed)
{
    std::vector<std::shared_ptr<ReplyWait>> failed;
    {
        std::lock_guard lock(fMutex);
        std::erase_if(fReplyWaits, [&](const auto& entry) {
            const bool isOver = isFailed(entry.second.team);
            if (isOver)
                failed.push_back(entry.second.wait);
            return isOver;
        });
    }
    for (const std::shared_ptr<ReplyWait>& wait : failed)
        wait->Settle(nullptr);
}

void PostOffice::SetApplication(token_t looper, std::string signature)
{
    std::lock_guard lock(fMutex);
    fApplication = looper;
    fSignature = std::move(signature);
}

token_t PostOffice::Application() const
{
    std::lock_guard lock(fMutex);
    return fApplication;
}

std::string PostOffice::Signature() const
{
    std::lock_guard lock(fMutex);
    return fSignature;
}

void PostOffice::Remove(token_t token)
{
    std::vector<Parcel> dropped;
    std::lock_guard lock(fMutex);
    if (fReplyWaits.erase(token) > 0)
        return;
    Drop([token](const Parcel& parcel) { return parcel.handler == token || parcel.looper == token; }, &dropped);
    fHandlers.erase(token);
    fLoopers.erase(token);
}

void PostOffice::SetLooper(token_t handler, token_t looper)
{
    std::lock_guard lock(fMutex);
    const auto found = fHandlers.find(handler);
    if (found == fHandlers.end() || found->second.looper == looper)
        return;
    found->second.looper = looper;
    // Waiting messages are for the old looper, and are dropped if the handler does not return to it in time.
    found->second.newest.clear();
}

void PostOffice::Start(token_t looper)
{
    {
        std::lock_guard lock(fMutex);
        const auto found = fLoopers.find(looper);
        if (found == fLoopers.end() || found->second.isStarted)
            return;
        found->second.isStarted = true;
        for (Parcel& parcel : found->second.held) {
            const Parcel* const place = &parcel;
            fQueue.push_back(std::move(parcel));
            const auto handler = fHandlers.find(fQueue.back().handler);
            if (handler == fHandlers.end())
                continue;
            for (auto& [code, waiting] : handler->second.newest)
                if (waiting == place)
                    waiting = &fQueue.back();
        }
        found->second.held.clear();
    }
    EventLoop::Wake();
}

bool PostOffice::Close(token_t looper)
{
    std::vector<Parcel> dropped;
    std::lock_guard lock(fMutex);
    const auto found = fLoopers.find(looper);
    if (found == fLoopers.end() || found->second.isClosed)
        return false;
    found->second.isClosed = true;
    Drop([looper](const Parcel& parcel) { return parcel.looper == looper; }, &dropped);
    return true;
}

status_t PostOffice::Post(token_t target, std::unique_ptr<BMessage>& message, std::unique_ptr<PeerWork>* work)
{
    std::shared_ptr<ReplyWait> wait;
    std::unique_ptr<BMessage> replaced;
    bool isQuitHeldBack = false;
    {
        std::lock_guard lock(fMutex);
        target = Resolve(target);
        const auto found = fHandlers.find(target);
        if (found == fHandlers.end()) {
            const auto foundWait = fReplyWaits.find(target);
            if (foundWait == fReplyWaits.end())
                return B_BAD_HANDLER;
            wait = std::move(foundWait->second.wait);
            fReplyWaits.erase(foundWait);
        } else {
            HandlerState& handler = found->second;
            LooperState* looper = OpenLooper(handler.looper);
            if (looper == nullptr)
                return B_BAD_HANDLER;
            const bool newestWins = message->IsNewestWins();
            if (newestWins) {
                for (const auto& [code, waiting] : handler.newest) {
                    if (code == message->what) {
                        replaced = std::exchange(waiting->message, std::move(message));
                        // The caller releases the older claim after it has released the mutex.
                        if (work != nullptr)
                            std::swap(waiting->work, *work);
                        return B_OK;
                    }
                }
            }
            // A quit of our own, for example after a signal, has room whatever others send.
            const bool isOwnQuit = work == nullptr && message->what == B_QUIT_REQUESTED;
            if (looper->countWaiting >= BLooper::kQueueCapacity && !isOwnQuit)
                return B_WOULD_BLOCK;
            ++looper->countWaiting;
            isQuitHeldBack = !looper->isStarted && message->what == B_QUIT_REQUESTED;
            // While the program asks something before it runs, it still answers another start at once.
            const bool isHeld = !looper->isStarted && message->what != B_SILENT_RELAUNCH;
            std::deque<Parcel>& queue = isHeld ? looper->held : fQueue;
            const uint32 code = message->what;
            queue.push_back({target, handler.looper, std::move(message)});
            if (work != nullptr)
                queue.back().work = std::move(*work);
            if (newestWins)
                handler.newest.emplace_back(code, &queue.back());
        }
    }
    if (wait != nullptr)
        wait->Settle(std::move(message));
    else if (isQuitHeldBack)
        RunAtOutermostLoop([] {}); // an open menu or alert must not delay a request to quit
    else
        EventLoop::Wake();
    return B_OK;
}

bool PostOffice::Exists(token_t handler) const
{
    std::lock_guard lock(fMutex);
    return fHandlers.contains(Resolve(handler));
}

bool PostOffice::IsReachable(token_t token) const
{
    std::lock_guard lock(fMutex);
    token = Resolve(token);
    const auto found = fHandlers.find(token);
    if (found == fHandlers.end())
        return fReplyWaits.contains(token);
    return OpenLooper(found->second.looper) != nullptr;
}

token_t PostOffice::LooperOf(token_t handler) const
{
    std::lock_guard lock(fMutex);
    const auto found = fHandlers.find(handler);
    return found == fHandlers.end() ? 0 : found->second.looper;
}

bool PostOffice::IsOpen(token_t looper) const
{
    std::lock_guard lock(fMutex);
    return OpenLooper(looper) != nullptr;
}

int32 PostOffice::CountWaiting(token_t looper) const
{
    std::lock_guard lock(fMutex);
    const auto found = fLoopers.find(looper);
    return found == fLoopers.end() ? 0 : found->second.countWaiting;
}

bool PostOffice::HasWaiting(token_t looper, uint32 what) const
{
    std::lock_guard lock(fMutex);
    return std::any_of(fQueue.begin(), fQueue.end(), [looper, what](const Parcel& parcel) {
        return parcel.handler == looper && parcel.message != nullptr && parcel.message->what == what;
    });
}

BHandler* PostOffice::HandlerAt(token_t token, BLooper** looper) const
{
    std::lock_guard lock(fMutex);
    const auto found = fHandlers.find(Resolve(token));
    const LooperState* const open = found == fHandlers.end() ? nullptr : OpenLooper(found->second.looper);
    if (looper != nullptr)
        *looper = open != nullptr ? open->looper : nullptr;
    return open != nullptr ? found->second.handler : nullptr;
}

BLooper* PostOffice::LooperAt(token_t token) const
{
    std::lock_guard lock(fMutex);
    const auto found = fLoopers.find(token);
    return found == fLoopers.end() ? nullptr : found->second.looper;
}

std::vector<token_t> PostOffice::RunningLoopers() const
{
    std::vector<token_t> tokens;
    std::lock_guard lock(fMutex);
    for (const auto& [token, state] : fLoopers)
        if (state.isStarted && !state.isClosed)
            tokens.push_back(token);
    return tokens;
}

uint64 PostOffice::BeginTurn()
{
    fPeerTurns.Begin();
    std::lock_guard lock(fMutex);
    return fFirstNumber + fQueue.size();
}

bool PostOffice::HasMessages() const
{
    std::lock_guard lock(fMutex);
    return !fQueue.empty();
}

bool PostOffice::HasOnlyStreams() const
{
    std::lock_guard lock(fMutex);
    const auto isStream = [](const Parcel& parcel) {
        return parcel.message == nullptr || parcel.message->IsNewestWins();
    };
    return !fQueue.empty() && std::all_of(fQueue.begin(), fQueue.end(), isStream);
}

bool PostOffice::DispatchNext(uint64 end)
{
    Parcel parcel;
    bool isDeliverable = false;
    while (!isDeliverable) {
        if (!TakeNext(end, &parcel, &isDeliverable))
            return false;
        if (!isDeliverable)
            parcel = Parcel();
    }
    // The main thread holds the interface lock, so neither can go between this look-up and the call.
    BLooper* looper;
    BHandler* handler = HandlerAt(parcel.handler, &looper);
    if (handler == nullptr)
        return true;
    const bool isFromOutside = parcel.work != nullptr;
    const team_address process = isFromOutside ? parcel.work->message.Process() : 0;
    const bigtime_t begun = isFromOutside ? system_time() : 0;
    // Nested loops dispatch within this dispatch.
    Parcel* const outer = std::exchange(fInDispatch, &parcel);
    const BMessage* const outerMessage = std::exchange(fMessageInDispatch, parcel.message.get());
    looper->DeliverNow(std::move(parcel.message), handler);
    fInDispatch = outer;
    fMessageInDispatch = outerMessage;
    if (isFromOutside)
        fPeerTurns.Add(process, system_time() - begun);
    return true;
}

std::unique_ptr<PeerWork> PostOffice::TakeWork(const BMessage& message)
{
    return &message == fMessageInDispatch ? std::move(fInDispatch->work) : nullptr;
}

bool PostOffice::TakeNext(uint64 end, Parcel* taken, bool* isDeliverable)
{
    std::lock_guard lock(fMutex);
    const auto isSkipped = [this](const Parcel& parcel) {
        return parcel.message == nullptr ||
               (parcel.work != nullptr && fPeerTurns.Waits(parcel.work->message.Process()));
    };
    while (!fQueue.empty() && fFirstNumber < end && fQueue.front().message == nullptr) {
        fQueue.pop_front();
        ++fFirstNumber;
    }
    const auto last =
        fQueue.begin() + static_cast<ptrdiff_t>(std::min<uint64>(end - std::min(end, fFirstNumber), fQueue.size()));
    const auto next = std::find_if_not(fQueue.begin(), last, isSkipped);
    if (next == last)
        return false;
    const auto handler = fHandlers.find(next->handler);
    *isDeliverable = handler != fHandlers.end() && handler->second.looper == next->looper;
    Forget(&*next);
    // In the middle of the queue this leaves an empty parcel, as dropping a message does.
    *taken = std::move(*next);
    if (next == fQueue.begin()) {
        fQueue.pop_front();
        ++fFirstNumber;
    }
    return true;
}

const PostOffice::LooperState* PostOffice::OpenLooper(token_t looper) const
{
    const auto found = fLoopers.find(looper);
    return found == fLoopers.end() || found->second.isClosed ? nullptr : &found->second;
}

void PostOffice::Forget(Parcel* parcel)
{
    const auto looper = fLoopers.find(parcel->looper);
    if (looper != fLoopers.end())
        --looper->second.countWaiting;
    const auto handler = fHandlers.find(parcel->handler);
    if (handler != fHandlers.end())
        std::erase_if(handler->second.newest, [parcel](const auto& entry) { return entry.second == parcel; });
}

template <class Matches> void PostOffice::Drop(const Matches& matches, std::vector<Parcel>* dropped)
{
    const auto dropFrom = [&](std::deque<Parcel>& queue) {
        for (Parcel& parcel : queue) {
            if (parcel.message == nullptr || !matches(parcel))
                continue;
            Forget(&parcel);
            dropped->push_back(std::move(parcel));
        }
    };
    dropFrom(fQueue);
    for (auto& [token, looper] : fLoopers)
        dropFrom(looper.held);
}

} // namespace kits
