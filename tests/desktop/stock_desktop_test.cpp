// The road of stock in real windows, worked with the mouse and the keyboard: an item
// ordered from the main form, the order closed, received and one of it sold, and the
// product's counters on the main form afterwards. And the stock forms over the main form,
// each laid out inside its window with no two controls on top of each other.
#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/convert.h"
#include "desktop_fixture.h"
#include "records/store.h"
#include "shell/module.h"

namespace {

const std::string Title = "Catalogue Stock Desktop Test";

// What the user does when a dialog or a window asks for it, in order.
struct Step {
    std::string what;
    std::function<bool()> ready;
    std::function<void()> act;
};

class StockDesktopTest : public DesktopFixture {
  protected:
    StockDesktopTest() : DesktopFixture(Title, Folder::ProgramCopy, Tip::Left) {
        setting("Options", "Show Tips at Startup", "0");
        // The steps run from the event loop, so that they also run inside the program's
        // own waits and dialogs. A dialog that no step expects is noted and closed.
        QObject::connect(&stepper_, &QTimer::timeout, [this] { tick(); });
        stepper_.start(50);
    }
    ~StockDesktopTest() override { stepper_.stop(); }

    static QWidget* shownDialog() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if ((qobject_cast<QMessageBox*>(w) || qobject_cast<QInputDialog*>(w)) && w->isVisible())
                return w;
        return nullptr;
    }
    static QString promptOf(QWidget* dialog) {
        if (auto* box = qobject_cast<QMessageBox*>(dialog)) return box->text();
        if (auto* input = qobject_cast<QInputDialog*>(dialog)) return input->labelText();
        return {};
    }

    void tick() {
        if (!steps_.empty() && steps_.front().ready()) {
            stuck_ = 0;
            Step step = steps_.front();
            steps_.pop_front();
            done_.push_back(step.what);
            step.act();  // may open a dialog that a later tick answers
            return;
        }
        QWidget* dialog = shownDialog();
        if (!dialog || ++stuck_ < 60) return;
        stuck_ = 0;
        unexpected_ << promptOf(dialog);
        dialog->close();
    }

    // An input box whose prompt begins with `prompt`: the user types the answer and presses
    // Enter. An empty answer keeps what the box offers.
    void answerInput(const QString& prompt, const QString& answer) {
        steps_.push_back({"input " + prompt.toStdString(),
                          [prompt] {
                              auto* d = qobject_cast<QInputDialog*>(shownDialog());
                              return d && d->labelText().startsWith(prompt);
                          },
                          [answer] {
                              auto* d = qobject_cast<QInputDialog*>(shownDialog());
                              auto* line = d->findChild<QLineEdit*>();
                              if (!answer.isEmpty()) {
                                  line->selectAll();
                                  QTest::keyClicks(line, answer);
                              }
                              QTest::keyClick(line, Qt::Key_Return);
                          }});
    }
    // A message box whose prompt begins with `prompt`: the user clicks the button.
    void answerBox(const QString& prompt, QMessageBox::StandardButton button) {
        steps_.push_back({"box " + prompt.toStdString(),
                          [prompt] {
                              auto* b = qobject_cast<QMessageBox*>(shownDialog());
                              return b && b->text().startsWith(prompt);
                          },
                          [button] {
                              auto* b = qobject_cast<QMessageBox*>(shownDialog());
                              QTest::mouseClick(b->button(button), Qt::LeftButton);
                          }});
    }
    // Once the form's control shows, the user clicks it.
    void clickWhenShown(const std::string& formName, const std::string& control) {
        steps_.push_back({"click " + formName + "." + control,
                          [this, formName, control] {
                              Form* f = program_->runtime().Loaded(formName);
                              QWidget* w = f ? widget(*f, control) : nullptr;
                              return reachable(w) && !shownDialog();
                          },
                          [this, formName, control] {
                              QTest::mouseClick(
                                  widget(*program_->runtime().Loaded(formName), control),
                                  Qt::LeftButton);
                          }});
    }
    bool stepsDone() {
        return waitFor([&] { return steps_.empty() && !shownDialog(); }, Patience);
    }

    static bool reachable(const QWidget* w) { return w && w->isVisible() && w->isEnabled(); }
    Form& shown(const std::string& name) {
        Form* f = program_->runtime().Loaded(name);
        if (!f) throw std::runtime_error(name + " is not loaded");
        return *f;
    }
    bool click(Form& f, const std::string& name, int index = -1) {
        QWidget* w = widget(f, name, index);
        if (!reachable(w)) return false;
        QTest::mouseClick(w, Qt::LeftButton);
        return true;
    }
    bool typeInto(Form& f, const std::string& name, int index, const QString& text) {
        auto* line = qobject_cast<QLineEdit*>(widget(f, name, index));
        if (!reachable(line)) return false;
        QTest::mouseClick(line, Qt::LeftButton);
        line->selectAll();
        QTest::keyClicks(line, text);
        return true;
    }
    QString shownText(Form& f, int index) {
        auto* line = qobject_cast<QLineEdit*>(widget(f, "txtFields", index));
        return line ? line->text() : QString();
    }
    // The main form's command panel holds the ordering buttons; MENU opens it.
    void openPanel() {
        if (!form()("Frame5").Visible()) click(form(), "Command21");
    }
    // The user opens a menu of the main form's menu bar and clicks one of its items.
    bool chooseFromMenu(const std::string& menu, const std::string& item) {
        desktop::FormWindow& main = window(form());
        auto* bar = qobject_cast<QMainWindow*>(main.window())->menuBar();
        QAction* top = main.actionFor(form()(menu));
        QAction* entry = main.actionFor(form()(item));
        if (!top || !entry || !top->menu()) return false;
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(top).center());
        QMenu* list = top->menu();
        if (!waitFor([&] { return list->isVisible(); }, Patience)) return false;
        QTest::mouseClick(list, Qt::LeftButton, {}, list->actionGeometry(entry).center());
        return true;
    }
    bool opensFromMenu(const std::string& item, const std::string& formName) {
        if (!chooseFromMenu("mnuData", item)) return false;
        return waitFor(
            [&] {
                Form* f = program_->runtime().Loaded(formName);
                return f && window(*f).window()->isVisible();
            },
            Patience);
    }

    // The first row of a statement as the catalogue holds it, its fields joined by blanks.
    static std::string stored(const std::string& statement) {
        auto conn = CreateConnection();
        conn->Open(connectionText(Mod().DBName), "", "");
        auto rs = CreateRecordset();
        rs->Open(statement, *conn);
        std::string row;
        for (int i = 0; i < rs->FieldCount(); ++i)
            row += (i ? " " : "") + CStr(rs->Fields(i).Value());
        return row;
    }
    // A product's counters: OnOrder, Inventory, NoSold.
    static std::string storedCounters(const std::string& stockNo) {
        return stored("select OnOrder, Inventory, NoSold from Products where StockNo = '" +
                      stockNo + "'");
    }

    QTimer stepper_;
    std::deque<Step> steps_;
    std::vector<std::string> done_;
    QStringList unexpected_;
    int stuck_ = 0;
};

TEST_F(StockDesktopTest, AnItemOrderedReceivedAndSoldShowsItsCountersOnTheMainForm) {
    start();
    ASSERT_TRUE(started_);
    const std::string item = stockNo();
    const int onOrder = shownText(form(), 13).toInt();
    const int inventory = shownText(form(), 8).toInt();
    const int sold = shownText(form(), 11).toInt();
    const std::string inHand = "select Number from Inventory where [Product Id] = '" + item + "'";
    const int before = std::stoi(stored(inHand));
    ASSERT_EQ(storedCounters(item), std::to_string(onOrder) + " " + std::to_string(inventory) +
                                        " " + std::to_string(sold));

    // Order Item: the number, the quantity, the shipping, then Update on the line.
    openPanel();
    answerInput("Enter The Order Number/ID Below", "D100");
    answerInput("Order How Many?", "2");
    answerInput("What Shipping Method For This Order?", "1");
    clickWhenShown("frmOrders", "cmdUpdate");
    ASSERT_TRUE(click(form(), "Command1"));
    ASSERT_TRUE(stepsDone()) << steps_.front().what;
    EXPECT_EQ(program_->runtime().Loaded("frmOrders"), nullptr);
    EXPECT_EQ(shownText(form(), 13).toInt(), onOrder + 2);
    EXPECT_EQ(storedCounters(item), std::to_string(onOrder + 2) + " " + std::to_string(inventory) +
                                        " " + std::to_string(sold));

    // Order Done opens the invoice with the order's totals; Update stores it.
    openPanel();
    ASSERT_TRUE(click(form(), "Command2"));
    ASSERT_TRUE(waitFor([&] { return reachable(widget(shown("frmInvoice"), "cmdUpdate")); }));
    EXPECT_EQ(shownText(shown("frmInvoice"), 0), "D100");
    ASSERT_TRUE(click(shown("frmInvoice"), "cmdUpdate"));
    ASSERT_TRUE(click(shown("frmInvoice"), "cmdClose"));

    // The orders form: the order found by its number, then all of it received today.
    ASSERT_TRUE(opensFromMenu("mnuDatafrmOrders", "frmOrders"));
    Form& orders = shown("frmOrders");
    ASSERT_TRUE(typeInto(orders, "txtSrch", -1, "D100"));
    QTest::keyClick(widget(orders, "txtSrch"), Qt::Key_Return);
    EXPECT_EQ(shownText(orders, 0), "D100");
    EXPECT_EQ(shownText(orders, 8), QString::fromStdString(item));
    answerBox("Receive ALL Items For This Invoice: D100", QMessageBox::Yes);
    answerInput("Enter Date Received Below.", "");
    ASSERT_TRUE(click(orders, "Command2"));
    ASSERT_TRUE(stepsDone()) << steps_.front().what;
    EXPECT_EQ(storedCounters(item), std::to_string(onOrder) + " " + std::to_string(inventory + 2) +
                                        " " + std::to_string(sold));
    ASSERT_TRUE(click(orders, "cmdClose"));

    // One sold from the stock in hand, at 9.99.
    ASSERT_TRUE(opensFromMenu("mnuDatafrmInventory", "frmInventory"));
    Form& stock = shown("frmInventory");
    EXPECT_EQ(shownText(stock, 0), QString::fromStdString(item));
    EXPECT_EQ(shownText(stock, 5).toInt(), before + 2);
    answerInput("Enter How Many You Sold Below", "1");
    ASSERT_TRUE(click(stock, "cmdSales"));
    ASSERT_TRUE(stepsDone()) << steps_.front().what;
    EXPECT_EQ(shownText(stock, 5).toInt(), before + 1);
    EXPECT_EQ(std::stoi(stored(inHand)), before + 1);
    ASSERT_TRUE(waitFor([&] { return reachable(widget(shown("frmSales"), "cmdUpdate")); }));
    Form& sales = shown("frmSales");
    EXPECT_EQ(shownText(sales, 4), "1");
    ASSERT_TRUE(typeInto(sales, "txtFields", 5, "9.99"));
    ASSERT_TRUE(click(sales, "cmdUpdate"));
    ASSERT_TRUE(click(sales, "cmdClose"));
    ASSERT_TRUE(click(stock, "cmdClose"));

    // Back on the main form, the sale comes off its counters.
    QWidget* main = window(form()).window();
    QTest::mouseClick(widget(form(), "lblStatus"), Qt::LeftButton);
    if (Mod().SoldQty > 0) main->activateWindow();
    ASSERT_TRUE(waitFor([&] { return Mod().SoldQty == 0; }));
    EXPECT_EQ(stockNo(), item);
    EXPECT_EQ(shownText(form(), 13).toInt(), onOrder);
    EXPECT_EQ(shownText(form(), 8).toInt(), inventory + 1);
    EXPECT_EQ(shownText(form(), 11).toInt(), sold + 1);
    EXPECT_EQ(storedCounters(item), std::to_string(onOrder) + " " + std::to_string(inventory + 1) +
                                        " " + std::to_string(sold + 1));
    EXPECT_TRUE(unexpected_.isEmpty()) << unexpected_.join("\n").toStdString();
}

// --- The stock forms over the main form ----------------------------------------------------

// Where a widget stands in its window.
QRect placeIn(const QWidget* window, const QWidget* w) {
    return QRect(w->mapTo(window, QPoint(0, 0)), w->size());
}

// What is wrong with the form's layout as it shows now: a visible control that leaves the
// window's client area or its frame, or two visible controls of one container on top of
// each other.
std::vector<std::string> layoutFaults(desktop::FormWindow& win) {
    std::vector<std::string> faults;
    QWidget* window = win.window();
    struct Placed {
        std::string name;
        QWidget* widget;
        QRect at;
    };
    std::vector<Placed> shown;
    for (const auto& c : win.form().Controls()) {
        QWidget* w = win.widgetFor(*c);
        if (!w || !w->isVisibleTo(window)) continue;
        std::string name =
            c->Name() + (c->Index() >= 0 ? "(" + std::to_string(c->Index()) + ")" : std::string());
        shown.push_back({name, w, placeIn(window, w)});
        const QRect area = w->parentWidget() && w->parentWidget() != window
                               ? placeIn(window, w->parentWidget())
                               : window->rect();
        if (!area.contains(shown.back().at)) faults.push_back(name + " stands outside its area");
    }
    for (std::size_t i = 0; i < shown.size(); ++i)
        for (std::size_t j = i + 1; j < shown.size(); ++j)
            if (shown[i].widget->parentWidget() == shown[j].widget->parentWidget() &&
                shown[i].at.intersects(shown[j].at))
                faults.push_back(shown[i].name + " overlaps " + shown[j].name);
    return faults;
}

TEST_F(StockDesktopTest, EachStockFormOpensOverTheMainFormLaidOutCleanly) {
    start();
    ASSERT_TRUE(started_);
    const std::pair<const char*, const char*> forms[] = {
        {"mnuDatafrmOrders", "frmOrders"},       {"mnuDatafrmInvoice", "frmInvoice"},
        {"mnuDatafrmInventory", "frmInventory"}, {"mnuDatafrmSales", "frmSales"},
        {"mnuDatafrmSupplier", "frmSupplier"},   {"mnuDatafrmSetup", "frmSetup"}};
    const QRect over = window(form()).window()->frameGeometry();
    for (const auto& [item, name] : forms) {
        ASSERT_TRUE(opensFromMenu(item, name)) << name;
        Form& f = shown(name);
        QWidget* w = window(f).window();
        EXPECT_TRUE(over.intersects(w->frameGeometry())) << name;
        EXPECT_EQ(layoutFaults(window(f)), std::vector<std::string>{}) << name << " browsing";
        // Adding: Update and Cancel take the places of Add and Edit.
        ASSERT_TRUE(click(f, "cmdAdd")) << name;
        EXPECT_EQ(layoutFaults(window(f)), std::vector<std::string>{}) << name << " adding";
        ASSERT_TRUE(click(f, "cmdCancel")) << name;
        ASSERT_TRUE(click(f, "cmdClose")) << name;
        ASSERT_TRUE(waitFor([&] { return !program_->runtime().Loaded(name); })) << name;
    }
    EXPECT_TRUE(unexpected_.isEmpty()) << unexpected_.join("\n").toStdString();
}

}  // namespace
