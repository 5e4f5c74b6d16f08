// Moving through the products: the move event, the move buttons, the help walk, the grid,
// the slider and the two screen modes.
#include "base/convert.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/browse_keys.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

namespace {

// The buttons that need a current record.
const char* const RecordButtons[] = {"cmdDetSearch", "cmdEdit",     "cmdDelete", "cmdFirst",
                                     "cmdLast",      "cmdPrevious", "cmdNext",   "cmdShowPicPath",
                                     "cmdEditRec",   "cmdDAll"};

bool helpShowing() {
    return CBool(Mod().HelpShowing);
}

}  // namespace

void Products::adoPrimaryRS_MoveComplete() {
    Trap on = reportTo("(Form) Products::Sub adoPrimaryRS_MoveComplete");
    Module& m = Mod();
    Control& lblStatus = (*this)("lblStatus");
    Control& Slider1 = (*this)("Slider1");
    if (mbAddNewFlag) return;
    if (when(on, [&] { return adoPrimaryRS->RecordCount() < 1; })) {
        on([&] { m.HelpShowing = Variant(true); });
        on([&] { lblStatus.SetCaption("NO CURRENT RECORDS"); });
        for (const char* button : RecordButtons)
            on([&] { (*this)(button).SetEnabled(false); });
    } else {
        on([&] { m.HelpShowing = Variant(false); });
        on([&] {
            lblStatus.SetCaption(
                "Record: " + CStr(Variant(static_cast<int>(adoPrimaryRS->AbsolutePosition()))) +
                "  of  " + CStr(Variant(static_cast<int>(adoPrimaryRS->RecordCount()))));
        });
        on([&] { Runtime::Current().LetEventsRun(); });
        for (const char* button : RecordButtons)
            on([&] { (*this)(button).SetEnabled(true); });
        on([&] { Slider1.SetNum("Max", adoPrimaryRS->RecordCount()); });
        if (when(on, [&] { return Slider1.Num("Value") != adoPrimaryRS->AbsolutePosition(); }))
            on([&] { Slider1.SetNum("Value", adoPrimaryRS->AbsolutePosition()); });
        if (when(on, [&] {
                return adoPrimaryRS->RecordCount() != Slider1.Num("Max") &&
                       adoPrimaryRS->RecordCount() > 0;
            }))
            on([&] { Slider1.SetNum("Max", adoPrimaryRS->RecordCount()); });
    }
    if (when(on, [&] { return !m.StartingUp; })) {
        // The grid follows, searching forward from its own row only.
        if (when(on, [&] { return adoprimaryrs2->RecordCount() > 0; }))
            on([&] {
                adoprimaryrs2->Find("[PID] = '" + CStr(adoPrimaryRS->Fields("PID").Value()) + "'",
                                    0, ado::adSearchForward);
            });
        // The page number read as a field's index misses on most records: the fault is
        // given back, not thrown, and reported the same.
        on([&] {
            int page = static_cast<int>(Val(textOf(adoPrimaryRS->Fields("PageNo").Value())));
            Variant category;
            const Fault missed = Data1->Recordset().TryGetValue(page, category);
            if (missed.number == 0) (*this)("Text2").SetText(textOf(category));
            return missed;
        });
    }
    on([&] { ShowPicture(); });
}

void Products::showHelpStart() {
    Wb1().Navigate2(CStr(Mod().AppDir) + "Help/index.htm");
}

void Products::showHelpPage(Trap& on) {
    Module& m = Mod();
    if (when(on, [&] { return CInt(m.HelpPage) == -1; })) {
        on([&] { showHelpStart(); });
        on([&] { (*this)("lblStatus").SetCaption("Help"); });
        return;
    }
    on([&] { m.HelpPageFile = Variant("intro" + CStr(m.HelpPage) + ".htm"); });
    on([&] { Wb1().Navigate2(CStr(m.AppDir) + "Help/" + CStr(m.HelpPageFile)); });
    on([&] {
        (*this)("lblStatus")
            .SetCaption("Page Number: " + CStr(::Add(m.HelpPage, Variant::Integer(1))));
    });
}

void Products::cmdFirst_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdFirst_Click");
    Module& m = Mod();
    if (when(on, [&] { return !helpShowing(); })) {
        on([&] { adoPrimaryRS->MoveFirst(); });
        on([&] { mbDataChanged = false; });
    } else {
        on([&] { m.HelpPage = Variant::Integer(-1); });
        showHelpPage(on);
    }
}

void Products::cmdLast_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdLast_Click");
    Module& m = Mod();
    if (when(on, [&] { return !helpShowing(); })) {
        on([&] { adoPrimaryRS->MoveLast(); });
        on([&] { mbDataChanged = false; });
    } else {
        on([&] { m.HelpPage = Variant::Integer(6); });
        showHelpPage(on);
    }
}

void Products::cmdNext_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdNext_Click");
    Module& m = Mod();
    if (when(on, [&] { return !helpShowing(); })) {
        if (when(on, [&] { return !adoPrimaryRS->Eof(); })) on([&] { adoPrimaryRS->MoveNext(); });
        // The last record stays current: no wrap, no sound.
        if (when(on, [&] { return adoPrimaryRS->Eof() && adoPrimaryRS->RecordCount() > 0; }))
            on([&] { adoPrimaryRS->MoveLast(); });
        on([&] { mbDataChanged = false; });
    } else {
        on([&] { m.HelpPage = Variant::Integer(CInt(m.HelpPage) + 1); });
        if (when(on, [&] { return CInt(m.HelpPage) > 6; }))
            on([&] { m.HelpPage = Variant::Integer(6); });
        showHelpPage(on);
    }
}

void Products::cmdPrevious_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdPrevious_Click");
    Module& m = Mod();
    if (when(on, [&] { return !helpShowing(); })) {
        if (when(on, [&] { return !adoPrimaryRS->Bof(); }))
            on([&] { adoPrimaryRS->MovePrevious(); });
        if (when(on, [&] { return adoPrimaryRS->Bof() && adoPrimaryRS->RecordCount() > 0; }))
            on([&] { adoPrimaryRS->MoveFirst(); });
        on([&] { mbDataChanged = false; });
    } else {
        on([&] { m.HelpPage = Variant::Integer(CInt(m.HelpPage) - 1); });
        if (when(on, [&] { return CInt(m.HelpPage) <= -1; }))
            on([&] { m.HelpPage = Variant::Integer(-1); });
        showHelpPage(on);
    }
}

void Products::cmdGrid_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdGrid_Click");
    Control& grid = (*this)("grddatagrid");
    Control& cmdGrid = (*this)("cmdGrid");
    on([&] { grid.SetVisible(!grid.Visible()); });
    if (when(on, [&] { return grid.Visible(); })) {
        on([&] { grid.ZOrder(0); });
        on([&] { grid.SetNum("Height", Wb1Box().Num("Height")); });
        on([&] { cmdGrid.SetCaption("Hide Grid"); });
    } else {
        on([&] { cmdGrid.SetCaption("Show Grid"); });
        on([&] { grid.SetNum("Height", Wb1Box().Num("Height")); });
    }
}

void Products::grdDataGrid_Click() {
    Trap on = reportTo("(Form) Products::Sub grdDataGrid_Click");
    on([&] { GridClicked = true; });
}

void Products::grdDataGrid_RowColChange() {
    Trap on = reportTo("(Form) Products::Sub grdDataGrid_RowColChange");
    if (when(on, [&] { return GridClicked; })) {
        on([&] {
            adoPrimaryRS->Find("[PID] = '" + CStr(adoprimaryrs2->Fields("PID").Value()) + "'", 0,
                               ado::adSearchForward);
        });
        // The row lay behind the current one: the find ran off the end.
        if (when(on, [&] { return adoPrimaryRS->AbsolutePosition() < 1; })) {
            on([&] { adoPrimaryRS->MoveFirst(); });
            on([&] { cmdGrid_Click(); });
        }
        on([&] { GridClicked = false; });
    }
}

void Products::Slider1_Scroll() {
    Trap on = reportTo("(Form) Products::Sub Slider1_Scroll");
    Control& Slider1 = (*this)("Slider1");
    if (when(on, [&] { return Slider1.Num("Value") == 0; }))
        on([&] { Slider1.SetNum("Value", 1); });
    on([&] { adoPrimaryRS->SetAbsolutePosition(static_cast<long>(Slider1.Num("Value"))); });
}

void Products::cmdShowPicPath_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdShowPicPath_Click");
    Control& path = (*this)("txtFields", 19);
    on([&] { path.SetVisible(!path.Visible()); });
    if (when(on, [&] { return path.Visible(); }))
        on([&] { path.ZOrder(0); });
    else
        on([&] { path.ZOrder(1); });
}

void Products::cmdShowPic_Click() {
    Trap ignore = Trap::Ignoring();
    Control& cmdShowPic = (*this)("cmdShowPic");
    Control& frame5 = (*this)("Frame5");
    Control& frame4 = (*this)("Frame4");
    Control& notes = (*this)("txtFields", 12);
    Control& wb = Wb1Box();
    if (when(ignore, [&] { return cmdShowPic.Caption() == "View Mode"; })) {
        ignore([&] { frame5.SetVisible(false); });
        ignore([&] { (*this)("Command21").SetEnabled(true); });
        ignore([&] { notes.SetVisible(false); });
        ignore([&] { cmdShowPic.SetCaption("Edit Mode"); });
        ignore([&] { SetSize(); });
        ignore([&] { wb.SetNum("Height", frame5.Num("Height")); });
        ignore([&] { wb.SetNum("Top", 0); });
    } else {
        ignore([&] { frame5.SetVisible(true); });
        ignore([&] { (*this)("Command21").SetEnabled(false); });
        ignore([&] { notes.SetVisible(true); });
        ignore([&] { cmdShowPic.SetCaption("View Mode"); });
        ignore([&] { wb.SetNum("Width", frame5.Num("Width") - (notes.Num("Left") + 200)); });
        ignore([&] { wb.SetNum("Height", notes.Num("Top") + 250); });
        ignore([&] { wb.SetNum("Top", frame4.Num("Height") + frame4.Num("Top") - 20); });
        ignore([&] { wb.SetNum("Left", frame5.Num("Width") + frame5.Num("Left")); });
    }
    ignore([&] { Runtime::Current().LetEventsRun(); });
    ignore([&] { ShowPicture(); });
}

void Products::Form_KeyDown(int& KeyCode, int Shift) {
    Trap on = reportTo("(Form) Products::Sub Form_KeyDown");
    if (mbEditFlag || mbAddNewFlag) return;
    browseKey(KeyCode, Shift, on,
              {[&] { cmdClose_Click(); }, [&] { cmdFirst_Click(); }, [&] { cmdLast_Click(); },
               [&] { cmdPrevious_Click(); }, [&] { cmdNext_Click(); }});
}

void Products::Command4_Click() {
    Trap on = reportTo("(Form) Products::Sub Command4_Click");
    Control& Command4 = (*this)("Command4");
    if (when(on, [&] { return Command4.Caption() == "Thumbnails"; })) {
        on([&] { Command4.SetCaption("Cancel"); });
        on([&] { Mod().ThumbsMode = true; });
        on([&] { webcat->MakeThumbs(); });
    } else {
        on([&] { Command4.SetCaption("Thumbnails"); });
        on([&] { Mod().ThumbsMode = false; });
    }
}

void Products::Command5_Click() {
    Trap on = reportTo("(Form) Products::Sub Command5_Click");
    if (when(on, [&] { return (*this)("cmdShowPic").Caption() != "View Mode"; })) {
        on([&] { (*this)("Frame9").SetVisible(!(*this)("Frame9").Visible()); });
        on([&] { SetSize(); });
    }
}
