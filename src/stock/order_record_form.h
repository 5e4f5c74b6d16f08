#pragma once

#include <string>
#include <vector>

#include "stock/record_form.h"

// A record form of the orders that is searched by order number (`txtSrch`, `cmdSearch`)
// and that jumps with `Command1` to the same order on its companion form: the lines of an
// order on `frmOrders`, its totals on `frmInvoice`.
class OrderRecordForm : public RecordForm {
  public:
    OrderRecordForm(std::string name, std::string caption, std::string selectText,
                    std::vector<RecordBox> boxes, std::string viewCaption, std::string companion);

    void SetButtons(bool bVal) override;
    void cmdSearch_Click();
    void txtSrch_KeyPress(int& KeyAscii);
    void Command1_Click();

  private:
    std::string companion_;
};
