#include "kits/interface/CheckBox.h"

#include "kits/interface/controls/Content.h"
#include "kits/interface/controls/NarrowText.h"

#include <QCheckBox>
#include <QResizeEvent>
#include <QSignalBlocker>

namespace {

/// One whose letters are narrowed when it is made narrower than it asks for.
class NarrowingBox : public QCheckBox {
public:
    QSize sizeHint() const override { return kits::NarrowText::Natural(this, text(), QCheckBox::sizeHint()); }
    int NarrowestWidth() const
    {
        return Around() + kits::NarrowText::WidthOf(this, text(), kits::NarrowText::kNarrowest);
    }
    void Fit() { kits::NarrowText::Fit(this, text(), width() - Around()); }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QCheckBox::resizeEvent(event);
        Fit();
    }

private:
    int Around() const { return sizeHint().width() - kits::NarrowText::WidthOf(this, text(), QFont::Unstretched); }
};

} // namespace

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode,
                     uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags)
{
}

BCheckBox::~BCheckBox() = default;

void BCheckBox::AttachedToWindow()
{
    BControl::AttachedToWindow();
    // Once: on a page that comes back it keeps the width that the page gave it.
    if (!fHasGrown)
        GrowToPreferred();
    fHasGrown = true;
}

float BCheckBox::NarrowestWidth()
{
    QWidget* widget = EnsureWidget();
    widget->ensurePolished();
    return static_cast<float>(static_cast<NarrowingBox*>(widget)->NarrowestWidth() - 1);
}

void BCheckBox::SetValue(int32 value)
{
    BControl::SetValue(value == B_CONTROL_OFF ? B_CONTROL_OFF : B_CONTROL_ON);
}

QWidget* BCheckBox::MakeWidget()
{
    auto* box = new NarrowingBox;
    QObject::connect(box, &QCheckBox::clicked, fContent.get(), [this](bool checked) {
        StoreValue(checked ? B_CONTROL_ON : B_CONTROL_OFF);
        Invoke();
    });
    return box;
}

void BCheckBox::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* box = fContent->As<NarrowingBox>();
    const QSignalBlocker silent(box);
    if (box->text() != kits::ToLabel(Label())) {
        box->setText(kits::ToLabel(Label()));
        box->Fit();
    }
    box->setChecked(Value() != B_CONTROL_OFF);
}
