// SPDX-License-Identifier: MIT
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/core/ViewPrivate.h"
#include "src/chart/ChartExport.h"
#include "src/chart/ChartMenu.h"
#include "tests/src/chart/ChartTestKit.h"
#include "tests/support/TempFolder.h"

#include <QApplication>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace {

class ChartSavingTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        AddChart(20, 30);
        AddSources(*chart, 2);
        chart->SetTitle("My / chart");
    }

    void TearDown() override
    {
        ChartWindowTest::TearDown();
        EXPECT_EQ(Dialog(), nullptr);
    }

    static QFileDialog* Dialog()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<QFileDialog*>(widget);
            if (dialog != nullptr && dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }

    /// Returns the text of all labels in visible windows.
    static std::string ShownText()
    {
        std::string text;
        for (QWidget* top : QApplication::topLevelWidgets())
            for (const QLabel* label : top->findChildren<QLabel*>())
                text += label->isVisible() ? label->text().toStdString() + "\n" : "";
        return text;
    }

    /// Opens the dialog from the menu and types a path.
    void Ask(const char* item, const std::string& path)
    {
        chart->ContextMenuRequested(BPoint(5, 5));
        BMenuItem* entry = chart->Menu()->Menu()->FindItem(item);
        ASSERT_NE(entry, nullptr);
        ASSERT_EQ(entry->Invoke(), B_OK);
        test::Turn();
        ASSERT_NE(Dialog(), nullptr);
        if (!path.empty())
            Dialog()->findChild<QLineEdit*>()->setText(QString::fromStdString(path));
    }

    void Save() { QMetaObject::invokeMethod(Dialog(), "accept"); }

    TempFolder folder;
};

constexpr const char* kPicture = "Save picture\xe2\x80\xa6";
constexpr const char* kValues = "Save values\xe2\x80\xa6";

} // namespace

TEST_F(ChartSavingTest, TheFileIsCalledAsTheChart)
{
    Ask(kPicture, "");
    EXPECT_EQ(Dialog()->findChild<QLineEdit*>()->text(), QString("My - chart.png"));
    Ask(kValues, "");
    EXPECT_EQ(Dialog()->findChild<QLineEdit*>()->text(), QString("My - chart.csv"));
    Dialog()->reject();
    test::Turn();
}

TEST_F(ChartSavingTest, ThePictureIsWhatTheScreenShows)
{
    Show(*chart, {.memory = 500, .teams = 300});
    Show(*chart, {.memory = 900, .teams = 100});
    test::Turn();
    const std::vector<uint32> shown = test::PixelsOf(chart);
    Ask(kPicture, folder.Path("chart"));
    Save();
    ASSERT_TRUE(test::WaitFor([this] { return folder.Has("chart.png"); }));
    const QImage image = QImage(QString::fromStdString(folder.Path("chart.png"))).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(image.width() * image.height(), static_cast<int>(shown.size()));
    for (int y = 9; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++)
            EXPECT_EQ(image.pixel(x, y) & 0xFFFFFF, shown[static_cast<size_t>(y * image.width() + x)] & 0xFFFFFF);
}

TEST_F(ChartSavingTest, ThePictureHasNoFrameOfTheFocus)
{
    Show(*chart, {.memory = 500});
    test::Turn();
    const std::string plain = chart->PictureAsPng();
    chart->MakeFocus();
    test::Turn();
    ASSERT_NE(test::PixelOf(chart, 20, 30), test::PixelOf(chart, 19, 1));
    EXPECT_EQ(chart->PictureAsPng(), plain);
    test::Turn();
    EXPECT_EQ(Shown(20, 30), Word(ui_color(B_KEYBOARD_NAVIGATION_COLOR)));
}

TEST_F(ChartSavingTest, TheValuesAreThoseOfThePicture)
{
    Show(*chart, {.memory = 500, .teams = 250});
    Show(*chart, {.memory = 125, .teams = 0});
    Ask(kValues, folder.Path("values.csv"));
    Show(*chart, {.memory = 1});
    Save();
    ASSERT_TRUE(test::WaitFor([this] { return folder.Has("values.csv"); }));
    const std::string moment = IsoTime(clock.WallTime() - clock.SystemTime());
    EXPECT_EQ(folder.Get("values.csv"),
              "time,Used memory,Allocated teams\n" + moment + ",0.5,0.25\n" + moment + ",0.125,0\n");
}

TEST_F(ChartSavingTest, AReplicantSavesToo)
{
    const ChartMenu menu(true);
    EXPECT_NE(menu.Menu()->FindItem(MSG_SAVE_PICTURE), nullptr);
    EXPECT_NE(menu.Menu()->FindItem(MSG_SAVE_VALUES), nullptr);
}

TEST_F(ChartSavingTest, AsksBeforeAFileIsReplaced)
{
    folder.Put("chart.csv", "old");
    Ask(kValues, folder.Path("chart.csv"));
    bool asked = false;
    const auto answer = [&](QMessageBox::StandardButton button) {
        QMetaObject::invokeMethod(
            Dialog(),
            [&asked, button] {
                auto* question = Dialog()->findChild<QMessageBox*>();
                asked = question != nullptr;
                if (asked)
                    question->button(button)->click();
            },
            Qt::QueuedConnection);
    };
    answer(QMessageBox::No);
    Save();
    EXPECT_TRUE(asked);
    EXPECT_EQ(folder.Get("chart.csv"), "old");
    ASSERT_NE(Dialog(), nullptr);
    asked = false;
    answer(QMessageBox::Yes);
    Save();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(test::WaitFor([this] { return folder.Get("chart.csv") == chart->ValuesAsCsv(); }));
}

TEST_F(ChartSavingTest, TheChartMayGoWhileItAsks)
{
    folder.Put("chart.csv", "old");
    Ask(kValues, folder.Path("chart.csv"));
    QMetaObject::invokeMethod(
        Dialog(), [this] { window->PostMessage(B_QUIT_REQUESTED); }, Qt::QueuedConnection);
    Save();
    EXPECT_TRUE(test::WaitFor([] { return Dialog() == nullptr; }));
    EXPECT_EQ(folder.Get("chart.csv"), "old");
    window = nullptr;
}

TEST_F(ChartSavingTest, SaysWhyItCanNotBeSaved)
{
    chart->SaveFile(folder.Path("none/chart.png"), "bytes");
    EXPECT_TRUE(test::WaitFor([] { return ShownText().find("none/chart.png") != std::string::npos; }));
    EXPECT_NE(ShownText().find(kits::StatusText(B_ENTRY_NOT_FOUND)), std::string::npos);
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->windowTitle() == "Qel alert")
            top->close();
    test::Turn();
    EXPECT_EQ(ShownText().find("none/chart.png"), std::string::npos);
}

TEST_F(ChartSavingTest, AChartThatGoesHasSavedBefore)
{
    chart->SaveFile(folder.Path("chart.png"), "bytes");
    window->Quit();
    window = nullptr;
    EXPECT_EQ(folder.Get("chart.png"), "bytes");
}

TEST_F(ChartSavingTest, TheHistoryIsAsLongAsThePicture)
{
    // 21 columns, of which 15 stay when the 22nd comes.
    for (int i = 0; i < 21; i++)
        Show(*chart, {.memory = i});
    EXPECT_EQ(chart->Picture().History().CountRows(), 21);
    Show(*chart, {.memory = 21});
    EXPECT_EQ(chart->Picture().History().CountRows(), 16);
    EXPECT_FLOAT_EQ(chart->Picture().History().RowAt(15).shares[0], 0.021f);
    chart->SetPageSize(1);
    for (int i = 0; i < 40; i++)
        Show(*chart, {.memory = i});
    EXPECT_EQ(chart->Picture().History().CountRows(), 21);
    chart->SetMode(kGaugeMode);
    EXPECT_EQ(chart->Picture().History().CountRows(), 0);
    for (int i = 0; i < 40; i++)
        Show(*chart, {.memory = i});
    EXPECT_EQ(chart->Picture().History().CountRows(), 21);
    EXPECT_FLOAT_EQ(chart->Picture().History().RowAt(20).shares[0], 0.039f);
    chart->ResizeTo(9, 30);
    EXPECT_EQ(chart->Picture().History().CountRows(), 10);
    chart->RemoveValueProvider(-1);
    EXPECT_EQ(chart->Picture().History().CountRows(), 0);
}
