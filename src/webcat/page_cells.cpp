// The nine rows of a product's cell, for the catalogue page (side 0) and the detail page
// (side 1): each row shows the box placed in it and then the row's inserted text. Data
// goes into the page as it stands.
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

std::string WebCatalogue::fontOpen(int side, int e) const {
    const Module& m = Mod();
    return Concat({"<font face='", m.FontNameOf[side][e], "'><font size='",
                   std::to_string(m.FontSizeOf[side][e]), "' color='", m.FontColorOf[side][e], "'>",
                   m.BoldOn[side][e], m.ItalicOn[side][e], m.UnderlineOn[side][e],
                   m.StrikeOn[side][e]});
}

std::string WebCatalogue::paragraph(int side, int k) const {
    return Concat({"<p align='", textOf(ItemAlign[side][k + 1]), "'>"});
}

std::string WebCatalogue::linkOpening(int k) {
    std::string target;
    if (CopyPicturesOn == 0) {
        const std::string category = textOf(item(Category));
        target = textOf(item(category == "EXE" || category == "MP3" ? ProdDesc : Picture));
    } else {
        target = "images/" + PictureJpeg;
    }
    return Concat({paragraph(0, k), "<a href=", quote, target, quote, ">"});
}

void WebCatalogue::writeRow(Trap& on, TextFileWriter& out, int side, int r, int& L) {
    const Module& m = Mod();
    const int k = m.BoxField[side][r];
    const std::string closing = m.CloseTags[side][k >= 0 && k <= 19 ? k + 1 : 0];
    if (k != 10 && side == 0 && k >= 6 && k <= 8) {
        writeBoxCase(on, out, side, k, k);
    } else if (k != 10 && (side == 1 || k < 6)) {
        if (k < 6) on([&] { L = (*this)("lstAll", k).ListIndex(); });
        int kase = -1;
        switch (shownAs(L, kase)) {
            case Shown::Text:
                on([&] {
                    std::string value = textOf(item(L + 1));
                    if (value.empty()) value = "Not Available";
                    out.printLine({side == 1 ? paragraph(side, k) : "", fontOpen(side, k + 1),
                                   value, m.CloseTags[side][4], "</font></font></a></p>"});
                });
                break;
            case Shown::Cost:
                on([&] {
                    out.printLine({paragraph(side, k), fontOpen(side, k + 1),
                                   "Your Cost: ", Format(item(L + 1), "$ #,###.00"), closing,
                                   "</font></font></p>"});
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
    const std::string open = paragraph(side, k) + fontOpen(side, e);
    const std::string close = m.CloseTags[side][e] + "</font></font></p>";
    const std::string closeLink = m.CloseTags[side][e] + "</font></font></a></p>";
    auto money = [&](const std::string& label, const Variant& v) {
        on([&] { out.printLine({open, label, Format(v, "$ #,###.00"), close}); });
    };
    switch (kase) {
        case 0:
            on([&] {
                if (side == 0)
                    out.printLine(
                        {linkOpening(k), fontOpen(side, e), textOf(CurrentStockNo), closeLink});
                else
                    out.printLine({open, textOf(CurrentStockNo), close});
            });
            break;
        case 1:
            on([&] {
                out.printLine({open, textOf(item(ProdName)), side == 0 ? closeLink : close});
            });
            break;
        case 2:
            on([&] {
                const bool copied = CopyPicturesOn != 0;
                const std::string border = textOf(m.ImageBorder);
                if (side == 0)
                    out.printLine({linkOpening(k), "<img border=", border, " dynsrc=", quote,
                                   copied ? "images/" + PictureGif : textOf(item(Picture)), quote,
                                   m.ImageSizeAttr, "'></a></p>"});
                else
                    out.printLine({paragraph(side, k), "<img border=", border, " dynsrc=", quote,
                                   copied ? "images/" + PictureJpeg : textOf(item(Picture)), quote,
                                   " height=100%></p>"});
            });
            break;
        case 3:
            on([&] {
                std::string description = textOf(item(ProdDesc));
                if (description.empty()) description = "No Description Available!";
                out.printLine({open, description, close});
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
                out.printLine({paragraph(side, k), "<a href='", textOf(CurrentStockNo), ".htm'>",
                               fontOpen(side, e), "Click For Details", closeLink});
            });
            if ((boxMarked(7) && MakingAll) || CInt(Mod().LayoutSide) == 1)
                on([&] { CreateDetailPages(); });
            break;
        case 8:
            on([&] {
                out.printLine({paragraph(side, k),
                               side == 0 ? textOf(BuyLinkTag) : std::string("<a href=''>"),
                               fontOpen(side, e), "Buy Now!", closeLink});
            });
            break;
        default:
            break;
    }
}

void WebCatalogue::writeInsertedText(Trap& on, TextFileWriter& out, int side, int r) {
    const Module& m = Mod();
    on([&] {
        const std::string text = textOf(InsertText[side][r]);
        if (text.empty()) return;
        out.printLine({"<br><p align='", textOf(ItemAlign[side][r + 14]), "'>",
                       fontOpen(side, r + 11), text, m.CloseTags[side][r + 11],
                       "</font></font></a></p>"});
    });
}
