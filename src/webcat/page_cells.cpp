// The nine rows of a product's cell, for the catalogue page (side 0) and the detail page
// (side 1): each row shows the box placed in it and then the row's inserted text. Data
// goes into the page as it stands.
#include <charconv>

#include "base/convert.h"
#include "base/format.h"
#include "base/strings.h"
#include "records/data_control.h"
#include "shell/module.h"
#include "shell/products.h"
#include "webcat/web_catalogue.h"

namespace {

// Fields of Data2, in the table's stored column order.
enum Field { ProdName = 3, ProdDesc = 4, Cost1 = 7, Retail = 12, Picture = 17, Category = 18 };

const std::string quote = "\"";

// The case a field position stands for; -1 writes nothing.
enum class Shown { Text, Cost, Case };

Shown shownAs(int L, int& kase) {
    if ((L >= 3 && L <= 5) || (L > 12 && L != 30)) return Shown::Text;
    if ((L >= 6 && L <= 10) || L == 12) return Shown::Cost;
    kase = L == 11 ? 4 : L == 30 ? 2 : L - 1;
    return Shown::Case;
}

// Retail less a cost; nothing when either is missing.
Variant difference(const Variant& a, const Variant& b) {
    if (a.IsNull() || b.IsNull()) return Variant::Null();
    return Variant::Double(CDbl(a) - CDbl(b));
}

}  // namespace

std::string_view WebCatalogue::textView(const Variant& v, std::string& scratch) {
    if (v.Type() == VarType::String) return v.Str();
    scratch = textOf(v);
    return scratch;
}

void WebCatalogue::addText(std::string& line, const Variant& v) {
    std::string scratch;
    line += textView(v, scratch);
}

void WebCatalogue::fontOpen(std::string& line, int side, int e) const {
    const Module& m = Mod();
    char size[8];
    const char* sizeEnd = std::to_chars(size, size + sizeof size, m.FontSizeOf[side][e]).ptr;
    const std::string_view sizeText(size, static_cast<std::size_t>(sizeEnd - size));
    line.append("<font face='")
        .append(m.FontNameOf[side][e])
        .append("'><font size='")
        .append(sizeText)
        .append("' color='")
        .append(m.FontColorOf[side][e])
        .append("'>")
        .append(m.BoldOn[side][e])
        .append(m.ItalicOn[side][e])
        .append(m.UnderlineOn[side][e])
        .append(m.StrikeOn[side][e]);
}

std::string WebCatalogue::fontOpen(int side, int e) const {
    std::string line;
    fontOpen(line, side, e);
    return line;
}

void WebCatalogue::paragraph(std::string& line, int side, int k) const {
    line += "<p align='";
    addText(line, ItemAlign[side][k + 1]);
    line += "'>";
}

void WebCatalogue::linkOpening(std::string& line, int k) {
    std::string target;
    if (CopyPicturesOn == 0) {
        const std::string category = textOf(item(Category));
        target = textOf(item(category == "EXE" || category == "MP3" ? ProdDesc : Picture));
    } else {
        target = "images/" + PictureJpeg;
    }
    paragraph(line, 0, k);
    line.append("<a href=").append(quote).append(target).append(quote).append(">");
}

void WebCatalogue::writeRow(Trap& on, TextFileWriter& out, int side, int r, int& L) {
    const Module& m = Mod();
    const int k = m.BoxField[side][r];
    const std::string& closing = m.CloseTags[side][k >= 0 && k <= 19 ? k + 1 : 0];
    if (k != 10 && side == 0 && k >= 6 && k <= 8) {
        writeBoxCase(on, out, side, k, k);
    } else if (k != 10 && (side == 1 || k < 6)) {
        if (k < 6) on([&] { L = fieldList(k).ListIndex(); });
        int kase = -1;
        switch (shownAs(L, kase)) {
            case Shown::Text:
                on([&] {
                    std::string value = textOf(item(L + 1));
                    if (value.empty()) value = "Not Available";
                    out.printBuilt([&](std::string& line) {
                        if (side == 1) paragraph(line, side, k);
                        fontOpen(line, side, k + 1);
                        line.append(value)
                            .append(m.CloseTags[side][4])
                            .append("</font></font></a></p>");
                    });
                });
                break;
            case Shown::Cost:
                on([&] {
                    out.printBuilt([&](std::string& line) {
                        paragraph(line, side, k);
                        fontOpen(line, side, k + 1);
                        line.append("Your Cost: ")
                            .append(Format(item(L + 1), "$ #,###.00"))
                            .append(closing)
                            .append("</font></font></p>");
                    });
                });
                break;
            case Shown::Case:
                writeBoxCase(on, out, side, k, kase);
                break;
        }
    }
    writeInsertedText(on, out, side, r);
}

void WebCatalogue::writeBoxCase(Trap& on, TextFileWriter& out, int side, int k, int kase) {
    const Module& m = Mod();
    const int e = k + 1;
    if (e < 0 || e > 20) return;
    // A row's text between its paragraph and font, and the tags that close them.
    auto open = [&](std::string& line) {
        paragraph(line, side, k);
        fontOpen(line, side, e);
    };
    auto close = [&](std::string& line, bool link) {
        line.append(m.CloseTags[side][e])
            .append(link ? "</font></font></a></p>" : "</font></font></p>");
    };
    auto money = [&](std::string_view label, const Variant& v) {
        on([&] {
            out.printBuilt([&](std::string& line) {
                open(line);
                line.append(label).append(Format(v, "$ #,###.00"));
                close(line, false);
            });
        });
    };
    switch (kase) {
        case 0:
            on([&] {
                out.printBuilt([&](std::string& line) {
                    if (side == 0) {
                        linkOpening(line, k);
                        fontOpen(line, side, e);
                    } else {
                        open(line);
                    }
                    addText(line, CurrentStockNo);
                    close(line, side == 0);
                });
            });
            break;
        case 1:
            on([&] {
                out.printBuilt([&](std::string& line) {
                    open(line);
                    addText(line, item(ProdName));
                    close(line, side == 0);
                });
            });
            break;
        case 2:
            on([&] {
                const bool copied = CopyPicturesOn != 0;
                const std::string border = textOf(m.ImageBorder);
                out.printBuilt([&](std::string& line) {
                    if (side == 0)
                        linkOpening(line, k);
                    else
                        paragraph(line, side, k);
                    line.append("<img border=").append(border).append(" dynsrc=").append(quote);
                    if (copied)
                        line.append("images/").append(side == 0 ? PictureGif : PictureJpeg);
                    else
                        addText(line, item(Picture));
                    line.append(quote);
                    if (side == 0)
                        line.append(m.ImageSizeAttr).append("'></a></p>");
                    else
                        line.append(" height=100%></p>");
                });
            });
            break;
        case 3:
            on([&] {
                std::string description = textOf(item(ProdDesc));
                if (description.empty()) description = "No Description Available!";
                out.printBuilt([&](std::string& line) {
                    open(line);
                    line.append(description);
                    close(line, false);
                });
            });
            break;
        case 4:
            money("Retail: ", item(Retail));
            break;
        case 5:
            money("Your Cost: ", item(Cost1 + CostTierOffset));
            break;
        case 6:
            money(side == 0 ? "Savings:" : "Savings: ",
                  difference(item(Retail), item(Cost1 + CostTierOffset)));
            break;
        case 7:
            if (side == 1) break;
            on([&] {
                out.printBuilt([&](std::string& line) {
                    paragraph(line, side, k);
                    line.append("<a href='");
                    addText(line, CurrentStockNo);
                    line.append(".htm'>");
                    fontOpen(line, side, e);
                    line.append("Click For Details");
                    close(line, true);
                });
            });
            if ((boxMarked(7) && MakingAll) || CInt(Mod().LayoutSide) == 1)
                on([&] { CreateDetailPages(); });
            break;
        case 8:
            on([&] {
                out.printBuilt([&](std::string& line) {
                    paragraph(line, side, k);
                    if (side == 0)
                        addText(line, BuyLinkTag);
                    else
                        line.append("<a href=''>");
                    fontOpen(line, side, e);
                    line.append("Buy Now!");
                    close(line, true);
                });
            });
            break;
        default:
            break;
    }
}

void WebCatalogue::writeInsertedText(Trap& on, TextFileWriter& out, int side, int r) {
    const Module& m = Mod();
    on([&] {
        std::string scratch;
        const std::string_view text = textView(InsertText[side][r], scratch);
        if (text.empty()) return;
        out.printBuilt([&](std::string& line) {
            line.append("<br><p align='");
            addText(line, ItemAlign[side][r + 14]);
            line.append("'>");
            fontOpen(line, side, r + 11);
            line.append(text).append(m.CloseTags[side][r + 11]).append("</font></font></a></p>");
        });
    });
}
