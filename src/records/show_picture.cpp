// The item view: the current record written as page.htm in the program folder and shown
// in the pane. Every line of the page is written here as it stands.
#include <functional>
#include <initializer_list>
#include <string_view>

#include "base/convert.h"
#include "base/files.h"
#include "base/format.h"
#include "base/strings.h"
#include "base/textio.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

enum Column {
    Cost1 = 2,
    Packaging = 17,
    PageNo = 18,
    Picture = 19,
    ProdDesc = 21,
    ProdName = 22,
    StockNo = 27
};

const std::string quote = "\"";

// The part of a path after its last "/".
std::string fileName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

bool exists(const std::string& path) {
    return !Dir(path).empty();
}

}  // namespace

void Products::ShowPicture() {
    Trap on = reportTo("(Form) Products::Sub ShowPicture");
    Module& m = Mod();
    std::string Size, Height, ImagePath, MediaText, PicFile;
    bool media = false;
    auto field = [&](int n) { return textOf(adoPrimaryRS->GetValue(n)); };
    // A repair writes the field of the current row, which the next move saves. It works
    // on the file name only: folder names here may hold a "-", an "S0" or the stock number
    // themselves, and a cut there would lose the folder.
    auto repairName = [&](const std::function<std::string(const std::string&)>& repair) {
        const std::string path = field(Picture);
        const std::string name = fileName(path);
        adoPrimaryRS->SetValue(Picture,
                               Variant(path.substr(0, path.size() - name.size()) + repair(name)));
        binding.Refresh();
    };
    TextFileWriter page;
    // A line is a statement of its own, printed from its parts; one that reads a field is
    // written out as a statement where it stands.
    auto print = [&](std::initializer_list<std::string_view> parts) {
        on([&] { page.printLine(parts); });
    };
    // The blocks that the page with a picture and the page without share.
    auto commonStart = [&] {
        print({"<body>"});
        print({"<body bgcolor=silver>"});
        print({"<div align=", quote, "Center", quote, ">"});
        print(
            {"<table border=2 cellpadding=4 cellspacing=4 style=border-style:solid; "
             "border-width:4; "
             "border-collapse: collapse; padding-left:4; padding-right:4; padding-top:4; "
             "padding-bottom:4 bordercolor=black bgcolor=#7C7C7C height=100% width=",
             Size, "% Id = Table1>"});
    };
    auto nameRow = [&] {
        print({"<tr>"});
        print({"<td width=", Size, "% align=center height=10% bgcolor=white>"});
        on([&] { page.printLine({"<p align=center>", field(ProdName), "</td>"}); });
        print({"</tr>"});
    };
    // The description row and the opening of the cost cell's row.
    auto footerStart = [&] {
        print({"<tr>"});
        print({"<td width=", Size, "% align=center height=10% bgcolor=white>"});
        on([&] { page.printLine({"<p align=left>", field(ProdDesc), "</td>"}); });
        print({"</tr>"});
        print({"<tr>"});
        print({"<td width=", Size, "% align=center height=10% bgcolor=#EEEEEE>"});
    };
    auto costLine = [&] {
        on([&] {
            page.printLine(
                {"<p align=center>Your Cost: ", Format(adoPrimaryRS->GetValue(Cost1), "$#,###.00"),
                 "<br><font size=1> PKG: ", field(Packaging), "</td>"});
        });
    };
    auto commonEnd = [&] {
        print({"</table>"});
        print({"</body>"});
    };

    if (when(on, [&] { return CBool(m.HelpShowing); })) {
        on([&] { showHelpStart(); });
        return;
    }
    if (when(on, [&] { return (*this)("cmdShowPic").Caption() != "View Mode"; })) {
        Size = "100";
        Height = "100";
    } else {
        Size = "85";
        Height = "85";
    }
    if (when(on, [&] { return !adoPrimaryRS->GetValue(Picture).IsNull(); }))
        on([&] { PicFile = Dir(field(Picture)); });
    if (PicFile.empty()) {
        if (when(on, [&] { return Left(UCase(field(StockNo)), 1) == "X"; }))
            on([&] {
                repairName([&](const std::string& name) {
                    long at = InStr(name, field(StockNo));
                    return Left(name, at - 1) + Mid(name, at + 1);
                });
            });
        if (when(on, [&] { return InStr(UCase(field(StockNo)), "S0") > 0; }))
            on([&] {
                repairName([&](const std::string& name) {
                    return Left(name, InStr(name, "S0") - 1) + Right(name, 4);
                });
            });
        if (when(on, [&] {
                return InStr(UCase(field(StockNo)), "-") > 0 &&
                       InStr(fileName(field(Picture)), "-") > 0;
            }))
            on([&] {
                repairName([&](const std::string& name) {
                    long at = InStr(name, "-");
                    return Left(name, at - 1) + Mid(name, at + 4);
                });
            });
        if (when(on, [&] { return !adoPrimaryRS->GetValue(Picture).IsNull(); }))
            on([&] { PicFile = Dir(field(Picture)); });
    }

    if (PicFile.empty()) {
        // The page with no picture.
        on([&] { page.open(CStr(m.AppDir) + "page.htm"); });
        commonStart();
        if (Height != "85") {
            print({"<tr>"});
            print({"<td width=", Size, "% align=center height=10% bgcolor=#EEEEEE>"});
            on([&] {
                page.printLine(
                    {"<p align=center><font size=4 font color=blue>", field(StockNo), "</font>"});
            });
            on([&] { page.printLine({"<br><font size=2>Page #", field(PageNo), "</font></td>"}); });
            print({"</tr>"});
            nameRow();
        }
        print({"<tr>"});
        print({"<td width=", Size, "% align=center height=60% bgcolor=#D4D4D4>"});
        on([&] {
            const std::string noPic = CStr(m.AppDir) + "Pictures/NoPic.jpg";
            page.printLine({"<img border=0 href=", quote, noPic, quote, " src=", quote, noPic,
                            quote, " height=", Height, Height == "85" ? " %" : "%",
                            " align=center alt=", quote, field(StockNo), quote, "></a></td>"});
        });
        print({"</tr>"});
        if (Height != "85") {
            footerStart();
            costLine();
            print({"</tr>"});
        }
        commonEnd();
        on([&] { page.close(); });
        on([&] { Wb1().Navigate2(CStr(m.AppDir) + "page.htm"); });
        return;
    }

    on([&] { ImagePath = field(Picture); });
    if (when(on, [&] { return InStr(UCase(field(Picture)), ".GIF") > 0; })) {
        std::string twin;
        on([&] { twin = Left(field(Picture), Len(field(Picture)) - 3) + "jpg"; });
        if (when(on, [&] { return exists(twin); })) on([&] { ImagePath = twin; });
    }
    // A media item: the kind is read from the description, which holds the file's path.
    const bool viewMode = Height != "85";
    on([&] {
        const std::string desc = UCase(field(ProdDesc));
        const std::string dir = CStr(m.AppDir);
        media = true;
        if (InStr(desc, ".TXT") > 0) {
            MediaText = viewMode ? "Text File - Click To View It Now" : "Text File";
            ImagePath = dir + "textpic.jpg";
        } else if (InStr(desc, ".DOC") > 0) {
            MediaText = viewMode ? "Document File - Click To View It Now" : "Document File";
            ImagePath = dir + "textpic.jpg";
        } else if (InStr(desc, ".HTM") > 0) {
            MediaText = viewMode ? "Web Page - Click To View It Now" : "Web Page";
            ImagePath = dir + "webpage.jpg";
        } else if (InStr(desc, ".MP3") > 0) {
            MediaText = viewMode ? "Music File - Click To Play It Now" : "Music File";
            ImagePath = dir + "music.jpg";
        } else if (InStr(desc, ".EXE") > 0) {
            MediaText = viewMode ? "Program File - Click To Run It Now" : "Program";
            const std::string icon = Left(field(ProdDesc), Len(field(ProdDesc)) - 3) + "ico";
            ImagePath = exists(icon) ? icon : dir + "exepic.jpg";
        } else {
            media = false;
        }
    });

    on([&] { mbAddNewFlag = true; });
    on([&] { page.open(CStr(m.AppDir) + "page.htm"); });
    commonStart();
    if (Height != "85") {
        print({"<tr>"});
        print({"<td width=", Size, "% align=center height=10% bgcolor=#EEEEEE>"});
        on([&] {
            page.printLine(
                {"<p align=center><font size=4 font color=blue>", field(StockNo), "</font>"});
        });
        // With no page number the cell stays open.
        if (when(on, [&] { return field(PageNo) != ""; }))
            on([&] {
                page.printLine({"<br><font size=2>Page # ", field(PageNo), "</font></td>"});
            });
        print({"</tr>"});
        nameRow();

        print({"<tr>"});
        print({"<td width=", Size, "% align=center height=60% bgcolor=#D4D4D4>"});
        if (m.ThumbsMode)
            print({"<center><a href=backtothumbs>Click To Return To Thumbnails</a></center>"});
        if (media) {
            on([&] { page.printLine({"<a href=", quote, field(ProdDesc), quote, ">"}); });
            print({"<p align=center>", MediaText, "</p>"});
            on([&] {
                page.printLine({"<img border=0 src=", quote, ImagePath, quote, " src=", quote,
                                field(ProdDesc), quote, " height=100 align=center alt=", quote,
                                field(StockNo), quote, "></a></td>"});
            });
        } else {
            print({"<a href=", quote, ImagePath, quote, ">"});
            on([&] {
                const std::string picture = field(Picture);
                page.printLine({"<img border=0 dynsrc=", quote, picture, quote, " src=", quote,
                                picture, quote, " height=260 align=center alt=", quote,
                                field(StockNo), quote, "></a></td>"});
            });
        }
        print({"</tr>"});

        footerStart();
        if (when(on, [&] {
                Variant cost = adoPrimaryRS->GetValue(Cost1);
                return !cost.IsNull() && CDbl(cost) != 0;
            }))
            costLine();
        print({"</tr>"});
    } else {
        print({"<tr>"});
        print({"<td width=100% align=center height=100% bgcolor=#D4D4D4>"});
        if (media) {
            on([&] { page.printLine({"<a href=", quote, field(ProdDesc), quote, ">"}); });
            on([&] {
                page.printLine({"<img border=0 src=", quote, ImagePath, quote,
                                " height=100 align=center alt=", quote, field(StockNo), quote,
                                "></a></td>"});
            });
        } else {
            print({"<a href=", quote, ImagePath, quote, ">"});
            on([&] {
                page.printLine({"<img border=0 dynsrc=", quote, field(Picture), quote,
                                " height=100 align=center alt=", quote, field(StockNo), quote,
                                "></a></td>"});
            });
        }
        print({"</tr>"});
    }
    commonEnd();
    on([&] { page.close(); });
    on([&] { mbAddNewFlag = false; });
    on([&] { Wb1().Navigate2(CStr(m.AppDir) + "page.htm"); });
}
