// SPDX-License-Identifier: MIT
#pragma once

/// Holds an object's lock for a block. Null is allowed and does nothing. True if the lock is held.
/// @tparam T  has Lock(), which returns whether it has locked, and Unlock()
template <class T> class ScopedLock {
public:
    explicit ScopedLock(T* object)
        : fObject(object != nullptr && object->Lock() ? object : nullptr)
    {
    }
    ~ScopedLock()
    {
        if (fObject != nullptr)
            fObject->Unlock();
    }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;
    explicit operator bool() const { return fObject != nullptr; }

private:
    T* fObject;
};
