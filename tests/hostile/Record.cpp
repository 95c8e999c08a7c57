// SPDX-License-Identifier: MIT
#include "tests/hostile/Record.h"

#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/TeamSocket.h"
#include "kits/support/TypeConstants.h"
#include "src/support/MessageCodes.h"
#include "tests/hostile/Door.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <list>
#include <map>

namespace {

constexpr int kMostOfAKind = 4;

/// Returns the code of the message in a frame, or the frame's kind.
uint32 KindOf(kits::FrameKind kind, std::string_view content)
{
    std::string_view flat;
    BMessage message;
    if (kind == kits::FrameKind::kMessage && kits::ReadMessageFrame(content, &flat) &&
        kits::ReadMessage(flat, &message) == B_OK)
        return message.what;
    return static_cast<uint32>(kind);
}

kits::FileDescriptor AskForSamples(const char* sampler)
{
    const Door door(sampler);
    const kits::Address receiver{kits::ThisTeam(), 2};
    BMessage connect(MSG_CONNECT);
    connect.AddData("Messenger", B_MESSENGER_TYPE, &receiver, sizeof(receiver));
    std::string flat;
    kits::WriteMessage(connect, &flat, false);
    kits::MessageFrame frame;
    frame.targets = {kits::kApplicationToken};
    kits::FileDescriptor socket = door.Connect();
    Door::SendAll(socket, kits::HelloFrame(kits::ThisTeam()) + kits::MessageFrameHead(frame, flat.size()) + flat);
    return socket;
}

} // namespace

int RecordFrames(const char* signature, const char* file, const char* sampler)
{
    kits::TeamFolder folder;
    kits::FileDescriptor listener;
    const kits::TeamFolder::Entry entry{signature, kits::ThisTeam()};
    if (folder.Open() != B_OK || kits::Listen(folder, entry, &listener) != B_OK) {
        std::fprintf(stderr, "hostile: cannot listen as %s\n", signature);
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    const kits::FileDescriptor samples = sampler != nullptr ? AskForSamples(sampler) : kits::FileDescriptor();
    struct Sender {
        kits::FileDescriptor socket;
        kits::FrameReader reader;
    };
    std::list<Sender> senders;
    std::map<uint32, int> counts;
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    while (!IsInputClosed()) {
        kits::FileDescriptor socket(accept4(listener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (socket.IsOpen())
            senders.push_back({std::move(socket), {}});
        for (auto i = senders.begin(); i != senders.end();) {
            std::string received;
            const bool isOpen = Door::Read(i->socket, &received);
            i->reader.Add(received);
            kits::FrameKind kind;
            std::string_view content;
            while (i->reader.Next(&kind, &content) == kits::FrameReader::Result::kFrame) {
                if (++counts[KindOf(kind, content)] > kMostOfAKind)
                    continue;
                const auto length = static_cast<uint32>(content.size() + 1);
                out.write(reinterpret_cast<const char*>(&length), sizeof(length));
                out.put(static_cast<char>(kind));
                out.write(content.data(), static_cast<std::streamsize>(content.size()));
            }
            i = isOpen ? std::next(i) : senders.erase(i);
        }
        Door::Wait(kits::FileDescriptor(), false);
    }
    for (const auto& [kind, count] : counts)
        std::printf("%08X %c%c%c%c %d\n", kind, kind >> 24, kind >> 16 & 0xFF, kind >> 8 & 0xFF, kind & 0xFF, count);
    unlinkat(folder.Descriptor(), kits::TeamFolder::MakeName(entry).c_str(), 0);
    return out.good() ? 0 : 1;
}
