// What a user does with products in the real window: adds one by typing into the record
// boxes, cancels an addition, deletes the current product, follows a link of a page the
// program writes, enlarges the item's picture and comes back; and what dragging with the
// mouse does on a form whose labels can be dragged.
#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "desktop/form_host.h"
#include "desktop/qt_ui.h"
#include "desktop_fixture.h"
#include "gesture_form.h"

namespace {

const std::string Title = "Catalogue Editing Desktop Test";

class EditingDesktopTest : public DesktopFixture {
  protected:
    EditingDesktopTest() : DesktopFixture(Title, Folder::ProgramCopy, Tip::Left) {
        // No tip of the day: every start here is a plain start.
        setting("Options", "Show Tips at Startup", "0");
        // A message box that no test expects is noted and closed, so that a test fails
        // instead of waiting for ever.
        QObject::connect(&dialogWatch_, &QTimer::timeout, [this] {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                auto* box = qobject_cast<QMessageBox*>(w);
                if (!box || !box->isVisible()) continue;
                dialogs_ << box->text();
                if (QAbstractButton* b = box->buttons().value(0)) b->click();
            }
        });
        dialogWatch_.start(200);
    }

    ~EditingDesktopTest() override { dialogWatch_.stop(); }

    // The user leaves by File, Exit and starts the program again on the same folder.
    void restart() {
        QAction* exit = window(form()).actionFor(form()("mnuFileExit"));
        ASSERT_TRUE(exit);
        exit->trigger();
        ASSERT_TRUE(ended_);
        program_.reset();
        start();
        ASSERT_TRUE(started_);
    }

    using DesktopFixture::widget;
    QWidget* widget(const std::string& name, int index = -1) { return widget(form(), name, index); }
    static bool reachable(const QWidget* w) { return w && w->isVisible() && w->isEnabled(); }

    // A click of the mouse on a control; false when the user cannot see or reach it.
    bool click(const std::string& name, int index = -1) {
        QWidget* w = widget(name, index);
        if (!reachable(w)) return false;
        QTest::mouseClick(w, Qt::LeftButton);
        return true;
    }
    // The command panel holds the editing buttons and the search box; the MENU button
    // opens it.
    void openPanel() {
        if (!form()("Frame5").Visible()) click("Command21");
    }
    bool command(const std::string& name) {
        openPanel();
        return click(name);
    }
    // The user clicks into a text box, selects what it holds and types over it.
    bool typeInto(const std::string& name, int index, const QString& text) {
        auto* line = qobject_cast<QLineEdit*>(widget(name, index));
        if (!reachable(line)) return false;
        QTest::mouseClick(line, Qt::LeftButton);
        line->selectAll();
        QTest::keyClicks(line, text);
        return true;
    }

    // N of the status line "Record: k  of  N"; -1 when it shows no count.
    int count() {
        const auto match = QRegularExpression("of +(\\d+)").match(status());
        return match.hasMatch() ? match.captured(1).toInt() : -1;
    }
    QString shownText(const std::string& name, int index = -1) {
        auto* line = qobject_cast<QLineEdit*>(widget(name, index));
        return line ? line->text() : QString();
    }
    // Finds a product by its stock number with the quick search box.
    bool search(const QString& stockNo) {
        openPanel();
        return typeInto("txtSrch", -1, stockNo) && click("cmdSearch");
    }

    QTimer dialogWatch_;
    QStringList dialogs_;
};

TEST_F(EditingDesktopTest, AProductAddedByTypingIsThereAfterARestart) {
    start();
    ASSERT_TRUE(started_);
    const int before = count();
    ASSERT_GT(before, 0) << status().toStdString();
    ASSERT_TRUE(command("cmdAdd"));
    // Adding: Update and Cancel take the place of Add and Delete.
    EXPECT_TRUE(reachable(widget("cmdUpdate")));
    EXPECT_TRUE(reachable(widget("cmdCancel")));
    EXPECT_FALSE(reachable(widget("cmdAdd")));
    EXPECT_FALSE(reachable(widget("cmdNext")));
    EXPECT_TRUE(shownText("txtFields", 27).isEmpty());
    ASSERT_TRUE(typeInto("txtFields", 27, "ZZ-901"));
    ASSERT_TRUE(typeInto("txtFields", 22, "Typed Teapot"));
    ASSERT_TRUE(click("cmdUpdate"));
    EXPECT_TRUE(reachable(widget("cmdAdd")));
    EXPECT_EQ(count(), before + 1) << status().toStdString();

    restart();
    EXPECT_EQ(count(), before + 1) << status().toStdString();
    ASSERT_TRUE(search("ZZ-901"));
    EXPECT_EQ(shownText("txtFields", 27), "ZZ-901");
    EXPECT_EQ(shownText("txtFields", 22), "Typed Teapot");
    EXPECT_TRUE(dialogs_.isEmpty()) << dialogs_.join("\n").toStdString();
}

TEST_F(EditingDesktopTest, CancelAfterAddLeavesNothingBehind) {
    start();
    ASSERT_TRUE(started_);
    const int before = count();
    const QString first = shownText("txtFields", 27);
    ASSERT_TRUE(command("cmdAdd"));
    ASSERT_TRUE(typeInto("txtFields", 27, "ZZ-902"));
    ASSERT_TRUE(typeInto("txtFields", 22, "Never Kept"));
    ASSERT_TRUE(click("cmdCancel"));
    EXPECT_TRUE(reachable(widget("cmdAdd")));
    EXPECT_FALSE(reachable(widget("cmdUpdate")));
    EXPECT_EQ(count(), before);

    restart();
    EXPECT_EQ(count(), before) << status().toStdString();
    // The search finds nothing and stays on the first product.
    ASSERT_TRUE(search("ZZ-902"));
    EXPECT_EQ(shownText("txtFields", 27), first);
    EXPECT_TRUE(dialogs_.isEmpty()) << dialogs_.join("\n").toStdString();
}

TEST_F(EditingDesktopTest, DeleteRemovesTheCurrentProduct) {
    start();
    ASSERT_TRUE(started_);
    const int before = count();
    ASSERT_TRUE(click("cmdNext"));
    const QString gone = shownText("txtFields", 27);
    ASSERT_FALSE(gone.isEmpty());
    ASSERT_TRUE(command("cmdDelete"));
    EXPECT_EQ(count(), before - 1) << status().toStdString();
    EXPECT_NE(shownText("txtFields", 27), gone);

    restart();
    EXPECT_EQ(count(), before - 1) << status().toStdString();
    ASSERT_TRUE(search(gone));
    EXPECT_NE(shownText("txtFields", 27), gone);
    EXPECT_TRUE(dialogs_.isEmpty()) << dialogs_.join("\n").toStdString();
}

TEST_F(EditingDesktopTest, AClickOnALinkOfAWrittenPageRunsItsCommand) {
    start();
    ASSERT_TRUE(started_);
    ASSERT_TRUE(paneShows(shownText("txtFields", 27)));
    form().ContinueFlag = false;
    pane().Navigate2("about:blank");
    pane().Write("<a href=CONTINUE>go</a>");
    ASSERT_TRUE(paneShows("CONTINUE"));
    ASSERT_TRUE(clickInPage("a"));
    EXPECT_TRUE(waitFor([&] { return form().ContinueFlag; }, Patience));
    // The command was caught: the page stays.
    QTest::qWait(200);
    EXPECT_EQ(pane().LocationURL(), "about:blank");
}

TEST_F(EditingDesktopTest, AClickOnThePictureEnlargesItAndTheReturnLinkComesBack) {
    start();
    ASSERT_TRUE(started_);
    const QString stockNo = shownText("txtFields", 27);
    ASSERT_TRUE(paneShows(stockNo));
    ASSERT_TRUE(waitFor(
        [&] {
            return script("document.images.length > 0 && document.images[0].naturalWidth > 0")
                .toBool();
        },
        Patience));
    ASSERT_TRUE(clickInPage("img"));
    ASSERT_TRUE(paneShows("Click Here To Return To Main Screen"));
    EXPECT_TRUE(shownHtml().contains("Item: " + stockNo));
    ASSERT_TRUE(clickInPage("a[href=PICBACK]"));
    EXPECT_TRUE(paneShows("Your Cost") || paneShows(stockNo));
    EXPECT_FALSE(shownHtml().contains("Click Here To Return To Main Screen"));
    EXPECT_EQ(pane().LocationURL(), appDir() + "page.htm");
    EXPECT_TRUE(dialogs_.isEmpty()) << dialogs_.join("\n").toStdString();
}

// --- Dragging with the mouse, on a form of the test's own ---------------------------------

class DragDesktopTest : public DesktopFixture {
  protected:
    DragDesktopTest() : DesktopFixture(Title, Folder::Empty) {
        program_ = std::make_unique<desktop::DesktopProgram>(appDir(), Title, settings_.path());
        Runtime& rt = program_->runtime();
        rt.Register("frmBoard", [] { return std::make_unique<GestureForm>(); });
        board_ = static_cast<GestureForm*>(&rt.Get("frmBoard"));
        rt.Show(*board_);
        QWidget* w = program_->ui().host().windowOf(*board_)->window();
        (void)QTest::qWaitForWindowExposed(w);
    }
    QWidget* widget(const std::string& name, int index = -1) {
        return DesktopFixture::widget(*board_, name, index);
    }

    // The user presses the left button on a widget, moves the mouse in a few steps to a
    // point of another widget and lets go there. The mouse stays with the pressed widget,
    // as the window system gives it.
    static void dragWithMouse(QWidget* from, QWidget* to, QPoint at) {
        const QPoint start = from->rect().center();
        const QPoint end = from->mapFromGlobal(to->mapToGlobal(at));
        QTest::mousePress(from, Qt::LeftButton, {}, start);
        for (int step = 1; step <= 4; ++step)
            QTest::mouseMove(from, start + (end - start) * step / 4);
        QTest::mouseRelease(from, Qt::LeftButton, {}, end);
    }

    GestureForm* board_ = nullptr;
};

TEST_F(DragDesktopTest, DroppingADraggableBoxOnAnotherRaisesDragDropWithTheSource) {
    QWidget* target = widget("lblBox", 7);
    ASSERT_TRUE(target);
    dragWithMouse(widget("lblItem", 0), target, QPoint(30, 10));
    ASSERT_EQ(board_->seen, std::vector<std::string>{"box drop 7 from lblItem(0)"});
    // Where it fell, in twips of the target.
    EXPECT_EQ(board_->lastX, 30 * 15);
    EXPECT_EQ(board_->lastY, 10 * 15);
}

TEST_F(DragDesktopTest, DroppingOnTheFreeAreaOfAFrameRaisesTheFramesDragDrop) {
    QWidget* frame = widget("Frame1");
    ASSERT_TRUE(frame);
    // Below the boxes, inside the frame.
    dragWithMouse(widget("lblItem", 0), frame, QPoint(150, 200));
    EXPECT_EQ(board_->seen, std::vector<std::string>{"frame drop -1 from lblItem(0)"});
}

TEST_F(DragDesktopTest, APressAndReleaseWithoutMovingDropsNothing) {
    QTest::mouseClick(widget("lblItem", 0), Qt::LeftButton);
    EXPECT_TRUE(board_->seen.empty()) << board_->seen.front();
}

TEST_F(DragDesktopTest, ABoxThatDoesNotDragOnlyClicks) {
    dragWithMouse(widget("lblItem", 1), widget("lblBox", 7), QPoint(30, 10));
    // The mouse went up over another box: no drop, no click.
    EXPECT_EQ(board_->seen,
              (std::vector<std::string>{"item down 1 button 1", "item up 1 button 1"}));
    board_->seen.clear();
    QTest::mouseClick(widget("lblItem", 1), Qt::LeftButton);
    EXPECT_EQ(board_->seen, (std::vector<std::string>{"item down 1 button 1", "item up 1 button 1",
                                                      "item click 1"}));
}

TEST_F(DragDesktopTest, TheRightButtonReleasedOverABoxRaisesItsMouseUpOnce) {
    QTest::mouseClick(widget("lblBox", 7), Qt::RightButton);
    EXPECT_EQ(board_->seen, std::vector<std::string>{"box up 7 button 2"});
    board_->seen.clear();
    // A draggable box still hears the right button.
    QTest::mouseClick(widget("lblItem", 0), Qt::RightButton);
    EXPECT_EQ(board_->seen,
              (std::vector<std::string>{"item down 0 button 2", "item up 0 button 2"}));
}

TEST_F(DragDesktopTest, TheMouseAndKeysGiveTheFormWhatTheSameScriptLinesGive) {
    // GestureScript's lines, made with the mouse and the keyboard.
    dragWithMouse(widget("lblItem", 0), widget("lblBox", 7), QPoint(30, 10));
    dragWithMouse(widget("lblItem", 1), widget("lblBox", 7), QPoint(30, 10));
    QTest::mouseClick(widget("lblItem", 1), Qt::LeftButton);
    QTest::keyClick(widget("txtName"), Qt::Key_A);
    EXPECT_EQ(board_->seen, GestureNotes);
}

}  // namespace
