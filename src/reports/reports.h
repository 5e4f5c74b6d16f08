#pragma once

#include <string>

#include "reports/report_control.h"
#include "shell/products_part.h"

// The Reports menu of the main form and the File menu's Open: price lists and other reports
// run through the `Report` control, and another catalogue opened in a further window.
class Reports : public ProductsPart {
  public:
    explicit Reports(Products& form);

    ReportControl Report;

    void mnuR1_Click();
    void mnuR2_Click();
    void mnuR3_Click();
    void mnuR4_Click();
    void mnuR5_Click();
    void mnuR6_Click();
    void mnuR7_Click();
    void mnuR8_Click();
    void mnuR9_Click();
    void mnuPG_Click();
    void mnuAll_Click();
    void mnuBrwse_Click();
    void ShowReport();

    void mnuFileOpen_Click();

  private:
    // A fixed report: the hourglass, then the window, the database, the file and the run.
    void runFixed(const std::string& title, const std::string& file);
    // A report of the program folder's reports/.
    void runShipped(const std::string& title, const std::string& name);
};
