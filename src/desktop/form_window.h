#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <string_view>

#include "desktop/free_sizer.h"
#include "forms/form.h"

#include <QAction>
#include <QMenu>
#include <QTableView>
#include <QWidget>

namespace desktop {

class FormHost;
class GridModel;

// One form in a window of its own: a widget for each control, placed in twips (15 to the
// pixel), kept in step with the model both ways. A write to the model shows at once; what
// the user does becomes the same writes and events that the program's own code makes. It
// knows controls only by their kind and properties, so any form shows without code of its
// own.
class FormWindow : public QObject {
    Q_OBJECT
  public:
    FormWindow(Form& form, FormHost& host);
    ~FormWindow() override;

    Form& form() const { return form_; }
    QWidget* window() const { return window_; }
    // The widget that shows a control, or nullptr (menus, controls without one).
    QWidget* widgetFor(const Control& control) const;
    QAction* actionFor(const Control& control) const;

    void showWindow(bool modal);
    void hideWindow();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build();
    QWidget* ensureWidget(Control& control);
    QWidget* makeWidget(Control& control, QWidget* parent);
    void connectUser(Control& control, QWidget* widget);
    void buildMenus();
    // The Tab key follows the controls' TabIndex.
    void orderTabs();
    void watch(QWidget* widget, Control* control);
    // A widget that a control's widget draws on and hands the keys to (the pane's page):
    // only the keys that move about reach the form and the control.
    void watchSurface(QWidget* surface, Control* control);
    bool surfaceEvent(Control* control, QEvent* event);

    void changed(Control* control, std::string_view property);
    void apply(Control& control, std::string_view property, bool initial = false);
    void applyAll(Control& control);
    void applyMenu(Control& control, std::string_view property);
    void applyForm(std::string_view property);
    void applyFont(Control& control, QWidget& widget, bool initial);
    void placeWindow();
    // The window at the size the form gives, unless the user maximised it.
    void sizeWindow();
    QSize designedSize() const;
    // The controls follow the window's size (freeSizer1).
    void followWindow();
    // The menu bar and its menus at the fonts' ratio, in steps.
    void scaleMenus();
    void sizeGrid(QTableView& table) const;
    void scheduleSync();
    void syncGrids();

    // A user's action on the model: guarded, and the screen follows afterwards.
    void act(const std::function<void()>& action);
    bool keyEvent(Control* control, QEvent* event);
    bool mouseEvent(Control& control, QEvent* event);
    // Dragging a control whose DragMode is automatic: the press starts it, the outline
    // follows the mouse, the release drops it on the control under the mouse.
    bool dragEvent(QEvent* event);
    void endDrag();
    // The control whose widget stands at a point of the screen, and the point in it.
    Control* controlAt(const QPoint& global, QPoint& local) const;

    Form& form_;
    FormHost& host_;
    QPointer<QWidget> window_;
    QWidget* canvas_ = nullptr;
    FreeSizer sizer_;
    QSize designedWindow_;
    // What the window takes beside the controls while its menu bar has its own size.
    QSize plainChrome_;
    double menuScale_ = 1.0;
    std::map<const Control*, QPointer<QWidget>> widgets_;
    std::map<const QObject*, Control*> controlOf_;
    std::map<const QObject*, Control*> surfaceOf_;
    std::map<const Control*, QPointer<QAction>> actions_;
    std::map<const Control*, QPointer<QMenu>> menus_;
    std::map<const Control*, GridModel*> grids_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    int applying_ = 0;
    bool syncPending_ = false;
    bool modal_ = false;
    // The last key event handled: a key that a widget passes on to its parent is one event.
    struct KeySeen {
        int type = 0;
        unsigned long long timestamp = 0;
        int key = 0;
    } lastKey_;
    // The last mouse event handled: a click that a widget passes on to its parent is one.
    struct MouseSeen {
        int type = 0;
        unsigned long long timestamp = 0;
        int button = 0;
        QPointF at;
    } lastMouse_;
    struct Drag {
        Control* source = nullptr;
        QPoint start;  // where the press was, on the screen
        bool moving = false;
        QPointer<QWidget> outline;
    } drag_;
};

}  // namespace desktop
