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

const LinkedResource* LinkedResource::Find(type_code type, const char* name)
{
    for (const LinkedResource* resource = sFirst; resource != nullptr; resource = resource->fNext)
        if (resource->fType == type && std::strcmp(resource->fName, name) == 0)
            return resource;
    return nullptr;
}

} // namespace kits

const void* BResources::LoadResource(type_code type, const char* name, size_t* size) const
{
    const kits::LinkedResource* const resource = name != nullptr ? kits::LinkedResource::Find(type, name) : nullptr;
    if (size != nullptr)
        *size = resource != nullptr ? resource->fSize : 0;
    return resource != nullptr ? resource->fData : nullptr;
}
