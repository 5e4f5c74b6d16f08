#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desktop/report_view.h"
#include "forms/ui.h"

class QWidget;

namespace desktop {

class FormHost;
class WebPane;

// What the program asks of the screen, answered with Qt: message and input boxes, the
// common dialog, popup menus, the pane of a form, the hourglass, the desktop's opener, the
// windows of the forms, and the two ways of letting events run.
class QtUi : public QObject, public Ui {
    Q_OBJECT
  public:
    QtUi();
    ~QtUi() override;

    int MsgBox(const std::string& prompt, int buttons, const std::string& title) override;
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& defaultText) override;
    bool ShowOpen(CommonDialog& dialog) override;
    bool ShowSave(CommonDialog& dialog) override;
    bool ShowFont(CommonDialog& dialog) override;
    bool ShowColor(CommonDialog& dialog) override;
    Control* PopupMenu(Form& form, const std::string& menuName) override;
    Pane& PaneFor(Form& form, const std::string& controlName) override;
    void RunDocument(const std::string& path) override;
    void ShowReport(const ReportWindow& report) override;
    // The report window, once a report was shown.
    ReportView* reportView() const { return reportView_; }
    void MousePointerChanged(int pointer) override;
    void FormShown(Form& form, bool modal) override;
    void FormHidden(Form& form) override;
    void LetEventsRun() override;
    void WaitForUser() override;

    FormHost& host() { return *host_; }
    WebPane& webPane(Form& form, const std::string& controlName);
    // Drops the panes of every form not in `live` (forms that were unloaded).
    void keepPanesOf(const std::vector<Form*>& live);

    // The classic filter text ("Text|*.txt|All|*.*") as Qt's name filters.
    static QStringList nameFilters(const std::string& filter);

  private:
    QWidget* parentWindow() const;
    std::string titleOr(const std::string& title) const;
    bool fileDialog(CommonDialog& dialog, bool save);

    std::unique_ptr<FormHost> host_;
    std::map<std::pair<const Form*, std::string>, std::unique_ptr<WebPane>> panes_;
    QTimer heartbeat_;
    QPointer<ReportView> reportView_;
    bool busy_ = false;
};

}  // namespace desktop
