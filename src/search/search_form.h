#pragma once

#include <cstdint>
#include <memory>

#include "forms/form.h"
#include "records/data_control.h"

class Trap;

// The modal form `Search` ("Detailed Search Form"): builds the filter text `SearchCriteria`
// and the sort text `SearchOrder` by clicks, showing the text as it grows in `Text1`.
class Search : public Form {
  public:
    Search();
    ~Search() override;

    // Form-level state.
    NAMED_VAR(std::int16_t, SelectedField);  // the index of the chosen field
    NAMED_VAR(bool, BooleanField);
    NAMED_VAR(bool, ThenBy);
    NAMED_VAR(std::unique_ptr<DataControl>, Data1);  // opens Products by name for column names

    void Form_Load() override;
    void optsrch_Click(int Index);
    void optOperator_Click(int Index);
    void optSort_Click(int Index);
    void Check1_Click();
    void chkReverse_Click();
    void cmdAndOr_Click(int Index);
    void txtSearch_Change();
    void txtSearch_KeyPress(int& KeyAscii);
    void cmdSrch_Click();
    void cmdCancel_Click();
    void cmdStartOver_Click();

  private:
    void createControls();
    void wireEvents();
    // The pieces of the condition back to nothing, as the form opens.
    void clearPieces(Trap& on);
    // Text1 shows the accumulated conditions, the one being built and the sort.
    void rewritePreview(Trap& on);
};
