#include "kits/interface/Window.h"
#include "kits/interface/drawing/UpdateQueue.h"
#include "kits/interface/windows/WindowImpl.h"
#include "kits/interface/windows/WindowPane.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

status_t WriteAll(const char* path, const QByteArray& bytes)
{
    const int descriptor = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return kits::StatusFromErrno(errno);
    status_t status = B_OK;
    qsizetype written = 0;
    while (status == B_OK && written < bytes.size()) {
        const ssize_t count =
            write(descriptor, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count >= 0)
            written += count;
        else if (errno != EINTR)
            status = kits::StatusFromErrno(errno);
    }
    if (close(descriptor) != 0 && status == B_OK)
        status = kits::StatusFromErrno(errno);
    return status;
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
    const QPixmap picture = fImpl->fPane->grab();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (picture.isNull() || !picture.save(&buffer, format.constData()))
        return B_NO_MEMORY;
    return WriteAll(path, bytes);
}
