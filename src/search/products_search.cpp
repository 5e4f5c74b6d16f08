// Quick search on the main form: the search box `txtSrch` with `cmdSearch`, the button
// `cmdDetSearch` that opens the detailed search form, and `SearchForIt`, which applies
// `SearchCriteria` to the record sets, reports the count in the pane and then sorts.
#include "base/convert.h"
#include "base/strings.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

constexpr int vbKeyReturn = 13;
constexpr int vbDefaultPointer = 0;

const char* const ContinueLink =
    "<br><p align=center><font size=3 font color=red><a href='CONTINUE'>Click Here To "
    "Continue</a>";

}  // namespace

void Products::wireSearch() {
    OnClick("cmdSearch", &Products::cmdSearch_Click);
    OnClick("cmdDetSearch", &Products::cmdDetSearch_Click);
    On("txtSrch", "GotFocus", [this](EventArgs&) { txtSrch_GotFocus(); });
    On("txtSrch", "KeyPress", [this](EventArgs& e) { txtSrch_KeyPress(e.KeyAscii); });
}

void Products::cmdSearch_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdSearch_Click");
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    Control& txtSrch = (*this)("txtSrch");
    if (when(on, [&] { return txtSrch.Text().empty(); })) {
        // An empty box lifts the search.
        on([&] { m.SearchCriteria = Variant(""); });
        on([&] { SearchForIt(); });
        on([&] { rt.SetMousePointer(vbDefaultPointer); });
        on([&] { rt.SetMousePointer(vbDefaultPointer); });
    } else {
        on([&] {
            adoPrimaryRS->Find("[StockNo] like '*" + txtSrch.Text() + "*'", 0,
                               ado::adSearchForward);
        });
        if (when(on, [&] { return adoPrimaryRS->AbsolutePosition() < 1; }))
            on([&] { adoPrimaryRS->MoveFirst(); });
    }
}

void Products::txtSrch_GotFocus() {
    Trap on = reportTo("(Form) Products::Sub txtSrch_GotFocus");
    Control& txtSrch = (*this)("txtSrch");
    on([&] { txtSrch.SetProperty("SelStart", Variant(0)); });
    on([&] { txtSrch.SetProperty("SelLength", Variant(static_cast<int>(Len(txtSrch.Text())))); });
}

void Products::txtSrch_KeyPress(int& KeyAscii) {
    Trap on = reportTo("(Form) Products::Sub txtSrch_KeyPress");
    if (when(on, [&] { return KeyAscii == vbKeyReturn; })) on([&] { cmdSearch_Click(); });
}

void Products::cmdDetSearch_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdDetSearch_Click");
    Runtime& rt = Runtime::Current();
    on([&] { Mod().SearchFormOpen = Variant(true); });
    on([&] { rt.Show(rt.Get("Search"), vb::vbModal); });
    on([&] { SearchForIt(); });
    on([&] { rt.SetMousePointer(vbDefaultPointer); });
}

void Products::SearchForIt() {
    Trap on = reportTo("(Form) Products::Sub SearchForIt");
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    Control& lblStatus = (*this)("lblStatus");
    Control& grid = (*this)("grddatagrid");
    on([&] { Searching = true; });
    on([&] { rt.LetEventsRun(); });
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    if (when(on, [&] { return CStr(m.SearchCriteria).empty(); })) {
        on([&] { adoPrimaryRS->SetFilter(""); });
        on([&] { Searching = false; });
        if (when(on, [&] { return grid.Visible(); })) on([&] { adoprimaryrs2->SetFilter(""); });
    } else {
        on([&] { adoPrimaryRS->SetFilter(CStr(m.SearchCriteria)); });
        if (when(on, [&] { return grid.Visible(); }))
            on([&] { adoprimaryrs2->SetFilter(CStr(m.SearchCriteria)); });
        on([&] { rt.SetMousePointer(vbDefaultPointer); });
        if (when(on, [&] { return adoPrimaryRS->RecordCount() < 1; })) {
            on([&] { lblStatus.SetCaption("No Matches Found"); });
            on([&] { Wb1().Navigate2("about:blank"); });
            on([&] {
                Wb1().Write("<font size=4><center>No Items Found Matching Your Search!<br>");
            });
            on([&] { Wb1().Write(CStr(m.SearchCriteria)); });
            on([&] { Wb1().Write("<br></center>"); });
            on([&] { Wb1().Write(ContinueLink); });
            on([&] { ContinueFlag = false; });
            while (!when(on, [&] { return ContinueFlag; }))
                on([&] { rt.WaitForUser(); });
            on([&] { ContinueFlag = false; });
            // With an empty box this lifts the filter; with text it finds in the empty set.
            on([&] { cmdSearch_Click(); });
            return;
        }
        on([&] {
            lblStatus.SetCaption(CStr(Variant(static_cast<int>(adoPrimaryRS->RecordCount()))) +
                                 " - Matches Found");
        });
        on([&] { Wb1().Navigate2("about:blank"); });
        on([&] { Wb1().Write("<font size=4><center>"); });
        on([&] { Wb1().Write(CStr(Variant(static_cast<int>(adoPrimaryRS->RecordCount())))); });
        on([&] { Wb1().Write(" Items Found Matching Your Search!<br>"); });
        on([&] { Wb1().Write(CStr(m.SearchCriteria)); });
        on([&] { Wb1().Write("<br></center>"); });
        on([&] { Wb1().Write(ContinueLink); });
        on([&] { ContinueFlag = false; });
        while (!when(on, [&] { return ContinueFlag; }))
            on([&] { rt.WaitForUser(); });
        on([&] { ContinueFlag = false; });
    }
    // The sort comes after the count has been read, and stays in force.
    if (when(on, [&] { return adoPrimaryRS->RecordCount() >= 1; })) {
        if (when(on, [&] { return CStr(m.SearchOrder).empty(); }))
            on([&] { m.SearchOrder = Variant("StockNo"); });
        if (when(on, [&] { return grid.Visible(); }))
            on([&] { adoprimaryrs2->SetSort(CStr(m.SearchOrder)); });
        on([&] { adoPrimaryRS->SetSort(CStr(m.SearchOrder)); });
        on([&] { rt.SetMousePointer(vbDefaultPointer); });
        on([&] { Searching = false; });
    }
}
