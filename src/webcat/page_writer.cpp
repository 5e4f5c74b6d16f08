// The second half of MakePage2: the template copied a page at a time with its marker lines
// replaced, the products' cells, the navigation bar, and what follows each page: the next
// page, the end of the run, or the live preview's wait for a change of the settings.
#include "base/convert.h"
#include "base/files.h"
#include "base/format.h"
#include "base/kept_listings.h"
#include "base/strings.h"
#include "forms/binding.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "records/pane.h"
#include "records/recordset.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

namespace {

// Fields of Data2, in the table's stored column order.
enum Field { PageNo = 5, Picture = 17, Category = 18 };

const std::string quote = "\"";

}  // namespace

DaoRecordset& WebCatalogue::items() {
    return P.Data2->Recordset();
}

Variant WebCatalogue::item(int field) {
    return items().GetValue(field);
}

std::string WebCatalogue::pagesFolder() const {
    return CStr(Mod().AppDir) + "Pages/";
}

bool WebCatalogue::frameStyleBelow4() const {
    if (FrameStyle.IsEmpty()) return true;
    return IsNumeric(FrameStyle) && CDbl(FrameStyle) < 4;
}

bool WebCatalogue::writePages(Trap& on) {
    const KeptListings run;   // each cell and detail page looks up its pictures
    const RowsAwaited moves;  // and finds its product, a move of the bound boxes' row
    for (;;) {
        writePage(on);
        switch (pageEnd(on)) {
            case AfterPage::NextPage:
            case AfterPage::Preview:
                continue;
            case AfterPage::End:
                return false;
            case AfterPage::Collect:
                return true;
        }
    }
}

void WebCatalogue::writePage(Trap& on) {
    if (MakingAll) on([&] { PageNumber += 1; });
    cellsInRow_ = 0;
    itemsOnPage_ = 0;
    TextFileReader in;
    TextFileWriter out;
    on([&] { in.open(pagesFolder() + "STNDRDTPLT.dat"); });
    on([&] { out.open(pagesFolder() + PageBase + std::to_string(PageNumber) + ".htm"); });
    P.mbAddNewFlag = true;
    while (in.isOpen() && !in.eof()) {
        std::string line;
        if (!on([&] { line = in.lineInput(); })) break;
        copyTemplateLine(on, line, in, out);
    }
    on([&] { in.close(); });
    on([&] { out.close(); });
    P.mbAddNewFlag = false;
}

void WebCatalogue::copyTemplateLine(Trap& on, std::string line, TextFileReader& in,
                                    TextFileWriter& out) {
    Module& m = Mod();
    auto holds = [&](const char* marker) { return InStrText(line, marker) > 0; };
    if (holds("PageName0")) line = "<title>" + PageTitle + std::to_string(PageNumber) + "</title>";
    if (holds("PageName1")) line = titleBlock(on);
    if (holds("BGColor")) line = BodyTag[0].empty() ? "<body bgcolor='#FFFFFF'>" : BodyTag[0];
    if (holds("PageAlign")) line = "<p align=" + quote + m.PageAlign + quote + ">";
    if (holds("PFont(0)")) line = "<font face='" + m.FontNameOf[0][0] + "'>";
    if (holds("PicRef")) {
        writeItems(on, out);
        if (!in.eof()) on([&] { out.printLine(in.lineInput()); });
        return;
    }
    on([&] { out.printLine(line); });
}

std::string WebCatalogue::titleBlock(Trap& on) {
    Module& m = Mod();
    Control& title = (*this)("txtTitle");
    if (PageNumber == 1) {
        on([&] { CurrentStockNo = Variant((*this)("List3").List(0)); });
        on([&] { items().FindFirst("StockNo = '" + textOf(CurrentStockNo) + "'"); });
    }
    on([&] {
        switch (TitleMode) {
            case -1:
                PageTitle = title.Text();
                break;
            case 0:
            case 1:
                PageTitle = title.Text() + " " + (*this)("List4", 1).List(PageNumber - 1);
                break;
            case 2:
                PageTitle = title.Text() + " " + Format(items().GetValue(PriceField), "$#,###.00");
                break;
            case 3:
                PageTitle = title.Text() + " " + std::to_string(PageNumber);
                break;
            default:
                break;
        }
    });
    return "<p align='" + textOf(ItemAlign[0][0]) + "'>" + fontOpen(0, 19) +
           textOf(InsertText[0][9]) + m.CloseTags[0][19] + "</font></font>" + fontOpen(0, 0) +
           PageTitle + m.CloseTags[0][0] + "</font></font>" + fontOpen(0, 10) +
           textOf(InsertText[0][10]) + m.CloseTags[0][10] + "</font></font></p>";
}

void WebCatalogue::writeItems(Trap& on, TextFileWriter& out) {
    Module& m = Mod();
    Control& onPages = (*this)("List3");
    double width = 0;
    on([&] {
        if (m.ItemsPerRow == 0) throw VbError(11);
        width = 100.0 / m.ItemsPerRow;
    });
    const std::string widthText = CStr(Variant::Double(width));  // the same for every cell
    if (when(on, [&] { return CDbl(m.TotalPages) > 1 || NewPageOnChange; })) {
        if (frameStyleBelow4())
            writeFrames(on);
        else
            writeNavigationBar(on, out);
    }
    on([&] { out.printLine("<tr>"); });
    for (int row = listStart_; row < onPages.ListCount(); ++row) {
        on([&] { CurrentStockNo = Variant(onPages.List(row)); });
        on([&] { items().FindFirst("StockNo = '" + textOf(CurrentStockNo) + "'"); });
        if (!writeCell(on, out, widthText)) break;
    }
}

std::string WebCatalogue::itemGroup() {
    if (GroupByPageNo || GroupByCurrent) return textOf(item(PageNo));
    if (GroupByCategory) return textOf(item(Category));
    return textOf(items().GetValue(PriceField));
}

bool WebCatalogue::writeCell(Trap& on, TextFileWriter& out, const std::string& width) {
    Module& m = Mod();
    if (pageGroup_ == "None") on([&] { pageGroup_ = itemGroup(); });
    std::string group;
    on([&] { group = itemGroup(); });
    if (NewPageOnChange && pageGroup_ != "None" && !GroupByCurrent && group != pageGroup_) {
        if (MakingAll && !cellWritten_) on([&] { PageNumber -= 1; });
        on([&] {
            const std::string column = GroupByPageNo     ? "PageNo"
                                       : GroupByCategory ? "Category"
                                                         : PriceField;
            P.adoprimaryrs2->SetFilter("[" + column + "] = '" + group + "'");
        });
        on([&] { P.adoprimaryrs2->MoveLast(); });
        pageGroup_ = "None";
        return false;
    }
    cellsInRow_ += 1;
    if (MakingAll) listStart_ += 1;
    lookUpPictures(on);
    on([&] {
        out.printBuilt([&](std::string& line) {
            line.append("<td width=").append(width).append("% height=100% align='");
            addText(line, ItemAlign[0][10]);
            line.append("' valign='");
            addText(line, ItemAlign[0][11]);
            line.append("' ");
            addText(line, CellStyle);
        });
    });
    itemsOnPage_ += 1;
    struct CellLists {
        std::array<Control*, 6>& lists;
        ~CellLists() { lists.fill(nullptr); }
    } found{cellLists_};
    for (int k = 0; k <= 5; ++k)
        cellLists_[k] = P.Find("lstAll", k);
    SuppressListEvents = true;
    for (int k = 0; k <= 5; ++k)
        on([&] { fieldList(k).SetListIndex(CInt(m.BoxListIndex[0][k])); });
    SuppressListEvents = false;
    int L = 0;
    for (int r = 0; r <= 8; ++r)
        writeRow(on, out, 0, r, L);
    on([&] { out.printLine("<p></td>"); });
    cellWritten_ = true;
    if (cellsInRow_ == m.ItemsPerRow) {
        on([&] { out.printLine("</tr>"); });
        on([&] { out.printLine("<tr>"); });
        cellsInRow_ = 0;
    }
    if (itemsOnPage_ == m.ItemsPerPage) {
        itemsOnPage_ = 0;
        return false;
    }
    return true;
}

Control& WebCatalogue::fieldList(int k) {
    if (k >= 0 && k < 6 && cellLists_[k] != nullptr) return *cellLists_[k];
    return (*this)("lstAll", k);
}

void WebCatalogue::lookUpPictures(Trap& on) {
    std::string picture, stem;
    on([&] { picture = textOf(item(Picture)); });
    // A product with no picture fails here as Left fails (5), given back rather than thrown.
    on([&]() -> Fault {
        const long kept = Len(picture) - 4;
        if (kept < 0) return {vberr::InvalidProcedureCall};
        stem = Left(picture, kept);
        return {};
    });
    on([&] { PictureJpeg = Dir(stem + ".jpg"); });
    on([&] { PictureGif = Dir(stem + ".gif"); });
    const bool jpeg = !PictureJpeg.empty(), gif = !PictureGif.empty();
    if (jpeg && !gif) {
        on([&] { PictureGif = PictureJpeg; });
    } else if (gif && !jpeg) {
        on([&] { PictureJpeg = Dir(picture); });
    } else if (!jpeg && !gif) {
        on([&] { PictureJpeg = Dir(picture); });
        on([&] { PictureGif = Dir(picture); });
    }
}

void WebCatalogue::writeNavigationBar(Trap& on, TextFileWriter& out) {
    Module& m = Mod();
    const std::string c = m.FontColorOf[0][0];
    const long total = CLng(m.TotalPages);
    long next = PageNumber + 1, previous = PageNumber - 1;
    if (PageNumber == 1)
        previous = 1;
    else if (PageNumber == total)
        next = total;
    auto page = [&](long n) { return PageBase + std::to_string(n) + ".htm"; };
    on([&] { out.printLine("<br>"); });
    on([&] {
        out.printLine("<p align='center'><font face='" + m.FontNameOf[0][0] +
                      "'><font size='4' color='" + c + "'>" + m.BoldOn[0][0] + m.ItalicOn[0][0] +
                      m.UnderlineOn[0][0] + m.StrikeOn[0][0]);
    });
    on([&] {
        out.printLine("<a HREF=" + page(1) + "><font color='" + c +
                      "'>First Page </a> - <a href=" + page(next) + "><font color='" + c +
                      "'> Next Page </a> - <a href=" + page(previous) + "><font color='" + c +
                      "'> Previous Page </a> - <a href=" + page(total) + "><font color='" + c +
                      "'> Last Page </font></a>");
    });
    on([&] { out.printLine("<p></font>"); });
}

WebCatalogue::AfterPage WebCatalogue::pageEnd(Trap& on) {
    Module& m = Mod();
    Pane& pane = P.Wb1();
    Control& perPage = (*this)("Text3", 3);
    const bool setupOpen = (*this)("Frame12").Visible();
    const std::string count = std::to_string((*this)("List3").ListCount());
    if (when(on, [&] { return perPage.Text().empty(); })) on([&] { perPage.SetText(count); });
    on([&] { Text3_Change(3); });
    on([&] {
        Control& label = (*this)("Label7");
        label.SetCaption("Total Available: " + count + vb::vbCrLf + vb::vbCrLf + label.Caption());
    });
    const double total = CDbl(m.TotalPages);
    if (total > 1 && PageNumber < total && !setupOpen) {
        on([&] { MakingAll = true; });
        pagesSinceBlank_ += 1;
        on([&] { m.LayoutSide = Variant::Integer(boxMarked(7) ? 1 : 0); });
        if (pagesSinceBlank_ == 21) {
            on([&] { pane.Navigate2("about:blank"); });
            pagesSinceBlank_ = 0;
        }
        on([&] {
            pane.Write("<center><bold><font size=3>Creating Page: " + std::to_string(PageNumber) +
                       "</center></bold></font>");
        });
        return AfterPage::NextPage;
    }
    if (PageNumber == total && !setupOpen) {
        on([&] { MakingAll = false; });
        on([&] {
            pane.Navigate2(pagesFolder() +
                           (frameStyleBelow4() ? "FR" + PageBase + ".htm" : PageBase + "1.htm"));
        });
        return AfterPage::End;
    }
    // The live preview: the page again after each change of a setting.
    if (CInt(m.LayoutSide) == 0) {
        const bool framed = (NewPageOnChange || GroupByCurrent) && frameStyleBelow4();
        on([&] {
            pane.Navigate2(pagesFolder() +
                           (framed ? "FR" + PageBase + ".htm" : PageBase + "1.htm"));
        });
    } else {
        on([&] { pane.Navigate2(pagesFolder() + textOf(DetailStockNo) + ".htm"); });
    }
    on([&] { waitForPanel(); });
    if (!textOf(PanelAction).empty() && CDbl(PanelAction) == 4) return AfterPage::End;
    if (pagesSinceBlank_ != 0) on([&] { pane.Navigate2("about:blank"); });
    if (when(on, [&] { return CBool(m.SelectItemsMode); })) {
        on([&] { (*this)("List2").Clear(); });
        return AfterPage::Collect;
    }
    return AfterPage::Preview;
}
