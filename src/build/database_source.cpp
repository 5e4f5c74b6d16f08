// The import from another database (`DBFiles`): the file, its tables listed in the pane, the
// clicked table's fields as the source items of the board, and the table's records read one
// by one through `Data3` for the run.
#include <string>

#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "records/pane.h"
#include "shell/products.h"
#include "shell/when.h"

Next Bulk::chooseTable(Trap& on) {
    CommonDialog dialog;
    dialog.FileName = "";
    dialog.Filter = "Access DataBases|*.mdb;*.mde";
    on([&] {
        // A cancelled dialog gives no name.
        fileName_ = Runtime::Current().ui().ShowOpen(dialog) ? dialog.FileName : "";
    });
    if (when(on, [&] { return fileName_.empty() || fileName_ == "*.*"; })) return Next::Ending;
    DataControl& data3 = *P.Data3;
    on([&] { data3.SetDatabaseName(fileName_); });
    on([&] { data3.Refresh(); });
    const int listed = listTables(on);
    on([&] { P.ContinueFlag = false; });
    while (!when(on, [&] { return P.ContinueFlag; }))
        on([&] { Runtime::Current().WaitForUser(); });
    on([&] { P.ContinueFlag = false; });
    if (when(on, [&] { return CancelFlag; })) {
        on([&] { CancelFlag = false; });
        return Next::Ending;
    }
    // The way out of a list without a table: its own link, and nothing to import.
    if (listed == 0) return Next::Ending;
    on([&] { data3.SetRecordSource(data3.TableName(P.LinkNumber)); });
    on([&] { data3.Refresh(); });
    int fields = 0;
    on([&] { fields = data3.Recordset().FieldCount(); });
    // Fields past the last slot and the last source box have neither.
    SteppingOverMissingElements past;
    for (int i = 0; i < fields; ++i) {
        on([&] { slotAt(SourceItems, i) = data3.Recordset().FieldName(i); });
        on([&] { (*this)("Label2", i).SetVisible(true); });
        on([&] { (*this)("Label2", i).SetCaption(slotAt(SourceItems, i)); });
        lastItem_ = i;
    }
    return Next::Go;
}

// The tables of the database in the pane, each but the system tables as a numbered link;
// how many were listed.
int Bulk::listTables(Trap& on) {
    Pane& pane = P.Wb1();
    DataControl& data3 = *P.Data3;
    // The list replaces the page shown, as the first write after a finished page does.
    on([&] { pane.Navigate2("about:blank"); });
    on([&] {
        pane.Write(
            "<font size=2 color=blue><center>The Tables In This Database File Are Below <br> (The "
            "First line is written in red for easy identification.)</center><br>");
    });
    on([&] {
        pane.Write(
            "<font color=green><center><br>Click On The Line You Want To Start Getting The Data "
            "From</center><br><br>");
    });
    int count = 0, listed = 0;
    on([&] { count = data3.TableCount(); });
    for (int n = 0; n < count; ++n) {
        if (n == 0) on([&] { pane.Write("<font size=2 font color=red>"); });
        if (n == 1) on([&] { pane.Write("<font color=blue>"); });
        if (!when(on, [&] { return InStr(UCase(data3.TableName(n)), "MSYS") == 0; })) continue;
        const std::string number = std::to_string(n);
        if (on([&] {
                pane.Write("<a href='GF-" + number + "'>" + "Line #" + number + "</a><br>" +
                           data3.TableName(n) + "<br><br>");
            }))
            ++listed;
    }
    if (listed == 0)
        on([&] {
            pane.Write(
                "<font size=3 color=red><center>There Are No Tables To Get Data From In This "
                "File<br><br><a href='CONTINUE'>Click Here To Continue</a></center>");
        });
    return listed;
}

bool Bulk::openTable(Trap& on) {
    DataControl& data3 = *P.Data3;
    if (when(on, [&] { return data3.Recordset().RecordCount() == 0; })) {
        on([&] { MsgBox("This DataBase Does Not Have Any Data In It", vb::vbCritical); });
        return false;
    }
    on([&] { data3.Recordset().MoveLast(); });
    on([&] { data3.Recordset().MoveFirst(); });
    on([&] { TotalLines = CInt(Variant::Long(data3.Recordset().RecordCount())); });
    return true;
}

bool Bulk::nextTableRecord(Trap& on, bool first) {
    DataControl& data3 = *P.Data3;
    if (!first) on([&] { data3.Recordset().MoveNext(); });
    return !when(on, [&] { return data3.Recordset().Eof(); });
}

void Bulk::readTableRecord(Trap& on) {
    DaoRecordset* rs = nullptr;
    on([&] { rs = &P.Data3->Recordset(); });
    if (!rs) return;
    for (int i = 0; i <= lastItem_; ++i)
        on([&] {
            const Variant field = rs->GetValue(i);
            slotAt(SourceItems, i) = field.IsNull() ? "" : CStr(field);
        });
}
