#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/textio.h"
#include "base/trap.h"
#include "base/variant.h"
#include "shell/products_part.h"

class DaoRecordset;

// The page designer's mark on a placed box, and an idle box's colour.
inline constexpr std::int32_t MarkerColor = 0xFFFF80;
inline constexpr std::int32_t WhiteColor = 0xFFFFFF;
// The system's face colour of an idle button.
inline constexpr std::int32_t ButtonFaceColor = static_cast<std::int32_t>(0x8000000F);

// The colour word of the page for a colour of the dialogs (blue, green, red from the top):
// the nine common colours by their words, any other the number's hexadecimal digits.
std::string colourWord(long colour);
// The page's font size, 1 to 7, for a size in points.
int htmlFontSize(double points);

// The file name of the detail page of a stock number; a name that would leave the pages
// folder, or that a file system cannot hold, is VbError 52.
std::string detailPageName(const std::string& stockNo);

// One value of a saved layout: what the writer prints and where the reader puts what it
// reads. The one list of them serves both, so the two stay mirrors.
struct LayoutValue {
    std::function<Variant()> get;
    std::function<void(const std::string& text)> set;
};

// The web catalogue part of the main form: the page layout, grouping and the writing of
// the site.
class WebCatalogue : public ProductsPart {
  public:
    explicit WebCatalogue(Products& form);

    // The contact sheet of the current records, `tmpthumb.htm` (webcat/thumbnails.cpp).
    void MakeThumbs();

    // Saved layouts (webcat/layout_file.cpp): 0 Save Layout, 1 Load Layout.
    void SaveLoad_Click(int Index);
    // Every value of a layout file in its order, each given to `each`.
    void forEachLayoutValue(const std::function<void(const LayoutValue&)>& each);
    // The images folder and its marker file `start.dat`.
    void makeImagesFolder(Trap& on);
    // The copy of the chosen items' pictures into the images folder.
    void MoveCopy();

    // The generator (webcat/page_grouping.cpp and webcat/page_writer.cpp).
    void MakePage2();
    void Command6_Click();   // By Page Number
    void Command10_Click();  // By Category
    void Command20_Click();  // By Price Below
    void Command8_Click();   // By Current Records
    void Command13_Click();  // select all
    void Command15_Click();  // unselect all
    void Command17_Click();  // go on
    void Command19_Click();  // cancel
    void Text3_Change(int Index);
    void chkDetail_Click(int Index);

    // The page setup panel as the run opens and closes it (webcat/web_catalogue.cpp).
    void Command12_Click();
    void Command26_Click();
    void txtTitle_Change();
    // Choose Frame Style (webcat/frames.cpp).
    void Command30_Click();

    // The page designer (webcat/designer.cpp): each control writes one setting and sets
    // PanelGo, so the preview is written again.
    void cmdFont_Click(int Index);
    // `which` is "cmdPosL", "cmdPosC" or "cmdPosR".
    void cmdPos_Click(const std::string& which, int Index);
    void cmdInsrt_Click(int Index);
    void Command28_Click(int Index);
    void Command27_Click(int Index);
    void cmdeditBuy_Click();
    void Label4_Click(int Index);
    void lstAll_Click(int Index);
    void txtIR_Change();
    void Command29_Click();
    // The boxes of the cell and their buttons at their rows, as the layout of the side in
    // hand places them; what a box's click does after placing it, and all the main form's
    // first activation asks.
    void redrawBoxes();

    // The generated pages (webcat/page_files.cpp).
    void File1_Click();
    void Command7_Click();   // Delete Selected Page
    void Command11_Click();  // Delete ALL Pages
    void Command18_Click();  // Delete ALL Copied Pictures
    void Command14_Click();  // Refresh List
    void Command9_Click();   // Close

    // The detail page of the current item (webcat/detail_pages.cpp).
    void CreateDetailPages();

    // The layout, besides the arrays that all forms share.
    using Inserts = std::array<std::array<Variant, 11>, 2>;
    using Aligns = std::array<std::array<Variant, 23>, 2>;
    using Sides = std::array<std::string, 2>;
    NAMED_VAR(Inserts, InsertText);
    NAMED_VAR(Aligns, ItemAlign);
    NAMED_VAR(Sides, BodyTag);
    NAMED_VAR(Sides, BodyColor);
    NAMED_VAR(Variant, CellBorderColor);
    NAMED_VAR(Variant, CellColor);
    NAMED_VAR(Variant, CellBorderStyle);
    NAMED_VAR(Variant, CellStyle);
    NAMED_VAR(Variant, BuyLinkTag);
    NAMED_VAR(Variant, FrameStyle);
    NAMED_VAR(std::string, PageTitle);
    NAMED_VAR(std::int16_t, CopyPicturesOn);

    // A run of the generator.
    NAMED_VAR(bool, GroupByPageNo);
    NAMED_VAR(bool, GroupByCategory);
    NAMED_VAR(bool, GroupByPrice);
    NAMED_VAR(bool, GroupByCurrent);
    NAMED_VAR(std::string, PriceField);
    NAMED_VAR(std::int16_t, GroupCount);
    NAMED_VAR(Variant, PanelAction);
    NAMED_VAR(Variant, ThumbsRun);
    NAMED_VAR(std::int32_t, PageNumber);
    NAMED_VAR(std::string, PageBase);
    NAMED_VAR(bool, MakingAll);
    NAMED_VAR(bool, NewPageOnChange);
    NAMED_VAR(std::int16_t, TitleMode);
    NAMED_VAR(Variant, CurrentStockNo);
    NAMED_VAR(std::string, PictureJpeg);
    NAMED_VAR(std::string, PictureGif);
    NAMED_VAR(Variant, DetailStockNo);
    NAMED_VAR(std::int16_t, CostTierOffset);  // assigned nowhere: the cost shown is Cost1
    NAMED_VAR(bool, SuppressListEvents);

  private:
    // webcat/web_catalogue.cpp
    void createControls();
    void wireEvents();
    // Whether the box k is marked as placed in the cell.
    bool boxMarked(int k) const;

    // webcat/designer.cpp
    void createDesignerControls();
    void wireDesigner();
    // Draws the designer for the side: the placed boxes marked, their field lists.
    void redrawDesigner(int side);
    // Marks one of the LEFT, CENTER and RIGHT buttons of an index, the others idle.
    void markPosition(int Index, const std::string& which);
    // The number of the first inserted-text box open, or -1.
    int openInsertBox() const;
    // Marks an insert button when its box holds text.
    void markInsertButton(int t);
    // The colour dialog; false when cancelled.
    bool chooseColour(Trap& on, std::string& word);
    // The input box of numbered choices; the number typed, 0 for anything else.
    int chooseFrom(Trap& on, const std::string& lines, const std::string& title,
                   const std::string& defaultText);

    // webcat/page_files.cpp
    void createPageFileControls();
    void wirePageFiles();
    // Deletes the files of the patterns under the pages folder, telling the pane.
    void deleteFiles(const std::string& tag, const std::vector<std::string>& patterns,
                     const std::string& starting, const std::string& finished);
    // New page on change: the page count by the chosen groups (chkDetail(3)).
    void newPageOnChange(Trap& on, bool checked);
    // The message that stops the switch to the detail pages.
    static std::string detailLinkMissing();

    // webcat/page_grouping.cpp: the first half of MakePage2. Each returns false when the
    // run ends there.
    void startRun(Trap& on);
    void findGroups(Trap& on);
    void placeGroupRow(Trap& on, const Variant& v, long count, bool& ended);
    bool pickGroups(Trap& on);
    bool collectItems(Trap& on);
    bool prepareRun(Trap& on);
    // The run's end; a cancelled run also goes back to the first record.
    void endRun(Trap& on, bool cancelled);
    // The group value of the current record of adoPrimaryRS, and its column's name.
    Variant groupValue();
    std::string groupColumn() const;
    // Waits until a panel button or a setting sets PanelGo, then clears it.
    void waitForPanel();

    // webcat/page_writer.cpp: the second half.
    enum class AfterPage { NextPage, Preview, End, Collect };
    // Writes the pages until the run ends (false) or goes back to collecting (true).
    bool writePages(Trap& on);
    void writePage(Trap& on);
    void copyTemplateLine(Trap& on, std::string line, TextFileReader& in, TextFileWriter& out);
    std::string titleBlock(Trap& on);
    void writeItems(Trap& on, TextFileWriter& out);
    // width: the cell's share of the row in percent, as text.
    bool writeCell(Trap& on, TextFileWriter& out, const std::string& width);
    void lookUpPictures(Trap& on);
    void writeNavigationBar(Trap& on, TextFileWriter& out);
    AfterPage pageEnd(Trap& on);
    // The group value of the item in hand, by the run's mode.
    std::string itemGroup();
    std::string pagesFolder() const;
    // An empty style counts as 0; a text that is no number is never below 4.
    bool frameStyleBelow4() const;
    // The rule of the cells' style, from the border and cell colours and the border size.
    void rebuildCellStyle();
    // A field of the current Data2 record by its position.
    Variant item(int field);
    DaoRecordset& items();

    // webcat/page_cells.cpp: the nine rows of a cell, on either side of the layout.
    // L is the position read from the box's field list; on the detail page a box without
    // a list keeps the position of the row before.
    void writeRow(Trap& on, TextFileWriter& out, int side, int r, int& L);
    void writeBoxCase(Trap& on, TextFileWriter& out, int side, int k, int kase);
    void writeInsertedText(Trap& on, TextFileWriter& out, int side, int r);
    // The opening of element e's font: face, size and colour, then the style tags; added
    // to a line being written, or as a text of its own.
    void fontOpen(std::string& line, int side, int e) const;
    std::string fontOpen(int side, int e) const;
    // "<p align='...'>" with the alignment of box k's row, added to a line.
    void paragraph(std::string& line, int side, int k) const;
    // The catalogue page's link around box k: to the picture, or the program or song.
    void linkOpening(std::string& line, int k);
    // A value's text (Null as nothing): a text value as it stands, anything else through
    // `scratch`; and the same added to a line.
    static std::string_view textView(const Variant& v, std::string& scratch);
    static void addText(std::string& line, const Variant& v);

    // webcat/frames.cpp
    void writeFrames(Trap& on);
    // Every value the frameset and the contents page are made of.
    std::vector<std::string> framesInputs();
    // The two files as last written whole, with what they were made of.
    struct FramesMade {
        std::vector<std::string> inputs_;
        std::uintmax_t frSize_ = 0, conSize_ = 0;
        std::filesystem::file_time_type frTime_, conTime_;
    };
    std::optional<FramesMade> framesMade_;
    bool framesStandAsMade(const std::vector<std::string>& inputs) const;
    void noteFramesMade(std::vector<std::string> inputs);

    // Of one run.
    int listStart_ = 0;               // the first row of List3 not yet on a page
    int cellsInRow_ = 0;              // cells in the table row being written
    int itemsOnPage_ = 0;             // items on the page being written
    std::string pageGroup_ = "None";  // the group value of the page
    bool cellWritten_ = false;
    int pagesSinceBlank_ = 0;  // pages since the pane was last blanked
    // The field lists lstAll(0..5) while a cell is written: the cell and its detail page
    // set and read them twenty times, and no control comes or goes meanwhile.
    std::array<Control*, 6> cellLists_{};
    Control& fieldList(int k);
};
