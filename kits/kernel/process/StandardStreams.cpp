// SPDX-License-Identifier: MIT
#include "kits/kernel/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace kits {

void FillStandardStreams()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; stream++) {
        if (fcntl(stream, F_GETFD) != -1 || errno != EBADF)
            continue;
        // The lowest free number is this one: those below are taken.
        const int file = open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        if (file == -1)
            return;
    }
}

} // namespace kits
