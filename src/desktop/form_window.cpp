#include "desktop/form_window.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRubberBand>
#include <QScreen>
#include <QSlider>
#include <QStyle>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineView>
#include <QWindowStateChangeEvent>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "base/convert.h"
#include "base/vb_error.h"
#include "desktop/file_views.h"
#include "desktop/form_host.h"
#include "desktop/free_sizer.h"
#include "desktop/grid_model.h"
#include "desktop/guard.h"
#include "desktop/keys.h"
#include "desktop/qt_ui.h"
#include "desktop/web_pane.h"
#include "forms/runtime.h"
#include "forms/user_input.h"
#include "records/recordset.h"

namespace desktop {

namespace {

// What a window's frame takes around its client area before the window system says.
constexpr int FrameWidth = 8, FrameHeight = 30;
constexpr long DefaultBackColor = 0xFFFFFF;

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

// Text for a widget: the classic line end becomes a line break.
QString shown(const std::string& s) {
    QString t = qs(s);
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return t;
}

// A label shows "&" as it stands, "&&" as one.
QString labelText(const std::string& caption) {
    QString t = shown(caption);
    QString out;
    for (int i = 0; i < t.size(); ++i) {
        if (t[i] == '&' && i + 1 < t.size()) {
            out += t[++i];
            continue;
        }
        out += t[i];
    }
    return out;
}

bool sameName(const std::string& a, const std::string& b) {
    return !NoCase{}(a, b) && !NoCase{}(b, a);
}

bool is(std::string_view property, const char* name) {
    return sameName(std::string(property), name);
}

// A classic colour (&H00BBGGRR); system colours (the high bit set) have none here.
bool colourOf(const Variant& v, QColor& colour) {
    long value = 0;
    try {
        value = static_cast<long>(CDbl(v));
    } catch (const VbError&) {
        return false;
    }
    if (value < 0 || value > 0xFFFFFF) return false;
    colour = QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
    return true;
}

bool isSystemColour(const Variant& v) {
    try {
        return static_cast<std::int64_t>(CDbl(v)) < 0;
    } catch (const VbError&) {
        return false;
    }
}

double num(const Control& c, const char* name, double fallback = 0) {
    try {
        return c.HasProperty(name) ? c.Num(name) : fallback;
    } catch (const VbError&) {
        return fallback;
    }
}

bool flag(const Control& c, const char* name) {
    try {
        return c.HasProperty(name) && CBool(c.Property(name));
    } catch (const VbError&) {
        return false;
    }
}

bool multiLine(const Control& c) {
    // A box marked multi-line, or one tall enough for three lines, takes line breaks.
    return flag(c, "MultiLine") || c.Num("Height") >= 600;
}

// The window of a form that has no menu bar: a dialog that only the model closes.
class FormDialog : public QDialog {
  public:
    using QDialog::QDialog;
    void reject() override {}
};

}  // namespace

FormWindow::FormWindow(Form& form, FormHost& host) : form_(form), host_(host) {
    build();
    std::weak_ptr<bool> alive = alive_;
    form_.Observe([this, alive](Form&, Control* control, std::string_view property) {
        if (!alive.expired()) changed(control, property);
    });
}

FormWindow::~FormWindow() {
    *alive_ = false;
    // The panes belong to the Ui: their views leave before the window goes.
    for (auto& [control, widget] : widgets_) {
        if (widget && qobject_cast<QWebEngineView*>(widget.data())) {
            widget->hide();
            widget->setParent(nullptr);
        }
    }
    delete window_.data();
}

QWidget* FormWindow::widgetFor(const Control& control) const {
    auto it = widgets_.find(&control);
    return it == widgets_.end() ? nullptr : it->second.data();
}

QAction* FormWindow::actionFor(const Control& control) const {
    auto it = actions_.find(&control);
    return it == actions_.end() ? nullptr : it->second.data();
}

void FormWindow::build() {
    bool hasMenus = false;
    for (const auto& c : form_.Controls())
        if (c->Kind() == ControlKind::Menu) hasMenus = true;
    canvas_ = new QWidget;
    canvas_->setObjectName(qs(form_.Name()));
    if (hasMenus) {
        auto* main = new QMainWindow;
        main->setCentralWidget(canvas_);
        window_ = main;
    } else {
        auto* dialog = new FormDialog;
        auto* layout = new QVBoxLayout(dialog);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(canvas_);
        window_ = dialog;
    }
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->installEventFilter(this);
    canvas_->installEventFilter(this);
    canvas_->setFocusPolicy(Qt::StrongFocus);
    ++applying_;
    for (const auto& c : form_.Controls())
        ensureWidget(*c);
    // The stacking of siblings follows the order of the controls, whatever order made them.
    for (const auto& c : form_.Controls())
        if (QWidget* w = widgetFor(*c)) w->raise();
    orderTabs();
    if (hasMenus) buildMenus();
    for (const char* p : {"Caption", "Enabled"})
        applyForm(p);
    --applying_;
    sizeWindow();
}

QWidget* FormWindow::ensureWidget(Control& control) {
    if (control.Kind() == ControlKind::Menu) return nullptr;
    auto it = widgets_.find(&control);
    if (it != widgets_.end()) return it->second;
    QWidget* parent = canvas_;
    const std::string container = control.Container();
    if (!container.empty()) {
        Control* frame = form_.Find(container);
        if (frame && frame != &control && frame->Kind() != ControlKind::Menu) {
            widgets_[&control] = nullptr;  // a frame inside itself stops here
            if (QWidget* w = ensureWidget(*frame)) parent = w;
        }
    }
    QWidget* widget = makeWidget(control, parent);
    widgets_[&control] = widget;
    if (!widget) return nullptr;
    watch(widget, &control);
    applyAll(control);
    connectUser(control, widget);
    return widget;
}

void FormWindow::watch(QWidget* widget, Control* control) {
    controlOf_[widget] = control;
    widget->installEventFilter(this);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) {
        controlOf_[area->viewport()] = control;
        area->viewport()->installEventFilter(this);
    }
    // The page of a pane takes the keys in a widget of its own, made when the page first
    // shows and made anew at times: each one is watched as it comes.
    if (qobject_cast<QWebEngineView*>(widget))
        for (QWidget* child : widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            watchSurface(child, control);
}

void FormWindow::watchSurface(QWidget* surface, Control* control) {
    if (controlOf_.count(surface) || surfaceOf_.count(surface)) return;
    surfaceOf_[surface] = control;
    surface->installEventFilter(this);
    connect(surface, &QObject::destroyed, this, [this](QObject* gone) { surfaceOf_.erase(gone); });
}

bool FormWindow::surfaceEvent(Control* control, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    // The keys that move about: Escape, PgUp, PgDn, End, Home, Up and Down. Others are the
    // page's own (typing into a field of the page).
    switch (classicKeyCode(*static_cast<QKeyEvent*>(event))) {
        case 27:
        case 33:
        case 34:
        case 35:
        case 36:
        case 38:
        case 40:
            return keyEvent(control, event);
        default:
            return false;
    }
}

QWidget* FormWindow::makeWidget(Control& control, QWidget* parent) {
    QWidget* w = nullptr;
    switch (control.Kind()) {
        case ControlKind::Label: {
            auto* label = new QLabel(parent);
            // A label of one line is cut at its width; a taller one wraps its words.
            label->setWordWrap(control.Num("Height") >= 400);
            label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            label->setTextFormat(Qt::PlainText);
            w = label;
            break;
        }
        case ControlKind::TextBox:
            if (multiLine(control)) {
                auto* edit = new QPlainTextEdit(parent);
                edit->setTabChangesFocus(true);
                w = edit;
            } else {
                w = new QLineEdit(parent);
            }
            break;
        case ControlKind::CheckBox:
            w = new QCheckBox(parent);
            break;
        case ControlKind::OptionButton:
            w = new QRadioButton(parent);
            break;
        case ControlKind::CommandButton: {
            auto* button = new QPushButton(parent);
            button->setAutoDefault(false);
            w = button;
            break;
        }
        case ControlKind::Frame:
            w = new QGroupBox(parent);
            // A frame hides what lies under it, the pane included, as the board over the
            // pane needs.
            w->setAutoFillBackground(true);
            break;
        case ControlKind::ListBox:
        case ControlKind::FileList:
        case ControlKind::DirList:
        case ControlKind::DriveList: {
            auto* list = new QListWidget(parent);
            const int multi = static_cast<int>(num(control, "MultiSelect"));
            list->setSelectionMode(multi == 1   ? QAbstractItemView::MultiSelection
                                   : multi == 2 ? QAbstractItemView::ExtendedSelection
                                                : QAbstractItemView::SingleSelection);
            w = list;
            break;
        }
        case ControlKind::ComboBox: {
            auto* combo = new QComboBox(parent);
            // A combo with a text part (Style 0) takes typing; one without is a list.
            combo->setEditable(control.HasProperty("Style") && num(control, "Style") == 0);
            w = combo;
            break;
        }
        case ControlKind::Slider: {
            auto* slider = new QSlider(Qt::Horizontal, parent);
            slider->setTracking(false);
            slider->setTickPosition(QSlider::TicksBelow);
            w = slider;
            break;
        }
        case ControlKind::DataGrid: {
            auto* table = new QTableView(parent);
            auto* model = new GridModel(table);
            table->setModel(model);
            table->setSelectionBehavior(QAbstractItemView::SelectRows);
            table->setSelectionMode(QAbstractItemView::SingleSelection);
            table->setEditTriggers(QAbstractItemView::NoEditTriggers);
            sizeGrid(*table);
            grids_[&control] = model;
            model->setSource(control.DataSource());
            w = table;
            break;
        }
        case ControlKind::Browser: {
            QWebEngineView* view = host_.ui().webPane(form_, control.Name()).view();
            view->setParent(parent);
            w = view;
            break;
        }
        case ControlKind::Image: {
            auto* image = new QLabel(parent);
            image->setAlignment(Qt::AlignCenter);
            w = image;
            break;
        }
        case ControlKind::DataControl: {
            auto* label = new QLabel(parent);
            label->setFrameShape(QFrame::Panel);
            w = label;
            break;
        }
        case ControlKind::Menu:
            return nullptr;
    }
    w->setObjectName(qs(control.Path()));
    return w;
}

void FormWindow::connectUser(Control& control, QWidget* widget) {
    Control* c = &control;
    if (auto* button = qobject_cast<QPushButton*>(widget)) {
        connect(button, &QPushButton::clicked, this,
                [this, c] { act([c] { UserInput::Click(*c); }); });
    } else if (auto* check = qobject_cast<QCheckBox*>(widget)) {
        connect(check, &QCheckBox::clicked, this,
                [this, c] { act([c] { UserInput::Click(*c); }); });
    } else if (auto* option = qobject_cast<QRadioButton*>(widget)) {
        // The model keeps the buttons of a container exclusive; Qt only shows it.
        option->setAutoExclusive(false);
        connect(option, &QRadioButton::clicked, this,
                [this, c] { act([c] { UserInput::Click(*c); }); });
    } else if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        connect(line, &QLineEdit::textEdited, this, [this, c](const QString& text) {
            act([c, text] { UserInput::Type(*c, text.toStdString()); });
        });
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) {
        connect(edit, &QPlainTextEdit::textChanged, this, [this, c, edit] {
            if (applying_) return;
            QString text = edit->toPlainText();
            text.replace('\n', QStringLiteral("\r\n"));
            act([c, text] { UserInput::Type(*c, text.toStdString()); });
        });
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        connect(list, &QListWidget::currentRowChanged, this, [this, c](int row) {
            if (applying_) return;
            act([c, row] {
                const int index = row - rowsAbove(*c);
                if (row >= 0 && index < c->ListCount()) UserInput::Select(*c, index);
            });
        });
        connect(list, &QListWidget::itemSelectionChanged, this, [this, c, list] {
            if (applying_ || list->selectionMode() == QAbstractItemView::SingleSelection) return;
            act([c, list] {
                for (int i = 0; i < list->count() && i < c->ListCount(); ++i)
                    if (list->item(i)->isSelected() != c->Selected(i))
                        UserInput::SelectItem(*c, i, list->item(i)->isSelected());
            });
        });
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        connect(combo, &QComboBox::activated, this, [this, c](int index) {
            act([c, index] {
                if (index >= 0 && index < c->ListCount()) UserInput::Select(*c, index);
            });
        });
        if (combo->isEditable())
            connect(combo, &QComboBox::editTextChanged, this, [this, c](const QString& text) {
                if (applying_) return;
                act([c, text] { UserInput::Type(*c, text.toStdString()); });
            });
    } else if (auto* slider = qobject_cast<QSlider*>(widget)) {
        connect(slider, &QSlider::valueChanged, this, [this, c](int value) {
            if (applying_) return;
            act([c, value] { UserInput::Slide(*c, value); });
        });
    } else if (auto* table = qobject_cast<QTableView*>(widget)) {
        connect(table, &QTableView::pressed, this, [this, c](const QModelIndex& index) {
            act([c, index] { UserInput::GridRow(*c, index.row() + 1); });
        });
    }
}

void FormWindow::orderTabs() {
    std::vector<std::pair<int, QWidget*>> order;
    for (const auto& c : form_.Controls()) {
        QWidget* w = widgetFor(*c);
        if (w && c->HasProperty("TabIndex"))
            order.emplace_back(static_cast<int>(num(*c, "TabIndex")), w);
    }
    // Controls of the same number keep the order the form added them in.
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1].second, order[i].second);
}

void FormWindow::buildMenus() {
    auto* main = static_cast<QMainWindow*>(window_.data());
    QMenuBar* bar = main->menuBar();
    std::set<std::string, NoCase> parents;
    for (const auto& c : form_.Controls())
        if (c->Kind() == ControlKind::Menu && !c->Container().empty())
            parents.insert(c->Container());
    for (const auto& owned : form_.Controls()) {
        Control* c = owned.get();
        if (c->Kind() != ControlKind::Menu) continue;
        QMenu* parentMenu = nullptr;
        if (!c->Container().empty()) {
            for (const auto& [control, menu] : menus_)
                if (sameName(control->Name(), c->Container())) parentMenu = menu;
            if (!parentMenu) continue;  // its menu is not a menu of this form
        }
        QAction* action = nullptr;
        if (parents.count(c->Name())) {
            auto* menu = parentMenu ? parentMenu->addMenu(QString()) : bar->addMenu(QString());
            menus_[c] = menu;
            action = menu->menuAction();
            connect(menu, &QMenu::aboutToShow, this,
                    [this, c] { act([c] { UserInput::Click(*c); }); });
        } else {
            action = parentMenu ? parentMenu->addAction(QString()) : bar->addAction(QString());
            connect(action, &QAction::triggered, this,
                    [this, c] { act([c] { UserInput::Click(*c); }); });
        }
        actions_[c] = action;
        for (const char* p : {"Caption", "Visible", "Enabled", "Checked"})
            applyMenu(*c, p);
    }
}

// --- The model to the screen --------------------------------------------------------------

void FormWindow::changed(Control* control, std::string_view property) {
    if (!window_) return;
    ++applying_;
    try {
        if (!control)
            applyForm(property);
        else if (control->Kind() == ControlKind::Menu)
            applyMenu(*control, property);
        else if (widgetFor(*control))
            apply(*control, property);
    } catch (const VbError&) {
    }
    --applying_;
    scheduleSync();
}

void FormWindow::applyAll(Control& control) {
    ++applying_;
    for (const char* p :
         {"Left",       "Caption",   "Text",     "Value",         "Min",         "Max",
          "List",       "ListIndex", "Selected", "Enabled",       "ToolTipText", "BackColor",
          "ForeColor",  "Picture",   "Locked",   "PasswordChar",  "Alignment",   "FontBold",
          "FontItalic", "FontSize",  "FontName", "FontUnderline", "Default",     "Visible"})
        if (std::string_view(p) == "Left" || std::string_view(p) == "List" ||
            std::string_view(p) == "Selected" || control.HasProperty(p))
            apply(control, p, true);
    --applying_;
}

void FormWindow::apply(Control& c, std::string_view property, bool initial) {
    QWidget* w = widgetFor(c);
    if (!w) return;
    const ControlKind kind = c.Kind();
    if (is(property, "Left") || is(property, "Top") || is(property, "Width") ||
        is(property, "Height")) {
        w->setGeometry(sizer_.place(c.Num("Left"), c.Num("Top"), c.Num("Width"), c.Num("Height")));
    } else if (is(property, "Visible")) {
        w->setVisible(c.Visible());
    } else if (is(property, "Focus")) {
        w->setFocus(Qt::OtherFocusReason);
    } else if (is(property, "TabIndex")) {
        if (!initial) orderTabs();
    } else if (is(property, "Default")) {
        if (auto* button = qobject_cast<QPushButton*>(w)) button->setDefault(flag(c, "Default"));
    } else if (is(property, "Enabled")) {
        w->setEnabled(c.Enabled());
    } else if (is(property, "ToolTipText")) {
        w->setToolTip(qs(textOf(c.Property("ToolTipText"))));
    } else if (is(property, "ZOrder")) {
        if (num(c, "ZOrder") == 0)
            w->raise();
        else
            w->lower();
    } else if (is(property, "Caption")) {
        const std::string caption = c.Caption();
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            b->setText(shown(caption));
        else if (auto* g = qobject_cast<QGroupBox*>(w))
            g->setTitle(labelText(caption));
        else if (auto* l = qobject_cast<QLabel*>(w); l && kind != ControlKind::Image)
            l->setText(labelText(caption));
    } else if (is(property, "Text")) {
        const QString text = shown(c.Text());
        if (auto* line = qobject_cast<QLineEdit*>(w)) {
            if (line->text() != text) {
                const int cursor = line->cursorPosition();
                line->setText(text);
                line->setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
            }
        } else if (auto* edit = qobject_cast<QPlainTextEdit*>(w)) {
            if (edit->toPlainText() != text) edit->setPlainText(text);
        } else if (auto* combo = qobject_cast<QComboBox*>(w); combo && combo->isEditable()) {
            if (combo->currentText() != text) combo->setEditText(text);
        }
    } else if (is(property, "Value")) {
        if (auto* check = qobject_cast<QCheckBox*>(w)) {
            const int v = static_cast<int>(num(c, "Value"));
            check->setTristate(v == 2);
            check->setCheckState(v == 1   ? Qt::Checked
                                 : v == 2 ? Qt::PartiallyChecked
                                          : Qt::Unchecked);
        } else if (auto* option = qobject_cast<QRadioButton*>(w)) {
            option->setChecked(c.Value().BoolValue());
        } else if (auto* slider = qobject_cast<QSlider*>(w)) {
            slider->setValue(static_cast<int>(num(c, "Value")));
        }
    } else if (is(property, "Min") || is(property, "Max")) {
        if (auto* slider = qobject_cast<QSlider*>(w)) {
            slider->setRange(static_cast<int>(num(c, "Min")), static_cast<int>(num(c, "Max")));
            slider->setValue(static_cast<int>(num(c, "Value")));
        }
    } else if (is(property, "List") || is(property, "ListIndex") || is(property, "Selected")) {
        if (auto* list = qobject_cast<QListWidget*>(w)) {
            if (is(property, "List") && isFileView(c)) {
                fillFileView(*list, c);
            } else if (is(property, "List")) {
                QStringList items;
                for (int i = 0; i < c.ListCount(); ++i)
                    items << shown(c.List(i));
                bool same = list->count() == items.size();
                for (int i = 0; same && i < items.size(); ++i)
                    same = list->item(i)->text() == items[i];
                if (!same) {
                    list->clear();
                    list->addItems(items);
                }
            }
            const int index = c.HasProperty("ListIndex") ? c.ListIndex() + rowsAbove(c) : -1;
            if (list->currentRow() != index) list->setCurrentRow(index);
            if (list->selectionMode() != QAbstractItemView::SingleSelection)
                for (int i = 0; i < list->count(); ++i)
                    list->item(i)->setSelected(c.Selected(i));
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            if (is(property, "List")) {
                QStringList items;
                for (int i = 0; i < c.ListCount(); ++i)
                    items << shown(c.List(i));
                QStringList now;
                for (int i = 0; i < combo->count(); ++i)
                    now << combo->itemText(i);
                if (now != items) {
                    combo->clear();
                    combo->addItems(items);
                }
            }
            if (combo->currentIndex() != c.ListIndex()) combo->setCurrentIndex(c.ListIndex());
            if (combo->isEditable()) combo->setEditText(shown(c.Text()));
        }
    } else if (is(property, "BackColor") || is(property, "ForeColor")) {
        const bool back = is(property, "BackColor");
        QColor colour;
        if (!colourOf(c.Property(property), colour)) {
            // A system colour (the button face of an idle designer button) is the toolkit's.
            if (isSystemColour(c.Property(property))) {
                w->setPalette(QPalette());
                w->setAutoFillBackground(false);
            }
            return;
        }
        // The model's defaults (white behind, black in front) leave the toolkit's own look.
        if (initial && colour == (back ? QColor(Qt::white) : QColor(Qt::black))) return;
        QPalette palette = w->palette();
        const bool boxLike = kind == ControlKind::TextBox || kind == ControlKind::ListBox ||
                             kind == ControlKind::ComboBox || kind == ControlKind::FileList ||
                             kind == ControlKind::DirList || kind == ControlKind::DriveList ||
                             kind == ControlKind::DataGrid;
        const bool buttonLike = kind == ControlKind::CommandButton ||
                                kind == ControlKind::CheckBox || kind == ControlKind::OptionButton;
        if (back) {
            palette.setColor(boxLike      ? QPalette::Base
                             : buttonLike ? QPalette::Button
                                          : QPalette::Window,
                             colour);
            if (!boxLike) w->setAutoFillBackground(true);
        } else {
            palette.setColor(boxLike      ? QPalette::Text
                             : buttonLike ? QPalette::ButtonText
                                          : QPalette::WindowText,
                             colour);
        }
        w->setPalette(palette);
    } else if (is(property, "Picture")) {
        if (auto* l = qobject_cast<QLabel*>(w)) {
            const QString path = qs(textOf(c.Property("Picture")));
            QPixmap picture(path);
            if (picture.isNull()) {
                l->clear();
            } else if (flag(c, "Stretch")) {
                // Drawn at the screen's own pixels, so that a picture stays sharp at any scale.
                const qreal ratio = w->devicePixelRatioF();
                QPixmap stretched = picture.scaled(w->size() * ratio);
                stretched.setDevicePixelRatio(ratio);
                l->setPixmap(stretched);
            } else {
                l->setPixmap(picture);
            }
        }
    } else if (is(property, "Locked")) {
        if (auto* line = qobject_cast<QLineEdit*>(w))
            line->setReadOnly(flag(c, "Locked"));
        else if (auto* edit = qobject_cast<QPlainTextEdit*>(w))
            edit->setReadOnly(flag(c, "Locked"));
    } else if (is(property, "PasswordChar")) {
        if (auto* line = qobject_cast<QLineEdit*>(w))
            line->setEchoMode(textOf(c.Property("PasswordChar")).empty() ? QLineEdit::Normal
                                                                         : QLineEdit::Password);
    } else if (is(property, "Alignment")) {
        if (auto* l = qobject_cast<QLabel*>(w)) {
            const int a = static_cast<int>(num(c, "Alignment"));
            l->setAlignment((a == 1   ? Qt::AlignRight
                             : a == 2 ? Qt::AlignHCenter
                                      : Qt::AlignLeft) |
                            Qt::AlignTop);
        }
    } else if (is(property, "FontBold") || is(property, "FontItalic") || is(property, "FontSize") ||
               is(property, "FontName") || is(property, "FontUnderline")) {
        applyFont(c, *w, initial);
    }
}

void FormWindow::applyFont(Control& c, QWidget& w, bool initial) {
    QFont font = w.font();
    if (c.HasProperty("FontBold")) font.setBold(flag(c, "FontBold"));
    if (c.HasProperty("FontItalic")) font.setItalic(flag(c, "FontItalic"));
    if (c.HasProperty("FontUnderline")) font.setUnderline(flag(c, "FontUnderline"));
    // A control without a size of its own has the toolkit's, scaled all the same.
    const double points = c.HasProperty("FontSize") && num(c, "FontSize") > 0
                              ? num(c, "FontSize")
                              : QApplication::font(&w).pointSizeF();
    if (points > 0) font.setPointSizeF(sizer_.fontPoints(points));
    if (c.HasProperty("FontName") && !initial) font.setFamily(qs(textOf(c.Property("FontName"))));
    w.setFont(font);
    // A check or option box draws its mark at the style's own size: the mark grows with the
    // font, or it stays a speck beside a large caption.
    const bool check = qobject_cast<QCheckBox*>(&w), option = qobject_cast<QRadioButton*>(&w);
    if (check || option) {
        const double scale = sizer_.fontScale();
        const int side = static_cast<int>(std::lround(
            QApplication::style()->pixelMetric(check ? QStyle::PM_IndicatorWidth
                                                     : QStyle::PM_ExclusiveIndicatorWidth) *
            scale));
        const QString sheet =
            scale == 1.0 ? QString()
                         : QStringLiteral("::indicator { width: %1px; height: %1px; }").arg(side);
        if (w.styleSheet() != sheet) w.setStyleSheet(sheet);
    }
}

void FormWindow::applyMenu(Control& c, std::string_view property) {
    QAction* action = actionFor(c);
    if (!action) return;
    if (is(property, "Caption")) {
        const QString caption = qs(c.Caption());
        action->setSeparator(caption == QStringLiteral("-"));
        action->setText(caption);
        if (auto it = menus_.find(&c); it != menus_.end() && it->second)
            it->second->setTitle(caption);
    } else if (is(property, "Visible")) {
        action->setVisible(c.Visible());
    } else if (is(property, "Enabled")) {
        action->setEnabled(c.Enabled());
    } else if (is(property, "Checked") && c.HasProperty("Checked")) {
        const bool on = flag(c, "Checked");
        action->setCheckable(on || action->isCheckable());
        action->setChecked(on);
    }
}

void FormWindow::applyForm(std::string_view property) {
    if (is(property, "Caption")) {
        window_->setWindowTitle(labelText(form_.Caption()));
    } else if (is(property, "Left") || is(property, "Top")) {
        if (window_->isVisible()) placeWindow();
    } else if (is(property, "Width") || is(property, "Height")) {
        sizeWindow();
    } else if (is(property, "Enabled")) {
        window_->setEnabled(form_.Property("Enabled").BoolValue());
    } else if (is(property, "WindowState")) {
        if (!window_->isVisible()) return;
        const int state = form_.WindowState();
        const Qt::WindowStates now = window_->windowState();
        if (state == 1 && !(now & Qt::WindowMinimized))
            window_->showMinimized();
        else if (state == 2 && !(now & Qt::WindowMaximized))
            window_->showMaximized();
        else if (state == 0 && (now & (Qt::WindowMinimized | Qt::WindowMaximized)))
            window_->showNormal();
    }
}

void FormWindow::placeWindow() {
    const double left = form_.Num("Left"), top = form_.Num("Top");
    if (left == 0 && top == 0) {
        // A form that sets no place of its own stands in the middle of the main window.
        QWidget* over = host_.mainWindow();
        QRect area = over && over != window_ ? over->frameGeometry()
                                             : window_->screen()->availableGeometry();
        QRect frame = window_->frameGeometry();
        frame.moveCenter(area.center());
        window_->move(frame.topLeft());
        return;
    }
    window_->move(px(left), px(top));
}

void FormWindow::sizeWindow() {
    designedWindow_ = designedSize();
    // The form's contents follow the window, which the user may size as he likes; a
    // maximised window stays so while the form's code sets the size it was designed with.
    window_->setMinimumSize(designedWindow_ / 2);
    window_->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    if (!(window_->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)))
        window_->resize(designedWindow_);
    followWindow();
}

QSize FormWindow::designedSize() const {
    int extraWidth = FrameWidth, extraHeight = FrameHeight;
    if (window_->isVisible()) {
        // Once shown, the window system tells what its frame takes (nothing without one).
        extraWidth = window_->frameGeometry().width() - window_->width();
        extraHeight = window_->frameGeometry().height() - window_->height();
    }
    const int width = std::max(80, px(form_.Num("Width")) - extraWidth);
    const int height = std::max(40, px(form_.Num("Height")) - extraHeight);
    return QSize(width, height);
}

void FormWindow::followWindow() {
    if (!window_->isVisible() || !designedWindow_.isValid()) return;
    // What the window takes beside the controls' area (its menu bar) is measured while the
    // bar has its own size: a bar grown with the window would otherwise grow the ratio too.
    if (menuScale_ == 1.0) plainChrome_ = window_->size() - canvas_->size();
    if (!sizer_.follow(designedWindow_ - plainChrome_, canvas_->size())) return;
    ++applying_;
    for (const auto& c : form_.Controls()) {
        QWidget* w = widgetFor(*c);
        if (!w) continue;
        apply(*c, "Left");
        applyFont(*c, *w, true);
        if (flag(*c, "Stretch")) apply(*c, "Picture");
        if (auto* table = qobject_cast<QTableView*>(w)) sizeGrid(*table);
        if (auto* view = qobject_cast<QWebEngineView*>(w)) view->setZoomFactor(sizer_.fontScale());
    }
    scaleMenus();
    --applying_;
}

void FormWindow::scaleMenus() {
    // The bar's height comes off the controls' area: a bar that followed every small change
    // of the ratio would change the ratio again, so it moves only by a twentieth or more,
    // and never below its own size.
    const double scale = sizer_.fontScale();
    if (std::abs(scale - menuScale_) < 0.05 || std::max(1.0, scale) == menuScale_) return;
    menuScale_ = std::max(1.0, scale);
    auto* main = qobject_cast<QMainWindow*>(window_.data());
    if (!main) return;
    auto grow = [this](QWidget& w) {
        QFont font = w.font();
        font.setPointSizeF(QApplication::font(&w).pointSizeF() * menuScale_);
        w.setFont(font);
    };
    grow(*main->menuBar());
    // A drop-down menu is a window of its own, which takes no font from the bar.
    for (const auto& [control, menu] : menus_)
        if (menu) grow(*menu);
}

void FormWindow::sizeGrid(QTableView& table) const {
    table.verticalHeader()->setDefaultSectionSize(
        static_cast<int>(std::lround(20 * sizer_.fontScale())));
    table.horizontalHeader()->setDefaultSectionSize(
        static_cast<int>(std::lround(110 * sizer_.fontScale())));
}

void FormWindow::scheduleSync() {
    if (grids_.empty() || syncPending_) return;
    syncPending_ = true;
    std::weak_ptr<bool> alive = alive_;
    QTimer::singleShot(0, this, [this, alive] {
        if (alive.expired()) return;
        syncPending_ = false;
        syncGrids();
    });
}

void FormWindow::syncGrids() {
    ++applying_;
    for (auto& [control, model] : grids_) {
        auto* table = qobject_cast<QTableView*>(widgetFor(*control));
        if (!table || !table->isVisible()) continue;
        if (model->source() != control->DataSource())
            model->setSource(control->DataSource());
        else
            model->refresh();
        const int row = model->currentRow();
        if (row < 0) {
            table->clearSelection();
        } else if (table->currentIndex().row() != row) {
            table->selectRow(row);
            table->scrollTo(model->index(row, 0));
        }
    }
    --applying_;
}

// --- The screen to the model --------------------------------------------------------------

void FormWindow::act(const std::function<void()>& action) {
    if (applying_) return;
    std::weak_ptr<bool> alive = alive_;
    guarded(action);
    if (!alive.expired()) scheduleSync();
    host_.dispatched();
}

void FormWindow::showWindow(bool modal) {
    modal_ = modal;
    window_->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    ++applying_;
    sizeWindow();
    placeWindow();
    window_->show();
    window_->raise();
    window_->activateWindow();
    --applying_;
    // Now the frame is known: the client area is what the form's size leaves of it.
    std::weak_ptr<bool> alive = alive_;
    QTimer::singleShot(0, this, [this, alive] {
        if (alive.expired() || !window_ || !window_->isVisible()) return;
        sizeWindow();
        const double left = form_.Num("Left"), top = form_.Num("Top");
        if (left != 0 || top != 0) window_->move(px(left), px(top));
    });
    scheduleSync();
}

void FormWindow::hideWindow() {
    if (window_) window_->hide();
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
    // While the window goes (the form may be gone already), its focus leaving is no event.
    if (!*alive_) return false;
    if (watched == canvas_ && event->type() == QEvent::Resize) followWindow();
    if (watched == window_) {
        switch (event->type()) {
            case QEvent::Close:
                event->ignore();
                act([this] { UserInput::CloseByFrame(form_); });
                return true;
            case QEvent::WindowActivate:
                host_.activated(form_);
                break;
            case QEvent::WindowStateChange: {
                const Qt::WindowStates state = window_->windowState();
                const int classic = state & Qt::WindowMinimized   ? 1
                                    : state & Qt::WindowMaximized ? 2
                                                                  : 0;
                if (classic != form_.WindowState())
                    act([this, classic] { UserInput::SetWindowState(form_, classic); });
                break;
            }
            case QEvent::Move: {
                // A minimised or maximised window keeps the place the user gave the normal one.
                if (!window_->isVisible() ||
                    (window_->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized)))
                    break;
                // The window manager may frame the window after the form gave it its size;
                // unless the user has sized it since, it takes the form's size again.
                if (window_->size() == designedWindow_ && designedSize() != designedWindow_)
                    sizeWindow();
                const QPoint at = window_->pos();
                if (px(form_.Num("Left")) != at.x() || px(form_.Num("Top")) != at.y())
                    act([this, at] {
                        form_.SetNum("Left", twips(at.x()));
                        form_.SetNum("Top", twips(at.y()));
                    });
                break;
            }
            default:
                break;
        }
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    }
    if (auto surface = surfaceOf_.find(watched); surface != surfaceOf_.end())
        return surfaceEvent(surface->second, event);
    if (event->type() == QEvent::ChildPolished && qobject_cast<QWebEngineView*>(watched)) {
        auto* child = qobject_cast<QWidget*>(static_cast<QChildEvent*>(event)->child());
        auto owner = controlOf_.find(watched);
        if (child && owner != controlOf_.end()) watchSurface(child, owner->second);
        return false;
    }
    auto it = controlOf_.find(watched);
    Control* control = it == controlOf_.end() ? nullptr : it->second;
    if (drag_.source) {
        if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease)
            return dragEvent(event);
        // A drag whose release never came ends with the next press.
        if (event->type() == QEvent::MouseButtonPress) endDrag();
    }
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            return keyEvent(control, event);
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
            return control ? mouseEvent(*control, event) : false;
        case QEvent::FocusIn:
            if (control && watched == widgetFor(*control))
                act([control] { UserInput::Focus(*control); });
            return false;
        case QEvent::FocusOut:
            if (control && watched == widgetFor(*control))
                act([control] { UserInput::Blur(*control); });
            return false;
        default:
            return false;
    }
}

bool FormWindow::keyEvent(Control* control, QEvent* event) {
    auto* key = static_cast<QKeyEvent*>(event);
    const KeySeen seen{static_cast<int>(event->type()), key->timestamp(), key->key()};
    if (seen.type == lastKey_.type && seen.timestamp == lastKey_.timestamp &&
        seen.key == lastKey_.key)
        return false;
    lastKey_ = seen;
    const int code = classicKeyCode(*key);
    const int shift = classicShift(*key);
    const QString text = key->text();
    const int ascii = text.size() == 1 && text[0].unicode() < 256 ? text[0].unicode() : 0;
    bool swallow = false;
    std::weak_ptr<bool> alive = alive_;
    if (event->type() == QEvent::KeyRelease) {
        if (control && code) act([&] { UserInput::KeyUp(*control, code, shift); });
        return false;
    }
    act([&] { swallow = UserInput::KeyDown(form_, control, code, shift, ascii); });
    return swallow || alive.expired();
}

bool FormWindow::mouseEvent(Control& control, QEvent* event) {
    auto* mouse = static_cast<QMouseEvent*>(event);
    const MouseSeen seen{static_cast<int>(event->type()), mouse->timestamp(),
                         static_cast<int>(mouse->button()), mouse->globalPosition()};
    if (seen.type == lastMouse_.type && seen.timestamp == lastMouse_.timestamp &&
        seen.button == lastMouse_.button && seen.at == lastMouse_.at)
        return false;
    lastMouse_ = seen;
    if (event->type() == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton &&
        UserInput::Draggable(control)) {
        // Automatic dragging: the press starts a drag and the control sees no click.
        drag_.source = &control;
        drag_.start = mouse->globalPosition().toPoint();
        drag_.moving = false;
        return true;
    }
    UserInput::Mouse m;
    m.button = mouse->button() == Qt::LeftButton     ? 1
               : mouse->button() == Qt::RightButton  ? 2
               : mouse->button() == Qt::MiddleButton ? 4
                                                     : 0;
    const QPointF inTwips = sizer_.twipsAt(mouse->position());
    m.x = static_cast<float>(inTwips.x());
    m.y = static_cast<float>(inTwips.y());
    m.shift = (mouse->modifiers() & Qt::ShiftModifier ? 1 : 0) |
              (mouse->modifiers() & Qt::ControlModifier ? 2 : 0) |
              (mouse->modifiers() & Qt::AltModifier ? 4 : 0);
    Control* c = &control;
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            act([c, m] { UserInput::MouseDown(*c, m); });
            break;
        case QEvent::MouseButtonRelease: {
            QWidget* w = widgetFor(control);
            const bool inside =
                w && w->rect().contains(w->mapFromGlobal(mouse->globalPosition().toPoint()));
            act([c, m, inside] { UserInput::MouseUp(*c, m, inside); });
            break;
        }
        case QEvent::MouseButtonDblClick:
            act([c] { UserInput::DblClick(*c); });
            break;
        default:
            break;
    }
    return false;
}

bool FormWindow::dragEvent(QEvent* event) {
    auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint at = mouse->globalPosition().toPoint();
    QWidget* source = widgetFor(*drag_.source);
    if (!source) {
        endDrag();
        return false;
    }
    if (event->type() == QEvent::MouseMove) {
        if (!drag_.moving &&
            (at - drag_.start).manhattanLength() < QApplication::startDragDistance())
            return true;
        drag_.moving = true;
        if (!drag_.outline) {
            auto* outline = new QRubberBand(QRubberBand::Rectangle, canvas_);
            outline->setAttribute(Qt::WA_TransparentForMouseEvents);
            drag_.outline = outline;
        }
        // The outline of the control follows the mouse, as the classic toolkit draws it.
        const QPoint topLeft = canvas_->mapFromGlobal(source->mapToGlobal(QPoint(0, 0)));
        drag_.outline->setGeometry(QRect(topLeft + (at - drag_.start), source->size()));
        drag_.outline->show();
        drag_.outline->raise();
        return true;
    }
    if (mouse->button() != Qt::LeftButton) return true;
    Control* dragged = drag_.source;
    const bool moved = drag_.moving;
    endDrag();
    // A press and release without moving is no drop.
    if (!moved) return true;
    QPoint local;
    Control* target = controlAt(at, local);
    if (!target) return true;
    const QPointF inTwips = sizer_.twipsAt(local);
    const auto x = static_cast<float>(inTwips.x());
    const auto y = static_cast<float>(inTwips.y());
    act([dragged, target, x, y] { UserInput::Drag(*dragged, *target, x, y); });
    return true;
}

void FormWindow::endDrag() {
    drag_.source = nullptr;
    drag_.moving = false;
    delete drag_.outline.data();
}

Control* FormWindow::controlAt(const QPoint& global, QPoint& local) const {
    for (QWidget* w = canvas_->childAt(canvas_->mapFromGlobal(global)); w && w != canvas_;
         w = w->parentWidget()) {
        auto it = controlOf_.find(w);
        if (it == controlOf_.end()) continue;
        if (QWidget* shown = widgetFor(*it->second)) local = shown->mapFromGlobal(global);
        return it->second;
    }
    return nullptr;
}

}  // namespace desktop
