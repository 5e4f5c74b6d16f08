// The bulk tools in the real window, worked with the mouse: Delete All confirmed by a click on
// the pane's link, and Export DB with its separator, two boxes clicked on the board and the
// file named in the save dialog.
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QTest>
#include <string>

#include "desktop_fixture.h"
#include "user_steps.h"

namespace {

class BulkDesktopTest : public DesktopFixture {
  protected:
    BulkDesktopTest() : DesktopFixture("Catalogue Bulk Desktop Test") {}

    // The build menu's frame shows once the main form is in edit mode.
    void clickTool(const std::string& button) {
        if (!form()("Frame5").Visible())
            QTest::mouseClick(widget(form(), "Command21"), Qt::LeftButton);
        QTest::mouseClick(widget(form(), button), Qt::LeftButton);
    }
};

TEST_F(BulkDesktopTest, DeleteAllConfirmedInThePaneDeletesEveryProduct) {
    start();
    ASSERT_TRUE(started_);
    ASSERT_GT(form().adoPrimaryRS->RecordCount(), 0);
    UserSteps user(4 * Patience);
    user.then(
        "the offer to delete", [&] { return showsLink("Delete"); },
        [&] { EXPECT_TRUE(clickInPage("a[href='Delete']")); });
    user.then(
        "the end of the deleting", [&] { return showsLink("CONTINUE"); },
        [&] {
            EXPECT_TRUE(shownHtml().contains("Finished Deleting"));
            EXPECT_TRUE(clickInPage("a[href='CONTINUE']"));
        });
    clickTool("cmdDAll");
    ASSERT_TRUE(user.finished(4 * Patience)) << "the user was still waiting for " << user.next();
    EXPECT_EQ(form().adoPrimaryRS->RecordCount(), 0);
    EXPECT_EQ(status(), "NO CURRENT RECORDS");
}

TEST_F(BulkDesktopTest, ExportDbWritesTheClickedColumnsToTheNamedFile) {
    start();
    ASSERT_TRUE(started_);
    const long products = form().adoPrimaryRS->RecordCount();
    const QString file = QString::fromStdString(appDir()) + "export.txt";
    UserSteps user(4 * Patience);
    user.then(
        "the separator's box", [] { return UserSteps::waiting<QInputDialog>() != nullptr; },
        [] {
            auto* line = UserSteps::waiting<QInputDialog>()->findChild<QLineEdit*>();
            line->selectAll();
            QTest::keyClicks(line, ";");
            QTest::keyClick(line, Qt::Key_Return);
        },
        [] { return UserSteps::waiting<QInputDialog>() == nullptr; });
    user.then(
        "the board", [&] { return form()("Frame11").Visible(); },
        [&] {
            QTest::mouseClick(widget(form(), "Label1", 2), Qt::LeftButton);
            QTest::mouseClick(widget(form(), "Label1", 3), Qt::LeftButton);
            QTest::mouseClick(widget(form(), "Command24"), Qt::LeftButton);
        });
    user.then(
        "the save dialog", [] { return UserSteps::waiting<QFileDialog>() != nullptr; },
        [&] {
            auto* name = UserSteps::waiting<QFileDialog>()->findChild<QLineEdit*>("fileNameEdit");
            if (name->text() == file) {
                QTest::keyClick(name, Qt::Key_Return);
                return;
            }
            name->selectAll();
            QTest::keyClicks(name, file);
        },
        [] { return UserSteps::waiting<QFileDialog>() == nullptr; });
    user.then(
        "the totals page", [&] { return showsLink("CONTINUE"); },
        [&] {
            EXPECT_TRUE(shownHtml().contains("Total Records Exported"));
            EXPECT_TRUE(clickInPage("a[href='CONTINUE']"));
        });
    clickTool("Command3");
    ASSERT_TRUE(user.finished(4 * Patience)) << "the user was still waiting for " << user.next();
    QFile exported(file);
    ASSERT_TRUE(exported.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(exported.readAll()).split("\r\n");
    ASSERT_EQ(lines.size(), products + 2);  // the header, the products, and the last line end
    EXPECT_EQ(lines[0], "Stock #:;Name:");
    EXPECT_EQ(lines[1].count(';'), 1);
    EXPECT_FALSE(lines[1].section(';', 0, 0).isEmpty());
    EXPECT_TRUE(waitFor([&] {
        return form()("txtFields", 12).Text().find("Exported This Item To File:") !=
               std::string::npos;
    }));
}

}  // namespace
