#pragma once

#include "stock/record_form.h"

// `frmSupplier`: the suppliers, loaded under the filter in force (`SearchCriteria`), so
// that an order line reads the supplier of its product from the first row shown.
class frmSupplier : public RecordForm {
  public:
    frmSupplier();

    void txtFields_LostFocus(int Index);
    void cmdCancel_Click() override;
    void cmdClose_Click() override;

  protected:
    void afterLoad(Trap& on) override;
};
