// The main window on a large screen: maximised, its pane, boxes and their fonts grow with it,
// and it comes back to the size the form gives; a check box's mark grows with its font; the
// grid worked with the keys.
#include <QCheckBox>
#include <QFont>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTableView>
#include <QTest>
#include <QWebEngineView>
#include <cmath>

#include "desktop/free_sizer.h"
#include "desktop_fixture.h"

namespace {

class WindowTest : public DesktopFixture {
  protected:
    WindowTest() : DesktopFixture("Catalogue Window Test") {}

    QWidget* main() { return window(form()).window(); }
    // Brings a window to the front as a click on it would, asking again until the window
    // manager has done it.
    bool activate(QWidget* w) {
        return waitFor([&] {
            if (!w->isActiveWindow()) w->activateWindow();
            return w->isActiveWindow();
        });
    }
    // Starts the program and waits until the window manager has framed the main window and
    // its size has stayed the same for a while: a window framed after the form gave it its
    // size takes that size again.
    void startFramed() {
        start();
        QSize last;
        int still = 0;
        ASSERT_TRUE(waitFor(
            [&] {
                const bool framed = main()->frameGeometry() != main()->geometry();
                still = framed && main()->size() == last ? still + 1 : 0;
                last = main()->size();
                return still >= 3;
            },
            Patience));
    }
    // The window's outer size in pixels, as the form gives it in twips.
    QSize formSize() {
        return QSize(desktop::px(form().Num("Width")), desktop::px(form().Num("Height")));
    }
    // The area the controls stand on: the window less its menu bar.
    QWidget* canvas() { return main()->findChild<QWidget*>(QString::fromStdString(form().Name())); }
};

// Within a pixel and a half of the designed length scaled by the ratio.
::testing::AssertionResult grewBy(double ratio, int before, int after) {
    const double expected = before * ratio;
    if (std::abs(after - expected) <= 1.5) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << before << " became " << after << ", not about " << expected;
}

TEST_F(WindowTest, AMaximisedMainFormGrowsItsPaneAndBoxesInProportion) {
    startFramed();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    QTest::mouseClick(widget(form(), "cmdShowPic"), Qt::LeftButton);
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    QWidget* pane = widget(form(), "Wb1");
    QWidget* name = widget(form(), "txtFields", 1);
    ASSERT_TRUE(pane && name && name->isVisible());
    const QSize designed = canvas()->size();
    const QRect paneBefore = pane->geometry(), nameBefore = name->geometry();
    const double pointsBefore = name->font().pointSizeF();
    QMenuBar* bar = static_cast<QMainWindow*>(main())->menuBar();
    QMenu* fileMenu = bar->findChild<QMenu*>();
    ASSERT_TRUE(fileMenu);
    const double barPoints = bar->font().pointSizeF(), menuPoints = fileMenu->font().pointSizeF();

    const double left = form().Num("Left"), top = form().Num("Top");
    main()->showMaximized();
    ASSERT_TRUE(waitFor([&] { return main()->width() > 1000; }, Patience))
        << "the window stayed " << main()->width() << " wide";
    // The place saved at exit stays the normal window's.
    EXPECT_EQ(form().Num("Left"), left);
    EXPECT_EQ(form().Num("Top"), top);
    EXPECT_EQ(form().WindowState(), 2);
    const double across = static_cast<double>(canvas()->width()) / designed.width();
    const double down = static_cast<double>(canvas()->height()) / designed.height();
    EXPECT_GT(across, 2.5);
    EXPECT_TRUE(grewBy(across, paneBefore.width(), pane->width()));
    EXPECT_TRUE(grewBy(down, paneBefore.height(), pane->height()));
    EXPECT_TRUE(grewBy(across, paneBefore.left(), pane->x()));
    EXPECT_TRUE(grewBy(across, nameBefore.width(), name->width()));
    EXPECT_TRUE(grewBy(down, nameBefore.top(), name->y()));
    EXPECT_NEAR(name->font().pointSizeF(), pointsBefore * std::min(across, down), 0.01);
    EXPECT_NEAR(qobject_cast<QWebEngineView*>(pane)->zoomFactor(), std::min(across, down), 0.01);
    // The menus grow too, within a twentieth of the ratio.
    EXPECT_NEAR(bar->font().pointSizeF(), barPoints * std::min(across, down), barPoints * 0.05);
    EXPECT_NEAR(fileMenu->font().pointSizeF(), menuPoints * std::min(across, down),
                menuPoints * 0.05);
    // The form's own code still works in the sizes it was designed with.
    EXPECT_EQ(form().Num("Width"), 9480);
    // A click on a scaled box reaches the form at the twips of its design.
    QTest::mouseClick(widget(form(), "cmdShowPic"), Qt::LeftButton);
    EXPECT_TRUE(paneShows(QString::fromStdString(stockNo())));

    main()->showNormal();
    ASSERT_TRUE(waitFor([&] { return canvas()->size() == designed; }, Patience))
        << "the controls' area is " << canvas()->width() << " x " << canvas()->height() << ", not "
        << designed.width() << " x " << designed.height();
    EXPECT_EQ(form().WindowState(), 0);
    EXPECT_EQ(name->geometry(), nameBefore);
    EXPECT_EQ(bar->font().pointSizeF(), barPoints);
    EXPECT_EQ(fileMenu->font().pointSizeF(), menuPoints);
}

TEST_F(WindowTest, AWindowSizedByHandTakesTheFormsSizeAgainWhenTheFormIsActivated) {
    startFramed();
    const QSize designed = main()->size();
    QWidget* next = widget(form(), "cmdNext");
    const int nextWidth = next->width();
    main()->resize(designed * 3 / 2);
    ASSERT_TRUE(waitFor([&] { return next->width() > nextWidth * 1.4; }, Patience));
    // The tip of the day comes to the front and is closed, and the main form is active again.
    window(form()).actionFor(form()("mnuHelpTip"))->trigger();
    Form* tip = program_->runtime().Loaded("frmTip");
    ASSERT_TRUE(tip);
    QWidget* ok = widget(*tip, "cmdOK");
    ASSERT_TRUE(waitFor([&] { return ok->isVisible(); }, Patience));
    // The window manager may leave a new window behind the active one: the user clicks it.
    ASSERT_TRUE(activate(ok->window()));
    QTest::mouseClick(ok, Qt::LeftButton);
    ASSERT_TRUE(waitFor([&] { return !ok->isVisible(); }, Patience));
    // The user brings the main window to the front again.
    ASSERT_TRUE(activate(main()));
    // Framed by now, the window takes the form's size exactly.
    EXPECT_TRUE(waitFor([&] { return main()->frameGeometry().size() == formSize(); }, Patience))
        << "the window is " << main()->frameGeometry().width() << " x "
        << main()->frameGeometry().height();
    EXPECT_NEAR(next->width(), nextWidth, 1);
}

TEST_F(WindowTest, ACheckBoxMarkGrowsWithItsMaximisedWindow) {
    start();
    window(form()).actionFor(form()("mnuHelpTip"))->trigger();
    Form* tip = program_->runtime().Loaded("frmTip");
    ASSERT_TRUE(tip);
    auto* box = qobject_cast<QCheckBox*>(widget(*tip, "chkLoadTipsAtStartup"));
    ASSERT_TRUE(box);
    ASSERT_TRUE(waitFor([&] { return box->isVisible(); }, Patience));
    // The mark as the box's style lays it out.
    auto mark = [&] {
        QStyleOptionButton option;
        option.initFrom(box);
        return box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box).size();
    };
    const QSize before = mark();
    const double pointsBefore = box->font().pointSizeF();
    box->window()->showMaximized();
    ASSERT_TRUE(waitFor([&] { return box->font().pointSizeF() > pointsBefore * 1.5; }, Patience));
    const double grown = box->font().pointSizeF() / pointsBefore;
    EXPECT_NEAR(mark().width(), before.width() * grown, 1.5);
    EXPECT_NEAR(mark().height(), before.height() * grown, 1.5);
}

TEST_F(WindowTest, TheGridAndTheRecordFollowTheKeysTogether) {
    start();
    auto* grid = qobject_cast<QTableView*>(widget(form(), "grddatagrid"));
    ASSERT_TRUE(grid);
    QTest::mouseClick(widget(form(), "cmdGrid"), Qt::LeftButton);
    ASSERT_TRUE(waitFor([&] { return grid->isVisible() && grid->model()->rowCount() > 3; }));
    grid->setFocus();
    Recordset& records = *form().adoPrimaryRS;
    const long last = records.RecordCount();
    // Each key, and the record and grid row (1-based) it leads to.
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        long row;
    } steps[] = {{Qt::Key_Down, {}, 2},
                 {Qt::Key_Down, {}, 3},
                 {Qt::Key_PageDown, {}, 4},
                 {Qt::Key_Up, {}, 3},
                 {Qt::Key_PageUp, {}, 2},
                 {Qt::Key_End, {}, last},
                 {Qt::Key_Up, {}, last - 1},
                 {Qt::Key_Home, {}, 1},
                 {Qt::Key_Down, Qt::ControlModifier, last},
                 {Qt::Key_Up, Qt::ControlModifier, 1}};
    for (const auto& step : steps) {
        QTest::keyClick(grid, step.key, step.modifiers);
        EXPECT_TRUE(waitFor([&] { return grid->currentIndex().row() == step.row - 1; }, Patience))
            << "key " << QTest::toString(step.key) << ": the grid shows row "
            << grid->currentIndex().row() + 1 << ", not " << step.row;
        EXPECT_EQ(records.AbsolutePosition(), step.row) << QTest::toString(step.key);
        EXPECT_EQ(form().adoprimaryrs2->AbsolutePosition(), step.row);
        EXPECT_TRUE(grid->isVisible());
    }
}

// Run also at screen scales of 1.5 and 2 (QT_SCALE_FACTOR): the form keeps the size it was
// designed with, counted in the screen's logical pixels, and is drawn with all its pixels.
TEST_F(WindowTest, TheFormKeepsItsSizeAndDrawsWithEveryPixelAtTheScreensScale) {
    const double scale = qEnvironmentVariableIsSet("QT_SCALE_FACTOR")
                             ? qEnvironmentVariable("QT_SCALE_FACTOR").toDouble()
                             : 1.0;
    startFramed();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    EXPECT_DOUBLE_EQ(main()->devicePixelRatioF(), scale);
    // 9480 twips, 15 twips a pixel, within what the window manager's frame may add when it
    // comes after the form gave the window its size.
    EXPECT_NEAR(main()->frameGeometry().width(), desktop::px(9480), 8);
    QWidget* next = widget(form(), "cmdNext");
    EXPECT_EQ(next->width(), desktop::px(form()("cmdNext").Num("Width")));
    const QPixmap drawn = next->grab();
    EXPECT_EQ(drawn.width(), static_cast<int>(std::lround(next->width() * scale)));
    EXPECT_NEAR(script("window.devicePixelRatio").toDouble(), scale, 0.03);
}

TEST_F(WindowTest, AScreenshotOfTheMaximisedMainWindow) {
    start();
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    QTest::mouseClick(widget(form(), "cmdShowPic"), Qt::LeftButton);
    ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    main()->showMaximized();
    ASSERT_TRUE(waitFor([&] { return main()->width() > 1000; }, Patience));
    EXPECT_TRUE(paneShowsPicture());
    QTest::qWait(500);
    EXPECT_TRUE(photograph(main(), MAXIMISED_SCREENSHOT));
}

}  // namespace
