// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

/// The resources of the executable: named, typed bytes that were linked into it when it was built (CMake's qel_resource
/// links them). Any thread may read them.
class BResources {
public:
    /// @param type  exactly the resource's type
    /// @param size  if not null, set to the number of bytes
    /// @return the bytes, valid as long as the program runs; null if there is no such resource
    const void* LoadResource(type_code type, const char* name, size_t* size) const;
};

namespace kits {

/// One resource. Generated code has one static object for each; a later one with the same type and name is not found.
class LinkedResource {
public:
    LinkedResource(type_code type, const char* name, const void* data, size_t size);
    LinkedResource(const LinkedResource&) = delete;
    LinkedResource& operator=(const LinkedResource&) = delete;

private:
    friend class ::BResources;
    static const LinkedResource* Find(type_code type, const char* name);

    type_code fType;
    const char* fName;
    const void* fData;
    size_t fSize;
    const LinkedResource* fNext = nullptr;
};

} // namespace kits
