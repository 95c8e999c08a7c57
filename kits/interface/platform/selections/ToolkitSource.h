// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <QMimeData>
#include <QPointer>

namespace kits {

/// Data through the toolkit's public calls, which answer at once where the platform keeps all data in this process.
/// Under a toolkit that WaylandSource does not know, each form waits for up to a second. Main thread.
class ToolkitSource : public SelectionSource {
public:
    /// @param data  may go before this does
    explicit ToolkitSource(const QMimeData& data)
        : fData(&data)
    {
    }

    void AskOffers(std::function<void(Offers)> answer) override;
    void Ask(const SelectionForm& form, std::function<void(Data)> answer) override;

private:
    QPointer<const QMimeData> fData;
};

} // namespace kits
