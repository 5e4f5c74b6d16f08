#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/trap.h"
#include "forms/binding.h"
#include "forms/form.h"
#include "records/connection.h"
#include "records/recordset.h"
#include "stock/record_box.h"

// A form that shows one table a record at a time: the boxes `txtFields(n)` bound to the
// current row of `adoPrimaryRS`, the status line `lblStatus`, the add / edit / update /
// cancel / delete / refresh / close buttons and the four moves. The stock forms differ from
// it only where they add to a procedure.
class RecordForm : public Form {
  public:
    RecordForm(std::string name, std::string caption, std::string selectText,
               std::vector<RecordBox> boxes);
    ~RecordForm() override;

    // Form-level state.
    NAMED_VAR(std::unique_ptr<Recordset>, adoPrimaryRS);
    NAMED_VAR(Variant, SavedBookmark);  // the row to go back to on Cancel
    NAMED_VAR(std::int16_t, EditFlag);
    NAMED_VAR(std::int16_t, AddFlag);
    NAMED_VAR(std::int16_t, ChangedFlag);  // cleared in many places, read in none

    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload(int& Cancel) override;
    void Form_KeyDown(int& KeyCode, int Shift) override;
    virtual void adoPrimaryRS_MoveComplete();
    virtual void adoPrimaryRS_WillChangeRecord(int& adStatus);
    virtual void SetButtons(bool bVal);

    virtual void cmdAdd_Click();
    void cmdEdit_Click();
    virtual void cmdUpdate_Click();
    virtual void cmdCancel_Click();
    virtual void cmdDelete_Click();
    void cmdRefresh_Click();
    virtual void cmdClose_Click();
    void cmdFirst_Click();
    void cmdLast_Click();
    void cmdNext_Click();
    void cmdPrevious_Click();

  protected:
    // The error tag of one of the form's procedures: "(Form) frmSupplier::Sub cmdAdd_Click".
    virtual std::string tag(std::string_view procedure) const;
    // What a form does at the end of Form_Load, under the same tag.
    virtual void afterLoad(Trap& /*on*/) {}
    // The one connection of the form, open once Form_Load has run.
    Connection& connection() const { return *conn_; }
    // Where the form's own controls go: one row below the boxes, `slot` a button's width
    // from the left.
    Control& addExtra(const std::string& name, ControlKind kind, int slot,
                      const std::string& caption);
    // What a form adds to Update once the row is stored, under the same tag.
    virtual void afterUpdate(Trap& /*on*/) {}
    // Called once the bound boxes show a whole row. While they are being filled their
    // Change procedures see `refilling()`, so a figure the form works out from several
    // boxes is never worked out from a row half shown.
    virtual void rowShown() {}
    bool refilling() const { return refilling_; }

  private:
    void createControls();
    void wireEvents();
    void bindBoxes();
    void showRow();
    double extraTop() const;

    std::string selectText_;
    std::vector<RecordBox> boxes_;
    std::unique_ptr<Connection> conn_;
    Binding binding_;
    bool refilling_ = false;
};
