// SPDX-License-Identifier: MIT
#include "kits/interface/FilePanel.h"

#include "kits/application/MainThread.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/core/WindowKeys.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

#include <utility>

namespace {

/// The toolkit's dialog asks in a nested loop whether to replace a file.
class SaveDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    void accept() override
    {
        const kits::NestedLoop nested([this] {
            for (QMessageBox* question : findChildren<QMessageBox*>())
                question->reject();
        });
        QFileDialog::accept();
    }
};

QString sLastFolder;

} // namespace

/// The toolkit's dialog. If its window goes first, the window deletes it.
class BFilePanel::Dialog {
public:
    Dialog(const BFilePanel& panel, QWidget* parent)
        : fWidget(new SaveDialog(parent, kits::ToText(panel.fTitle.c_str())))
    {
        fWidget->setAcceptMode(QFileDialog::AcceptSave);
        fWidget->setFileMode(QFileDialog::AnyFile);
        fWidget->setDefaultSuffix(kits::ToText(panel.fSuffix.c_str()));
        fWidget->setNameFilter(QString::fromStdString(panel.fKind + " (*." + panel.fSuffix + ")"));
        fWidget->setDirectory(QDir(sLastFolder).exists() && !sLastFolder.isEmpty() ? sLastFolder : QDir::homePath());
    }
    ~Dialog()
    {
        // Code of its own events may be on the stack.
        if (fWidget != nullptr) {
            fWidget->disconnect();
            fWidget->hide();
            fWidget->deleteLater();
        }
    }

    QFileDialog* Widget() const { return fWidget; }

private:
    QPointer<SaveDialog> fWidget;
};

BFilePanel::BFilePanel(const char* title, const char* kind, const char* suffix)
    : fTitle(title)
    , fKind(kind)
    , fSuffix(suffix)
{
}

BFilePanel::~BFilePanel() = default;

bool BFilePanel::IsShowing() const
{
    return fDialog != nullptr && fDialog->Widget() != nullptr && fDialog->Widget()->isVisible();
}

void BFilePanel::Show(const char* name, BWindow* above, std::function<void(const std::string&)> chosen)
{
    if (IsShowing()) {
        fDialog->Widget()->raise();
        fDialog->Widget()->activateWindow();
        return;
    }
    fDialog = std::make_unique<Dialog>(*this, above != nullptr ? kits::WindowWidget(above) : nullptr);
    QFileDialog* const widget = fDialog->Widget();
    widget->selectFile(kits::ToText(name));
    QObject::connect(widget, &QFileDialog::rejected, widget, [this] { fDialog.reset(); });
    QObject::connect(widget, &QFileDialog::accepted, widget, [this, widget, call = std::move(chosen)] {
        const QStringList files = widget->selectedFiles();
        const std::unique_ptr<Dialog> ended = std::move(fDialog);
        sLastFolder = widget->directory().absolutePath();
        if (!files.isEmpty())
            call(files.first().toStdString());
    });
    widget->show();
    kits::WindowKeys::Watch(*widget);
}
