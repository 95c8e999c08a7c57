// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QColor>
#include <QDrag>
#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>

#include <cstdio>
#include <optional>

/// Another program to drag from, like an editor or a colour chooser, for the tests on a desktop:
///   drag_source NAME FORMAT FILE [FORMAT FILE]...
/// shows a window of this name. Its drags carry the files' content in these formats; a file for application/x-color
/// holds a colour's name, as #rrggbb. It prints "at X Y" for each place of the screen that a drag reaches, and "taken"
/// or "refused" when a drag ends.

namespace {

void Tell(const char* line)
{
    std::puts(line);
    std::fflush(stdout);
}

/// Sees the pointer's moves before the drag does.
class Watcher : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::MouseMove) {
            const QPoint place = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
            Tell(qPrintable(QStringLiteral("at %1 %2").arg(place.x()).arg(place.y())));
        }
        return false;
    }
};

using Content = QList<std::pair<QString, QByteArray>>;

class DragSource : public QLabel {
public:
    explicit DragSource(Content content)
        : QLabel(QStringLiteral("drag me"))
        , fContent(std::move(content))
    {
        setAlignment(Qt::AlignCenter);
        setFixedSize(160, 100);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override { fPressed = event->pos(); }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        if ((event->pos() - fPressed).manhattanLength() < QApplication::startDragDistance())
            return;
        auto* drag = new QDrag(this);
        drag->setMimeData(Data());
        Watcher watcher;
        // The filter installed last sees an event first, and the drag installs one when it begins.
        QTimer::singleShot(0, &watcher, [&watcher] { qApp->installEventFilter(&watcher); });
        const bool taken = drag->exec(Qt::CopyAction) == Qt::CopyAction;
        Tell(taken ? "taken" : "refused");
    }

private:
    QMimeData* Data() const
    {
        auto* mimeData = new QMimeData;
        for (const auto& [format, bytes] : fContent)
            if (format == QLatin1String("application/x-color"))
                mimeData->setColorData(QColor(QString::fromLatin1(bytes)));
            else
                mimeData->setData(format, bytes);
        return mimeData;
    }

    Content fContent;
    QPoint fPressed;
};

std::optional<Content> Read(const QStringList& arguments)
{
    Content content;
    for (qsizetype i = 0; i + 1 < arguments.size(); i += 2) {
        QFile file(arguments[i + 1]);
        if (!file.open(QIODevice::ReadOnly))
            return std::nullopt;
        content.append({arguments[i], file.readAll()});
    }
    return content;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const std::optional<Content> content = Read(arguments.mid(2));
    if (arguments.size() < 4 || arguments.size() % 2 != 0 || !content) {
        std::fprintf(stderr, "usage: %s NAME FORMAT FILE [FORMAT FILE]...\n", argv[0]);
        return 2;
    }
    DragSource source(*content);
    source.setWindowTitle(arguments[1]);
    source.show();
    return QApplication::exec();
}
