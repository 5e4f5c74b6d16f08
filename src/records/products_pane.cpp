// The events of the pane `Wb1`: the router that turns the links of the program's own pages
// into commands, the record of the last address with the thumbnail find, the end after a
// program link, the retry of a failed navigation; and the MENU button.
#include <algorithm>

#include "base/convert.h"
#include "base/strings.h"
#include "base/vb_error.h"
#include "build/bulk.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

// The link words that are commands and never a click on the item's picture.
const char* const CommandLinks[] = {
    "ABOUT:BLANKDELETE",        "ABOUT:BLANKDB-",       "ABOUT:BLANKGF-",
    "ABOUT:BLANKCHANGEPICPATH", "ABOUT:BLANKTEXTFILES", "ABOUT:BLANKDBFILES",
    "ABOUT:BLANKTEXTEDIT",      "ABOUT:BLANKFOLDER",    "ABOUT:BLANKCONTINUE"};

// A text without its last four characters; a text of four or fewer leaves nothing.
std::string_view withoutLastFour(std::string_view text) {
    return LeftView(text, std::max(0L, Len(text) - 4));
}

// Whether two texts are the same but for their last four characters: the item view's
// address is tested at every product shown, so neither is copied.
bool sameButLastFour(std::string_view a, std::string_view b) {
    return withoutLastFour(a) == withoutLastFour(b);
}

// The text that follows a word found in the upper-case address, taken from the address as
// it stands (upper case changes no length).
std::string behind(const std::string& url, const std::string& U, const std::string& word) {
    return Mid(url, InStr(U, word) + Len(word));
}

// Marks(i), with the classic fault for an index outside the array.
std::int16_t& mark(int i) {
    std::vector<std::int16_t>& marks = Mod().Marks;
    if (i < 0 || i >= static_cast<int>(marks.size())) throw VbError(vberr::SubscriptOutOfRange);
    return marks[static_cast<std::size_t>(i)];
}

}  // namespace

// The router. The checks run in their order and the first that applies ends the event.
void Products::Wb1_BeforeNavigate2(const std::string& url, bool& Cancel) {
    Trap ignore = Trap::Ignoring();
    Module& m = Mod();
    Control& cmdShowPic = (*this)("cmdShowPic");
    Control& List2 = (*this)("List2");
    std::string U;
    Variant n;

    // 1. Nothing while the form loads.
    if (m.StartingUp) return;
    ignore([&] { U = UCase(url); });
    // The words of the program's own links all begin "BLANK", which the address of a page
    // shown seldom holds: it is looked for once, and they only where it is.
    const bool blank = InStr(U, "BLANK") > 0;
    auto linkWord = [&](std::string_view word) { return blank && InStr(U, word) > 0; };
    // 2. The command panel opened by MENU in view mode closes first.
    if (when(ignore,
             [&] { return (*this)("Frame5").Visible() && cmdShowPic.Caption() == "Edit Mode"; }))
        ignore([&] { Command21_Click(); });
    // 3.
    if (when(ignore, [&] { return U == "HTTP:///"; })) return;
    // 4. A program: close first if the user wants; the browser runs or offers the file.
    if (when(ignore, [&] { return InStr(U, ".EXE") > 0; })) {
        int answer = vb::vbNo;
        ignore([&] {
            answer = MsgBox("Do You Want To Close Tandrel Catalog Before Running This Program?",
                            vb::vbYesNo, "Close Tandrel?");
        });
        if (when(ignore, [&] { return answer == vb::vbYes; }))
            ignore([&] { ExitAfterRun = Variant(true); });
        else
            ignore([&] { ExitAfterRun = Variant(false); });
        return;
    }
    // 5. The browser shows or plays these itself.
    if (when(ignore,
             [&] { return InStr(U, ".TXT") > 0 || InStr(U, ".DOC") > 0 || InStr(U, ".MP3") > 0; }))
        return;
    // 6.
    if (when(ignore, [&] { return InStr(U, "BACKTOTHUMBS") > 0; })) {
        ignore([&] { Cancel = true; });
        ignore([&] { Wb1().Navigate2(CStr(m.AppDir) + "tmpthumb.htm"); });
        return;
    }
    // 7. A check box of the item selection flips its row of List2.
    if (when(ignore, [&] { return linkWord("BLANKGUY_"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { n = Variant(behind(url, U, "GUY_")); });
        ignore([&] { List2.SetListIndex(CInt(n)); });
        ignore([&] { List2.SetSelected(CInt(n), !List2.Selected(CInt(n))); });
        return;
    }
    // 8. Back from the enlarged picture.
    if (when(ignore, [&] { return linkWord("BLANKPICBACK"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { Wb1().GoBack(); });
        return;
    }
    // 9. A click on the item's own picture, whatever its last four characters: enlarge it.
    if (when(ignore, [&] {
            if (!sameButLastFour(url, (*this)("txtFields", 19).Text())) return false;
            if (InStr(U, "HTM") > 0) return false;
            for (const char* link : CommandLinks)
                if (InStr(U, link) > 0) return false;
            return true;
        })) {
        std::string picture;
        if (when(ignore, [&] { return cmdShowPic.Caption() == "View Mode"; })) {
            ignore([&] { cmdShowPic_Click(); });
            ignore([&] { Runtime::Current().LetEventsRun(); });
        }
        ignore([&] { picture = url; });
        ignore([&] { Cancel = true; });
        ignore([&] { Wb1().Refresh2(); });
        ignore([&] {
            Wb1().Write("<p align=center><font size=4 font color=blue>Item: " +
                        (*this)("txtFields", 27).Text() + "</a></p>");
        });
        ignore([&] {
            Wb1().Write(
                "<p align=center><font size=4 font color=blue><a href='PICBACK'>Click Here To "
                "Return To Main Screen</a></p>");
        });
        ignore([&] { Wb1().Write("<p align=center><img src=\"" + picture + "\"></p>"); });
        return;
    }
    // 10. A table or database choice; the word counts anywhere, in a web address too.
    if (when(ignore, [&] { return InStr(U, "DB-") > 0; })) {
        ignore([&] { LastBox = CInt(Variant(behind(url, U, "DB-"))); });
        ignore([&] { Cancel = true; });
        ignore([&] { ContinueFlag = true; });
        return;
    }
    // 11. A numbered choice, caught the same way.
    if (when(ignore, [&] { return InStr(U, "GF-") > 0; })) {
        ignore([&] { LinkNumber = CLng(Variant(behind(url, U, "GF-"))); });
        ignore([&] { Cancel = true; });
        ignore([&] { ContinueFlag = true; });
        return;
    }
    // 12 to 16. The build menu's tasks, run inside this event.
    if (when(ignore, [&] { return linkWord("BLANKCHANGEPICPATH"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { bulk->ChP(); });
        return;
    }
    if (when(ignore, [&] { return linkWord("BLANKTEXTEDIT"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { EditPlacements = true; });
        ignore([&] { bulk->GetFiles(); });
        return;
    }
    if (when(ignore, [&] { return linkWord("BLANKDBFILES"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { EditPlacements = false; });
        ignore([&] { ImportKind = 7; });
        ignore([&] { bulk->GetFiles(); });
        return;
    }
    if (when(ignore, [&] { return linkWord("BLANKTEXTFILES"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { EditPlacements = false; });
        ignore([&] { bulk->GetFiles(); });
        return;
    }
    if (when(ignore, [&] { return linkWord("BLANKFOLDER"); })) {
        ignore([&] { Cancel = true; });
        ignore([&] { bulk->Folders(); });
        return;
    }
    // 17 to 19. The answers that a waiting task reads.
    if (when(ignore, [&] { return linkWord("BLANKDELETE"); })) {
        ignore([&] { m.DeleteChoice = Variant::Integer(1); });
        ignore([&] { Cancel = true; });
        return;
    }
    if (when(ignore, [&] { return linkWord("BLANKCONTINUE"); })) {
        ignore([&] { ContinueFlag = true; });
        ignore([&] { Cancel = true; });
        return;
    }
    if (when(ignore, [&] { return linkWord("BLANKCANCEL"); })) {
        ignore([&] { m.DeleteChoice = Variant::Integer(2); });
        ignore([&] { Cancel = true; });
        return;
    }
    // 20. A help page loads.
    if (when(ignore, [&] { return InStr(U, "INTRO.HTM") > 0; })) {
        ignore([&] { Runtime::Current().LetEventsRun(); });
        return;
    }
    // 21. A word ending "_" + n: switch item n of the thumbnail selection.
    if (when(ignore, [&] { return InStr(url, ".") == 0 && InStr(url, "_") > 0; })) {
        ignore([&] { Cancel = true; });
        ignore([&] { n = Variant(Mid(url, InStrRev(url, "_") + 1)); });
        ignore([&] { m.MarkRow = CInt(Variant::Double(CDbl(n) - 1)); });
        if (when(ignore, [&] { return m.MarkRow < 0; })) ignore([&] { m.MarkRow = 0; });
        if (when(ignore, [&] { return mark(m.MarkRow) == 0; })) {
            ignore([&] { mark(m.MarkRow) = 1; });
            ignore([&] { List2.SetSelected(CInt(n), false); });
        } else {
            ignore([&] { mark(m.MarkRow) = 0; });
            ignore([&] { List2.SetSelected(CInt(n), true); });
        }
        return;
    }
    // 22. Anything else is a real navigation and goes on.
}

void Products::Wb1_NavigateComplete2(const std::string& url) {
    Trap ignore = Trap::Ignoring();
    Module& m = Mod();
    std::string U, name;
    if (m.StartingUp) return;
    ignore([&] { m.LastUrl = url; });
    // A click on a thumbnail finds the item whose stock number is the picture's name.
    if (when(ignore, [&] {
            if (!m.ThumbsMode) return false;
            U = UCase(url);
            return InStr(U, ".JPG") > 0 || InStr(U, ".GIF") > 0 || InStr(U, ".BMP") > 0 ||
                   InStr(U, ".TXT") > 0;
        })) {
        if (when(ignore, [&] { return InStrRev(url, "\\") > 0; }))
            ignore([&] { name = Mid(url, InStrRev(url, "\\") + 1); });
        else
            ignore([&] { name = Mid(url, InStrRev(url, "/") + 1); });
        ignore([&] { name = Left(name, Len(name) - 4); });
        ignore([&] { adoPrimaryRS->MoveFirst(); });
        ignore([&] { adoPrimaryRS->Find("[StockNo]='" + name + "'"); });
    }
}

void Products::Wb1_CommandStateChange() {
    Trap ignore = Trap::Ignoring();
    // The user agreed to close before a program runs: the first pane event ends the process.
    if (when(ignore, [&] { return CBool(ExitAfterRun); })) Runtime::Current().End();
}

void Products::Wb1_NavigateError(const std::string& /*url*/) {
    Trap ignore = Trap::Ignoring();
    // A failed navigation goes to LastUrl again, and so does each failed retry. A browser
    // reports the failure of the retry later, as an event of its own, and is retried then.
    // The headless pane fails inside Navigate2, so the failure of a retry that fails at once
    // arrives while that retry still runs: it is passed over, or the retries would never
    // return. The next failed navigation is retried again.
    if (retrying_) return;
    retrying_ = true;
    ignore([&] { Wb1().Navigate2(Mod().LastUrl); });
    retrying_ = false;
}

// MENU: the command panel on or off, the pane fitted to it, and the grid and the picture
// path box laid over the pane.
void Products::Command21_Click() {
    Trap on = reportTo("(Form) Products::Sub Command21_Click");
    Control& frame5 = (*this)("Frame5");
    Control& grid = (*this)("grddatagrid");
    Control& path = (*this)("txtFields", 19);
    Control& wb = Wb1Box();
    on([&] { frame5.SetVisible(!frame5.Visible()); });
    on([&] { SetSize(); });
    on([&] { grid.SetNum("Left", wb.Num("Left")); });
    on([&] { grid.SetNum("Top", wb.Num("Top")); });
    on([&] { grid.SetNum("Width", wb.Num("Width")); });
    on([&] { grid.SetNum("Height", wb.Num("Height")); });
    on([&] { path.SetNum("Left", wb.Num("Left")); });
    on([&] { path.SetNum("Width", wb.Num("Width")); });
}
