// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Alert.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QPushButton;

namespace kits {

/// The contents of an alert: picture, text, buttons.
class AlertWidget : public QWidget {
public:
    /// @param buttons  at least one; Escape presses the only one, wherever the focus is
    /// @param pressed  called with the index of the pressed button
    AlertWidget(const QString& text, const std::vector<std::string>& buttons, button_width width,
                button_spacing spacing, alert_type type, std::function<void(int)> pressed);

    QPushButton* Button(int index) const { return fButtons[static_cast<std::size_t>(index)]; }
    /// Makes closing this window answer the alert with its first button; the window stays open.
    void AnswerCloseOf(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLayout* LayOutButtons(button_width width, button_spacing spacing);

    std::function<void(int)> fPressed;
    std::vector<QPushButton*> fButtons;
};

} // namespace kits
