#include "reports/report_control.h"

#include <memory>

#include "base/vb_error.h"
#include "forms/runtime.h"
#include "reports/report_html.h"
#include "reports/report_pdf.h"

namespace {

void checkIndex(int index) {
    if (index != 0) throw VbError(vberr::SubscriptOutOfRange);
}

}  // namespace

const std::string& ReportControl::DataFiles(int index) const {
    checkIndex(index);
    return dataFile0_;
}

void ReportControl::SetDataFiles(int index, const std::string& path) {
    checkIndex(index);
    dataFile0_ = path;
}

void ReportControl::SetAction(int action) {
    if (action != 1 || Destination != 0) throw VbError(vberr::InvalidProcedureCall);
    // The report's own file holds no rows: every run reads the database, whatever
    // DiscardSavedData says.
    // Shared with the window's Export PDF rather than copied: a long report is large.
    const auto report =
        std::make_shared<const RanReport>(runReport(readReportDesign(ReportFileName), dataFile0_));
    Runtime& rt = Runtime::Current();
    ReportWindow window;
    window.Title = WindowTitle;
    window.WindowState = WindowState;
    window.Html = reportHtml(*report, WindowTitle);
    window.Pages = static_cast<int>(report->pages.size());
    window.File = rt.AppPath() + "report.htm";
    window.WritePdf = [report, title = WindowTitle](const std::string& path) {
        writeReportPdf(*report, title, path);
    };
    rt.ui().ShowReport(window);
}
