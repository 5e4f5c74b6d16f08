#pragma once

#include "stock/record_form.h"

// `frmSetup`: the company's particulars, kept for the reports.
class frmSetup : public RecordForm {
  public:
    frmSetup();

    // Stores the row and shows the browsing buttons, nothing more: the edit and add flags
    // stay set, so the keys stay dead until the form is loaded again.
    void cmdUpdate_Click() override;

  protected:
    std::string tag(std::string_view procedure) const override;
};
