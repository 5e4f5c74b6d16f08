#pragma once

#include "stock/record_form.h"

// `frmInventory`: what is in hand of each product, with its unit cost. `cmdSales` books a
// sale: it takes the quantity off the row here and hands the sale on to `frmSales`.
class frmInventory : public RecordForm {
  public:
    frmInventory();

    void cmdSales_Click();
};
