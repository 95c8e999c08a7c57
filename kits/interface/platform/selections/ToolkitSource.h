// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <QMimeData>
#include <QPointer>

namespace kits {

/// Data through the toolkit's public calls, which answer at once if the platform keeps all data in this process. With a
/// toolkit that WaylandSource does not know, each form waits for up to a second. Main thread.
class ToolkitSource : public SelectionSource {
public:
    /// @param data  may be destroyed before this object
    explicit ToolkitSource(const QMimeData& data)
        : fData(&data)
    {
    }

    void AskOffers(std::function<void(Offers)> answer) override;
    void Ask(const SelectionForm& form, std::function<void(Data)> answer) override;

protected:
    /// Null once the data are gone.
    const QMimeData* Offered() const { return fData; }

private:
    QPointer<const QMimeData> fData;
};

} // namespace kits
