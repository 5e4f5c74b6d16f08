// The controls of the main form and their places, in twips. The panels: `Frame5` the
// command panel on the left, `Frame4` the main fields above the pane, `Wb1` the pane; in
// view mode the pane fills the form above the bar of move buttons.
#include <array>

#include "build/bulk.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "reports/reports.h"
#include "shell/products.h"
#include "stock/ordering.h"
#include "webcat/web_catalogue.h"

namespace {

// A record field: its box (or check box) and its label, `Label3(label)`.
struct Field {
    int n;
    int label;  // 0: none
    const char* caption;
};

constexpr std::array<Field, 7> mainFields{{
    {27, 2, "Stock #:"},
    {18, 5, "Page:"},
    {22, 3, "Name:"},
    {21, 4, "Desc:"},
    {1, 18, "Category:"},
    {17, 6, "Packaging:"},
    {28, 0, ""},
}};

// The other fields in three columns of seven inside the command panel.
constexpr std::array<Field, 21> panelFields{{
    {2, 7, "Cost 1:"},        {3, 8, "Cost 2:"},       {4, 9, "Cost 3:"},
    {5, 10, "Cost 4:"},       {6, 11, "Cost 5:"},      {24, 12, "Retail:"},
    {20, 13, "Sales Price:"}, {8, 23, "Inventory:"},   {13, 24, "On Order:"},
    {23, 25, "Re-Order:"},    {11, 26, "No. Sold:"},   {30, 14, "Weight:"},
    {10, 15, "Min Ord W:"},   {9, 16, "Min Ord R:"},   {16, 20, "Suplr Stock Info:"},
    {25, 27, "Shipping 1:"},  {26, 28, "Shipping 2:"}, {7, 21, "Discontinued:"},
    {14, 19, "On Special:"},  {15, 22, "Orderable:"},  {29, 30, "Taxable:"},
}};

bool isCheckField(int n) {
    return n == 7 || n == 14 || n == 15 || n == 29;
}

void addField(Form& f, const Field& fd, Box label, Box box, const std::string& frame) {
    if (fd.label) {
        Control& l = addControl(f, "Label3", ControlKind::Label, fd.label, label, fd.caption);
        l.SetProperty("Tag", Variant(fd.caption));  // the design caption, for Restore Labels
        inside(l, frame);
    }
    if (isCheckField(fd.n)) {
        inside(addControl(f, "chkFields", ControlKind::CheckBox, fd.n, box), frame);
    } else {
        Control& t = addControl(f, "txtFields", ControlKind::TextBox, fd.n, box);
        t.SetProperty("Tag", Variant("true"));
        inside(t, frame);
    }
}

}  // namespace

Products::Products() : Form("Products") {
    SetCaption("Products");
    SetNum("Width", 9480);
    SetNum("Height", 7284);
    SetProperty("KeyPreview", Variant(true));
    createPanels();
    createRecordControls();
    createCommandPanel();
    createBrowsingControls();
    createLayoutBoard();
    createDataControls();
    createMenus();
    wireEvents();
    wirePane();
    wireEditing();
    wireSearch();
    // The later subsystems' parts wire their own events, on controls made above.
    bulk = std::make_unique<Bulk>(*this);
    webcat = std::make_unique<WebCatalogue>(*this);
    stock = std::make_unique<Ordering>(*this);
    reports = std::make_unique<Reports>(*this);
    // A change typed into a bound box goes into the row's pending edit.
    Observe([this](Form&, Control* c, std::string_view property) {
        if (c) binding.Changed(*c, property);
    });
}

Products::~Products() = default;

void Products::createPanels() {
    // The form opens in view mode: the command panel is hidden and the pane fills the form.
    addControl(*this, "Frame5", ControlKind::Frame, -1, {0, 0, 5300, 5700}).SetVisible(false);
    addControl(*this, "Frame4", ControlKind::Frame, -1, {5300, 0, 4030, 1700});
    addControl(*this, "Wb1", ControlKind::Browser, -1, {50, 0, 9280, 5700});
    addControl(*this, "Frame9", ControlKind::Frame, -1, {0, 0, 3000, 5700}, "Web Pages")
        .SetVisible(false);
    inside(addControl(*this, "File1", ControlKind::FileList, -1, {100, 300, 2800, 5200}), "Frame9");
    addControl(*this, "Frame11", ControlKind::Frame, -1, {50, 0, 9280, 5700},
               "Drag The Boxes On The Right To The Boxes On The Left To Where You Want Each Item "
               "Included")
        .SetVisible(false);
    // Shown by Export DB only.
    inside(addControl(*this, "cmdSelectAll", ControlKind::CommandButton, -1,
                      {7600, 5000, 1500, 300}, "Select ALL"),
           "Frame11")
        .SetVisible(false);
    inside(addControl(*this, "cmdUnSelect", ControlKind::CommandButton, -1, {7600, 5340, 1500, 300},
                      "Un-Select ALL"),
           "Frame11")
        .SetVisible(false);
    addControl(*this, "Frame12", ControlKind::Frame, -1, {0, 0, 9300, 7200}, "Page Setup")
        .SetVisible(false);
    // The stock numbers chosen for the pages, and the page stage's status.
    inside(addControl(*this, "List3", ControlKind::ListBox, -1, {100, 300, 2000, 3000}), "Frame12")
        .SetVisible(false);
    inside(addControl(*this, "Label7", ControlKind::Label, -1, {100, 6400, 4000, 600}), "Frame12");
}

void Products::createRecordControls() {
    // Frame4: two fields on the first row, one a row below; places within the frame.
    const double labelLeft = 100, boxLeft = 1000;
    double top = 120;
    for (std::size_t i = 0; i < mainFields.size(); ++i) {
        const Field& fd = mainFields[i];
        bool second = fd.n == 18 || fd.n == 17;
        Box label = second ? Box{2380, top, 810, 255} : Box{labelLeft, top, 850, 255};
        Box box = second ? Box{3230, top, 700, 285}
                         : Box{boxLeft, top, fd.n == 27 || fd.n == 1 ? 1300.0 : 2930.0, 285};
        addField(*this, fd, label, box, "Frame4");
        if (!(i + 1 < mainFields.size() &&
              (mainFields[i + 1].n == 18 || mainFields[i + 1].n == 17)))
            top += 320;
    }
    inside(addControl(*this, "cmdSup", ControlKind::CommandButton, 0,
                      {labelLeft, top - 320, 850, 285}, "  Supplier:"),
           "Frame4");
    // Each column of the panel's fields is as wide as its longest label.
    struct Column {
        double label, labelWidth, box, boxWidth;
    };
    constexpr std::array<Column, 3> columns{
        {{100, 870, 990, 600}, {1680, 840, 2540, 600}, {3230, 1245, 4490, 720}}};
    for (std::size_t i = 0; i < panelFields.size(); ++i) {
        const Column& col = columns[i / 7];
        double rowTop = 1530 + static_cast<double>(i % 7) * 265;
        addField(*this, panelFields[i], {col.label, rowTop, col.labelWidth, 255},
                 {col.box, rowTop, col.boxWidth, 255}, "Frame5");
    }
    // The notes box stands right of its label; where it starts also sets how wide the pane
    // beside the panel is in edit mode.
    inside(addControl(*this, "Label3", ControlKind::Label, 29, {120, 3600, 900, 255}, "Notes:"),
           "Frame5")
        .SetProperty("Tag", Variant("Notes:"));
    inside(addControl(*this, "txtFields", ControlKind::TextBox, 12, {1070, 3600, 4130, 2000}),
           "Frame5")
        .SetProperty("Tag", Variant("true"));
    addControl(*this, "txtFields", ControlKind::TextBox, 19, {50, 5460, 9200, 285})
        .SetProperty("Tag", Variant("true"));
    addControl(*this, "Text2", ControlKind::TextBox, -1, {7300, 1400, 1900, 285}).SetVisible(false);
}

void Products::createCommandPanel() {
    auto button = [&](const std::string& name, int column, int row,
                      const std::string& caption) -> Control& {
        return inside(addControl(*this, name, ControlKind::CommandButton, -1,
                                 {100 + column * 1290.0, 120 + row * 320.0, 1275, 300}, caption),
                      "Frame5");
    };
    button("cmdAdd", 0, 0, "&Add 1 New");
    button("cmdUpdate", 0, 0, "&Update").SetVisible(false);
    button("cmdEdit", 1, 0, "&Edit This");
    button("cmdCancel", 1, 0, "&Cancel").SetVisible(false);
    button("cmdDelete", 2, 0, "&Delete This");
    button("cmdClose", 3, 0, "Close");
    button("cmdRefresh", 0, 1, "&Refresh Data");
    button("cmdReset", 1, 1, "Reset Data");
    button("cmdEditRec", 2, 1, "Edit All Items");
    button("cmdDAll", 3, 1, "Delete All");
    button("cmdDetSearch", 0, 2, "Detailed Search");
    button("Command16", 1, 2, "Show Help");
    button("Command2", 2, 2, "Order Done").SetVisible(false);
    button("Command3", 3, 2, "Export DB");
    inside(addControl(*this, "txtSrch", ControlKind::TextBox, -1, {100, 1080, 2565, 300}),
           "Frame5");
    button("cmdSearch", 2, 3, "Search");
    button("Command1", 3, 3, "Order Item");
}

void Products::createBrowsingControls() {
    const double bar = 5760, bar2 = 6090, h = 315;
    auto button = [&](const std::string& name, Box b, const std::string& caption) {
        addControl(*this, name, ControlKind::CommandButton, -1, b, caption);
    };
    button("cmdFirst", {50, bar, 600, h}, "First");
    button("cmdPrevious", {660, bar, 750, h}, "Previous");
    button("cmdNext", {1420, bar, 600, h}, "Next");
    button("cmdLast", {2030, bar, 600, h}, "Last");
    addControl(*this, "lblStatus", ControlKind::Label, -1, {2700, bar + 40, 2000, 255});
    addControl(*this, "Slider1", ControlKind::Slider, -1, {4750, bar, 1500, h});
    button("cmdGrid", {6300, bar, 950, h}, "Show Grid");
    button("cmdShowPic", {7260, bar, 950, h}, "Edit Mode");
    button("cmdShowPicPath", {8220, bar, 1050, h}, "Picture Path ");
    button("Command4", {50, bar2, 1100, h}, "Thumbnails");
    button("Command5", {1160, bar2, 1100, h}, "Web Pages");
    button("Command21", {2270, bar2, 900, h}, "MENU");
    addControl(*this, "cmdSup", ControlKind::CommandButton, 1, {3180, bar2, 900, h}, "WebPage");
    button("cmdAddAll", {4090, bar2, 1100, h}, "Bulk Add");
    addControl(*this, "grddatagrid", ControlKind::DataGrid, -1, {50, 0, 9280, 5700})
        .SetVisible(false);
}

void Products::createLayoutBoard() {
    static const std::array<const char*, 9> boxes{"Item #",      "Name",         "Picture",
                                                  "Description", "Retail",       "Cost",
                                                  "Savings",     "Details Link", "Buy Link"};
    for (int i = 0; i < 9; ++i) {
        double top = 600 + i * 305.0;
        // The page designer's board stands in the page setup panel.
        inside(addControl(*this, "Label4", ControlKind::Label, i, {200, top, 1500, 285}, boxes[i]),
               "Frame12");
        inside(addControl(*this, "cmdInsrt", ControlKind::CommandButton, i, {1750, top, 800, 285},
                          "Insert"),
               "Frame12");
        if (i < 6)
            inside(
                addControl(*this, "lstAll", ControlKind::ListBox, i, {2600, top - 20, 2000, 285}),
                "Frame12");
    }
    inside(addControl(*this, "Combo1", ControlKind::ComboBox, -1, {5000, 600, 1500, 315}),
           "Frame12");
    // The stock numbers of the chosen page groups; shown only during a page run.
    addControl(*this, "List2", ControlKind::ListBox, -1, {5000, 1000, 2000, 4000})
        .SetVisible(false);
}

void Products::createDataControls() {
    for (const char* name : {"Data1", "Data2", "Data3"})
        addControl(*this, name, ControlKind::DataControl, -1, {0, 0, 1200, 300}, name)
            .SetVisible(false);
    Data1 = CreateDataControl();
    Data2 = CreateDataControl();
    Data3 = CreateDataControl();
    for (auto* d : {Data1.get(), Data2.get(), Data3.get()})
        d->SetConnect("Access 2000;");
    Data2->SetRecordSource("Products");
}

void Products::createMenus() {
    // Each item names the menu it stands under; "" for the menu bar.
    auto menu = [&](const std::string& name, const std::string& caption,
                    const std::string& parent = "") {
        inside(addControl(*this, name, ControlKind::Menu, -1, {0, 0, 0, 0}, caption), parent);
    };
    menu("mnuFile", "&File");
    menu("mnuFileOpen", "&Open Catalogue...", "mnuFile");
    menu("mnuFileExit", "E&xit", "mnuFile");
    menu("mnuData", "F&orms");
    menu("mnuDataProducts", "&Products", "mnuData");
    menu("mnuDatafrmInventory", "&Inventory", "mnuData");
    menu("mnuDatafrmInvoice", "In&voices", "mnuData");
    menu("mnuDatafrmOrders", "&Orders", "mnuData");
    menu("mnuDatafrmSales", "&Sales", "mnuData");
    menu("mnuDatafrmSetup", "Company Se&tup", "mnuData");
    menu("mnuDatafrmSupplier", "S&uppliers", "mnuData");
    menu("mnuReports", "Reports");
    menu("mnuCosts", "Cost Reports", "mnuReports");
    for (int n = 1; n <= 5; ++n)
        menu("mnuR" + std::to_string(n), "Cost " + std::to_string(n) + " Price List", "mnuCosts");
    menu("mnuR6", "Retail Price List", "mnuReports");
    menu("mnuR7", "Category Report", "mnuReports");
    menu("mnuR8", "Inventory Report", "mnuReports");
    menu("mnuR9", "Order Report", "mnuReports");
    menu("mnuPG", "Page Name/Number", "mnuReports");
    menu("mnuAll", "ALL Items Report", "mnuReports");
    menu("mnuBrwse", "Browse For Report", "mnuReports");
    menu("mnuCustom", "&Customise");
    menu("mnuRestore", "Restore Text Boxes", "mnuCustom");
    menu("mnuRestoreLabels", "Restore Labels", "mnuCustom");
    menu("mnuHelp", "&Help");
    menu("mnuHelpTip", "&Tip of the Day", "mnuHelp");
    menu("mnuHelpAbout", "&About", "mnuHelp");
}

void Products::wireEvents() {
    OnClick("mnuFileExit", &Products::mnuFileExit_Click);
    OnClick("cmdClose", &Products::cmdClose_Click);
    OnClick("mnuDataProducts", &Products::mnuDataProducts_Click);
    OnClick("mnuDatafrmInventory", &Products::mnuDatafrmInventory_Click);
    OnClick("mnuDatafrmInvoice", &Products::mnuDatafrmInvoice_Click);
    OnClick("mnuDatafrmOrders", &Products::mnuDatafrmOrders_Click);
    OnClick("mnuDatafrmSales", &Products::mnuDatafrmSales_Click);
    OnClick("mnuDatafrmSetup", &Products::mnuDatafrmSetup_Click);
    OnClick("mnuDatafrmSupplier", &Products::mnuDatafrmSupplier_Click);
    OnClick("mnuHelpTip", &Products::mnuHelpTip_Click);
    OnClick("mnuHelpAbout", &Products::mnuHelpAbout_Click);
    OnClick("cmdFirst", &Products::cmdFirst_Click);
    OnClick("cmdLast", &Products::cmdLast_Click);
    OnClick("cmdNext", &Products::cmdNext_Click);
    OnClick("cmdPrevious", &Products::cmdPrevious_Click);
    OnClick("cmdGrid", &Products::cmdGrid_Click);
    OnClick("grddatagrid", &Products::grdDataGrid_Click);
    On("grddatagrid", "RowColChange", [this](EventArgs&) { grdDataGrid_RowColChange(); });
    On("Slider1", "Scroll", [this](EventArgs&) { Slider1_Scroll(); });
    OnClick("cmdShowPicPath", &Products::cmdShowPicPath_Click);
    OnClick("cmdShowPic", &Products::cmdShowPic_Click);
    OnClick("Command4", &Products::Command4_Click);
    OnClick("Command5", &Products::Command5_Click);
    OnClick("Command21", &Products::Command21_Click);
}

Pane& Products::Wb1() {
    return Runtime::Current().ui().PaneFor(*this, "Wb1");
}

void Products::wirePane() {
    // The pane may outlive the form; a form that is gone no longer hears it.
    std::weak_ptr<int> alive = alive_;
    Pane& pane = Wb1();
    pane.BeforeNavigate2 = [this, alive](const std::string& url, bool& Cancel) {
        if (!alive.expired()) Wb1_BeforeNavigate2(url, Cancel);
    };
    pane.NavigateComplete2 = [this, alive](const std::string& url) {
        if (!alive.expired()) Wb1_NavigateComplete2(url);
    };
    pane.CommandStateChange = [this, alive] {
        if (!alive.expired()) Wb1_CommandStateChange();
    };
    pane.NavigateError = [this, alive](const std::string& url) {
        if (!alive.expired()) Wb1_NavigateError(url);
    };
}

std::unique_ptr<Recordset> Products::primarySet() {
    auto rs = CreateRecordset();
    // The bound boxes follow the row first, then the form's handler runs.
    rs->MoveComplete = [this] {
        binding.Moved();
        adoPrimaryRS_MoveComplete();
    };
    rs->WillChangeRecord = [this] {
        int adStatus = 1;
        adoPrimaryRS_WillChangeRecord(adStatus);
    };
    return rs;
}

void Products::bindFields() {
    binding.Clear();
    for (const auto& c : Controls()) {
        if (c->Name() == "txtFields" || c->Name() == "chkFields")
            binding.Bind(*c, *adoPrimaryRS, c->Index());
    }
    (*this)("grddatagrid").SetDataSource(adoprimaryrs2.get());
    // A box shows its field as soon as it is bound.
    binding.Refresh();
}
