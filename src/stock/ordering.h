#pragma once

#include "shell/products_part.h"

class Form;
class Trap;

// Ordering from the main form: Order Item adds the current product as a line of the open
// order through `frmOrders`, Order Done ends the order into `frmInvoice`, and the supplier
// buttons reach the product's supplier.
class Ordering : public ProductsPart {
  public:
    explicit Ordering(Products& form);

    void Command1_Click();
    void Command2_Click();
    void cmdSup_Click(int Index);

  private:
    // The running totals of the order take in the line on frmOrders.
    void addToTotals(Trap& on, Form& orders);
};
