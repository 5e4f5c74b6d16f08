#pragma once

#include "forms/form.h"

// The program's name, version and legal lines. The system information button of the
// classic platform has no counterpart here.
class frmAbout : public Form {
  public:
    frmAbout();
    void Form_Load() override;
    void cmdOK_Click();
};
