// The detail page of an item, `Pages/<stock number>.htm`, written from side 1 of the
// layout with a link back to the catalogue page that listed it.
#include "base/convert.h"
#include "base/vb_error.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "webcat/web_catalogue.h"

std::string detailPageName(const std::string& stockNo) {
    // A name that would leave the pages folder, or that no file system takes, is a bad file
    // name: the page is not written, and the run goes on.
    if (stockNo.find_first_not_of(' ') == std::string::npos || stockNo == "." ||
        stockNo.find("..") != std::string::npos)
        throw VbError(vberr::BadFileNameOrNumber);
    for (unsigned char c : stockNo)
        if (c < 32 || c == 127 ||
            std::string_view("/\\:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos)
            throw VbError(vberr::BadFileNameOrNumber);
    return stockNo + ".htm";
}

std::string WebCatalogue::detailLinkMissing() {
    return "<p align=center><font size=5 font color=red> You Have To Select The Details Link "
           "Option For Your Main Pages Before You Can Create Detail Pages!<br><br> Click The "
           "Botton Again To Return To Edit Main Page Before Doing Anything Else Now!</font>";
}

void WebCatalogue::CreateDetailPages() {
    Trap on = reportTo("(Form) Products::Sub CreateDetailPages");
    Module& m = Mod();
    if (!MakingAll && textOf(DetailStockNo).empty())
        on([&] { DetailStockNo = CurrentStockNo; });
    else if (!MakingAll)
        on([&] { CurrentStockNo = DetailStockNo; });
    SuppressListEvents = true;
    for (int k = 0; k <= 5; ++k)
        on([&] { fieldList(k).SetListIndex(CInt(m.BoxListIndex[1][k])); });
    SuppressListEvents = false;
    TextFileWriter out;
    if (!on([&] { out.open(pagesFolder() + detailPageName(textOf(CurrentStockNo))); })) return;
    on([&] { out.printLine(BodyTag[1].empty() ? "<body bgcolor='#FFFFFF'>" : BodyTag[1]); });
    on([&] {
        out.printBuilt([&](std::string& line) {
            line.append("<a href='").append(PageBase).append(std::to_string(PageNumber));
            line.append(".htm'>");
            paragraph(line, 1, -1);
            fontOpen(line, 1, 0);
            line.append("Click Here To Return").append(m.CloseTags[1][0]);
            line.append("</font></font></a></p>");
        });
    });
    int L = 0;
    for (int r = 0; r <= 8; ++r)
        writeRow(on, out, 1, r, L);
    on([&] { out.close(); });
}
