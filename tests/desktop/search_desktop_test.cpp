// The detailed search in real windows, operated with the mouse: the main form's Detailed
// Search button opens the Search form modally; clicks on a field, an operator, a sort
// column, a typed value and Search filter the product list once the pane's CONTINUE link is
// clicked; Cancel lifts the search. Every caption of the search form and of the main form's
// panels reads whole, and no control hides another.
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>
#include <functional>
#include <string>

#include "base/convert.h"
#include "desktop/form_host.h"
#include "desktop/qt_ui.h"
#include "desktop_fixture.h"
#include "shell/module.h"

namespace {

// Column numbers of Products in its stored order, as the search form numbers its options.
constexpr int StockNoField = 2, ProdDescField = 4;
constexpr int LikeOperator = 0;

// The text of a button as it shows: "&Edit" shows "Edit".
QString shownText(QString text) {
    text.replace(QRegularExpression("&(.)"), "\\1");
    return text;
}

// Why a widget's caption does not read whole, or "" when it does.
QString captionCut(QWidget* w) {
    const QFontMetrics fm = w->fontMetrics();
    QString text;
    int needed = 0, room = 0;
    if (auto* option = qobject_cast<QRadioButton*>(w)) {
        text = option->text();
        needed = option->sizeHint().width();
        room = option->width();
    } else if (auto* check = qobject_cast<QCheckBox*>(w)) {
        text = check->text();
        needed = text.isEmpty() ? 0 : check->sizeHint().width();
        room = check->width();
    } else if (auto* button = qobject_cast<QPushButton*>(w)) {
        // The style keeps a frame and a little air on either side of the text.
        text = shownText(button->text());
        needed = fm.horizontalAdvance(text.trimmed()) + 6;
        room = button->width();
        if (!text.isEmpty() && button->height() < fm.height() + 4)
            return QString("\"%1\" is %2 px high").arg(text).arg(button->height());
    } else if (auto* label = qobject_cast<QLabel*>(w); label && !label->wordWrap()) {
        text = label->text();
        needed = fm.horizontalAdvance(text);
        room = label->contentsRect().width();
        if (!text.isEmpty() && label->height() < fm.height())
            return QString("\"%1\" is %2 px high").arg(text).arg(label->height());
    } else if (auto* frame = qobject_cast<QGroupBox*>(w)) {
        text = frame->title();
        needed = fm.horizontalAdvance(text) + 16;
        room = frame->width();
    }
    if (text.isEmpty() || needed <= room) return {};
    return QString("\"%1\" needs %2 px, has %3").arg(text).arg(needed).arg(room);
}

// The shown widgets directly inside a parent that a user sees and works.
QList<QWidget*> shownChildren(QWidget* parent) {
    QList<QWidget*> out;
    for (QWidget* w : parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (w->isVisible() && !w->objectName().isEmpty() && !qobject_cast<QWebEngineView*>(w) &&
            !w->inherits("QTableView"))
            out.push_back(w);
    return out;
}

// Every problem of a window's layout: captions cut, controls lying over each other or
// running out of the frame that holds them.
QStringList layoutFaults(QWidget* root) {
    QStringList faults;
    for (QWidget* w : root->findChildren<QWidget*>())
        if (w->isVisible() && !w->objectName().isEmpty())
            if (QString cut = captionCut(w); !cut.isEmpty()) faults << w->objectName() + ": " + cut;
    std::function<void(QWidget*)> walk = [&](QWidget* parent) {
        const QList<QWidget*> children = shownChildren(parent);
        QRect room = parent->rect();
        if (auto* frame = qobject_cast<QGroupBox*>(parent); frame && !frame->title().isEmpty())
            room.setTop(frame->fontMetrics().height() - 1);
        for (int i = 0; i < children.size(); ++i) {
            QWidget* a = children[i];
            if (parent != root && !room.contains(a->geometry()))
                faults << a->objectName() + " runs out of " + parent->objectName();
            for (int j = i + 1; j < children.size(); ++j)
                if (a->geometry().intersects(children[j]->geometry()))
                    faults << a->objectName() + " overlaps " + children[j]->objectName();
            walk(a);
        }
    };
    walk(root);
    return faults;
}

class SearchDesktopTest : public DesktopFixture {
  protected:
    SearchDesktopTest() : DesktopFixture("Catalogue Search Desktop Test") {}

    // Sub Main, with a user who presses OK on the tip of the day once it shows.
    void start() {
        DesktopFixture::start();
        ASSERT_TRUE(started_);
        ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
        // The search buttons stand in the command panel, which Edit Mode opens.
        ASSERT_TRUE(click(widget(form(), "cmdShowPic")));
        ASSERT_TRUE(widget(form(), "cmdDetSearch")->isVisible());
        ASSERT_TRUE(paneShows(QString::fromStdString(stockNo())));
    }

    Form* searchForm() { return program_->runtime().Loaded("Search"); }
    QWidget* window(const Form& f) {
        desktop::FormWindow* w = program_->ui().host().windowOf(f);
        return w ? w->window() : nullptr;
    }
    QWidget* onSearch(const std::string& name, int index = -1) {
        Form* s = searchForm();
        return s ? widget(*s, name, index) : nullptr;
    }

    // A click of the mouse where a user aims: on the caption of an option or a check box,
    // in the middle of anything else. The spot must show the widget itself, not another
    // one lying over it.
    bool click(QWidget* w) {
        if (!w || !w->isVisible() || !w->isEnabled()) return false;
        QPoint spot = w->rect().center();
        if (auto* button = qobject_cast<QAbstractButton*>(w);
            button && (qobject_cast<QRadioButton*>(w) || qobject_cast<QCheckBox*>(w))) {
            QStyleOptionButton option;
            option.initFrom(button);
            option.text = button->text();
            const bool radio = qobject_cast<QRadioButton*>(w) != nullptr;
            spot = w->style()
                       ->subElementRect(
                           radio ? QStyle::SE_RadioButtonClickRect : QStyle::SE_CheckBoxClickRect,
                           &option, w)
                       .center();
        }
        QWidget* top = w->window();
        QWidget* hit = top->childAt(w->mapTo(top, spot));
        if (hit != w && !w->isAncestorOf(hit)) {
            ADD_FAILURE() << w->objectName().toStdString() << " is covered by "
                          << (hit ? hit->objectName().toStdString() : "nothing");
            return false;
        }
        QTest::mouseClick(w, Qt::LeftButton, {}, spot);
        return true;
    }

    // A real click of the mouse on the pane's link to a word.
    bool clickLink(const QString& word) { return clickInPage("a[href='" + word + "']"); }

    // The Detailed Search button. The program waits inside its click until the modal form
    // closes, and then again until the pane's CONTINUE link is clicked; the user acts from
    // within those waits: `onForm` once the form shows, `afterwards` once the status line
    // reports the matches. A form that a failed step left open is unloaded, so that no
    // failure hangs the test.
    void detailedSearch(const std::function<void()>& onForm,
                        const std::function<void()>& afterwards = {}) {
        bool formSeen = false, pageSeen = !afterwards;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            if (!formSeen) {
                Form* open = searchForm();
                QWidget* w = open ? window(*open) : nullptr;
                if (!w || !w->isVisible()) return;
                formSeen = true;
                onForm();
                if ((open = searchForm())) {
                    ADD_FAILURE() << "the search form was left open";
                    program_->runtime().Unload(*open);
                }
            } else if (!pageSeen && form()("lblStatus").Caption().ends_with("Matches Found")) {
                pageSeen = true;
                afterwards();
            }
        });
        user.start(50);
        EXPECT_TRUE(click(widget(form(), "cmdDetSearch")));
        user.stop();
        EXPECT_TRUE(formSeen) << "the search form did not show";
        EXPECT_TRUE(pageSeen) << "the pane did not report the matches";
    }

    // On the open search form: a field, an operator, a value typed into the box, a sort
    // column, each by a click of the mouse.
    void buildCriteria(int field, int op, const QString& value, int sortBy) {
        EXPECT_TRUE(click(onSearch("optsrch", field)));
        EXPECT_TRUE(click(onSearch("optOperator", op)));
        QWidget* box = onSearch("txtSearch");
        EXPECT_TRUE(click(box));
        QTest::keyClicks(box, value);
        EXPECT_TRUE(click(onSearch("optSort", sortBy)));
    }
    QString preview() {
        auto* box = qobject_cast<QLineEdit*>(onSearch("Text1"));
        if (box) return box->text();
        QWidget* w = onSearch("Text1");
        return w ? w->property("plainText").toString() : QString();
    }

    // The number of products that the status line counts: "Record: 1  of  N".
    int statusCount() {
        const auto m = QRegularExpression("^Record: \\d+  of  (\\d+)").match(status());
        return m.hasMatch() ? m.captured(1).toInt() : -1;
    }
};

TEST_F(SearchDesktopTest, DetailedSearchOpensTheSearchFormModallyOverTheMainForm) {
    start();
    bool shown = false, modal = false, mainShows = false;
    QString title;
    detailedSearch([&] {
        QWidget* w = window(*searchForm());
        shown = w && w->isVisible();
        modal = w && w->isModal();
        title = w ? w->windowTitle() : QString();
        mainShows = window(form())->isVisible();
        EXPECT_TRUE(Mod().SearchFormOpen.BoolValue());
        // The form opens with Like, sorted by stock number, the preview empty.
        EXPECT_TRUE(qobject_cast<QRadioButton*>(onSearch("optOperator", 0))->isChecked());
        EXPECT_TRUE(qobject_cast<QRadioButton*>(onSearch("optSort", StockNoField))->isChecked());
        EXPECT_EQ(preview(), "");
        EXPECT_TRUE(click(onSearch("cmdCancel")));
    });
    EXPECT_TRUE(shown);
    EXPECT_TRUE(modal);
    EXPECT_TRUE(mainShows);
    EXPECT_EQ(title, "Detailed Search Form");
    EXPECT_EQ(searchForm(), nullptr);
}

TEST_F(SearchDesktopTest, EveryCaptionOfTheSearchFormReadsWholeAndNothingOverlaps) {
    start();
    QStringList faults;
    int options = 0;
    detailedSearch([&] {
        QWidget* w = window(*searchForm());
        faults = layoutFaults(w);
        options = static_cast<int>(w->findChildren<QRadioButton*>().size());
        // The captions of the fields come from the main form's labels.
        EXPECT_EQ(qobject_cast<QRadioButton*>(onSearch("optsrch", 1))->text(), "Suppliers Name");
        EXPECT_EQ(qobject_cast<QRadioButton*>(onSearch("optsrch", StockNoField))->text(),
                  "Stock #:");
        EXPECT_EQ(qobject_cast<QRadioButton*>(onSearch("optSort", 17))->text(), "Picture Path");
        EXPECT_TRUE(click(onSearch("cmdCancel")));
    });
    EXPECT_EQ(options, 30 + 30 + 9);
    EXPECT_TRUE(faults.isEmpty()) << faults.join("\n").toStdString();
}

TEST_F(SearchDesktopTest, AMouseUserFiltersTheProductListByStockNumber) {
    start();
    const int all = statusCount();
    ASSERT_GT(all, 6);
    QString shownPreview, statusBeforeContinue;
    bool pageShown = false, linkClicked = false;
    detailedSearch(
        [&] {
            buildCriteria(StockNoField, LikeOperator, "BD", ProdDescField);
            shownPreview = preview();
            EXPECT_TRUE(click(onSearch("cmdSrch")));
        },
        [&] {
            // The pane reports the count with the criteria and waits for CONTINUE.
            pageShown = paneShows("6 Items Found Matching Your Search!") &&
                        shownHtml().contains("StockNo like '*BD*'");
            statusBeforeContinue = status();
            linkClicked = clickLink("CONTINUE");
            if (!linkClicked) form().ContinueFlag = true;  // so that the program goes on
        });
    EXPECT_EQ(shownPreview, "StockNo like '*BD*' Sorted by ProdDesc");
    EXPECT_EQ(searchForm(), nullptr);
    EXPECT_EQ(textOf(Mod().SearchCriteria), "StockNo like '*BD*'");
    EXPECT_TRUE(pageShown);
    EXPECT_EQ(statusBeforeContinue, "6 - Matches Found");
    EXPECT_TRUE(linkClicked);
    // Once CONTINUE is clicked the list holds the six, sorted by description.
    EXPECT_TRUE(waitFor([&] { return status().startsWith("Record: 1  of  6"); }, Patience))
        << status().toStdString();
    EXPECT_EQ(form().adoPrimaryRS->RecordCount(), 6);
    EXPECT_EQ(stockNo(), "BD-1020");  // "Clear faceted acrylic beads ..." comes first
    QTest::mouseClick(widget(form(), "cmdLast"), Qt::LeftButton);
    EXPECT_TRUE(status().startsWith("Record: 6  of  6")) << status().toStdString();
    EXPECT_NE(stockNo().find("BD"), std::string::npos);
}

TEST_F(SearchDesktopTest, AndGivesTheValueBoxTheFocusTabGoesOnAndEscapeCancels) {
    start();
    QWidget *afterAnd = nullptr, *afterTab = nullptr, *box = nullptr, *next = nullptr;
    detailedSearch([&] {
        buildCriteria(StockNoField, LikeOperator, "BD", ProdDescField);
        box = onSearch("txtSearch");
        next = onSearch("Text1");
        EXPECT_TRUE(click(onSearch("cmdAndOr", 0)));
        waitFor([&] { return QApplication::focusWidget() == box; }, 5000);
        afterAnd = QApplication::focusWidget();
        QTest::keyClick(afterAnd, Qt::Key_Tab);
        afterTab = QApplication::focusWidget();
        QTest::keyClick(afterTab, Qt::Key_Escape);
        waitFor([&] { return searchForm() == nullptr; }, 5000);
    });
    EXPECT_EQ(afterAnd, box) << "the focus is on "
                             << (afterAnd ? afterAnd->objectName().toStdString() : "nothing");
    EXPECT_EQ(afterTab, next) << "Tab went to "
                              << (afterTab ? afterTab->objectName().toStdString() : "nothing");
    EXPECT_EQ(searchForm(), nullptr);
    EXPECT_FALSE(Mod().SearchFormOpen.BoolValue());
}

TEST_F(SearchDesktopTest, CancelClosesTheFormAndLiftsTheSearch) {
    start();
    const int all = statusCount();
    detailedSearch(
        [&] {
            buildCriteria(StockNoField, LikeOperator, "BD", StockNoField);
            EXPECT_TRUE(click(onSearch("cmdSrch")));
        },
        [&] {
            EXPECT_TRUE(paneShows("Items Found Matching Your Search!"));
            if (!clickLink("CONTINUE")) form().ContinueFlag = true;
        });
    ASSERT_TRUE(waitFor([&] { return statusCount() == 6; }, Patience)) << status().toStdString();
    detailedSearch([&] {
        buildCriteria(StockNoField, LikeOperator, "XB", StockNoField);
        EXPECT_TRUE(click(onSearch("cmdCancel")));
    });
    EXPECT_EQ(searchForm(), nullptr);
    EXPECT_EQ(textOf(Mod().SearchCriteria), "");
    EXPECT_FALSE(Mod().SearchFormOpen.BoolValue());
    EXPECT_TRUE(waitFor([&] { return statusCount() == all; }, Patience)) << status().toStdString();
    EXPECT_EQ(form().adoPrimaryRS->RecordCount(), all);
}

TEST_F(SearchDesktopTest, EveryCaptionOfTheMainFormReadsWholeWithTheCommandPanelOpen) {
    start();
    const QStringList faults = layoutFaults(window(form()));
    EXPECT_TRUE(faults.isEmpty()) << faults.join("\n").toStdString();
}

TEST_F(SearchDesktopTest, AScreenshotOfTheSearchForm) {
    start();
    bool saved = false;
    detailedSearch([&] {
        buildCriteria(StockNoField, LikeOperator, "BD", ProdDescField);
        QTest::qWait(300);
        saved = photograph(window(*searchForm()), SEARCH_SCREENSHOT);
        EXPECT_TRUE(click(onSearch("cmdCancel")));
    });
    EXPECT_TRUE(saved);
}

}  // namespace
