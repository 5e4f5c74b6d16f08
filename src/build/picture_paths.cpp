// The two bulk operations on the picture column: `ChP` points every record's picture to one
// new place, named by its stock number; `MoveCopy` copies the pictures of the items chosen
// for the web pages into the site's image folder.
#include <filesystem>
#include <system_error>

#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "build/run_steps.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace fs = std::filesystem;

namespace {

constexpr int StockNoColumn = 2, PictureColumn = 17, NotesColumn = 29;

bool validType(const std::string& type) {
    const std::string upper = UCase(type);
    return upper == ".JPG" || upper == ".GIF" || upper == ".BMP";
}

// Copies a file into the folder unless one of its name is there, counting it; true when the
// file exists.
bool copyNew(Trap& on, const std::string& file, const std::string& target, Variant& copied) {
    if (!when(on, [&] { return fs::exists(file); })) return false;
    const std::string there = target + fs::path(file).filename().string();
    if (when(on, [&] { return !fs::exists(there); })) {
        on([&] { fs::copy_file(file, there); });
        on([&] { copied = Variant::Integer(copied.IsEmpty() ? 1 : CInt(copied) + 1); });
    }
    return true;
}

}  // namespace

void Bulk::ChP() {
    Trap on = reportTo("(Form) Products::Sub ChP");
    Ui& ui = Runtime::Current().ui();
    std::string base, type, note;
    std::int16_t changed = 0;
    // The program folder is always the current folder: nothing to change.
    on([&] { (*this)("Command2").SetCaption("Cancel"); });
    on([&] { P.ContinueFlag = false; });
    bool fromSite = false;
    on([&] {
        fromSite =
            MsgBox("Want ALL Pictures To Come From An Internet Site?", vb::vbYesNo) == vb::vbYes;
    });
    bool chosen = true;
    if (fromSite) {
        on([&] {
            base = ui.InputBox(std::string("Enter The Internet Address,") + vb::vbCrLf +
                                   "INCLUDE The 'HTTP://' or 'FTP://' Before The Address",
                               "Choose Internet Address", "http://");
        });
        for (;;) {
            on([&] {
                type = ui.InputBox(std::string("Choose File Type '.jpg','.gif' or '.bmp' "
                                               "(INCLUDE The Period Before It!)") +
                                       vb::vbCrLf + "Be Sure To Type It Like One Of These!",
                                   "Choose File Type", ".jpg");
            });
            if (when(on, [&] { return base.empty() || type.empty(); })) return;
            if (when(on, [&] { return validType(type); })) break;
            on([&] { MsgBox("That Is NOT A Valid Extention, Try Again?", vb::vbCritical); });
        }
    } else {
        CommonDialog dialog;
        dialog.Filter =
            "Jpeg Pictures|*.jpg|Gif Pictures|*.gif|Bitmap Pictures|*.bmp|All Files|*.*";
        std::string picked;
        on([&] { picked = ui.ShowOpen(dialog) ? dialog.FileName : ""; });
        chosen = !when(on, [&] { return picked.empty(); });
        if (chosen) {
            // Only the folder and the type of the chosen file are used.
            Control& file1 = (*this)("File1");
            on([&] { type = Right(picked, 4); });
            on([&] { file1.SetProperty("Pattern", Variant("*" + type)); });
            on([&] {
                file1.SetProperty("Path", Variant(Left(picked, InStrRev(picked, "/") - 1)));
            });
            on([&] { base = textOf(file1.Property("Path")); });
        }
    }
    if (chosen) {
        DaoRecordset& rs = P.Data2->Recordset();
        on([&] {
            note = ui.InputBox("Would You Like To Put A Note For This?", "Want A Note?",
                               noteDate() + " Updated Picture Path");
        });
        on([&] { rs.MoveLast(); });
        on([&] { rs.MoveFirst(); });
        while (!when(on, [&] { return rs.Eof(); })) {
            on([&] { rs.Edit(); });
            // A folder and an Internet address are both joined with "/" on this platform.
            on([&] {
                rs.SetValue(PictureColumn,
                            Variant(base + "/" + CStr(rs.GetValue(StockNoColumn)) + type));
            });
            if (when(on, [&] { return !note.empty(); }))
                on([&] {
                    rs.SetValue(NotesColumn,
                                Variant(textOf(rs.GetValue(NotesColumn)) + note + vb::vbCrLf));
                });
            on([&] { return addOne(changed); });
            on([&] { rs.Update(); });
            on([&] {
                (*this)("lblStatus")
                    .SetCaption("Changing Paths For: " + std::to_string(changed) + " Records");
            });
            on([&] { rs.MoveNext(); });
        }
    }
    on([&] { P.Data2->Refresh(); });
    on([&] {
        (*this)("lblStatus").SetCaption("Total Records Changed Was: " + std::to_string(changed));
    });
    continueAndReset(P, on);
}

void Bulk::MoveCopy() {
    Trap on = reportTo("(Form) Products::Sub MoveCopy");
    Variant copied;  // Empty until the first copy
    const std::string target = CStr(Mod().AppDir) + "Pages/images/";
    Control& list3 = (*this)("List3");
    Control& label7 = (*this)("Label7");
    DaoRecordset& rs = P.Data2->Recordset();
    for (int i = 0; i < list3.ListCount(); ++i) {
        on([&] { rs.MoveFirst(); });
        on([&] { rs.FindFirst("StockNo = '" + list3.List(i) + "'"); });
        std::string picture, stem;
        on([&] { picture = textOf(rs.GetValue(PictureColumn)); });
        on([&] { stem = Left(picture, Len(picture) - 4); });
        const bool jpg = copyNew(on, stem + ".jpg", target, copied);
        const bool gif = copyNew(on, stem + ".gif", target, copied);
        if (!jpg && !gif) copyNew(on, picture, target, copied);
        on([&] {
            label7.SetCaption(std::string("Please Wait...") + vb::vbCrLf +
                              (copied.IsEmpty() ? "" : "Copying Files: " + CStr(copied)));
        });
    }
    on([&] {
        label7.SetCaption("File Copy Now Completed, Copied: " + CStr(copied) +
                          (copied.IsEmpty() ? "" : " Files"));
    });
    on([&] { Mod().PicturesCopied = true; });
}
