// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/Fetches.h"

#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "kits/kernel/Bounds.h"

#include <QStringDecoder>

#include <chrono>
#include <map>

namespace kits::Fetches {

namespace {

/// A fetch and its deadline.
struct Running {
    std::unique_ptr<SelectionFetch> fetch;
    std::unique_ptr<Timer> deadline;
};

std::map<uint64_t, Running> sRunning;
uint64_t sLast = 0;

/// Ends a fetch. Its code may be on the stack, so it is destroyed later.
void Retire(std::map<uint64_t, Running>::iterator over)
{
    over->second.deadline->Stop();
    RunOnMainThread([gone = std::make_shared<Running>(std::move(over->second))] {});
    sRunning.erase(over);
}

} // namespace

uint64_t Start(std::unique_ptr<SelectionSource> source, std::vector<SelectionForm> wanted, SelectionFetch::Use use,
               std::function<void(SelectionFetch::State)> ended)
{
    if (sRunning.size() >= bounds::kMostFetches) {
        ended(SelectionFetch::State::kNothing);
        return 0;
    }
    const uint64_t number = ++sLast;
    Running& running = sRunning[number];
    running.fetch = std::make_unique<SelectionFetch>(std::move(source), std::move(wanted), std::move(use),
                                                     [number, ended = std::move(ended)](SelectionFetch::State state) {
                                                         const auto over = sRunning.find(number);
                                                         if (over == sRunning.end())
                                                             return;
                                                         Retire(over);
                                                         ended(state);
                                                     });
    SelectionFetch* const fetch = running.fetch.get();
    running.deadline = std::make_unique<Timer>([fetch] { fetch->GiveUp(); });
    running.deadline->Start(std::chrono::microseconds(bounds::kLongestFetch).count(), false);
    fetch->Start();
    return sRunning.contains(number) ? number : 0;
}

void Cancel(uint64_t fetch)
{
    const auto found = sRunning.find(fetch);
    if (found != sRunning.end())
        Retire(found);
}

std::vector<SelectionForm> TextForms()
{
    constexpr size_t kMost = bounds::kMostForeignText;
    return {{"UTF8_STRING", kMost}, {"text/plain;charset=utf-8", kMost}, {"text/plain", kMost}, {"STRING", kMost}};
}

std::string TextOf(const std::string& data)
{
    QStringDecoder decode(QStringDecoder::Utf8);
    const QByteArrayView bytes(data.data(), static_cast<qsizetype>(data.size()));
    const QString text = decode(bytes);
    return (decode.hasError() ? QString::fromLatin1(bytes) : text).toUtf8().toStdString();
}

void CancelAll()
{
    sRunning.clear();
}

} // namespace kits::Fetches
