// The contact sheet of the current records, `tmpthumb.htm`: a table of small pictures, five
// to a row. From the Thumbnails button it shows the records of the current filter; while
// the operator picks the items of the pages, each group adds a section whose check boxes
// (links "Guy_" and the row of List2) choose the items.
#include <filesystem>

#include "base/convert.h"
#include "base/format.h"
#include "base/strings.h"
#include "base/textio.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "records/recordset.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

namespace {

// Fields of adoPrimaryRS.
enum Column { PageNo = 18, StockNo = 27 };

const std::string quote = "\"";

std::string inQuotes(const std::string& text) {
    return quote + text + quote;
}

}  // namespace

void WebCatalogue::MakeThumbs() {
    Trap on = reportTo("(Form) Products::Sub MakeThumbs");
    Module& m = Mod();
    Recordset& rs = *P.adoPrimaryRS;
    Pane& pane = P.Wb1();
    Control& status = (*this)("lblStatus");
    Control& chosen = (*this)("List2");
    const std::string path = CStr(m.AppDir) + "tmpthumb.htm";
    auto selecting = [&] { return when(on, [&] { return CBool(m.SelectItemsMode); }); };
    on([&] { P.cmdFirst_Click(); });
    if (when(on, [&] { return textOf(ThumbsRun).empty() || CDbl(ThumbsRun) == 0; }) ||
        !selecting()) {
        on([&] { pane.Navigate2("about:blank"); });
        on([&] {
            pane.Write(
                "<p align=center><font size=4 font color=blue>Creating "
                "Thumbnails</center></p><br><br>");
        });
        on([&] { pane.Write("<p align=center><font size=7 font color=red>Please Wait...<br>"); });
    }
    // A width that is no number is reported, and the pictures keep the default.
    int width = 100;
    const std::string typed = (*this)("Text1").Text();
    if (!typed.empty()) on([&] { width = CInt(Variant(typed)); });
    on([&] { rs.MoveFirst(); });
    TextFileWriter out;
    if (!selecting()) {
        on([&] { out.open(path); });
        for (const char* line : {"<html>", "<head>", "<title>Thumnbails</title>", "</head>"})
            on([&] { out.printLine(line); });
        on([&] { out.printLine("<body>"); });
    } else {
        if (when(on, [&] { return CDbl(ThumbsRun) == 0 && std::filesystem::exists(path); }))
            on([&] { std::filesystem::remove(path); });
        on([&] { out.open(path, TextFileWriter::Mode::Append); });
        on([&] {
            const std::string count = std::to_string(rs.RecordCount());
            if (GroupByPrice)
                out.printLine("<body><HR><font size=5><center><br>Page By " + PriceField + ":  " +
                              Format(rs.GetValue(rs.FieldIndex(PriceField)), "$#,###.00") +
                              "<font size=3> - Total Items: " + count + "</center></font>");
            else if (GroupByCurrent)
                out.printLine(
                    "<body><HR><font size=5><center><br><font size=3>Total Current Items: " +
                    count + "</center></font>");
            else
                out.printLine("<body><HR><font size=5><center><br>Page Number: " +
                              textOf(rs.GetValue(PageNo)) +
                              "<font size=3> - Total Items: " + count + "</center></font>");
        });
    }
    on([&] { out.printLine("<body bgcolor=" + inQuotes("silver") + ">"); });
    on([&] {
        out.printLine("<p align=" + inQuotes(m.PageAlign) +
                      "><font face=" + inQuotes(m.FontNameOf.at(CInt(m.LayoutSide))[0]) +
                      "><p align=" + inQuotes("left") + ">");
    });
    on([&] {
        out.printLine(
            "<table border=1 cellpadding=2 cellspacing=2 style=border-style:solid; "
            "border-width:1; border-collapse: collapse; padding-left:4; padding-right:4; "
            "padding-top:4; padding-bottom:4 bordercolor=black bgcolor=white width=100% "
            "id=Table1>");
    });
    on([&] { out.printLine("<tr>"); });
    int shown = 0, inRow = 0;
    while (!rs.Eof()) {
        ++shown;
        ++inRow;
        on([&] { m.ItemSerial = Add(m.ItemSerial, Variant::Integer(1)); });
        on([&] {
            out.printLine("<td width=" + inQuotes("20%") + " align=" + inQuotes("center") +
                          " halign=" + inQuotes("center") + " valign=" + inQuotes("top") +
                          " bgcolor=silver>");
        });
        std::string picture, target, stockNo;
        on([&] { picture = textOf(rs.GetValue(rs.FieldIndex("Picture"))); });
        on([&] { stockNo = textOf(rs.GetValue(StockNo)); });
        // A .gif picture links to the .jpg of the same name.
        const long gif = InStr(picture, ".gif");
        target = gif > 0 ? Left(picture, gif) + "jpg" : picture;
        int row = -1;
        if (!selecting()) {
            on([&] {
                status.SetCaption("Generating Thumbnails # " +
                                  std::to_string(rs.AbsolutePosition()));
            });
        } else {
            on([&] { chosen.AddItem(stockNo); });
            on([&] { chosen.SetSelected(chosen.ListCount() - 1, m.SelectDefault); });
            on([&] {
                status.SetCaption("Generating Items # " +
                                  CStr(Add(m.ItemSerial, Variant::Integer(1))));
            });
        }
        on([&] { row = CInt(m.ItemSerial); });
        on([&] { out.printLine("<form method=POST action><p align=" + inQuotes("center") + ">"); });
        on([&] {
            out.printLine("<input type=checkbox name=CH_" + std::to_string(shown) + " value=" +
                          inQuotes("ON") + " onClick=window.navigate('Guy_" + CStr(m.ItemSerial) +
                          "')" + (chosen.Selected(row) ? " checked>" : ">") + stockNo + "</p>");
        });
        on([&] { out.printLine("</form></font>"); });
        on([&] { out.printLine("<a href=" + inQuotes(target) + ">"); });
        on([&] {
            out.printLine("<img border=" + inQuotes("2") + " src=" + inQuotes(picture) + " width=" +
                          inQuotes(std::to_string(width)) + " align=" + inQuotes("top") + "></a>");
        });
        on([&] { out.printLine("<p></td>"); });
        if (inRow == 5 && rs.AbsolutePosition() < rs.RecordCount()) {
            on([&] { out.printLine("</tr>"); });
            on([&] { out.printLine("<tr>"); });
            inRow = 0;
        }
        if (!on([&] { rs.MoveNext(); })) break;
        // The Cancel button is heard between two pictures.
        on([&] { Runtime::Current().LetEventsRun(); });
        if (!m.ThumbsMode && !selecting()) {
            m.ThumbsMode = true;
            break;
        }
    }
    for (const char* line : {"</td>", "</tr>", "</table>", "</td>", "</body>", "</html>"})
        on([&] { out.printLine(line); });
    if (!selecting()) {
        on([&] { status.SetCaption("Thumbnails Completed"); });
        on([&] { (*this)("Command4").SetCaption("Thumbnails"); });
    }
    on([&] { out.close(); });
    on([&] { rs.MoveFirst(); });
    on([&] { pane.Navigate2(path); });
}
