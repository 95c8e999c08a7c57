// SPDX-License-Identifier: MIT
#include "kits/interface/View.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"
#include "kits/storage/ReplaceFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>

namespace {

status_t Encode(const QPixmap& picture, const char* format, QByteArray* bytes)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    return !picture.isNull() && picture.save(&buffer, format) ? B_OK : B_NO_MEMORY;
}

} // namespace

status_t BWindow::SavePicture(const char* path)
{
    if (path == nullptr || *path == '\0')
        return B_BAD_VALUE;
    const QByteArray suffix = QFileInfo(QString::fromUtf8(path)).suffix().toLatin1().toLower();
    const QByteArray format = suffix.isEmpty() ? QByteArray("png") : suffix;
    if (!QImageWriter::supportedImageFormats().contains(format))
        return B_BAD_VALUE;

    kits::UpdateQueue::DrawWindow(*fImpl);
    QByteArray bytes;
    const status_t status = Encode(fImpl->fPane->grab(), format.constData(), &bytes);
    if (status != B_OK)
        return status;
    return kits::ReplaceFile(path, bytes.constData(), static_cast<size_t>(bytes.size()));
}

status_t BView::GetPicture(std::string* png) const
{
    if (fImpl->fPane == nullptr || fImpl->fWindow == nullptr)
        return B_NO_INIT;
    kits::UpdateQueue::DrawWindow(kits::WindowImpl::Of(fImpl->fWindow));
    QByteArray bytes;
    const status_t status = Encode(fImpl->fPane->grab(), "png", &bytes);
    if (status == B_OK)
        png->assign(bytes.constData(), static_cast<size_t>(bytes.size()));
    return status;
}
