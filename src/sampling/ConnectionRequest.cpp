// SPDX-License-Identifier: MIT
#include "src/sampling/ConnectionRequest.h"

#include "kits/application/Message.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"

namespace {

bool Serve(const BMessage& request, Sysinfo* sampler)
{
    BMessenger messenger;
    if (request.FindMessenger("Messenger", &messenger) != B_OK)
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
