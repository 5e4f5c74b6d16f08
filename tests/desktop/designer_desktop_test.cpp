// The page designer in the real window, worked with the mouse and the keys: a site by page
// number, a box placed in the cell, the title typed, an alignment, the background from the
// colour dialog, View Page (photographed), Done and Make Pages; then the thumbnail sheet of
// the current records (photographed) and a click on a picture that opens it in the pane.
#include <QColorDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "base/convert.h"
#include "desktop_fixture.h"
#include "shell/module.h"
#include "store/sqlite_file.h"
#include "user_steps.h"
#include "webcat/web_catalogue.h"

namespace {

class DesignerDesktopTest : public DesktopFixture {
  protected:
    DesignerDesktopTest()
        : DesktopFixture("Catalogue Designer Desktop Test", Folder::ProgramCopy, Tip::Left) {
        setting("Options", "Show Tips at Startup", "0");
    }
    QWidget* widget(const std::string& name, int index = -1) {
        return DesktopFixture::widget(form(), name, index);
    }
    void click(const std::string& name, int index = -1) {
        QTest::mouseClick(widget(name, index), Qt::LeftButton);
    }
    // A click that the user's step hands to the event loop: what it opens (a box, a dialog)
    // waits for the steps that follow, which cannot act while this step is still acting.
    void clickNext(const std::string& name, int index = -1) {
        QTimer::singleShot(0, widget(name, index), [this, name, index] { click(name, index); });
    }
    bool setupShows(const QString& text) {
        QWidget* panel = widget("Frame12");
        return panel && panel->isVisible() && !QApplication::activeModalWidget() &&
               !pane().busy() && shownHtml().contains(text);
    }
    std::string file(const std::string& name) {
        std::ifstream in(appDir() + name, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
};

TEST_F(DesignerDesktopTest, ASiteLaidOutWithTheMouseThenTheThumbnailSheet) {
    start();
    ASSERT_TRUE(started_);
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    click("Command5");
    ASSERT_TRUE(widget("Frame9")->isVisible());

    const QString site = QString::fromStdString(appDir() + "Pages/desk.htm");
    UserSteps user(4 * Patience);
    QElapsedTimer sinceTyped;
    user.then(
        "the groups",
        [&] { return widget("List1")->isVisible() && form()("List1").ListCount() > 0; },
        [&] { click("Command13"); });
    // Select All is taken by the waiting run before Continue is clicked.
    user.then(
        "every group chosen",
        [&] {
            Control& groups = form()("List1");
            return groups.ListCount() > 0 && groups.Selected(groups.ListCount() - 1);
        },
        [&] { clickNext("Command17"); });
    user.answerFile("the site's name", site);
    user.then(
        "the name in the cell", [&] { return setupShows("<title>"); }, [&] { click("Label4", 1); });
    user.then(
        "the title",
        [&] {
            return CLng(form()("Label4", 1).Property("BackColor")) == MarkerColor &&
                   setupShows("<title>");
        },
        [&] {
            click("txtTitle");
            QTest::keyClicks(widget("txtTitle"), "Willow Creek");
            sinceTyped.start();
        });
    user.then(
        "the name to the left", [&] { return setupShows("Willow Creek"); },
        [&] {
            // How long the page took to follow the last key, for the log: the steps look
            // every 50 ms, so this is at most that much late.
            std::printf("preview followed the title in %lld ms\n",
                        static_cast<long long>(sinceTyped.elapsed()));
            click("cmdPosL", 2);
        });
    user.then(
        "the background",
        [&] {
            // The cell's markup leaves its tag open before the paragraph, so the browser
            // reads the paragraph as the cell's attribute: the page's file tells.
            return setupShows("Willow Creek") &&
                   file("Pages/desk1.htm").find("<p align='Left'>") != std::string::npos;
        },
        [&] { clickNext("Command27", 0); });
    user.answerInput("1 - Change Background Color", "1");
    user.then(
        "the colour dialog", [] { return UserSteps::waiting<QColorDialog>() != nullptr; },
        [] {
            UserSteps::waiting<QColorDialog>()->setCurrentColor(QColor(0xFF, 0xEE, 0xCC));
            UserSteps::waiting<QColorDialog>()->accept();
        });
    user.then(
        "View Page", [&] { return setupShows("#CCEEFF"); }, [&] { click("Command29"); });
    user.then(
        "the designer's picture",
        [&] { return widget("Frame12")->width() < 300 && setupShows("Willow Creek"); },
        [&] {
            EXPECT_TRUE(window(form()).window()->grab().save(QString(DESIGNER_SCREENSHOT)));
            click("Command29");
        });
    user.then(
        "Done", [&] { return widget("Frame12")->width() > 300; }, [&] { clickNext("Command26"); });
    user.then(
        "Make Pages", [&] { return widget("Command17")->isVisible(); },
        [&] { clickNext("Command17"); });
    click("Command6");
    ASSERT_TRUE(user.finished(4 * Patience)) << "the user was still waiting for " << user.next();

    const std::string first = file("Pages/desk1.htm");
    EXPECT_NE(first.find("<title>Willow Creek1</title>"), std::string::npos);
    EXPECT_NE(first.find("<body bgcolor=\"#CCEEFF\">"), std::string::npos);
    EXPECT_NE(first.find("<p align='Left'>"), std::string::npos);
    EXPECT_FALSE(form().webcat->MakingAll);
    // The bound boxes let the run's rows pass unshown; the window shows the row it ended on.
    auto* stock = qobject_cast<QLineEdit*>(widget("txtFields", 27));
    ASSERT_NE(stock, nullptr);
    Recordset& rows = *form().adoPrimaryRS;
    EXPECT_EQ(stock->text().toStdString(),
              rows.Bof() || rows.Eof() ? "" : textOf(rows.GetValue(27)));

    // The thumbnails of the current records, and a picture clicked.
    ASSERT_TRUE(widget("Command4")->isVisible());
    click("Command4");
    ASSERT_TRUE(paneShows("Guy_"));
    EXPECT_TRUE(Mod().ThumbsMode);
    EXPECT_TRUE(window(form()).window()->grab().save(QString(THUMBS_SCREENSHOT)));
    // The last picture that leads to a picture file; the sample leaves some of them out, so
    // the one clicked is given a file to lead to.
    const QString last =
        "Array.from(document.images).filter(i => i.parentElement.href &&"
        " /\\.(jpg|gif)$/i.test(i.parentElement.href)).pop()";
    // Where the picture stands, brought into view.
    const QRect picture = pageBox("(() => { const i = " + last +
                                  "; if (!i) return []; i.scrollIntoView({block: 'center'});"
                                  " const b = i.getBoundingClientRect();"
                                  " return [b.x, b.y, b.width, b.height]; })()");
    ASSERT_FALSE(picture.isEmpty());
    const QString target = QUrl(script(last + ".parentElement.href").toString()).toLocalFile();
    if (!QFile::exists(target))
        QFile::copy(QString::fromStdString(appDir() + "Pictures/NoPic.jpg"), target);
    // The pane goes to the picture, where the program looks for the item of that name.
    auto opened = [&] {
        return QUrl::fromUserInput(QString::fromStdString(Mod().LastUrl)).toLocalFile() == target;
    };
    clickInPane(picture.center());
    EXPECT_TRUE(waitFor(opened, 2 * Patience)) << Mod().LastUrl;
}

TEST_F(DesignerDesktopTest, AThumbnailSheetOfAThousandItemsScrolls) {
    {
        auto catalogue = SqliteFile::open(appDir() + "tandrel2004.mde");
        catalogue->execScript(
            "INSERT INTO Products (StockNo, ProdName, Picture) WITH RECURSIVE n(i) AS (SELECT 1 "
            "UNION ALL SELECT i + 1 FROM n WHERE i < 1000) SELECT 'TH-' || i, 'Thumb ' || i, '" +
            appDir() + "Pictures/4410.jpg' FROM n");
    }
    start();
    ASSERT_TRUE(started_);
    click("Command4");
    ASSERT_TRUE(
        waitFor([&] { return form()("Command4").Caption() == "Thumbnails"; }, 4 * Patience));
    ASSERT_TRUE(paneShows("Guy_"));
    EXPECT_GE(script("document.images.length").toInt(), 1000);
    // The user scrolls down the sheet a screen's fifth at a frame, sixty frames; the log
    // gets the frames' times.
    script(
        "window.scrolled = null; (() => { let n = 0, last = performance.now(), worst = 0;"
        " const start = last; const step = t => { worst = Math.max(worst, t - last); last = t;"
        " window.scrollBy(0, innerHeight / 5); if (++n < 60) requestAnimationFrame(step);"
        " else window.scrolled = [scrollY, (t - start) / n, worst]; };"
        " requestAnimationFrame(step); })()");
    QVariantList result;
    ASSERT_TRUE(waitFor([&] {
        result = script("window.scrolled").toList();
        return !result.isEmpty();
    }));
    std::printf(
        "thumbnail sheet of %d pictures: 60 frames of scrolling, %.1f ms a frame on "
        "average, %.1f ms at the worst\n",
        script("document.images.length").toInt(), result[1].toDouble(), result[2].toDouble());
    EXPECT_GT(result[0].toDouble(), 0);
}

}  // namespace
