#pragma once

#include "stock/record_form.h"

// `frmSales`: one row per sale, with what the goods cost and what they fetched, and the net
// profit worked out on the screen. Opened by `cmdSales` of `frmInventory` it starts a row
// of that sale; the quantity is taken off the product when `Products` is next activated.
class frmSales : public RecordForm {
  public:
    frmSales();

    void Form_Activate() override;
    void txtFields_Change(int Index);
    void SetButtons(bool bVal) override;
    void cmdDelete_Click() override;

  protected:
    void afterUpdate(Trap& on) override;
    void rowShown() override { txtFields_Change(-1); }

  private:
    // Net Profit: the price sold for, less the cost of the goods and the expenses.
    void showNetProfit(Trap& on);
};
