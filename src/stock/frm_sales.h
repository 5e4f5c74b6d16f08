#pragma once

#include "stock/record_form.h"

// `frmSales`: one row per sale, with what the goods cost and what they fetched.
class frmSales : public RecordForm {
  public:
    frmSales();
};
