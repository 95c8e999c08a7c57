// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class QLabel;

namespace kits {

/// A text with a field on its right that fills the rest: what text controls and menu fields are made of. The field is
/// centred on the height, has the focus, and is called by the text. A text that lacks room is set in narrower letters,
/// and shortened where these do not fit either.
class LabeledWidget : public QWidget {
public:
    /// @param field  owned from here
    explicit LabeledWidget(QWidget* field);

    QWidget* Field() const { return fField; }
    void SetLabel(const QString& label);
    /// @param divider  where the field begins, in pixels; below 0 it begins where the label ends
    void SetDivider(float divider);
    /// Where the field begins now.
    int Divider() const;
    /// The divider below which the label is shortened.
    int NarrowestLabelWidth() const;

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int LabelWidth() const;
    void LayOut();

    QWidget* fField;
    QLabel* fText;
    QString fLabel;
    float fDivider = -1;
};

} // namespace kits
