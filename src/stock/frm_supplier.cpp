#include "stock/frm_supplier.h"

#include "base/convert.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"

namespace {

constexpr int TaxRateBox = 22;

}  // namespace

frmSupplier::frmSupplier()
    : RecordForm("frmSupplier", "Suppliers",
                 "select SID,Add1,Add2,City,Contact,Discounts,Email,Fax,Name,Notes,OtherChgs,"
                 "Phone1,Phone2,Ship1,Ship2,Ship3,Ship4,State,URL,Zip,UserName,PassWord,TaxRate "
                 "from Supplier Order by SID",
                 {{0, "SID", "SID:"},
                  {1, "Add1", "Address 1:"},
                  {2, "Add2", "Address 2:"},
                  {3, "City", "City:"},
                  {4, "Contact", "Contact:"},
                  {5, "Discounts", "Discounts:"},
                  {6, "Email", "Email:"},
                  {7, "Fax", "Fax Number:"},
                  {8, "Name", "Co. Name:"},
                  {9, "Notes", "Notes:"},
                  {10, "OtherChgs", "Fees:"},
                  {11, "Phone1", "Phone 1:"},
                  {12, "Phone2", "Phone 2:"},
                  {13, "Ship1", "US Mail:"},
                  {14, "Ship2", "UPS:"},
                  {15, "Ship3", "Other 1:"},
                  {16, "Ship4", "Other 2:"},
                  {17, "State", "State:"},
                  {18, "URL", "Web Page:"},
                  {19, "Zip", "Zip Code:"},
                  {20, "UserName", "User Name:"},
                  {21, "PassWord", "Password:"},
                  {22, "TaxRate", "Sales Tax:"}}) {
    On("txtFields", "LostFocus", [this](EventArgs& e) { txtFields_LostFocus(e.Index); });
}

void frmSupplier::afterLoad(Trap& on) {
    // A search text of the products names columns the suppliers lack: refused and lifted.
    on([&] { adoPrimaryRS->SetFilter(textOf(Mod().SearchCriteria)); });
}

void frmSupplier::txtFields_LostFocus(int Index) {
    Trap ignore = Trap::Ignoring();
    // The rate is typed as a whole percentage and kept as a fraction; each focus change
    // divides once more.
    if (Index == TaxRateBox)
        ignore([&] {
            Control& box = (*this)("txtFields", TaxRateBox);
            box.SetText(CStr(Variant::Double(CDbl(Variant(box.Text())) * 0.01)));
        });
}

void frmSupplier::cmdCancel_Click() {
    Trap on = reportTo(tag("cmdCancel_Click"));
    on([&] { Mod().SupplierClosed = true; });
    RecordForm::cmdCancel_Click();
}

void frmSupplier::cmdClose_Click() {
    RecordForm::cmdClose_Click();
    Trap on = reportTo(tag("cmdClose_Click"));
    on([&] { Runtime::Current().LetEventsRun(); });
    on([&] { Mod().SupplierClosed = true; });
}
