// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/PipeReader.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace kits {

PipeReader::PipeReader(int descriptor, size_t limit, std::function<void(std::optional<std::string>)> ended)
    : fDescriptor(descriptor)
    , fLimit(limit)
    , fEnded(std::move(ended))
    , fNotifier(new QSocketNotifier(descriptor, QSocketNotifier::Read))
{
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    QObject::connect(fNotifier, &QSocketNotifier::activated, fNotifier, [this] { Read(); });
}

PipeReader::~PipeReader()
{
    // The notifier may be the caller.
    fNotifier->setEnabled(false);
    fNotifier->disconnect();
    fNotifier->deleteLater();
}

void PipeReader::Read()
{
    // Limited per turn, because the owner may write as fast as this reads.
    std::array<char, 65536> bytes;
    const ssize_t size = read(fDescriptor.Get(), bytes.data(), bytes.size());
    if (size < 0) {
        if (errno != EAGAIN && errno != EINTR)
            End(false);
        return;
    }
    if (static_cast<size_t>(size) > fLimit - fBytes.size()) {
        End(false);
        return;
    }
    fBytes.append(bytes.data(), static_cast<size_t>(size));
    if (size == 0)
        End(true);
}

void PipeReader::End(bool isWhole)
{
    fNotifier->setEnabled(false);
    const auto ended = std::exchange(fEnded, nullptr);
    ended(isWhole ? std::optional(std::move(fBytes)) : std::nullopt);
}

} // namespace kits
