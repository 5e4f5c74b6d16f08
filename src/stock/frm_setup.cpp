#include "stock/frm_setup.h"

#include "shell/errhandler.h"

frmSetup::frmSetup()
    : RecordForm("frmSetup", "Company Setup", "select * from Setup Order by [Company Name]",
                 {{0, "Company Name", "Company Name:"},
                  {2, "Company Address", "Address:"},
                  {3, "Company Address 2", "Address 2:"},
                  {4, "Company City", "City:"},
                  {5, "Company State", "State:"},
                  {6, "Company Zip", "Zip:"},
                  {9, "Email", "Email:"},
                  {10, "Fax", "Fax:"},
                  {17, "Owner Name", "Owner Name:"},
                  {19, "Phone", "Phone:"},
                  {23, "Web Page", "Web Page:"}}) {}

std::string frmSetup::tag(std::string_view procedure) const {
    // Three procedures report under the names they were written with.
    if (procedure == "adoPrimaryRS_MoveComplete")
        return "(Form) Setup::Sub adoPrimaryRS_MoveComplete";
    if (procedure == "Form_KeyDown") return "(Form) Setup::Sub Form_KeyDown";
    if (procedure == "SetButtons") return "(Form) frmSales::Sub SetButtons";
    return RecordForm::tag(procedure);
}

void frmSetup::cmdUpdate_Click() {
    Trap on = reportTo(tag("cmdUpdate_Click"));
    on([&] { adoPrimaryRS->UpdateBatch(ado::adAffectAll); });
    on([&] { SetButtons(true); });
}
