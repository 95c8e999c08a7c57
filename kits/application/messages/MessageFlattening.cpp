// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/support/DataIO.h"

#include <algorithm>
#include <cstring>

namespace {

/// Reads `size` bytes, or up to the end. Missing bytes take no memory, whatever `size` says.
status_t ReadUpTo(BDataIO* stream, size_t size, std::string* bytes)
{
    constexpr size_t kMostAtOnce = 256 * 1024;
    while (bytes->size() < size) {
        const size_t had = bytes->size();
        bytes->resize(std::min(size, had + kMostAtOnce));
        const ssize_t got = stream->Read(bytes->data() + had, bytes->size() - had);
        bytes->resize(had + static_cast<size_t>(std::max<ssize_t>(got, 0)));
        if (got < 0)
            return static_cast<status_t>(got);
        if (got == 0)
            return B_BAD_VALUE;
    }
    return B_OK;
}

} // namespace

ssize_t BMessage::FlattenedSize() const
{
    std::string flat;
    const status_t status = kits::WriteMessage(*this, &flat);
    return status == B_OK ? static_cast<ssize_t>(flat.size()) : status;
}

status_t BMessage::Flatten(BDataIO* stream, ssize_t* size) const
{
    std::string flat;
    status_t status = stream == nullptr ? B_BAD_VALUE : kits::WriteMessage(*this, &flat);
    if (status != B_OK)
        return status;
    const ssize_t written = stream->Write(flat.data(), flat.size());
    if (written < 0)
        return static_cast<status_t>(written);
    if (static_cast<size_t>(written) != flat.size())
        return B_DEVICE_FULL;
    if (size != nullptr)
        *size = written;
    return B_OK;
}

status_t BMessage::Flatten(char* buffer, ssize_t size) const
{
    std::string flat;
    const status_t status = buffer == nullptr ? B_BAD_VALUE : kits::WriteMessage(*this, &flat);
    if (status != B_OK)
        return status;
    if (size < static_cast<ssize_t>(flat.size()))
        return B_NO_MEMORY;
    memcpy(buffer, flat.data(), flat.size());
    return B_OK;
}

status_t BMessage::Unflatten(BDataIO* stream)
{
    if (stream == nullptr)
        return B_BAD_VALUE;
    std::string flat;
    status_t status = ReadUpTo(stream, kits::kMessageHeadSize, &flat);
    if (status != B_OK)
        return status;
    const ssize_t size = kits::SizeOfMessage(flat);
    if (size < 0)
        return B_BAD_VALUE;
    status = ReadUpTo(stream, static_cast<size_t>(size), &flat);
    return status == B_OK ? kits::ReadMessage(flat, this) : status;
}

status_t BMessage::Unflatten(const char* buffer, ssize_t size)
{
    if (buffer == nullptr || size < 0)
        return B_BAD_VALUE;
    return kits::ReadMessage(std::string_view(buffer, static_cast<size_t>(size)), this);
}
