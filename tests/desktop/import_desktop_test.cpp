// A supplier's price list imported in the real window with the mouse and the keys: Bulk Add,
// the build menu's text file link, the question boxes, the open dialog, the line the data
// starts at, three items dragged onto the board (photographed with one still to place),
// Done, the note and the totals page; then the new products are there to browse. And the
// same road from an Access file, its table clicked in the list of its tables.
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "access_sample.h"
#include "build/bulk.h"
#include "desktop_fixture.h"
#include "store/sqlite_file.h"
#include "user_steps.h"

namespace {

const std::string Title = "Catalogue Import Desktop Test";

class ImportDesktopTest : public DesktopFixture {
  protected:
    ImportDesktopTest() : DesktopFixture(Title, Folder::ProgramCopy, Tip::Left) {
        setting("Options", "Show Tips at Startup", "0");
    }

    QWidget* widget(const std::string& name, int index = -1) {
        return DesktopFixture::widget(form(), name, index);
    }

    bool clickLink(const QString& word) { return clickInPage("a[href='" + word + "']"); }

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
    // Dragging source item `source` onto box `target`, as a step's action.
    std::function<void()> dragged(int source, int target) {
        return [this, source, target] {
            dragWithMouse(widget("Label2", source), widget("Label1", target));
        };
    }
    // The program started on its sample shop, the item in the pane, and Bulk Add clicked:
    // the build menu in the pane. `before` takes the number of products.
    void startOnTheBuildMenu(int& before) {
        start();
        ASSERT_TRUE(started_);
        before = count();
        ASSERT_GT(before, 0) << status().toStdString();
        ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
        QTest::mouseClick(widget("cmdAddAll"), Qt::LeftButton);
        ASSERT_TRUE(paneShows("Make Selection below"));
    }
    bool boardShows() {
        QWidget* board = widget("Frame11");
        return board && board->isVisible() && !QApplication::activeModalWidget();
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
    int before = 0;
    ASSERT_NO_FATAL_FAILURE(startOnTheBuildMenu(before));

    UserSteps user(4 * Patience);
    user.answerBox("To EDIT The Existing Items ONLY", QMessageBox::No);
    user.answerFile("the open dialog", QString::fromStdString(list));
    user.then(
        "the head of the file", [&] { return showsLink("GF-1"); },
        [&] { EXPECT_TRUE(clickLink("GF-1")); });
    user.answerBox("This File appears To Use", QMessageBox::Yes);
    user.answerInput("The Data Shows There Are 3 Items", "0");
    const auto onBoard = [&] { return boardShows(); };
    user.then("stock number", onBoard, dragged(0, 2));
    user.then("name", onBoard, dragged(1, 3));
    user.then("the board's picture", onBoard, [&] {
        EXPECT_TRUE(window(form()).window()->grab().save(QString(BOARD_SCREENSHOT)));
    });
    user.then("retail", onBoard, dragged(2, 12));
    user.then("Done", onBoard, [&] { QTest::mouseClick(widget("Command24"), Qt::LeftButton); });
    user.answerInput("Would You Like To Put A Note For This?", "");
    user.then(
        "the totals page", [&] { return showsLink("CONTINUE"); },
        [&] { EXPECT_TRUE(clickLink("CONTINUE")); });
    ASSERT_TRUE(clickLink("TextFiles"));
    ASSERT_TRUE(user.finished(4 * Patience)) << "the user was still waiting for " << user.next();
    EXPECT_TRUE(user.unexpected.isEmpty()) << user.unexpected.join("\n").toStdString();

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

TEST_F(ImportDesktopTest, FieldsOfAnAccessTableDraggedOntoTheBoardBringInItsRows) {
    const std::string source = appDir() + "users.mdb";
    std::filesystem::copy_file(accessSample(), source);
    int before = 0;
    ASSERT_NO_FATAL_FAILURE(startOnTheBuildMenu(before));

    QStringList filters;
    UserSteps user(4 * Patience);
    user.answerBox("To EDIT The Existing Items ONLY", QMessageBox::No);
    user.answerFile("the open dialog", QString::fromStdString(source),
                    [&] { filters = UserSteps::waiting<QFileDialog>()->nameFilters(); });
    user.then(
        "the list of tables", [&] { return showsLink("GF-9"); },
        [&] { EXPECT_TRUE(clickLink("GF-9")); });
    const auto onBoard = [&] { return boardShows(); };
    user.then("stock number", onBoard, dragged(0, 2));
    user.then("name", onBoard, dragged(1, 3));
    user.then("the birthday as the description", onBoard, dragged(3, 4));
    user.then("married as on special", onBoard, dragged(4, 19));
    user.then("Done", onBoard, [&] { QTest::mouseClick(widget("Command24"), Qt::LeftButton); });
    user.then(
        "the totals page", [&] { return showsLink("CONTINUE"); },
        [&] { EXPECT_TRUE(clickLink("CONTINUE")); });
    ASSERT_TRUE(clickLink("DBFiles"));
    ASSERT_TRUE(user.finished(4 * Patience)) << "the user was still waiting for " << user.next();

    EXPECT_EQ(filters, QStringList{"Access DataBases (*.mdb *.mde)"});
    EXPECT_EQ(form().bulk->TotalAdded, 3);
    ASSERT_TRUE(waitFor([&] { return count() == before + 3; })) << status().toStdString();
    auto catalogue = SqliteFile::open(appDir() + "tandrel2004.mde");
    EXPECT_EQ(catalogue->firstColumnJoined("SELECT ProdName || ' ' || ProdDesc || ' ' || "
                                           "OnSpecial FROM Products WHERE StockNo IN "
                                           "('1', '2', '3') ORDER BY PID"),
              "Nuintun 1/25/1989 -1|Angela 12/18/1988 0|\u5f20\u4e09 12/18/1986 -1");
}

}  // namespace
