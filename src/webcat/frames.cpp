// The frameset `FR<PageBase>.htm` and the contents page `con<PageBase>.htm` of a site of
// more than one page, and the choice of the contents frame's side.
#include "base/convert.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "webcat/web_catalogue.h"

namespace {

// The frame style as a number; -1 for one that names no style.
int styleOf(const Variant& style) {
    if (style.IsEmpty()) return 0;
    if (!IsNumeric(style)) return -1;
    const double s = CDbl(style);
    return s == 0 || s == 1 || s == 2 || s == 3 ? static_cast<int>(s) : -1;
}

}  // namespace

void WebCatalogue::Command30_Click() {
    Trap on = reportTo("(Form) Products::Sub Command30_Click");
    on([&] {
        FrameStyle = Variant(Runtime::Current().ui().InputBox(
            "Enter Your Choice Below:" + std::string(vb::vbCrLf) +
                "(0) ... Left Side Contents Frame" + vb::vbCrLf + "(1) ... Top Contents Frame" +
                vb::vbCrLf + "(2) ... Right Side Contents Frame" + vb::vbCrLf +
                "(3) ... Bottom Contents Frame" + vb::vbCrLf + "(4) ... Don't Use Contents Frames",
            "Choose One:", ""));
    });
    on([&] { Mod().PanelGo = true; });
}

void WebCatalogue::writeFrames(Trap& on) {
    Module& m = Mod();
    const int style = styleOf(FrameStyle);
    const std::string contents = "con" + PageBase + ".htm";
    const std::string first = PageBase + "1.htm";
    TextFileWriter fr;
    on([&] { fr.open(pagesFolder() + "FR" + PageBase + ".htm"); });
    auto line = [&](TextFileWriter& out, const std::string& text) {
        on([&] { out.printLine(text); });
    };
    for (const char* text : {"<html>", "<head>", "<title>Contents Frame</title>", "</head>"})
        line(fr, text);
    static const char* const framesets[] = {
        "<frameset frameborder=0 cols=110,*>", "<frameset frameborder=0 rows=75,100%>",
        "<frameset frameborder=0 cols=*,110>", "<frameset frameborder=0 rows=100%,75>"};
    if (style >= 0) line(fr, framesets[style]);
    if (style == 0 || style == 1) {
        line(fr, "<frame src='" + contents +
                     "' NAME='Contents' scrolling='yes' marginwidth='1' marginheight='1'>");
        line(fr, "<frameset frameborder=0 cols=100%>");
        line(fr, "<frame src='" + first +
                     "' NAME='RightFrame' scrolling='YES' marginwidth='1' marginheight='1'>");
    } else if (style == 2 || style == 3) {
        line(fr, "<frame src='" + first +
                     "' NAME='RightFrame' scrolling='yes' marginwidth='1' marginheight='1'>");
        line(fr, "<frameset frameborder=0 cols=100%>");
        line(fr, "<frame src='" + contents +
                     "' NAME='Contents' scrolling='YES' marginwidth='1' marginheight='1'>");
    }
    for (const char* text : {"<noframes>", "<body>",
                             "<p>This page uses frames, but your browser doesn't support them.",
                             "</body>", "</noframes>", "</frameset>", "</frameset>", "</html>"})
        line(fr, text);
    on([&] { fr.close(); });

    TextFileWriter con;
    const std::string colour = m.FontColorOf[0][0];
    on([&] { con.open(pagesFolder() + contents); });
    for (const char* text :
         {"<html>", "<head>", "<title>Contents Frame</title>", "</head>", "<body>"})
        line(con, text);
    line(con, BodyTag[0]);
    line(con, "<p align='center'><font face='" + m.FontNameOf[0][0] + "'><font size='4' color='" +
                  colour + "'>");
    line(con, GroupByCategory ? "Categories"
              : GroupByPageNo ? "Page Numbers"
              : GroupByPrice  ? "Prices"
                              : "Current Pages");
    line(con, "</center></font>");
    line(con, "<p align='center'><font face='" + m.FontNameOf[0][0] + "'><font size='3' color='" +
                  colour + "'>" + m.BoldOn[0][0] + m.ItalicOn[0][0] + m.UnderlineOn[0][0] +
                  m.StrikeOn[0][0]);
    const std::string separator = style == 1 || style == 3 ? "  -  " : style >= 0 ? "<br>" : "";
    auto entry = [&](int i, const std::string& text) {
        line(con, "<a HREF=" + PageBase + std::to_string(i + 1) +
                      ".htm target='RightFrame'><font color='" + colour + "'>" + text +
                      "</font></a>");
        if (!separator.empty()) line(con, separator);
    };
    if (GroupByCurrent) {
        long total = 0;
        on([&] { total = CLng(m.TotalPages); });
        for (long i = 0; i < total; ++i)
            entry(static_cast<int>(i), " Page # " + std::to_string(i + 1));
    } else {
        Control& labels = (*this)("List4", 1);
        for (int i = 0; i < labels.ListCount(); ++i)
            entry(i, labels.List(i));
    }
    for (const char* text : {"</font></font></p><br>", "</body>", "</html>"})
        line(con, text);
    on([&] { con.close(); });
}
