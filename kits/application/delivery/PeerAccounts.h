// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Token.h"
#include "kits/kernel/Bounds.h"

#include <array>
#include <functional>
#include <mutex>
#include <unordered_map>

namespace kits {

/// Resources of this process that other processes can use up. The rows are those of Bounds.h.
enum class Resource : uint8 {
    kConnections,   ///< to us
    kLinks,         ///< from us
    kIncomplete,    ///< received bytes of messages that are not complete yet
    kUnsent,        ///< bytes that wait to be sent
    kUnhandled,     ///< messages that wait for the main thread or are being handled there
    kUnhandledBytes ///< of those messages
};
inline constexpr size_t kCountResources = 6;

/// Counts what each other process has claimed from this one, and what all have claimed together, and refuses claims
/// beyond the limits. The claimant holds a PeerClaim as long as it uses the claimed resource. Any thread.
class PeerAccounts {
public:
    /// The limits of one resource.
    struct Row {
        size_t ofAProcess;
        size_t inAll;
        size_t share; ///< guaranteed to a process even if the others have used up the rest
    };
    using Table = std::array<Row, kCountResources>;
    /// The table of Bounds.h, by Resource.
    static const Table kTable;

    /// @param onRoom  called when something was released after somebody found no room. On any thread, which may hold
    ///                any mutex: it must not make or release a claim
    explicit PeerAccounts(std::function<void()> onRoom, const Table& table = kTable)
        : fOnRoom(std::move(onRoom))
        , fTable(table)
    {
    }

    /// Returns how much more a process may claim now.
    size_t Room(team_address process, Resource resource) const;
    /// Returns whether a process may claim this much more now. If not, the next release calls `onRoom`.
    bool HasRoom(team_address process, Resource resource, size_t amount);
    /// For tests, as CountProcesses().
    size_t Used(team_address process, Resource resource) const;
    size_t UsedByAll(Resource resource) const;
    /// Returns the number of processes that have claimed anything.
    size_t CountProcesses() const;

private:
    friend class PeerClaim;

    using Amounts = std::array<size_t, kCountResources>;

    static size_t At(Resource resource) { return static_cast<size_t>(resource); }
    // Called with the mutex held.

    size_t UsedBy(team_address process, Resource resource) const;
    size_t RoomFor(size_t used, Resource resource) const;
    bool Change(team_address process, Resource resource, size_t before, size_t after);

    const std::function<void()> fOnRoom;
    const Table fTable;
    mutable std::mutex fMutex; ///< guards the members below; a leaf
    std::unordered_map<team_address, Amounts> fUsed;
    Amounts fUsedByAll = {};
    bool fIsSomebodyWaiting = false;
};

/// One process's claim of one resource, for one purpose; the destructor releases it. One thread at a time.
class PeerClaim {
public:
    /// A claim of nothing.
    PeerClaim() = default;
    PeerClaim(PeerAccounts* accounts, team_address process, Resource resource)
        : fAccounts(accounts)
        , fProcess(process)
        , fResource(resource)
    {
    }
    PeerClaim(PeerClaim&& other) noexcept { Swap(&other); }
    PeerClaim& operator=(PeerClaim&& other) noexcept;
    ~PeerClaim() { Resize(0); }

    /// Claims this amount in all from now on. A smaller amount is always possible.
    /// @return false if there is no room: then the claim is unchanged, and the next release calls `onRoom`
    bool Resize(size_t amount);
    [[nodiscard]] size_t Amount() const { return fAmount; }
    [[nodiscard]] team_address Process() const { return fProcess; }

private:
    void Swap(PeerClaim* other) noexcept;

    PeerAccounts* fAccounts = nullptr;
    team_address fProcess = 0;
    size_t fAmount = 0;
    Resource fResource = Resource::kConnections;
};

/// One message of another process that the main thread has not handled yet.
struct PeerWork {
    PeerClaim message;
    PeerClaim bytes;
};

} // namespace kits
