// Deleting in bulk: `cmdDAll` offers to delete every product the search in force selects
// (every product when none is), and `Delete` deletes them once the user confirms in the pane.
#include "base/convert.h"
#include "build/bulk.h"
#include "build/run_steps.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "records/pane.h"
#include "records/recordset.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

void Bulk::cmdDAll_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdDAll_Click");
    Module& m = Mod();
    Pane& pane = P.Wb1();
    DataControl& Data2 = *P.Data2;
    on([&] { pane.Write(""); });
    if (when(on, [&] { return CStr(m.SearchCriteria) != ""; }))
        on([&] {
            Data2.SetRecordSource("Select * From Products Where " + CStr(m.SearchCriteria));
        });
    else
        on([&] { Data2.SetRecordSource("Products"); });
    on([&] { Data2.Refresh(); });
    on([&] { Data2.Recordset().MoveLast(); });
    on([&] { Data2.Recordset().MoveFirst(); });
    on([&] { pane.Navigate2("about:blank"); });
    if (when(on, [&] { return Data2.Recordset().RecordCount() < 1; })) {
        on([&] {
            pane.Write(
                "<p align=center><font size=4 font color=blue>The Search String:<br><font "
                "color=red>" +
                textOf(m.SearchCriteria) + "<br><font color=blue>Did NOT Produce Any Records<br>");
        });
        on([&] {
            pane.Write(
                "<p align=center><font size=4 font color=blue>You Can Enter Another Search, Or "
                "Clear The Current Search. Click CANCEL Below!<br><br></p>");
        });
    } else {
        on([&] {
            pane.Write("<p align=center><font size=4 font color=blue>If You Want To Deleted All " +
                       std::to_string(Data2.Recordset().RecordCount()) +
                       " Records <a href='Delete'>CLICK HERE NOW</a>");
        });
    }
    on([&] {
        pane.Write(
            "<br><p align=center><font size=3 font color=red>Click Here To <a "
            "href='CANCEL'>Cancel Delete</a>");
    });
    while (when(on, [&] { return CDbl(m.DeleteChoice) == 0; }))
        on([&] { Runtime::Current().WaitForUser(); });
    if (when(on, [&] { return CDbl(m.DeleteChoice) == 1; })) on([&] { Delete(); });
    on([&] { m.DeleteChoice = Variant::Integer(0); });
    on([&] { P.adoPrimaryRS->MoveFirst(); });
}

void Bulk::Delete() {
    Trap on = reportTo("(Form) BuildDB::Sub Delete");
    Pane& pane = P.Wb1();
    DataControl& Data2 = *P.Data2;
    DaoRecordset* rs = nullptr;
    on([&] { rs = &Data2.Recordset(); });
    if (!rs || when(on, [&] { return rs->RecordCount() < 1; })) return;
    on([&] { pane.Navigate2("about:blank"); });
    on([&] {
        pane.Write(
            "<p align=center><font size=5 font color=blue> Deleting Records!<br><br><font "
            "size=7>Please Wait...</font>");
    });
    on([&] { rs->MoveFirst(); });
    {
        // Committed a group at a time; nothing else runs meanwhile.
        WriteGroup group(Data2);
        Control& lblStatus = (*this)("lblStatus");
        while (!when(on, [&] { return rs->Eof(); })) {
            on([&] { return addOne(deleted_); });
            on([&] { rs->Delete(); });
            on([&] { rs->MoveNext(); });
            on([&] { lblStatus.SetCaption("Deleting Items: #" + std::to_string(deleted_)); });
        }
    }
    on([&] { pane.Navigate2("about:blank"); });
    on([&] {
        pane.Write("<p align=center><font size=5 font color=blue>Finished Deleting " +
                   std::to_string(deleted_) + " Records!<br><br><font size=7></font>");
    });
    on([&] { deleted_ = 0; });
    waitForContinue(P, on);
    on([&] { rs->MoveLast(); });
    on([&] { rs->MoveFirst(); });
    resetAfterRun(P, on);
}
