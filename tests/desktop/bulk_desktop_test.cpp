// The bulk tools in the real window, worked with the mouse: Delete All confirmed by a click on
// the pane's link, and Export DB with its separator, two boxes clicked on the board and the
// file named in the save dialog.
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "desktop_fixture.h"

namespace {

class BulkDesktopTest : public DesktopFixture {
  protected:
    BulkDesktopTest() : DesktopFixture("Catalogue Bulk Desktop Test") {}

    // A click of the mouse on a control of the main form that the user can see.
    bool click(const std::string& name, int index = -1) {
        QWidget* w = widget(form(), name, index);
        if (!w || !w->isVisible() || !w->isEnabled()) return false;
        QTest::mouseClick(w, Qt::LeftButton);
        return true;
    }

    // What the user does, step by step, while the program waits inside a click: each step
    // acts once its moment has come. A step whose moment never comes fails the test.
    struct Step {
        std::function<bool()> due;
        std::function<void()> act;
    };
    void clickAndAct(const std::string& button, std::vector<Step> steps) {
        std::size_t next = 0;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            if (next < steps.size() && steps[next].due()) steps[next++].act();
        });
        user.start(100);
        if (!form()("Frame5").Visible()) {
            EXPECT_TRUE(click("Command21"));
        }
        EXPECT_TRUE(click(button));
        user.stop();
        EXPECT_EQ(next, steps.size());
    }
    bool pageHolds(const char* text) { return shownHtml().contains(text); }
    template <class Dialog>
    static Dialog* openDialog() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<Dialog*>(w); d && d->isVisible()) return d;
        return nullptr;
    }
};

TEST_F(BulkDesktopTest, DeleteAllConfirmedInThePaneDeletesEveryProduct) {
    start();
    ASSERT_TRUE(started_);
    ASSERT_GT(form().adoPrimaryRS->RecordCount(), 0);
    clickAndAct("cmdDAll", {{[&] { return pageHolds("CLICK HERE NOW"); },
                             [&] { EXPECT_TRUE(clickLink("Delete")); }},
                            {[&] { return pageHolds("Finished Deleting"); },
                             [&] { EXPECT_TRUE(clickLink("CONTINUE")); }}});
    EXPECT_EQ(form().adoPrimaryRS->RecordCount(), 0);
    EXPECT_EQ(status(), "NO CURRENT RECORDS");
}

TEST_F(BulkDesktopTest, ExportDbWritesTheClickedColumnsToTheNamedFile) {
    start();
    ASSERT_TRUE(started_);
    const long products = form().adoPrimaryRS->RecordCount();
    const QString file = QString::fromStdString(appDir()) + "export.txt";
    clickAndAct("Command3", {{[&] { return openDialog<QInputDialog>() != nullptr; },
                              [&] {
                                  QInputDialog* separator = openDialog<QInputDialog>();
                                  separator->setTextValue(";");
                                  separator->accept();
                              }},
                             {[&] { return form()("Frame11").Visible(); },
                              [&] {
                                  EXPECT_TRUE(click("Label1", 2));
                                  EXPECT_TRUE(click("Label1", 3));
                                  EXPECT_TRUE(click("Command24"));
                              }},
                             {[&] { return openDialog<QFileDialog>() != nullptr; },
                              [&] {
                                  QFileDialog* save = openDialog<QFileDialog>();
                                  save->selectFile(file);
                                  QMetaObject::invokeMethod(save, "accept", Qt::QueuedConnection);
                              }},
                             {[&] { return pageHolds("Total Records Exported"); },
                              [&] { EXPECT_TRUE(clickLink("CONTINUE")); }}});
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
