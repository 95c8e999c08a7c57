// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/threads/ThreadRecord.h"

#include <map>

namespace kits {

/// All living threads that have an id, oldest first. Never destroyed, because threads may outlive `main`.
struct ThreadTable {
    std::mutex mutex; ///< guards the members and ThreadRecord::fKilling; no other mutex is locked under it
    std::map<thread_id, std::shared_ptr<ThreadRecord>> threads;
    thread_id lastId = 0;

    [[nodiscard]] static ThreadTable& Get();
};

} // namespace kits
