// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/kernel/Types.h"
#include "kits/support/List.h"
#include "kits/support/Locker.h"
#include "src/sampling/SysinfoNode.h"
#include "src/support/ScopedLock.h"

#include <limits>
#include <vector>

class OwnedPeriodicThread;

/// The sampler: reads the machine at regular intervals on a thread of its own, keeps the last samples with running sums
/// over them, and notifies every registered messenger of each new sample.
///
/// It is a list that contains the history, SysinfoNode pointers, newest first; it owns the nodes. While no messenger is
/// registered, it reads nothing. In steady state a round allocates nothing but its messages: the oldest node becomes
/// the newest.
///
/// A receiver in the same process gets MSG_SYSINFO_SAMPLE with "Sysinfo*", a pointer to this object; one in another
/// process gets the fields of GhostArchive(), which are assembled once per round, and sent once to each process,
/// however many receivers it has. In a receiver's queue, a newer sample replaces an older one. When the sampler is
/// destroyed, it sends MSG_SERVER_GONE to the remote receivers; when the last messenger turns out to be invalid,
/// MSG_NO_LISTENERS goes to the application.
///
/// Threads: any thread may make any call; calls take the lock themselves, except Attach(), Detach() and those of the
/// base class, which require it. The lock is taken after the interface lock, never before it; the sampler's thread
/// never takes the interface lock. A chart holds the lock from reading the newest node to its last use (Autolock does
/// this).
///
/// A ghost is the read-only copy that a receiver in another process builds from a sample message: no thread, no lock,
/// no messengers, and an empty history; its newest node is a ghost SysinfoNode from the same message.
class Sysinfo : public BList {
public:
    static constexpr bigtime_t kDefaultDelay = 200000;

    /// The values that files and messages may set; others are clamped (kDelayField, HoldNodesToKeep()).
    static constexpr bigtime_t kMinDelay = 10'000;
    static constexpr bigtime_t kMaxDelay = 5'000'000;
    static constexpr int16 kMaxNodesToKeep = 200;

    /// The maximum number of receivers in one process (the number that one frame to it can name), and in all other
    /// processes together.
    static constexpr int32 kMostReceiversOfATeam = 1024;
    static constexpr size_t kMostReceivers = 8192;

    /// A running sampler. Settings in the user's store ("Sysinfo" of prefs_user) take precedence over the argument.
    /// @param nodesToKeep  length of the history, at least 1; with 1 no sample is ever sent, because there is nothing
    ///                     to compare it with
    explicit Sysinfo(int16 nodesToKeep);

    /// A ghost. The message may contain anything; missing, short and long fields and values that no sampler produces
    /// are treated as by SysinfoNode. Ignores pointers in the message. Use it only if InitCheck() is B_OK.
    explicit Sysinfo(const BMessage* ghostArchive);

    /// Ends the thread, stores the settings in the user's store and tells remote receivers that it is gone.
    ~Sysinfo();

    Sysinfo(const Sysinfo&) = delete;
    Sysinfo& operator=(const Sysinfo&) = delete;

    /// B_OK, except for a ghost whose message had no whole "si:Body": B_BAD_VALUE.
    status_t InitCheck() const { return fInitStatus; }
    bool IsGhost() const { return fGhost; }

    /// Guards the history and the sums. The same thread may take it more than once. A ghost needs no lock: Lock()
    /// returns true and does nothing.
    bool Lock() const;
    void Unlock() const;

    /// Holds a sampler's lock for a block. Null is allowed and does nothing.
    typedef ScopedLock<const Sysinfo> Autolock;

    /// One round: takes a sample if anybody listens and sends it. The thread calls it; a caller without that thread (a
    /// test) may call it, too.
    void Sample();

    /// The newest node of the history, or null. Use it under the lock.
    SysinfoNode* NewestNode() const { return static_cast<SysinfoNode*>(FirstItem()); }

    /// Takes ownership of a node, puts it in front of the history and adds it to the sums.
    void Attach(SysinfoNode* node);
    /// Takes a node out of the history and the sums; it is the caller's then. Nothing if it isn't in the history. The
    /// counterpart of Attach(), though the sampler itself takes out only the oldest.
    void Detach(SysinfoNode* node);

    /// Registers a receiver of samples; an equal one is registered only once. The next round discovers and drops one
    /// that does not exist.
    /// @return B_ERROR if it was added and 0 if it was there already: swapped, and kept, because nobody checks it;
    ///         B_NO_MEMORY if no more are accepted
    status_t AddMessenger(const BMessenger& messenger);
    /// @return 0, or B_ENTRY_NOT_FOUND if no equal messenger is registered
    status_t RemoveMessenger(const BMessenger& messenger);
    int32 CountMessengers() const; ///< for tests

    /// Changes the time between two rounds, in microseconds; takes effect at once. The same value again does
    /// nothing. Any value is taken: kDelayField holds those from outside. 0 samples without a pause.
    void SetSamplingDelay(bigtime_t delay);
    bigtime_t SamplingDelay() const;

    /// The length of the history from the next round on.
    void SetNodesToKeep(int16 nodes);
    int16 NodesToKeep() const;

    /// Returns the possible length of a history nearest to the requested one.
    static int16 HoldNodesToKeep(int16 nodes);

    /// Adds "Delay" (int64, microseconds) and "NodesToKeep" (int16).
    status_t SavePrefsTo(BMessage* archive) const;
    /// Reads both if present, held to the permitted range; ignores a history of 0 or fewer nodes.
    void LoadPrefsFrom(const BMessage* archive);

    /// Adds "si:Body" (574 bytes) and "si:TRCPUTD" (8 bytes per processor), and the newest node's fields if there is
    /// one.
    void GhostArchive(BMessage* archive) const;

    /// Sums over exactly the nodes of the history, microseconds. Use them under the lock.
    bigtime_t SumElapsed() const { return fSumElapsed; }
    bigtime_t SumTotalActive() const { return fSumTotalActive; }
    /// 0 for an unknown processor.
    bigtime_t SumActive(int32 processor) const;
    const CounterDeltas& SumCounters() const { return fSumCounters; }
    /// Number of processors for which SumActive() is known.
    int32 CountSumActive() const { return static_cast<int32>(fSumActive.size()); }

    /// The figures read at the construction of the sampler; their processor count determines the size of everything
    /// kept per processor.
    const system_info& Info() const { return fInfo; }

private:
    void LaunchThread();
    template <class Step> void ChangeSums(const SysinfoNode& node, Step step);
    void SubtractFromSums(const SysinfoNode& node);
    SysinfoNode* TakeOldest();
    void Broadcast();
    bool HasListeners() const { return !fLocalMessengers.empty() || !fRemoteMessengers.empty(); }
    std::vector<BMessenger>& ListFor(const BMessenger& messenger);

    bigtime_t fDelay = kDefaultDelay;
    bigtime_t fSumElapsed = 0;
    bigtime_t fSumTotalActive = 0;
    std::vector<bigtime_t> fSumActive;
    std::vector<BMessenger> fLocalMessengers;
    std::vector<BMessenger> fRemoteMessengers;
    mutable BLocker fLock{"Sysinfo BLocker"};
    /// Deletes itself; ended with Die().
    OwnedPeriodicThread* fThread = nullptr;
    CounterDeltas fSumCounters;
    system_info fInfo;
    int16 fNodesToKeep;
    bool fGhost;
    status_t fInitStatus;
};

// The sampler's settings, in stores and messages.

inline const kits::Field<int64> kDelayField("Delay", Sysinfo::kMinDelay, Sysinfo::kMaxDelay, Sysinfo::kDefaultDelay,
                                            kits::Outside::kHeld);
/// Larger numbers are clamped to Sysinfo::kMaxNodesToKeep; smaller ones count as absent.
inline const kits::Field<int16> kNodesToKeepField("NodesToKeep", 1, std::numeric_limits<int16>::max());

/// The settings above, in the user's store.
inline const kits::Field<BMessage> kSamplerSettingsField("Sysinfo");
/// In a sample to the same process.
inline const kits::Field<void*> kSamplerField("Sysinfo*");

/// The work of the sampler's thread: one round.
void Sampler(Sysinfo* sampler);

/// The sampler of this application; null in a process without one (the host of the desktop's charts), before the
/// application is ready and after it has quit. The application sets it on the main thread.
extern Sysinfo* application_sampler;
