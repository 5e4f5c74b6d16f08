// A supplier's price list imported in the real window with the mouse and the keys: Bulk Add,
// the build menu's text file link, the question boxes, the open dialog, the line the data
// starts at, three items dragged onto the board (photographed with one still to place),
// Done, the note and the totals page; then the new products are there to browse.
#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "build/bulk.h"
#include "desktop_fixture.h"

namespace {

const std::string Title = "Catalogue Import Desktop Test";

// One thing the user does once the screen asks for it, again and again while it has not
// taken, when the step says how to tell.
struct Step {
    std::string what;
    std::function<bool()> ready;
    std::function<void()> act;
    std::function<bool()> taken = [] { return true; };
};

class ImportDesktopTest : public DesktopFixture {
  protected:
    ImportDesktopTest() : DesktopFixture(Title, Folder::ProgramCopy, Tip::Left) {
        setting("Options", "Show Tips at Startup", "0");
    }

    QWidget* widget(const std::string& name, int index = -1) {
        return DesktopFixture::widget(form(), name, index);
    }

    // The modal box or dialog now waiting for the user, if it is of kind T.
    template <class T>
    static T* waiting() {
        return qobject_cast<T*>(QApplication::activeModalWidget());
    }
    static bool asks(const QString& start) {
        auto* box = waiting<QMessageBox>();
        if (box && box->text().startsWith(start)) return true;
        auto* input = waiting<QInputDialog>();
        return input && input->labelText().startsWith(start);
    }
    static void press(QMessageBox* box, QMessageBox::StandardButton which) {
        QTest::mouseClick(box->button(which), Qt::LeftButton);
    }
    // Types over the input box's text and clicks OK.
    static void typeAndOk(QInputDialog* input, const QString& text) {
        auto* line = input->findChild<QLineEdit*>();
        if (!text.isNull()) {
            line->selectAll();
            QTest::keyClicks(line, text);
        }
        for (auto* b : input->findChildren<QAbstractButton*>())
            if (b->text().remove('&') == "OK") QTest::mouseClick(b, Qt::LeftButton);
    }

    bool showsLink(const QString& word) {
        return !pane().busy() && script(QString("Array.from(document.links).some(a =>"
                                                " a.getAttribute('href') === '%1')")
                                            .arg(word))
                                     .toBool();
    }

    // The user presses the left button on a box of the board, moves the mouse in a few steps
    // to the middle of another box and lets go there.
    static void dragWithMouse(QWidget* from, QWidget* to) {
        const QPoint start = from->rect().center();
        const QPoint end = from->mapFromGlobal(to->mapToGlobal(to->rect().center()));
        QTest::mousePress(from, Qt::LeftButton, {}, start);
        for (int step = 1; step <= 4; ++step)
            QTest::mouseMove(from, start + (end - start) * step / 4);
        QTest::mouseRelease(from, Qt::LeftButton, {}, end);
    }
    bool boardShows() {
        QWidget* board = widget("Frame11");
        return board && board->isVisible() && !QApplication::activeModalWidget();
    }

    // Plays the steps, each once it is ready, from a timer: the program waits for the user
    // inside the link's event, so the user acts from within that wait. Returns the steps
    // not taken.
    std::deque<Step> play(std::deque<Step> steps, const std::function<void()>& begin) {
        bool acting = false;
        QElapsedTimer clock;
        clock.start();
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            // The program waits inside the click that began it all, out of this test's
            // reach: a step that never comes can only end the test program.
            if (!steps.empty() && clock.elapsed() > 4 * Patience) {
                std::fprintf(stderr, "The user was still waiting for %s\n",
                             steps.front().what.c_str());
                std::_Exit(1);
            }
            if (acting || steps.empty() || !steps.front().ready()) return;
            acting = true;
            steps.front().act();
            if (steps.front().taken()) steps.pop_front();
            acting = false;
        });
        user.start(50);
        begin();
        waitFor([&] { return steps.empty(); }, 4 * Patience);
        user.stop();
        // A box that a failed step left open is closed, so that no failure hangs the test.
        while (QWidget* w = QApplication::activeModalWidget())
            w->close();
        return steps;
    }

    int count() {
        const auto m = QRegularExpression("of +(\\d+)").match(status());
        return m.hasMatch() ? m.captured(1).toInt() : -1;
    }
};

TEST_F(ImportDesktopTest, ThreeFieldsDraggedOntoTheBoardBringInTheSuppliersList) {
    const std::string supplier = appDir() + "Supplier";
    std::filesystem::create_directories(supplier);
    const std::string list = supplier + "/spring.txt";
    std::ofstream(list, std::ios::binary) << "SP-100,Garden Trowel,4.95\r\n"
                                             "SP-101,Watering Can,12.50\r\n"
                                             "SP-102,Seed Tray,2.25\r\n";
    start();
    ASSERT_TRUE(started_);
    const int before = count();
    ASSERT_GT(before, 0) << status().toStdString();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));

    QTest::mouseClick(widget("cmdAddAll"), Qt::LeftButton);
    ASSERT_TRUE(paneShows("Make Selection below"));

    const auto dragged = [this](int source, int target) {
        return [this, source, target] {
            dragWithMouse(widget("Label2", source), widget("Label1", target));
        };
    };
    QString boardPicture;
    std::deque<Step> steps{
        {"the add or edit question", [] { return asks("To EDIT The Existing Items ONLY"); },
         [] { press(waiting<QMessageBox>(), QMessageBox::No); }},
        // The dialog fills its name box as it opens; the user types once it has.
        {"the open dialog", [] { return waiting<QFileDialog>() != nullptr; },
         [&] {
             auto* name = waiting<QFileDialog>()->findChild<QLineEdit*>("fileNameEdit");
             if (name->text() == QString::fromStdString(list)) {
                 QTest::keyClick(name, Qt::Key_Return);
                 return;
             }
             name->selectAll();
             QTest::keyClicks(name, QString::fromStdString(list));
         },
         [] { return waiting<QFileDialog>() == nullptr; }},
        {"the head of the file", [&] { return showsLink("GF-1"); },
         [&] { EXPECT_TRUE(clickLink("GF-1")); }},
        {"the separator offered", [] { return asks("This File appears To Use"); },
         [] { press(waiting<QMessageBox>(), QMessageBox::Yes); }},
        {"the added slots", [] { return asks("The Data Shows There Are 3 Items"); },
         [] { typeAndOk(waiting<QInputDialog>(), "0"); }},
        {"stock number", [&] { return boardShows(); }, dragged(0, 2)},
        {"name", [&] { return boardShows(); }, dragged(1, 3)},
        {"the board's picture", [&] { return boardShows(); },
         [&] {
             boardPicture = QString(BOARD_SCREENSHOT);
             EXPECT_TRUE(window(form()).window()->grab().save(boardPicture));
         }},
        {"retail", [&] { return boardShows(); }, dragged(2, 12)},
        {"Done", [&] { return boardShows(); },
         [&] { QTest::mouseClick(widget("Command24"), Qt::LeftButton); }},
        {"the note", [] { return asks("Would You Like To Put A Note For This?"); },
         [] { typeAndOk(waiting<QInputDialog>(), QString()); }},
        {"the totals page", [&] { return showsLink("CONTINUE"); },
         [&] { EXPECT_TRUE(clickLink("CONTINUE")); }},
    };
    const std::deque<Step> left =
        play(std::move(steps), [&] { ASSERT_TRUE(clickLink("TextFiles")); });
    ASSERT_TRUE(left.empty()) << "the user was still waiting for " << left.front().what;

    EXPECT_EQ(form().bulk->TotalAdded, 3);
    // The main form is reset and refreshed and counts the three new products.
    ASSERT_TRUE(waitFor([&] { return count() == before + 3; })) << status().toStdString();
    // The user finds one with the quick search box and sees it in the pane.
    if (!widget("txtSrch")->isVisible()) QTest::mouseClick(widget("Command21"), Qt::LeftButton);
    auto* box = qobject_cast<QLineEdit*>(widget("txtSrch"));
    ASSERT_TRUE(box && box->isVisible());
    QTest::mouseClick(box, Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, "SP-101");
    QTest::mouseClick(widget("cmdSearch"), Qt::LeftButton);
    ASSERT_TRUE(waitFor([&] { return stockNo() == "SP-101"; }));
    EXPECT_TRUE(paneShows("Watering Can"));
}

}  // namespace
