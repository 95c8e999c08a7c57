// SPDX-License-Identifier: MIT
#include "src/app/ReadCommand.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "src/app/ReadFormat.h"
#include "src/app/Stores.h"
#include "src/sampling/SourceTable.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

/// Receives samples in place of the charts.
class Reader : public BApplication {
public:
    explicit Reader(const CommandLine& line)
        : BApplication(signature)
        , fSamplesLeft(line.samples)
        , fInterval(line.interval)
        , fJson(line.json)
    {
    }

    int ExitStatus() const { return fExitStatus; }

    void ReadyToRun() override
    {
        fSampler = std::make_unique<Sysinfo>(kHistory);
        if (fSampler->NodesToKeep() < 2) {
            // A history of one has no deltas, and would never send a sample.
            fSampler->SetNodesToKeep(2);
        }
        if (fInterval > 0)
            fSampler->SetSamplingDelay(fInterval);
        for (const SourceKey& key : AllSources(fSampler->Info().cpu_count))
            fSources.emplace_back(key.target, key.flags);
        fSampler->AddMessenger(BMessenger(this));
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what != MSG_SYSINFO_SAMPLE)
            BApplication::MessageReceived(message);
        else if (fSamplesLeft > 0)
            PrintSample();
    }

    bool QuitRequested() override
    {
        fSampler.reset();
        return true;
    }

private:
    static constexpr int16 kHistory = 10;

    void PrintSample()
    {
        bigtime_t time = 0;
        std::vector<Reading> readings;
        {
            Sysinfo::Autolock lock(fSampler.get());
            const SysinfoNode* node = fSampler->NewestNode();
            if (node == nullptr)
                return;
            time = node->Time();
            readings.reserve(fSources.size());
            for (ValueProvider& source : fSources)
                readings.push_back(Read(source, node));
        }

        const std::string text = fJson ? ReadingsAsJson(time, readings) : ReadingsAsTable(readings);
        const bool first = !std::exchange(fPrinted, true);
        if ((!fJson && !first && std::fputc('\n', stdout) == EOF) ||
            std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
            std::fprintf(stderr, "qel: cannot write the samples: %s\n", std::strerror(errno));
            fExitStatus = 1;
            fSamplesLeft = 0;
        } else {
            --fSamplesLeft;
        }
        if (fSamplesLeft == 0)
            PostMessage(B_QUIT_REQUESTED);
    }

    Reading Read(ValueProvider& source, const SysinfoNode* node)
    {
        Reading reading{source.Target(), source.Flags(), ValueProvider::Name(source.Target(), source.Flags()), 0, {}};
        char caption[ValueProvider::kValueStringLength];
        // Both the value and its caption advance the smoothing, which must advance once.
        ValueProvider copy = source;
        copy.GetValueString(caption, fSampler.get(), node);
        reading.caption = caption;
        reading.fraction = source.Value(fSampler.get(), node);
        return reading;
    }

    int32 fSamplesLeft;
    bigtime_t fInterval;
    bool fJson;
    bool fPrinted = false;
    int fExitStatus = 0;
    std::unique_ptr<Sysinfo> fSampler;
    std::vector<ValueProvider> fSources;
};

} // namespace

int RunReadCommand(const CommandLine& line)
{
    Reader reader(line);
    Stores stores(Stores::Mode::kReadOnly);
    reader.Run();
    return reader.ExitStatus();
}
