#pragma once

#include "stock/order_record_form.h"

// `frmInvoice`: the totals of each order. Order Done has it start a new row from the
// running totals; View Items shows the order's lines on `frmOrders`.
class frmInvoice : public OrderRecordForm {
  public:
    frmInvoice();

    void Form_Activate() override;

  protected:
    std::string tag(std::string_view procedure) const override;
};
