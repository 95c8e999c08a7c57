// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QScreen>
#include <QWidget>

#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// The window of a desktop, for the tests on a desktop:
///   desktop_window accept|refuse typed|untyped
/// covers the screen with one colour, #305070, below all other windows. It accepts every drag, as desktops do that make
/// a note or a file of every drop, or refuses every one. "typed" declares it a desktop; "untyped" only keeps it below
/// all windows, without a window manager. It prints "entered" and "left" for a drag, and "dropped" and the formats for
/// a drop.

namespace {

void Tell(const QString& line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

class DesktopWindow : public QWidget {
public:
    DesktopWindow(bool accepts, bool isTyped)
        : fAccepts(accepts)
    {
        setWindowTitle(QStringLiteral("Desktop window"));
        setAcceptDrops(true);
        setStyleSheet(QStringLiteral("background: #305070"));
        if (!isTyped)
            setWindowFlags(Qt::X11BypassWindowManagerHint | Qt::WindowStaysOnBottomHint);
        setGeometry(QGuiApplication::primaryScreen()->geometry());
        if (isTyped)
            SetType();
    }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override
    {
        Tell(QStringLiteral("entered"));
        event->setAccepted(fAccepts);
    }
    void dragMoveEvent(QDragMoveEvent* event) override { event->setAccepted(fAccepts); }
    void dragLeaveEvent(QDragLeaveEvent*) override { Tell(QStringLiteral("left")); }
    void dropEvent(QDropEvent* event) override
    {
        Tell(QStringLiteral("dropped ") + event->mimeData()->formats().join(QLatin1Char(' ')));
        event->acceptProposedAction();
    }

private:
    /// The toolkit would give it the type of a normal window.
    void SetType()
    {
        xcb_connection_t* const server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        const auto atom = [server](std::string_view name) {
            xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(
                server, xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr);
            const xcb_atom_t value = reply->atom;
            std::free(reply);
            return value;
        };
        const xcb_atom_t type = atom("_NET_WM_WINDOW_TYPE_DESKTOP");
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(winId()),
                            atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &type);
    }

    bool fAccepts;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList words = QApplication::arguments().mid(1);
    const bool accepts = words.value(0) == QLatin1String("accept");
    const bool isTyped = words.value(1) == QLatin1String("typed");
    if (words.size() != 2 || (!accepts && words[0] != QLatin1String("refuse")) ||
        (!isTyped && words[1] != QLatin1String("untyped"))) {
        std::fprintf(stderr, "usage: %s accept|refuse typed|untyped\n", argv[0]);
        return 2;
    }
    DesktopWindow window(accepts, isTyped);
    window.show();
    // A window that no manager keeps below comes to the top when it is shown.
    window.lower();
    return QApplication::exec();
}
