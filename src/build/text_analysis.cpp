// The first stage of GetFiles for a text source: the file, its head in the pane, the line
// the data starts at, the separator, and the split of that line into the source items.
#include <filesystem>

#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "build/text_split.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace fs = std::filesystem;

const char* const TextFilesFilter =
    "Text|*.txt|Comma Delimted|*.csv|Tab Delimited|*.tab|Documents|*.doc|All Files|*.*";

namespace {

constexpr int HeadLines = 25;

// A file's name with its last three characters replaced by "dat".
std::string placementName(const std::string& name) {
    return Left(name, Len(name) - 3) + "dat";
}

}  // namespace

void Bulk::openingSteps(Trap& on) {
    // Frame5 always ends hidden, and the pane takes its room.
    if (when(on, [&] { return !(*this)("Frame5").Visible(); }))
        on([&] { (*this)("Frame5").SetVisible(true); });
    on([&] { P.Command21_Click(); });
    for (const char* side : {"Left", "Top", "Width", "Height"})
        on([&] { (*this)("Frame11").SetNum(side, P.Wb1Box().Num(side)); });
    on([&] { CancelFlag = false; });
    on([&] { SkipDiscontinued = false; });
    on([&] { AddedSlots = -7; });
    on([&] { EditOnly = false; });
    for (int i = 0; i <= 41; ++i) {
        if (i >= 1 && i <= 30) {
            on([&] { emptyBox(i); });
            on([&] { slotAt(FieldPlacement, i) = ""; });
        }
        on([&] { (*this)("Label2", i).SetVisible(false); });
    }
    on([&] { P.Data2->Refresh(); });
}

Next Bulk::chooseTextFile(Trap& on) {
    CommonDialog dialog;
    dialog.FileName = "*.txt";
    dialog.Filter = TextFilesFilter;
    on([&] {
        // A cancelled dialog gives no name.
        fileName_ = Runtime::Current().ui().ShowOpen(dialog) ? dialog.FileName : "";
    });
    if (when(on, [&] { return fileName_.empty() || fileName_ == "*.*"; })) return Next::Ending;
    // The dialog leaves the chosen file's folder current: the placement file is looked up
    // there by its bare name.
    std::string placement;
    on([&] {
        const fs::path chosen(fileName_);
        if (!fs::exists(chosen)) return;
        placement = (chosen.parent_path() / placementName(chosen.filename().string())).string();
    });
    if (!when(on, [&] { return !placement.empty() && fs::exists(placement); })) return Next::Go;
    if (when(on, [&] { return P.EditPlacements; })) {
        on([&] { fs::remove(placement); });
        on([&] { P.EditPlacements = false; });
        return Next::Go;
    }
    readPlacementFile(placement, placements(), on);
    return Next::Run;
}

Next Bulk::showHead(Trap& on) {
    Pane& pane = P.Wb1();
    on([&] { source_.open(fileName_); });
    // The list replaces the page shown, as the first write after a finished page does.
    on([&] { pane.Navigate2("about:blank"); });
    on([&] {
        pane.Write(
            "<font size=2 color=blue><center>The First 25 Lines Of The File Are Below <br> (The "
            "First line is written in red for easy identification in cases of "
            "headers.)</center><br>");
    });
    on([&] {
        pane.Write(
            "<font color=green><center>If There Are Lines Which Are NOT Valid, Such As Blanks, "
            "Or Dates, Any Non-Item Information Etc... <br><br>Click On The Line You Want To "
            "Start Getting The Data From</center><br><br>");
    });
    // Any fault while the lines are read ends the list, and the file stays open.
    Trap reading = Trap::Handled([&](int) {
        pane.Write("<font size=3 font color=red><center>End Of File Reached!</font></center>");
        return Trap::Resume::Exit;
    });
    listedLines_ = 0;
    for (int n = 1; n <= HeadLines && !reading.Exited(); ++n) {
        reading([&] { line_ = source_.lineInput(); });
        if (!reading.Exited()) listedLines_ = n;
        if (n == 1) reading([&] { pane.Write("<font size=2 font color=red>"); });
        if (n == 2) reading([&] { pane.Write("<font color=blue>"); });
        const std::string number = std::to_string(n);
        reading([&] {
            pane.Write("<a href='GF-" + number + "'>" + "Line #" + number + "</a><br>" + line_ +
                       "<br><br>");
        });
    }
    if (!reading.Exited()) on([&] { source_.close(); });
    on([&] { Separator = ""; });
    on([&] { P.ContinueFlag = false; });
    waitForLine(on);
    on([&] { SampleLine = P.LinkNumber; });
    if (when(on, [&] { return CancelFlag; })) return Next::Ending;
    on([&] { SkipLines = CInt(Variant::Long(P.LinkNumber - 1)); });
    on([&] { source_.open(fileName_); });
    for (int n = 1; n <= SkipLines + 1; ++n)
        on([&] { line_ = source_.lineInput(); });
    on([&] { source_.close(); });
    return Next::Go;
}

// Waits until a line of the list is clicked; a list without lines has nothing to click, and
// reads as if its first line was.
void Bulk::waitForLine(Trap& on) {
    if (listedLines_ == 0) {
        on([&] { P.LinkNumber = 1; });
        return;
    }
    while (!when(on, [&] { return P.ContinueFlag || CancelFlag; }))
        on([&] { Runtime::Current().WaitForUser(); });
}

Next Bulk::chooseSeparator(Trap& on) {
    std::optional<SeparatorGuess> guess;
    on([&] { guess = guessSeparator(line_); });
    int answer = vb::vbNo;
    if (guess) {
        on([&] {
            answer = MsgBox("This File appears To Use '" + guess->name +
                                "' To Seperate The Fields, Click Yes If This Is Right..." +
                                vb::vbCrLf + "Click No To Choose The Seperator Yourself",
                            vb::vbYesNo);
        });
    }
    if (guess && answer == vb::vbYes)
        on([&] { Separator = guess->separator; });
    else if (askSeparator(on) == Next::Ending)
        return Next::Ending;
    if (when(on, [&] { return CancelFlag; })) return Next::Ending;
    on([&] { P.ContinueFlag = false; });
    if (when(on, [&] { return Separator != "nl" && InStr(line_, Separator) == 0; })) {
        on([&] { MsgBox("This file is NOT Of A Proper Type!", vb::vbCritical); });
        return Next::Ending;
    }
    return Next::Go;
}

// The user names the separator, until it is one that the line holds, or "nl".
Next Bulk::askSeparator(Trap& on) {
    for (;;) {
        on([&] { Separator = ""; });
        on([&] {
            Separator = Runtime::Current().ui().InputBox(
                std::string("Type in the key/keys to use as seperators") + vb::vbCrLf +
                    "Type the word TAB for tabs. NL for seperate line for each item",
                "Divider Key", ",");
        });
        if (when(on, [&] { return UCase(Separator) == "TAB" || UCase(Separator) == "TABS"; }))
            on([&] { Separator = "\t"; });
        on([&] { LinesPerItem = 0; });
        if (when(on, [&] { return CancelFlag; })) return Next::Ending;
        if (when(on, [&] { return Separator.empty(); })) on([&] { Separator = "o"; });
        if (when(on, [&] { return Separator == "o" || Separator == "nl"; })) {
            if (when(on, [&] { return Separator == "o"; }))
                on([&] {
                    MsgBox(
                        std::string("Select ONLY The Divider Or Seperator Betweeen Each Field,") +
                        vb::vbCrLf + "From The Lines Below That Seperates EACH Field!");
                });
            else
                on([&] { MsgBox("How Many Lines For Each Item Or Product?"); });
            waitForLine(on);
            if (when(on, [&] { return CancelFlag; })) return Next::Ending;
            on([&] { P.ContinueFlag = false; });
            // What the user clicked is never read: no choice is a valid one, and a record
            // takes one line.
            if (when(on, [&] { return Separator == "o"; })) {
                on([&] { MsgBox("Sorry, that is not a valid choice!", vb::vbCritical); });
                continue;
            }
            on([&] { LinesPerItem = 0; });
        }
        // An export has no line to find the separator in.
        if (when(on, [&] { return P.ExportMode; })) return Next::Go;
        if (when(on, [&] { return Separator != "nl" && InStr(line_, Separator) == 0; })) {
            int answer = vb::vbCancel;
            on([&] {
                answer =
                    MsgBox("Sorry, " + Separator + vb::vbCrLf + " Is NOT A Valid Item Seperator!" +
                               vb::vbCrLf + "Try Again, Or Cancel To Exit",
                           vb::vbRetryCancel + vb::vbCritical, "Wrong Seperator Type");
            });
            if (answer == vb::vbCancel) return Next::Ending;
            continue;
        }
        return Next::Go;
    }
}

void Bulk::splitSample(Trap& on) {
    on([&] {
        lastItem_ = splitItems(
            line_, Separator, LinesPerItem, SourceItems,
            [&](std::string& next) { next = source_.lineInput(); }, on);
    });
    on([&] { source_.close(); });
}

void Bulk::askAddedSlots(Trap& on) {
    if (when(on, [&] { return AddedSlots == -7; })) {
        std::string answer;
        on([&] {
            answer = Runtime::Current().ui().InputBox(
                "The Data Shows There Are " + std::to_string(lastItem_ + 1) +
                    " Items On Each Line." + vb::vbCrLf +
                    "There May Be Other Lines With More Items," + vb::vbCrLf +
                    "If You Want To Add Slots For Them, Enter How Many To Add" + vb::vbCrLf +
                    "Which May Not Be On This One Line?",
                "Add More Items?", "0");
        });
        on([&] { AddedSlots = CInt(Variant(answer)); });
    }
    for (int i = 1; i <= AddedSlots; ++i) {
        ++lastItem_;
        on([&] {
            slotAt(SourceItems, lastItem_) = "Additional Item " + std::to_string(i) + " You Added";
        });
    }
}
