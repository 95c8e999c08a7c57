// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/Frame.h"
#include "kits/kernel/FileDescriptor.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/fuzz/Script.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

/// Carries out an input as a script, if it is not too long, and checks that no file descriptor stays open.
/// @tparam Run  has Step(Script*) and Finish()
template <class Run> int RunScript(const uint8_t* data, size_t size, size_t longest)
{
    if (size > longest)
        return 0;
    // The system gives the lowest free number.
    const auto next = [] { return kits::FileDescriptor(dup(STDERR_FILENO)).Get(); };
    const int before = next();
    {
        Script script(TextOf(data, size));
        Run run;
        while (!script.IsOver())
            run.Step(&script);
        run.Finish();
    }
    Expect(next() == before);
    return 0;
}

/// Receives up to this many bytes and hands over the complete frames; none may be broken.
/// @return false if there was nothing to receive
template <class Take>
bool ReceiveFrames(const kits::FileDescriptor& socket, size_t most, kits::FrameReader* reader, const Take& take)
{
    static char bytes[64 * 1024];
    const ssize_t size = socket.IsOpen() ? recv(socket.Get(), bytes, std::min(most, sizeof(bytes)), 0) : 0;
    if (size <= 0)
        return false;
    reader->Add({bytes, static_cast<size_t>(size)});
    kits::FrameKind kind;
    std::string_view content;
    kits::FrameReader::Result result;
    while ((result = reader->Next(&kind, &content)) == kits::FrameReader::Result::kFrame)
        take(kind, content);
    Expect(result == kits::FrameReader::Result::kNone);
    return true;
}
