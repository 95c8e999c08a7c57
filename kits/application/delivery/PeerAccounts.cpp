// SPDX-License-Identifier: MIT
#include "kits/application/delivery/PeerAccounts.h"

#include <algorithm>
#include <utility>

namespace kits {

// In the order of Resource.
const PeerAccounts::Table PeerAccounts::kTable = {{
    {bounds::kMostConnectionsOfAProcess, bounds::kMostConnections, 0},
    {bounds::kMostLinksOfAProcess, bounds::kMostLinks, 0},
    {bounds::kMostIncompleteOfAProcess, bounds::kMostIncomplete, bounds::kShareOfBytes},
    {bounds::kMostUnsentOfAProcess, bounds::kMostUnsent, bounds::kShareOfBytes},
    {bounds::kMostUnhandledOfAProcess, bounds::kMostUnhandled, bounds::kShareOfMessages},
    {bounds::kMostUnhandledBytesOfAProcess, bounds::kMostUnhandledBytes, bounds::kShareOfBytes},
}};

size_t PeerAccounts::UsedBy(team_address process, Resource resource) const
{
    const auto found = fUsed.find(process);
    return found != fUsed.end() ? found->second[At(resource)] : 0;
}

size_t PeerAccounts::RoomFor(size_t used, Resource resource) const
{
    const Row& row = fTable[At(resource)];
    const size_t usedByAll = fUsedByAll[At(resource)];
    const size_t ofAll = row.inAll - std::min(row.inAll, usedByAll);
    const size_t ofShare = row.share - std::min(row.share, used);
    return std::min(row.ofAProcess - std::min(row.ofAProcess, used), std::max(ofAll, ofShare));
}

size_t PeerAccounts::Room(team_address process, Resource resource) const
{
    std::lock_guard lock(fMutex);
    return RoomFor(UsedBy(process, resource), resource);
}

bool PeerAccounts::HasRoom(team_address process, Resource resource, size_t amount)
{
    std::lock_guard lock(fMutex);
    const bool hasRoom = amount <= RoomFor(UsedBy(process, resource), resource);
    fIsSomebodyWaiting = fIsSomebodyWaiting || !hasRoom;
    return hasRoom;
}

size_t PeerAccounts::Used(team_address process, Resource resource) const
{
    std::lock_guard lock(fMutex);
    return UsedBy(process, resource);
}

size_t PeerAccounts::UsedByAll(Resource resource) const
{
    std::lock_guard lock(fMutex);
    return fUsedByAll[At(resource)];
}

size_t PeerAccounts::CountProcesses() const
{
    std::lock_guard lock(fMutex);
    return fUsed.size();
}

bool PeerAccounts::Change(team_address process, Resource resource, size_t before, size_t after)
{
    bool isRoomFound = false;
    {
        std::lock_guard lock(fMutex);
        const auto found = fUsed.try_emplace(process).first;
        size_t& used = found->second[At(resource)];
        const bool isAllowed = after <= before || after - before <= RoomFor(used, resource);
        if (isAllowed) {
            used = used - before + after;
            fUsedByAll[At(resource)] = fUsedByAll[At(resource)] - before + after;
            isRoomFound = after < before && std::exchange(fIsSomebodyWaiting, false);
        } else {
            fIsSomebodyWaiting = true;
        }
        if (std::all_of(found->second.begin(), found->second.end(), [](size_t amount) { return amount == 0; }))
            fUsed.erase(found);
        if (!isAllowed)
            return false;
    }
    if (isRoomFound)
        fOnRoom();
    return true;
}

PeerClaim& PeerClaim::operator=(PeerClaim&& other) noexcept
{
    PeerClaim taken(std::move(other));
    Swap(&taken);
    return *this;
}

bool PeerClaim::Resize(size_t amount)
{
    if (amount == fAmount)
        return true;
    if (fAccounts == nullptr || !fAccounts->Change(fProcess, fResource, fAmount, amount))
        return false;
    fAmount = amount;
    return true;
}

void PeerClaim::Swap(PeerClaim* other) noexcept
{
    std::swap(fAccounts, other->fAccounts);
    std::swap(fProcess, other->fProcess);
    std::swap(fAmount, other->fAmount);
    std::swap(fResource, other->fResource);
}

} // namespace kits
