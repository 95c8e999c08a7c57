// SPDX-License-Identifier: MIT
#include "kits/application/TextFolding.h"

#include <QString>

std::string kits::FoldText(const std::string& text)
{
    // Folding may decompose a letter.
    const QString folded = QString::fromStdString(text).normalized(QString::NormalizationForm_C).toCaseFolded();
    return folded.normalized(QString::NormalizationForm_C).simplified().toStdString();
}
