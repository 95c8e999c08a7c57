#pragma once

#include "kits/interface/selections/SelectionFetch.h"

#include <QMimeData>
#include <QPointer>

namespace kits {

/// What the toolkit hands out itself. Every answer comes in the call that asks: for platforms that keep all data in
/// this process, and for a toolkit that WaylandSource does not know, which then waits for up to a second for each form.
/// Main thread.
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
