// The build menu: a page of link commands in the pane, from which the catalogue is filled
// in bulk. The router starts the task that a link names.
#include "build/bulk.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

const char* const Row2[] = {"<tr>", "<td width='100%' align='center' height='10%' bgcolor='white'>",
                            "&nbsp;</td>", "</tr>"};

const char* const MenuPage[] = {
    "<body bgcolor='silver'>",
    "<div align='Center'>",
    "<table border='2' cellpadding='4' cellspacing='4' style='border-style: solid' "
    "border-width:1; border-collapse: collapse; padding-left:4; padding-right:4; "
    "padding-top:4; padding-bottom:4 bordercolor='black' bgcolor='#7C7C7C' height='100%' "
    "width='100%' Id='Table1'>",
    "<tr>",
    "<td width='100%' align='center' height='10%' bgcolor='#EEEEEE'>",
    "<h1><span style='text-transform: uppercase'><font size='5' color='#000080'>Make "
    "Selection below</font></span></h1>",
    "</td>",
    "</tr>",
    nullptr,  // row 2
    "<tr>",
    "<td width='100%' align='center' height='60%' bgcolor='#D4D4D4'>",
    "<ul>",
    "<li><p align='justify'><a href='Folder'>Add ALL Items In A folder</a></li>",
    "<li><p align='justify'><a href='TextFiles'>Add Items From A text file</a></li>",
    "<li><p align='justify'><a href='TextEdit'>Edit text file placements</a></li>",
    "<li><p align='justify'><a href='DBFiles'>Add Items From A Database</a></li>",
    "<li><p align='justify'><a href='ChangePicPath'>Change Pictures Path</a></li>",
    "</ul>",
    "<p>&nbsp;</td>",
    "</tr>",
    nullptr,  // row 4, as row 2
    "<tr>",
    "<td width='100%' align='center' height='10%' bgcolor='#EEEEEE'>",
    "&nbsp;</td>",
    "</tr>",
    "</table>",
    "</div>",
};

}  // namespace

void Bulk::cmdAddAll_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdAddAll_Click");
    if (when(on, [&] { return (*this)("cmdShowPic").Caption() == "View Mode"; })) return;
    on([&] { P.Wb1().Navigate2("about:blank"); });
    for (const char* piece : MenuPage) {
        if (piece) {
            on([&] { P.Wb1().Write(piece); });
            continue;
        }
        for (const char* cell : Row2)
            on([&] { P.Wb1().Write(cell); });
    }
}
