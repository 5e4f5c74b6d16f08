#include "desktop/report_view.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextBrowser>
#include <QToolBar>

#include "base/vb_error.h"

namespace desktop {

ReportView::ReportView(QWidget* parent) : QMainWindow(parent), pages_(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("ReportView"));
    // Closed by the user, the window goes; the next report opens a new one.
    setAttribute(Qt::WA_DeleteOnClose);
    pages_->setObjectName(QStringLiteral("ReportPages"));
    setCentralWidget(pages_);
    QToolBar* bar = addToolBar(tr("Report"));
    bar->setMovable(false);
    bar->addAction(tr("Print..."), this, &ReportView::print)->setObjectName("Print");
    bar->addAction(tr("Export PDF..."), this, &ReportView::chooseAndExportPdf)
        ->setObjectName("ExportPdf");
    resize(900, 700);
}

void ReportView::present(const ReportWindow& report) {
    setWindowTitle(QString::fromStdString(report.Title));
    pages_->setHtml(QString::fromStdString(report.Html));
    writePdf_ = report.WritePdf;
    if (report.WindowState == 2)
        showMaximized();
    else
        showNormal();
    raise();
    activateWindow();
}

QString ReportView::shownText() const {
    return pages_->toPlainText();
}

void ReportView::print() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(tr("Print %1").arg(windowTitle()));
    if (dialog.exec() == QDialog::Accepted) pages_->document()->print(&printer);
}

void ReportView::chooseAndExportPdf() {
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export PDF"), QString(), tr("PDF files (*.pdf)"));
    if (!path.isEmpty()) exportPdf(path);
}

bool ReportView::exportPdf(const QString& path) {
    try {
        if (!writePdf_) return false;
        writePdf_(path.toStdString());
        return true;
    } catch (const VbError& e) {
        QMessageBox::warning(this, windowTitle(),
                             tr("The PDF file could not be written: %1")
                                 .arg(QString::fromStdString(e.Description())));
        return false;
    }
}

}  // namespace desktop
