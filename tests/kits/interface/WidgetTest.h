// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ViewPrivate.h"
#include "tests/support/GuiTest.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

/// A window that keeps its messages.
class ListeningWindow : public BWindow {
public:
    explicit ListeningWindow(BRect frame)
        : BWindow(frame, "test", B_TITLED_WINDOW, 0)
    {
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what < 1000)
            heard.push_back(*message);
        else
            BWindow::MessageReceived(message);
    }

    std::vector<BMessage> heard;
};

/// A shown window with a page in it, for tests of controls. Records codes below 1000.
class WidgetTest : public testing::Test {
protected:
    WidgetTest()
        : fWindow(new ListeningWindow(BRect(100, 100, 499, 399)))
        , fPage(new BView(fWindow->Bounds(), "page", B_FOLLOW_ALL, B_WILL_DRAW))
    {
        fPage->SetViewColor(216, 216, 216);
        fWindow->AddChild(fPage);
        fWindow->Show();
        fWindow->Activate();
        test::Turn();
    }

    ~WidgetTest() override
    {
        if (fWindow != nullptr)
            Close();
        test::Turn();
    }

    void Close()
    {
        fWindow->Lock();
        fWindow->Quit();
        fWindow = nullptr;
        test::Turn();
    }

    /// Returns the codes since the last call.
    std::vector<uint32> Heard()
    {
        test::Turn();
        std::vector<uint32> codes;
        for (const BMessage& message : fWindow->heard)
            codes.push_back(message.what);
        fWindow->heard.clear();
        return codes;
    }

    /// Runs the function on another thread under the window's lock, and waits for it as the event loop does.
    void OnOtherThread(const std::function<void()>& function)
    {
        std::atomic<bool> done = false;
        std::thread other([&] {
            if (fWindow->Lock()) {
                function();
                fWindow->Unlock();
            }
            done = true;
        });
        EXPECT_TRUE(test::WaitFor([&] { return done.load(); }));
        other.join();
    }

    /// Returns the widget in a control that takes the keys.
    static QWidget* FocusOf(const BView* view)
    {
        QWidget* widget = kits::ViewWidget(view);
        while (widget->focusProxy() != nullptr)
            widget = widget->focusProxy();
        return widget;
    }

    /// Presses a key in a widget of Qt's.
    static void SendKey(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers);
            QApplication::sendEvent(widget, &event);
        }
    }

    static std::string AccessibleName(const BView* view) { return FocusOf(view)->accessibleName().toStdString(); }

    ListeningWindow* fWindow;
    BView* fPage;
};
