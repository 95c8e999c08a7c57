// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/ToolkitSource.h"

#include "kits/interface/platform/selections/DropMessage.h"

#include <QStringList>

namespace kits {

void ToolkitSource::AskOffers(std::function<void(Offers)> answer)
{
    std::vector<std::string> names;
    if (fData != nullptr)
        for (const QString& format : fData->formats())
            names.push_back(format.toStdString());
    answer(std::move(names));
}

void ToolkitSource::Ask(const SelectionForm& form, std::function<void(Data)> answer)
{
    std::string bytes;
    if (fData != nullptr)
        bytes = DropMessage::BytesOf(*fData, form.name);
    answer(bytes.empty() ? Data() : Data(std::move(bytes)));
}

} // namespace kits
