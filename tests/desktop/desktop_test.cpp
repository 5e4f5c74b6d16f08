// The desktop program in real windows: it starts on the sample catalogue, shows the first
// record in the pane, follows the Next button and the Down key pressed in the pane, hands
// a link of a written page to the router, closes the tip, and keeps the window where the
// settings put it.
#include <QLabel>
#include <QMainWindow>
#include <QTableView>
#include <QTest>
#include <QWebEngineView>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "desktop_fixture.h"
#include "shell/module.h"

namespace {

class DesktopTest : public DesktopFixture {
  protected:
    DesktopTest() : DesktopFixture("Catalogue Desktop Test") {}
};

TEST_F(DesktopTest, StartsOnTheSampleCatalogueWithTheFirstRecordInThePane) {
    start();
    ASSERT_TRUE(started_);
    QWidget* main = window(form()).window();
    ASSERT_TRUE(main->isVisible());
    EXPECT_TRUE(qobject_cast<QMainWindow*>(main));
    EXPECT_EQ(main->windowTitle().toStdString(), appDir() + "tandrel2004.mde");
    auto* status = qobject_cast<QLabel*>(widget(form(), "lblStatus"));
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->text().startsWith("Record: 1  of  ")) << status->text().toStdString();
    const std::string first = stockNo();
    EXPECT_TRUE(paneShows(QString::fromStdString(first)));
    EXPECT_EQ(pane().LocationURL(), appDir() + "page.htm");
    // The item's picture, given by its absolute path in the page, shows.
    EXPECT_TRUE(waitFor(
        [&] {
            return script("document.images.length > 0 && document.images[0].naturalWidth > 0")
                .toBool();
        },
        Patience));
}

TEST_F(DesktopTest, TheTipOfTheDayShowsAtStartAndClosesWithOk) {
    start();
    EXPECT_TRUE(tipSeen_);
    EXPECT_TRUE(tipOkShows_);
    EXPECT_EQ(program_->runtime().Loaded("frmTip"), nullptr);
    EXPECT_TRUE(window(form()).window()->isVisible());
}

TEST_F(DesktopTest, NextMovesToTheSecondRecordAndThePaneFollows) {
    start();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    const std::string first = stockNo();
    QTest::mouseClick(widget(form(), "cmdNext"), Qt::LeftButton);
    const std::string second = stockNo();
    EXPECT_NE(second, first);
    auto* status = qobject_cast<QLabel*>(widget(form(), "lblStatus"));
    EXPECT_TRUE(status->text().startsWith("Record: 2  of  ")) << status->text().toStdString();
    EXPECT_TRUE(paneShows(QString::fromStdString(second)));
    EXPECT_FALSE(shownHtml().contains(QString::fromStdString(first)));
}

TEST_F(DesktopTest, DownPressedInThePaneMovesToTheNextRecord) {
    start();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    const std::string first = stockNo();
    // The page takes the keys in a widget of its own inside the pane.
    QWidget* surface = pane().view()->focusProxy();
    ASSERT_TRUE(surface);
    QWidget* main = window(form()).window();
    main->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(main));
    surface->setFocus();
    QTest::keyClick(surface, Qt::Key_Down);
    const std::string second = stockNo();
    EXPECT_NE(second, first);
    EXPECT_TRUE(status().startsWith("Record: 2  of  ")) << status().toStdString();
    EXPECT_TRUE(paneShows(QString::fromStdString(second)));
}

TEST_F(DesktopTest, ALinkWordOfAWrittenPageReachesTheRouterAsAboutBlankAndTheWord) {
    start();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    std::vector<std::string> seen;
    auto router = pane().BeforeNavigate2;
    pane().BeforeNavigate2 = [&](const std::string& url, bool& cancel) {
        seen.push_back(url);
        if (router) router(url, cancel);
    };
    pane().Navigate2("about:blank");
    pane().Write("<a id=go href=CONTINUE>go</a>");
    ASSERT_TRUE(paneShows("CONTINUE"));
    EXPECT_EQ(pane().LocationURL(), "about:blank");
    script("document.getElementById('go').click()");
    EXPECT_TRUE(waitFor(
        [&] { return std::find(seen.begin(), seen.end(), "about:blankCONTINUE") != seen.end(); },
        Patience));
    // The router heard the program's own navigation first, then the user's click.
    ASSERT_GE(seen.size(), 2u);
    EXPECT_EQ(seen[0], "about:blank");
}

TEST_F(DesktopTest, AWordInAnyCaseArrivesAsWritten) {
    start();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    std::vector<std::string> seen;
    pane().BeforeNavigate2 = [&](const std::string& url, bool& cancel) {
        seen.push_back(url);
        cancel = url != "about:blank";
    };
    pane().Navigate2("about:blank");
    pane().Write("<p>Pick:</p>");
    pane().Write("<a id=go href='Folder'>Add a folder</a>");
    ASSERT_TRUE(paneShows("Add a folder"));
    // A real click of the mouse on the link.
    const QRect link = pageBox(
        "(() => { const b = document.getElementById('go')"
        ".getBoundingClientRect(); return [b.x, b.y, b.width, b.height]; })()");
    ASSERT_FALSE(link.isEmpty());
    clickInPane(link.center());
    EXPECT_TRUE(waitFor(
        [&] { return std::find(seen.begin(), seen.end(), "about:blankFolder") != seen.end(); },
        Patience));
    // Cancelled: the page stays.
    QTest::qWait(300);
    EXPECT_EQ(pane().LocationURL(), "about:blank");
}

TEST_F(DesktopTest, TheGridListsTheProductsAndFollowsTheCurrentRecord) {
    start();
    auto* grid = qobject_cast<QTableView*>(widget(form(), "grddatagrid"));
    ASSERT_TRUE(grid);
    EXPECT_FALSE(grid->isVisible());
    QTest::mouseClick(widget(form(), "cmdGrid"), Qt::LeftButton);
    ASSERT_TRUE(grid->isVisible());
    Recordset& rows = *form().adoprimaryrs2;
    EXPECT_TRUE(waitFor([&] { return grid->model()->rowCount() == rows.RecordCount(); }, 5000));
    EXPECT_EQ(grid->model()->columnCount(), rows.FieldCount());
    const int stockColumn = rows.FieldIndex("StockNo");
    EXPECT_EQ(grid->model()->index(0, stockColumn).data().toString().toStdString(), stockNo());
    // Reading the rows left the grid's record set where it was.
    EXPECT_EQ(rows.AbsolutePosition(), 1);
    QTest::mouseClick(widget(form(), "cmdNext"), Qt::LeftButton);
    EXPECT_TRUE(waitFor([&] { return grid->currentIndex().row() == 1; }, 5000));
    EXPECT_EQ(rows.AbsolutePosition(), 2);
}

TEST_F(DesktopTest, TheWindowStandsWhereTheSettingsPutIt) {
    setting("Settings", "MainLeft", "1800");
    setting("Settings", "MainTop", "1500");
    start();
    QWidget* main = window(form()).window();
    EXPECT_TRUE(waitFor([&] { return main->pos() == QPoint(120, 100); }, 5000))
        << main->pos().x() << "," << main->pos().y();
    EXPECT_EQ(form().Num("Left"), 1800);
    EXPECT_EQ(form().Num("Top"), 1500);
}

TEST_F(DesktopTest, ExitSavesWhereTheUserMovedTheWindow) {
    start();
    QWidget* main = window(form()).window();
    main->move(200, 160);
    EXPECT_TRUE(waitFor([&] { return form().Num("Left") == 3000; }, 5000));
    EXPECT_EQ(form().Num("Top"), 2400);
    QAction* exit = window(form()).actionFor(form()("mnuFileExit"));
    ASSERT_TRUE(exit);
    exit->trigger();
    EXPECT_TRUE(ended_);
    EXPECT_EQ(saved("Settings", "MainLeft"), "3000");
    EXPECT_EQ(saved("Settings", "MainTop"), "2400");
}

TEST_F(DesktopTest, AScreenshotOfTheMainWindow) {
    start();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    QTest::mouseClick(widget(form(), "cmdShowPic"), Qt::LeftButton);
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    // The edit mode's page gives the picture as "dynsrc" only; it shows all the same.
    EXPECT_TRUE(paneShowsPicture());
    QTest::qWait(500);
    EXPECT_TRUE(photograph(window(form()).window(), SCREENSHOT));
}

}  // namespace

namespace {

// A letter saved under the catalogue's name: a file that is no database.
class ForeignCatalogueTest : public DesktopFixture {
  protected:
    ForeignCatalogueTest() : DesktopFixture("Catalogue Foreign File Test") {
        std::ofstream(catalogue(), std::ios::binary | std::ios::trunc) << Letter;
    }
    std::string catalogue() const { return appDir() + "tandrel2004.mde"; }
    static constexpr const char* Letter = "Dear supplier,\r\nplease send the spring list.\r\n";
};

}  // namespace

TEST_F(ForeignCatalogueTest, AFileThatIsNoCatalogueGivesAnEmptyWindowAndStaysAsItWas) {
    start();
    ASSERT_TRUE(started_);
    EXPECT_FALSE(ended_);
    EXPECT_TRUE(window(form()).window()->isVisible());
    EXPECT_EQ(form()("txtFields", 27).Text(), "");
    // The user can still move about: the buttons fail in silence.
    QTest::mouseClick(widget(form(), "cmdNext"), Qt::LeftButton);
    EXPECT_FALSE(ended_);
    std::ifstream in(catalogue(), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(bytes, Letter);
    EXPECT_FALSE(std::filesystem::exists(catalogue() + "-wal"));
}
