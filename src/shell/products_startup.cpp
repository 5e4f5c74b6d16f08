// Start-up and ending of the main form, and the Forms menu.
#include <filesystem>

#include "base/convert.h"
#include "base/strings.h"
#include "forms/runtime.h"
#include "records/product_statements.h"
#include "records/store.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

constexpr int vbMinimized = 1;

bool fileExists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::is_regular_file(path, ec);
}

}  // namespace

void Products::Form_Load() {
    Trap on = reportTo("(Form) Products::Sub Form_Load");
    Runtime& rt = Runtime::Current();
    Module& m = Mod();
    on([&] { m.HelpPage = Variant::Integer(-1); });
    on([&] { m.StartingUp = true; });
    on([&] { m.AppDir = Variant(rt.AppPath()); });
    on([&] { m.PictureDir = Variant(CStr(m.AppDir) + "Pictures/"); });
    if (when(on, [&] { return m.DBName.empty(); }))
        on([&] {
            m.DBName = rt.GetSetting("Settings", "DBName", CStr(m.AppDir) + "tandrel2004.mde");
        });
    for (int n = 1; n <= 30; ++n) {
        if (n != 1 && n != 17 && n != 19 && n != 28) {
            on([&] {
                Control& label = (*this)("Label3", n);
                label.SetCaption(
                    rt.GetSetting("Settings", numbered("LabelName", n), label.Caption()));
            });
            for (int k = 0; k <= 5; ++k)
                on([&] { (*this)("lstAll", k).AddItem((*this)("Label3", n).Caption(), n - 1); });
        } else {
            for (int k = 0; k <= 5; ++k)
                on([&] { (*this)("lstAll", k).AddItem("N/A", n - 1); });
        }
        if (n != 7 && n != 14 && n != 15 && n != 29)
            on([&] {
                (*this)("txtFields", n)
                    .SetVisible(
                        CBool(Variant(rt.GetSetting("Settings", numbered("HideText", n), "True"))));
            });
    }
    for (int k = 0; k <= 5; ++k)
        on([&] { (*this)("lstAll", k).AddItem("Picture"); });
    if (when(on, [&] { return m.DBName.empty(); }))
        on([&] { m.DBName = CStr(m.AppDir) + "Tandrel2004.mde"; });
    on([&] { SetCaption(m.DBName); });
    on([&] { CatalogConn = CreateConnection(); });
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    if (when(on, [&] { return !fileExists(m.DBName); }))
        on([&] { MsgBox("Can't find the database file" + m.DBName, vb::vbOKOnly, rt.Title()); });
    on([&] { CatalogConn->SetCursorLocation(ado::adUseClient); });
    on([&] { CatalogConn->Open(connectionText(m.DBName), "", ""); });
    on([&] { adoPrimaryRS = primarySet(); });
    on([&] {
        adoPrimaryRS->Open(StatementA, *CatalogConn, ado::adOpenStatic, ado::adLockOptimistic);
    });
    on([&] { rt.LetEventsRun(); });
    on([&] { adoprimaryrs2 = CreateRecordset(); });
    on([&] {
        adoprimaryrs2->Open(StatementB, *CatalogConn, ado::adOpenStatic, ado::adLockOptimistic);
    });
    on([&] { rt.LetEventsRun(); });
    on([&] { mbAddNewFlag = false; });
    on([&] { bindFields(); });
    on([&] { m.SearchFormOpen = Variant(false); });
    on([&] { mbDataChanged = false; });
    on([&] { m.StartingUp = true; });
    on([&] { Data1->SetDatabaseName(m.DBName); });
    on([&] { Data2->SetDatabaseName(m.DBName); });
    on([&] { m.FontColorOf[CInt(m.LayoutSide)][0] = "#111111"; });
    on([&] { m.FontSizeOf[CInt(m.LayoutSide)][0] = 5; });
    on([&] { m.PageAlign = "center"; });
    on([&] { (*this)("File1").SetProperty("Path", Variant(CStr(m.AppDir) + "Pages/")); });
    on([&] { m.ItemsPerRow = 4; });
    on([&] { m.ImageSizeAttr = " width=100"; });
    on([&] { m.ImageBorder = Variant::Integer(1); });
    for (auto& side : m.FontNameOf)
        for (auto& name : side)
            name = "MS Sans Serif";
    on([&] { m.Marks.assign(static_cast<std::size_t>(adoPrimaryRS->RecordCount()), 0); });
    Control& combo = (*this)("Combo1");
    for (const char* cost : {"Retail", "Cost1", "Cost2", "Cost3", "Cost4", "Cost5"})
        on([&] { combo.AddItem(cost); });
    on([&] { combo.SetListIndex(0); });
    on([&] { combo.AddItem("Sales Price"); });
    on([&] { m.StartingUp = false; });
}

void Products::showStoredRow(Trap& on) {
    // The stock forms store through record sets of their own.
    if (!when(on, [&] { return !adoPrimaryRS->Bof() && !adoPrimaryRS->Eof(); })) return;
    on([&] { adoPrimaryRS->Resync(ado::adAffectCurrent); });
    on([&] { binding.Refresh(); });
}

void Products::Form_Activate() {
    Trap on = reportTo("(Form) Products::Sub Form_Activate");
    Runtime& rt = Runtime::Current();
    Module& m = Mod();
    on([&] { rt.SetMousePointer(vb::vbNormal); });
    on([&] { (*this)("txtFields", 19).SetVisible(false); });
    showStoredRow(on);
    if (when(on, [&] { return m.SoldQty > 0; })) {
        // Criteria that the store refuses (an apostrophe in the stock number) leave the row
        // where it was, another product's: its counters are left alone.
        if (on([&] {
                adoPrimaryRS->Find("StockNo = '" + CStr(m.PassedKey) + "'", 0,
                                   ado::adSearchForward);
            })) {
            // The sale comes off the counters as stored, not as this form last read them.
            showStoredRow(on);
            on([&] {
                Control& inventory = (*this)("txtFields", 8);
                inventory.SetText(
                    CStr(Variant::Double(CDbl(Variant(inventory.Text())) - m.SoldQty)));
            });
            on([&] {
                Control& sold = (*this)("txtFields", 11);
                sold.SetText(CStr(::Add(Variant(sold.Text()), Variant::Integer(m.SoldQty))));
            });
            on([&] { adoPrimaryRS->MoveNext(); });
            on([&] { adoPrimaryRS->MovePrevious(); });
        }
        on([&] { m.SoldQty = 0; });
        on([&] { m.PassedKey = Variant(""); });
    }
    on([&] { SetNum("Left", CDbl(Variant(rt.GetSetting("Settings", "MainLeft", "1000")))); });
    on([&] { SetNum("Top", CDbl(Variant(rt.GetSetting("Settings", "MainTop", "1000")))); });
    on([&] { SetNum("Height", 7284); });
    on([&] { SetNum("Width", 9480); });
    // The layout board: the nine boxes one under the other, their buttons and lists beside.
    for (int i = 0; i <= 8; ++i) {
        on([&] {
            Control& first = (*this)("Label4", 0);
            (*this)("Label4", i).SetNum("Top", first.Num("Top") + i * (first.Num("Height") + 20));
        });
        on([&] { (*this)("cmdInsrt", i).SetNum("Top", (*this)("Label4", i).Num("Top")); });
        const int position = i < 5 ? i + 1 : 30;
        if (i < 6) {
            on([&] { (*this)("lstAll", i).SetNum("Top", (*this)("Label4", i).Num("Top") - 20); });
            on([&] { (*this)("lstAll", i).SetListIndex(position); });
        }
        for (int side = 0; side <= 1; ++side) {
            on([&] { m.BoxField[side][i] = 10; });
            if (i < 6) on([&] { m.BoxListIndex[side][i] = Variant::Integer(position); });
            on([&] { m.BoxOrder[side][i] = Variant::Integer(i); });
        }
        on([&] { (*this)("Label4", i).SetProperty("Tag", Variant(i)); });
    }
    on([&] { (*this)("Label4", 0).Raise("Click"); });
}

void Products::Form_QueryUnload(int& Cancel, int /*UnloadMode*/) {
    Trap on = reportTo("(Form) Products::Sub Form_QueryUnload");
    if (when(on, [&] { return (*this)("Command2").Visible(); })) {
        on([&] {
            MsgBox(
                "You Have An Open Order! Please Click On The 'Order Done' Button To Finish Your "
                "Last Order");
        });
        on([&] { Cancel = 1; });
    }
}

void Products::Form_Unload(int& /*Cancel*/) {
    Trap on = reportTo("(Form) Products::Sub Form_Unload");
    on([&] { Runtime::Current().SetMousePointer(vb::vbNormal); });
    on([&] { cmdClose_Click(); });
    Runtime::Current().End();
}

void Products::cmdClose_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdClose_Click");
    // Ends the process: nothing after it in this procedure ever runs.
    on([&] { mnuFileExit_Click(); });
}

void Products::mnuFileExit_Click() {
    Trap on = reportTo("(Form) frmMain::Sub MDIForm_Unload");
    Runtime& rt = Runtime::Current();
    if (when(on, [&] { return WindowState() != vbMinimized; })) {
        on([&] { rt.SaveSetting("Settings", "MainLeft", CStr(Property("Left"))); });
        on([&] { rt.SaveSetting("Settings", "MainTop", CStr(Property("Top"))); });
        on([&] { rt.SaveSetting("Settings", "MainWidth", CStr(Property("Width"))); });
        on([&] { rt.SaveSetting("Settings", "MainHeight", CStr(Property("Height"))); });
        on([&] { rt.SaveSetting("Settings", "DBName", Mod().DBName); });
    }
    rt.End();
}

void Products::ReBuildDB() {
    Trap on = reportTo("(Form) Products::Sub Form_Load");
    Runtime& rt = Runtime::Current();
    Module& m = Mod();
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { rt.LetEventsRun(); });
    on([&] { CatalogConn = CreateConnection(); });
    on([&] { CatalogConn->SetCursorLocation(ado::adUseClient); });
    on([&] { CatalogConn->Open(connectionText(m.DBName), "", ""); });
    // The boxes let go of the old sets before those go.
    on([&] { binding.Clear(); });
    on([&] { (*this)("grddatagrid").SetDataSource(nullptr); });
    on([&] { adoPrimaryRS = primarySet(); });
    on([&] {
        adoPrimaryRS->Open(StatementA, *CatalogConn, ado::adOpenStatic, ado::adLockOptimistic);
    });
    on([&] { adoprimaryrs2 = CreateRecordset(); });
    on([&] {
        adoprimaryrs2->Open(StatementB, *CatalogConn, ado::adOpenStatic, ado::adLockOptimistic);
    });
    on([&] { bindFields(); });
    on([&] { m.SearchFormOpen = Variant(false); });
    on([&] { mbDataChanged = false; });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::showDataForm(const std::string& form, const std::string& tag) {
    Trap on = reportTo(tag);
    Runtime& rt = Runtime::Current();
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { rt.LetEventsRun(); });
    // A form that is not part of the program yet fails here in silence.
    on([&] { rt.Show(rt.Get(form)); });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::mnuDataProducts_Click() {
    Trap on = reportTo("(Form) frmMain::Sub mnuDataProducts_Click");
    Runtime& rt = Runtime::Current();
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { rt.LetEventsRun(); });
    on([&] { Mod().MainForm = static_cast<Products*>(&rt.Create("Products")); });
    on([&] { rt.Show(*Mod().MainForm); });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::mnuDatafrmInventory_Click() {
    showDataForm("frmInventory", "(Form) frmMain::Sub mnuDatafrmInventory_Click");
}
void Products::mnuDatafrmInvoice_Click() {
    showDataForm("frmInvoice", "(Form) frmMain::Sub mnuDatafrmInvoice_Click");
}
void Products::mnuDatafrmOrders_Click() {
    showDataForm("frmOrders", "(Form) frmMain::Sub mnuDatafrmOrders_Click");
}
void Products::mnuDatafrmSales_Click() {
    showDataForm("frmSales", "(Form) frmMain::Sub mnuDatafrmSales_Click");
}
void Products::mnuDatafrmSetup_Click() {
    showDataForm("frmSetup", "(Form) frmMain::Sub mnuDatafrmSetup_Click");
}
void Products::mnuDatafrmSupplier_Click() {
    showDataForm("frmSupplier", "(Form) frmMain::Sub mnuDatafrmSupplier_Click");
}

void Products::mnuHelpTip_Click() {
    Trap on = reportTo("(Form) frmMain::Sub tbToolBar_ButtonClick");
    Runtime& rt = Runtime::Current();
    on([&] { Mod().TipsAsked = true; });
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { rt.Show(rt.Get("frmTip")); });
    on([&] { Mod().TipsAsked = false; });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::mnuHelpAbout_Click() {
    Trap on = reportTo("(Form) frmMain::Sub mnuHelpAbout_Click");
    Runtime& rt = Runtime::Current();
    on([&] { rt.Show(rt.Get("frmAbout"), vb::vbModal); });
}
