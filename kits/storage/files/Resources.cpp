// SPDX-License-Identifier: MIT
#include "kits/storage/Resources.h"

#include <cstring>

namespace kits {

namespace {

// Set before any constructor runs, so that the order of constructors does not matter.
constinit const LinkedResource* sFirst = nullptr;

} // namespace

LinkedResource::LinkedResource(type_code type, const char* name, const void* data, size_t size)
    : fType(type)
    , fName(name)
    , fData(data)
    , fSize(size)
    , fNext(sFirst)
{
    sFirst = this;
}

} // namespace kits

const void* BResources::LoadResource(type_code type, const char* name, size_t* size) const
{
    const kits::LinkedResource* resource = name != nullptr ? kits::sFirst : nullptr;
    while (resource != nullptr && (resource->fType != type || std::strcmp(resource->fName, name) != 0))
        resource = resource->fNext;
    if (size != nullptr)
        *size = resource != nullptr ? resource->fSize : 0;
    return resource != nullptr ? resource->fData : nullptr;
}
