#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/trap.h"
#include "base/variant.h"
#include "forms/binding.h"
#include "forms/form.h"
#include "records/store.h"

class Bulk;
class Ordering;
class Pane;
class WebCatalogue;

// The main form: the record fields, the pane `Wb1`, the menu and every bulk tool. Its
// procedures live in the folder of their subsystem.
class Products : public Form {
  public:
    Products();
    ~Products() override;

    // Form-level state.
    NAMED_VAR(std::unique_ptr<Connection>, CatalogConn);
    NAMED_VAR(std::unique_ptr<Recordset>, adoPrimaryRS);
    NAMED_VAR(std::unique_ptr<Recordset>, adoprimaryrs2);
    NAMED_VAR(std::unique_ptr<DataControl>, Data1);
    NAMED_VAR(std::unique_ptr<DataControl>, Data2);
    NAMED_VAR(std::unique_ptr<DataControl>, Data3);
    NAMED_VAR(bool, mbEditFlag);
    NAMED_VAR(bool, mbAddNewFlag);
    NAMED_VAR(bool, mbDataChanged);
    NAMED_VAR(Variant, mvBookMark);
    NAMED_VAR(Variant, ExitAfterRun);
    NAMED_VAR(bool, GridClicked);
    NAMED_VAR(bool, ExportMode);  // Export DB is running
    NAMED_VAR(bool, Searching);   // true while SearchForIt runs

    // Set by the pane's link commands; the bulk tools wait on them.
    NAMED_VAR(bool, ContinueFlag);
    NAMED_VAR(std::int32_t, LinkNumber);  // the number of the last GF- link
    NAMED_VAR(std::int16_t, LastBox);     // the number of a DB- link; the board's last box
    NAMED_VAR(bool, EditPlacements);
    NAMED_VAR(std::int16_t, ImportKind);  // 7 for a database source

    // The pane, and the control that gives it its place on the form.
    Pane& Wb1();
    Control& Wb1Box() const { return (*this)("Wb1"); }

    // Start-up and ending (shell/products_startup.cpp).
    void Form_Load() override;
    void Form_Activate() override;
    // The current product read again from the catalogue, so that the counters the stock
    // forms stored show in the boxes; a change typed and not yet stored stays.
    void showStoredRow(Trap& on);
    void Form_QueryUnload(int& Cancel, int UnloadMode) override;
    void Form_Unload(int& Cancel) override;
    void ReBuildDB();
    void mnuFileExit_Click();
    void cmdClose_Click();
    void mnuDataProducts_Click();
    void mnuDatafrmInventory_Click();
    void mnuDatafrmInvoice_Click();
    void mnuDatafrmOrders_Click();
    void mnuDatafrmSales_Click();
    void mnuDatafrmSetup_Click();
    void mnuDatafrmSupplier_Click();
    void mnuHelpTip_Click();
    void mnuHelpAbout_Click();

    // Window placement (shell/products_settings.cpp).
    void SetSize();

    // Browsing (records/products_browsing.cpp).
    void adoPrimaryRS_MoveComplete();
    void cmdFirst_Click();
    void cmdLast_Click();
    void cmdNext_Click();
    void cmdPrevious_Click();
    void cmdGrid_Click();
    void grdDataGrid_Click();
    void grdDataGrid_RowColChange();
    void Slider1_Scroll();
    void cmdShowPicPath_Click();
    void cmdShowPic_Click();
    void Form_KeyDown(int& KeyCode, int Shift) override;
    void Command4_Click();
    void Command5_Click();

    // The item view (records/show_picture.cpp).
    void ShowPicture();

    // Editing (records/products_editing.cpp).
    void SetButtons(bool bVal);
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdUpdate_Click();
    void cmdCancel_Click();
    void cmdDelete_Click();
    void cmdRefresh_Click();
    void cmdReset_Click();
    void cmdEditRec_Click();
    void Command3_Click();
    void Command16_Click();
    void adoPrimaryRS_WillChangeRecord(int& adStatus);
    void txtFields_DblClick(int Index);

    // Field labels and hidden boxes (records/field_labels.cpp).
    void Label3_DblClick(int Index);
    void mnuRestore_Click();
    void mnuRestoreLabels_Click();

    // Quick search and the detailed search (search/products_search.cpp).
    void cmdSearch_Click();
    void cmdDetSearch_Click();
    void txtSrch_GotFocus();
    void txtSrch_KeyPress(int& KeyAscii);
    void SearchForIt();

    // The pane's events (records/products_pane.cpp).
    void Wb1_BeforeNavigate2(const std::string& url, bool& Cancel);
    void Wb1_NavigateComplete2(const std::string& url);
    void Wb1_CommandStateChange();
    void Wb1_NavigateError(const std::string& url);
    // The MENU button (records/products_pane.cpp).
    void Command21_Click();

    // The parts of the form that the later subsystems keep in their folders.
    std::unique_ptr<Bulk> bulk;            // build/
    std::unique_ptr<WebCatalogue> webcat;  // webcat/
    std::unique_ptr<Ordering> stock;       // stock/

  private:
    // The controls, one group each (shell/products_controls.cpp).
    void createRecordControls();
    void createCommandPanel();
    void createBrowsingControls();
    void createPanels();
    void createLayoutBoard();
    void createDataControls();
    void createMenus();
    void wireEvents();
    void wirePane();
    void wireEditing();
    void wireSearch();

    // A record set of the form, with its move event going to the form's handler.
    std::unique_ptr<Recordset> primarySet();
    // Binds the record fields to adoPrimaryRS and the grid to adoprimaryrs2.
    void bindFields();
    // The help set: the start page, or the numbered page HelpPage, with its status line.
    void showHelpStart();
    void showHelpPage(Trap& on);
    // A Forms-menu command: show the form with the hourglass on meanwhile.
    void showDataForm(const std::string& form, const std::string& tag);

    Binding binding;
    std::shared_ptr<int> alive_ = std::make_shared<int>(0);
    bool retrying_ = false;
};
