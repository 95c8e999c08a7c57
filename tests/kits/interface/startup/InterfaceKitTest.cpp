// SPDX-License-Identifier: MIT
#include "kits/interface/InterfaceKit.h"

#include "kits/storage/Resources.h"
#include "kits/support/TypeConstants.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>

#include <gtest/gtest.h>

#include <vector>

TEST(InterfaceKit, WindowsHaveTheNameOfTheDesktopEntryAndTheLinkedIcon)
{
    kits::SetDesktopEntry("org.example.without-icon", "Without");
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.example.without-icon");
    EXPECT_TRUE(QGuiApplication::windowIcon().isNull());

    // Resources are linked for the life of the process.
    static const std::vector<uint32> sWords = [] {
        std::vector<uint32> words(2 + 5 * 7, 0xFF010203);
        words[0] = 5;
        words[1] = 7;
        return words;
    }();
    static const kits::LinkedResource sIcon(B_RAW_TYPE, "Icon", sWords.data(), sWords.size() * sizeof(uint32));

    kits::SetDesktopEntry("org.example.test", "Test");
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.example.test");
    EXPECT_EQ(QCoreApplication::applicationName(), "Test");
    ASSERT_EQ(QGuiApplication::windowIcon().availableSizes(), QList<QSize>{QSize(5, 7)});
    EXPECT_EQ(QGuiApplication::windowIcon().pixmap(5, 7).toImage().pixelColor(2, 2), QColor(1, 2, 3));
}
