// The Reports menu in the real window: a price list opens maximised in the report window,
// a second report takes the same window, and Export PDF writes the pages.
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenuBar>

#include "desktop/report_view.h"
#include "desktop_fixture.h"

namespace {

class ReportDesktopTest : public DesktopFixture {
  protected:
    ReportDesktopTest() : DesktopFixture("Catalogue Report Desktop Test") {}

    // Chooses a menu item of the main window as a user does, by its caption.
    void choose(const QString& caption) {
        QAction* item = nullptr;
        for (QWidget* top : QApplication::topLevelWidgets())
            for (QAction* a : top->findChildren<QAction*>())
                if (a->text() == caption) item = a;
        ASSERT_NE(item, nullptr) << caption.toStdString();
        item->trigger();
    }
    desktop::ReportView* view() { return program_->ui().reportView(); }
};

}  // namespace

TEST_F(ReportDesktopTest, APriceListOpensMaximisedAndASecondReportTakesTheSameWindow) {
    start();
    ASSERT_TRUE(started_);
    choose("Cost 1 Price List");
    ASSERT_TRUE(waitFor([&] { return view() && view()->isVisible(); }));
    desktop::ReportView* first = view();
    EXPECT_EQ(first->windowTitle(), "Cost 1 Report");
    EXPECT_TRUE(first->isMaximized());
    EXPECT_TRUE(first->shownText().contains("BD-1001"));
    EXPECT_TRUE(first->shownText().contains("$4.80"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    choose("Retail Price List");
    ASSERT_TRUE(waitFor([&] { return view()->windowTitle() == "Retail Report"; }));
    EXPECT_EQ(view(), first);
    EXPECT_TRUE(view()->shownText().contains("$9.95"));

    const QString pdf = QString::fromStdString(appDir()) + "retail.pdf";
    EXPECT_TRUE(view()->exportPdf(pdf));
    QFile written(pdf);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().startsWith("%PDF-1.4"));
}

TEST_F(ReportDesktopTest, AMissingReportFileOpensNoWindowAndGivesTheCursorBack) {
    QFile::remove(QString::fromStdString(appDir()) + "reports/cost2.rpt");
    start();
    ASSERT_TRUE(started_);
    choose("Cost 2 Price List");
    EXPECT_EQ(view(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}
