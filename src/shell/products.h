#pragma once

#include <memory>
#include <string>

#include "base/trap.h"
#include "base/variant.h"
#include "forms/binding.h"
#include "forms/form.h"
#include "records/store.h"

class Pane;

// The main form: the record fields, the pane `Wb1`, the menu and every bulk tool. Its
// procedures live in the folder of their subsystem.
class Products : public Form {
  public:
    Products();
    ~Products() override;

    // Form-level state.
    std::unique_ptr<Connection> CatalogConn;
    std::unique_ptr<Recordset> adoPrimaryRS;
    std::unique_ptr<Recordset> adoprimaryrs2;
    std::unique_ptr<DataControl> Data1, Data2, Data3;
    bool mbEditFlag = false;
    bool mbAddNewFlag = false;
    bool mbDataChanged = false;
    Variant mvBookMark;
    Variant ExitAfterRun;
    bool GridClicked = false;

    // The pane, and the control that gives it its place on the form.
    Pane& Wb1();
    Control& Wb1Box() const { return (*this)("Wb1"); }

    // Start-up and ending (shell/products_startup.cpp).
    void Form_Load() override;
    void Form_Activate() override;
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

    // The pane's events (records/products_pane.cpp).
    void Wb1_BeforeNavigate2(const std::string& url, bool& Cancel);
    void Wb1_NavigateComplete2(const std::string& url);
    void Wb1_CommandStateChange();
    void Wb1_NavigateError(const std::string& url);

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
