// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSocketNotifier>

#include <unistd.h>

#include <cstdio>

// A desktop portal on the session's bus that knows one setting: how dark the desktop is. It starts with the value on
// the command line, and then takes each digit on stdin. It prints "ready" once it answers questions, and "asked" for
// each question. Further arguments are other names that it takes on the bus.

namespace {

constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";

void Say(const char* word)
{
    std::puts(word);
    std::fflush(stdout);
}

class Portal : public QDBusVirtualObject {
public:
    explicit Portal(uint scheme)
        : fScheme(scheme)
    {
    }

    void Set(uint scheme)
    {
        fScheme = scheme;
        QDBusMessage signal = QDBusMessage::createSignal(kPath, kInterface, "SettingChanged");
        signal << kNamespace << kKey << QVariant::fromValue(QDBusVariant(fScheme));
        QDBusConnection::sessionBus().send(signal);
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() != "Read" || message.arguments() != QVariantList{kNamespace, kKey})
            return false;
        // In two variants, as the portals of desktops answer.
        const QDBusVariant value(QVariant::fromValue(QDBusVariant(fScheme)));
        bus.send(message.createReply(QVariant::fromValue(value)));
        Say("asked");
        return true;
    }

private:
    uint fScheme;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Portal portal(argc > 1 ? static_cast<uint>(*argv[1] - '0') : 0);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerVirtualObject(kPath, &portal) || !bus.registerService("org.freedesktop.portal.Desktop"))
        return 1;
    for (int i = 2; i < argc; i++)
        if (!bus.registerService(argv[i]))
            return 1;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&portal] {
        char digit = 0;
        if (read(STDIN_FILENO, &digit, 1) != 1)
            QCoreApplication::quit();
        else if (digit >= '0' && digit <= '2')
            portal.Set(static_cast<uint>(digit - '0'));
    });
    Say("ready");
    return QCoreApplication::exec();
}
