// SPDX-License-Identifier: MIT
#include "tests/hostile/Door.h"

#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/TeamSocket.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

using kits::FileDescriptor;

Door::Door(const std::string& signature)
{
    if (fFolder.Open() == B_OK) {
        const std::vector<kits::TeamFolder::Entry> found = fFolder.Find(signature);
        fTeam = found.empty() ? 0 : found.front().team;
    }
    if (fTeam == 0) {
        std::fprintf(stderr, "hostile: nobody runs as %s\n", signature.c_str());
        std::exit(1);
    }
}

FileDescriptor Door::Connect() const
{
    FileDescriptor socket;
    kits::Connect(fFolder, fTeam, &socket);
    return socket;
}

FileDescriptor Door::Listen(kits::team_address name) const
{
    FileDescriptor socket;
    Leave(name);
    kits::Listen(fFolder, {"", name}, &socket);
    return socket;
}

void Door::Leave(kits::team_address name) const
{
    unlinkat(fFolder.Descriptor(), kits::TeamFolder::MakeName({"", name}).c_str(), 0);
}

kits::team_address Door::Name(unsigned number)
{
    return kits::ThisTeam() ^ number;
}

bool Door::Send(const FileDescriptor& socket, std::string_view* bytes)
{
    const ssize_t sent = send(socket.Get(), bytes->data(), bytes->size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0)
        return errno == EAGAIN || errno == EINTR;
    bytes->remove_prefix(static_cast<size_t>(sent));
    return true;
}

bool Door::SendAll(const FileDescriptor& socket, std::string_view bytes)
{
    while (true) {
        if (!Send(socket, &bytes))
            return false;
        if (bytes.empty())
            return true;
        if (!Read(socket) || IsInputClosed())
            return false;
        Wait(socket, true);
    }
}

bool Door::Read(const FileDescriptor& socket, std::string* received)
{
    char buffer[64 * 1024];
    ssize_t size;
    while ((size = recv(socket.Get(), buffer, sizeof(buffer), MSG_DONTWAIT)) > 0)
        if (received != nullptr)
            received->append(buffer, static_cast<size_t>(size));
    return size < 0 && (errno == EAGAIN || errno == EINTR);
}

void Door::Wait(const FileDescriptor& socket, bool forWriting)
{
    pollfd poller{socket.Get(), static_cast<short>(forWriting ? POLLIN | POLLOUT : POLLIN), 0};
    poll(&poller, socket.IsOpen() ? 1 : 0, socket.IsOpen() ? 100 : 1);
}

Attacker::~Attacker()
{
    std::printf("%lu %s\n", fCount, fWhat != nullptr ? fWhat : "");
}

bool IsInputClosed()
{
    pollfd poller{STDIN_FILENO, POLLIN, 0};
    return poll(&poller, 1, 0) != 0;
}

bool Attacker::IsOver() const
{
    return IsInputClosed() || access(("/proc/" + std::to_string(fDoor.Process())).c_str(), F_OK) != 0;
}

void Attacker::Count(const char* what)
{
    fWhat = what;
    if (fCount++ == 0) {
        std::puts("ready");
        std::fflush(stdout);
    }
}

std::string Question(kits::team_address name, kits::token_t token)
{
    std::string flat;
    kits::WriteMessage(BMessage('who?'), &flat, false);
    kits::MessageFrame frame;
    frame.sourceWaits = true;
    frame.replyTo = {name, token};
    frame.targets = {kits::kApplicationToken};
    return kits::MessageFrameHead(frame, flat.size()) + flat;
}
