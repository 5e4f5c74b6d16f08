#pragma once

#include "stock/record_form.h"

// `frmInventory`: what is in hand of each product, with its unit cost.
class frmInventory : public RecordForm {
  public:
    frmInventory();
};
