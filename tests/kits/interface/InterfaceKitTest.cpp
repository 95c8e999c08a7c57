#include "kits/interface/InterfaceKit.h"

#include "kits/storage/Resources.h"
#include "kits/support/TypeConstants.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>

#include <gtest/gtest.h>

TEST(InterfaceKit, WindowsHaveTheNameOfTheDesktopEntryAndTheLinkedIcon)
{
    kits::SetDesktopEntry("org.example.without-icon");
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.example.without-icon");
    EXPECT_TRUE(QGuiApplication::windowIcon().isNull());

    QImage image(5, 7, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    ASSERT_TRUE(image.save(&buffer, "PNG"));
    // Resources are linked for the life of the process.
    static const QByteArray sBytes = bytes;
    static const kits::LinkedResource sIcon(B_RAW_TYPE, "Icon", sBytes.constData(), static_cast<size_t>(sBytes.size()));

    kits::SetDesktopEntry("org.example.test");
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.example.test");
    ASSERT_EQ(QGuiApplication::windowIcon().availableSizes(), QList<QSize>{QSize(5, 7)});
    EXPECT_EQ(QGuiApplication::windowIcon().pixmap(5, 7).toImage().pixelColor(2, 2), QColor(1, 2, 3));
}
