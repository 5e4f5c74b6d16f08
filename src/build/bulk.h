#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/textio.h"
#include "base/trap.h"
#include "base/variant.h"
#include "build/placement_file.h"
#include "shell/products_part.h"

class DaoRecordset;
struct EventArgs;

// The file dialog's filter for the text files of an import or an export.
extern const char* const TextFilesFilter;

// Where a stage of GetFiles leaves off: on to the next stage, straight to the run, or to the
// common ending.
enum class Next { Go, Run, Ending };

// The bulk building tools of the main form: imports from text files and databases, adding
// a folder, picture paths, bulk delete, export and bulk edit.
class Bulk : public ProductsPart {
  public:
    explicit Bulk(Products& form);

    // The build menu in the pane (build/build_menu.cpp).
    void cmdAddAll_Click();

    // Imports from a text file or a database (`TextFiles`, `TextEdit`, `DBFiles`), bulk edit
    // and export through the placement board (build/get_files.cpp).
    void GetFiles();
    // Adding a folder, started by the link `Folder` (build/add_folder.cpp).
    void Folders();
    // Changing the pictures' path, started by the link `ChangePicPath`
    // (build/picture_paths.cpp).
    void ChP();
    // Copies the pictures of the items in `List3` into the site's image folder; the page
    // stage runs it (build/picture_paths.cpp).
    void MoveCopy();
    // Deleting what the search in force selects, after the user confirms in the pane
    // (build/bulk_delete.cpp).
    void cmdDAll_Click();
    void Delete();

    // The placement board's events (build/placement_board.cpp).
    void Label1_DragDrop(int Index, Control* Source);
    void Frame11_DragDrop(Control* Source);
    void Label1_MouseUp(int Index, int Button);
    void Command22_Click();  // Prev Line
    void Command23_Click();  // Next Line
    void Command24_Click();  // Done
    void Command25_Click();  // Cancel
    void mnuPopupDA_Click();
    void mnuPopupAI_Click();
    void mnuPopupCI_Click();
    void cmdSelectAll_Click();
    void cmdUnSelect_Click();

    // The text source of one import (Part of GetFiles).
    NAMED_VAR(std::string, Separator);
    NAMED_VAR(SlotArray, SourceItems);
    NAMED_VAR(std::int16_t, LinesPerItem);
    NAMED_VAR(std::int16_t, SkipLines);
    NAMED_VAR(std::int32_t, SampleLine);
    NAMED_VAR(std::int16_t, AddedSlots);
    NAMED_VAR(bool, EditOnly);

    // The placement board.
    NAMED_VAR(SlotArray, FieldPlacement);
    NAMED_VAR(bool, CancelFlag);
    NAMED_VAR(bool, DoneFlag);
    NAMED_VAR(bool, PrevLineFlag);
    NAMED_VAR(bool, NextLineFlag);
    NAMED_VAR(std::int16_t, LastLinkItem);
    NAMED_VAR(std::int16_t, KeyItem);
    NAMED_VAR(std::int16_t, PopupChoice);
    NAMED_VAR(std::string, SavedSupplier);
    NAMED_VAR(bool, SkipDiscontinued);

    // The run.
    NAMED_VAR(std::string, ImportNote);
    NAMED_VAR(std::int16_t, TotalLines);
    NAMED_VAR(std::int32_t, NextId);
    NAMED_VAR(std::int16_t, TotalChecked);
    NAMED_VAR(std::int16_t, TotalAdded);
    NAMED_VAR(std::int16_t, TotalEdited);
    NAMED_VAR(bool, IsNew);
    NAMED_VAR(std::string, ChangeSeen);
    using ChangeTable = std::array<std::array<Variant, 2>, SlotCount>;
    NAMED_VAR(ChangeTable, ChangeLog);

  private:
    // build/text_analysis.cpp: choosing the file and reading its sample line.
    void openingSteps(Trap& on);
    Next chooseTextFile(Trap& on);
    Next showHead(Trap& on);
    void waitForLine(Trap& on);
    Next chooseSeparator(Trap& on);
    Next askSeparator(Trap& on);
    // Splits the sample line buffer into SourceItems; the last item's index.
    void splitSample(Trap& on);
    void askAddedSlots(Trap& on);

    // build/database_source.cpp: the database, its table and the table's records.
    Next chooseTable(Trap& on);
    int listTables(Trap& on);
    // False when the table holds no record: the run then ends with nothing imported.
    bool openTable(Trap& on);
    // Moves to the table's next record, but for the first; false at the end.
    bool nextTableRecord(Trap& on, bool first);
    void readTableRecord(Trap& on);

    // build/placement_board.cpp.
    void createBoard();
    void wireBoard();
    void openBoard(Trap& on, bool returning);
    // The board's wait, until Done with a stock number source or Cancel.
    Next waitOnBoard(Trap& on);
    // Rereads the file up to SampleLine + step and splits that line (Prev/Next Line).
    void moveSample(Trap& on, int step);
    void emptyBox(int Index);
    void fillBox(int Index);
    void takeBackFromFrame(int Index);
    bool filled(int Index) const;
    // An export or a bulk edit runs: the board serves the products, not a source.
    bool overProducts() const;

    // build/import_run.cpp.
    void importRun(Trap& on);
    void openTextSource(Trap& on);
    bool textAtEnd() const;
    void importRecord(Trap& on);
    void writeColumns(Trap& on);
    void writeChangeLog(Trap& on);
    void commonEnding(Trap& on);
    // Reads one line of a text source into SourceItems.
    void readRecord(Trap& on);
    // The record of Products found by a stock number; NoMatch tells.
    void findStockNo(Trap& on, const std::string& stockNo);

    // Steps of the run that a bulk edit shares with an import: the columns as FieldPlacement
    // says, the selling price, and the note of the changes.
    void writeRecord(Trap& on);
    // Between two records: a stop asked by Continue or Cancel, whose flag is cleared.
    bool stopAsked(Trap& on);

    // build/export_edit.cpp: export and bulk edit over the products of the search in force.
    Next exportOrEditBoard(Trap& on);
    Next exportFileAndHeader(Trap& on);
    void exportOrEditRun(Trap& on);
    void exportRecord(Trap& on, DaoRecordset& rs);
    // Leaving the export and the bulk edit at the common ending.
    void leaveExportAndEdit(Trap& on);

    PlacementFields placements();

    // Of one run of GetFiles.
    bool database_ = false;  // the source is a database's table
    std::string fileName_;   // the chosen file's whole path
    std::string line_;       // the line buffer
    TextFileReader source_;  // the file open now
    int lastItem_ = 0;       // k: the index of the last item of the sample line
    int listedLines_ = 0;    // the lines of the file listed in the pane
    int boardCounter_ = 0;   // the board's working counter
    // Of one export: the file, its name as the dialog gave it, the last chosen box.
    TextFileWriter exportFile_;
    std::string exportName_;
    int lastChosen_ = 0;
    std::int16_t deleted_ = 0;  // the products deleted by one Delete, 16 bits wide
};
