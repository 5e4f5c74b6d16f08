#pragma once

#include <memory>

#include "stock/order_record_form.h"

// `frmOrders`: one line of a purchase order at a time, with the net costs it works out.
// Free-standing it browses the lines; opened by Order Item it holds the new line in add
// mode until Update or Cancel, which close it and `frmSupplier` with it.
class frmOrders : public OrderRecordForm {
  public:
    frmOrders();
    ~frmOrders() override;

    // The stock of the products and the stock in hand, for receiving.
    NAMED_VAR(std::unique_ptr<Recordset>, adoprimaryrs2);
    NAMED_VAR(std::unique_ptr<Recordset>, adoprimaryrs3);

    void Form_Activate() override;
    void txtFields_Change(int Index);
    void cmdCancel_Click() override;
    void cmdDelete_Click() override;
    // Receive: books the order's lines into stock, all at once or line by line
    // (stock/receiving.cpp).
    void Command2_Click();

  protected:
    std::string tag(std::string_view procedure) const override;
    void afterLoad(Trap& on) override;
    void afterUpdate(Trap& on) override;
    void rowShown() override { txtFields_Change(-1); }

  private:
    // Update and Cancel of a line made by Order Item end its run: both forms go.
    void closeOrderLine(Trap& on);
    // Books the current line into the product's counters and the stock in hand; true when
    // the stock in hand already had a row for it.
    bool bookLine(Trap& on);
};
