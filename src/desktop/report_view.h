#pragma once

#include <QMainWindow>
#include <QString>
#include <functional>
#include <string>

#include "forms/ui.h"

class QTextBrowser;

namespace desktop {

// The report window: the pages of a report, with Print and Export PDF. One window serves
// every report; a further report sets it up anew.
class ReportView : public QMainWindow {
    Q_OBJECT
  public:
    explicit ReportView(QWidget* parent = nullptr);

    // Shows the report: its title, its pages, maximised when its WindowState is 2.
    void present(const ReportWindow& report);
    // The text the window shows, as plain text.
    QString shownText() const;
    // Writes the report shown as a PDF file; false (with a message) when it could not.
    bool exportPdf(const QString& path);

  public slots:
    void print();
    void chooseAndExportPdf();

  private:
    QTextBrowser* pages_;
    std::function<void(const std::string&)> writePdf_;
};

}  // namespace desktop
