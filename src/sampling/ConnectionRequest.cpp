// SPDX-License-Identifier: MIT
#include "src/sampling/ConnectionRequest.h"

#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"

namespace {

bool Serve(const BMessage& request, Sysinfo* sampler)
{
    BMessenger messenger;
    if (!kMessengerField.Find(request, &messenger))
        return false;
    if (request.what == MSG_CONNECT)
        return sampler != nullptr && sampler->AddMessenger(messenger) != B_NO_MEMORY;
    if (sampler != nullptr)
        sampler->RemoveMessenger(messenger);
    return true;
}

} // namespace

void AnswerConnectionRequest(BMessage* request, Sysinfo* sampler)
{
    BMessage reply(Serve(*request, sampler) ? 0 : kConnectionRefused);
    request->SendReply(&reply, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT);
}
