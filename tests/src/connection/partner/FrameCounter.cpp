// SPDX-License-Identifier: MIT
// A team that only listens: prints its address, and then for each message frame the number of its handlers and the code
// of its message, one line each on stdout. Ends with the first connection.

#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/Frame.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Errors.h"
#include "tests/support/BoundProcess.h"

#include <poll.h>
#include <sys/socket.h>

#include <cinttypes>
#include <cstdio>

namespace {

void Tell(std::string_view content)
{
    std::string_view flat;
    const auto frame = kits::ReadMessageFrame(content, &flat);
    BMessage message;
    if (frame && kits::ReadMessage(flat, &message) == B_OK)
        std::printf("%zu %08x\n", frame->targets.size(), message.what);
    else
        std::printf("broken\n");
    std::fflush(stdout);
}

} // namespace

int main()
{
    test::EndWithTest();
    kits::TeamFolder folder;
    kits::FileDescriptor listener;
    if (folder.Open() != B_OK || kits::Listen(folder, {"", kits::ThisTeam()}, &listener) != B_OK)
        return 1;
    std::printf("%016" PRIx64 "\n", static_cast<uint64_t>(kits::ThisTeam()));
    std::fflush(stdout);
    pollfd waiting{listener.Get(), POLLIN, 0};
    poll(&waiting, 1, -1);
    const kits::FileDescriptor socket(accept(listener.Get(), nullptr, nullptr));
    kits::FrameReader reader;
    char buffer[64 * 1024];
    ssize_t size;
    while ((size = recv(socket.Get(), buffer, sizeof(buffer), 0)) > 0) {
        reader.Add({buffer, static_cast<size_t>(size)});
        kits::FrameKind kind;
        std::string_view content;
        while (reader.Next(&kind, &content) == kits::FrameReader::Result::kFrame)
            if (kind == kits::FrameKind::kMessage)
                Tell(content);
    }
    return 0;
}
