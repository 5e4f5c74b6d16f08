// Adding a folder, started by the link `Folder`: every file of a chosen kind under a chosen
// folder becomes an item keyed by its upper-case name, with its path as the picture. The
// file seeker `WinSeek` finds the files; known files are edited, moved ones noted.
#include <cstdint>
#include <filesystem>
#include <optional>

#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "build/run_steps.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace fs = std::filesystem;

namespace {

constexpr int StockNoColumn = 2, NameColumn = 3, DescColumn = 4, PageColumn = 5;
constexpr int PictureColumn = 17, CategoryColumn = 18, NotesColumn = 29;

// The filter of the open dialog, name and pattern, and the pattern the search uses.
struct FileKind {
    const char* name;
    const char* filter;
    const char* search;
};
constexpr const char* AllSupported =
    "*.mp*;*.wav;*.avi;*.jpg;*.gif;*.bmp;*.ico;*.dib;*.wmf;*.emf;*.txt;*.doc;*.*ht*;*.avi;*.mp3;"
    "*.exe";
const FileKind Kinds[] = {
    {"All Supported Pictures", "*.avi;*.jpg;*.gif;*.bmp;*.ico;*.dib;*.wmf;*.emf", nullptr},
    {"JPG's", "*.jpg", nullptr},
    {"GIF's", "*.gif", nullptr},
    {"BMP's", "*.bmp", nullptr},
    {"ICONS's", "*.ico", nullptr},
    {"DIB's", "*.dib", nullptr},
    {"WMF's", "*.wmf", nullptr},
    {"CMF's", "*.emf", nullptr},
    {"Supported Text Files", "*.txt;*.doc", nullptr},
    {"All WEB Pages", "*.ht*", nullptr},
    {"Video/Movie Files", "*.mp*;*.avi", nullptr},
    {"All Supported Music Files", "*.mp*;*.avi;*.wav;*.wma", nullptr},
    {"Program Files", "*.exe", nullptr},
    {"ALL Supported Files",
     "*.avi;*.jpg;*.gif;*.bmp;*.ico;*.dib;*.wmf;*.emf;*.txt;*.doc;*.*ht*;*.avi;*.mp3;*.wav;*.wma;"
     "*.exe",
     AllSupported},
    {"ALL Files", "*.*", nullptr},
};

std::string folderFilter() {
    std::string filter;
    for (const FileKind& kind : Kinds)
        filter += std::string(filter.empty() ? "" : "|") + kind.name + "|" + kind.filter;
    return filter;
}

// The search pattern of the filter the user chose (1-based).
std::string searchPattern(int index) {
    const FileKind& kind = Kinds[static_cast<std::size_t>(index - 1)];
    return kind.search ? kind.search : kind.filter;
}

std::string withoutApostrophes(const std::string& s) {
    return Replace(s, "'", "");
}

// One run of Folders: the file in hand and the counters.
class FolderRun {
  public:
    FolderRun(Products& form, Trap& on) : P(form), on(on) {}

    void run();

  private:
    bool choose();
    void search(const std::string& pattern);
    void addFile(std::int16_t number, const std::string& listed);
    void derive(const std::string& listed);
    void newFile();
    void knownFile();
    void ending();
    DaoRecordset& rs() const { return P.Data2->Recordset(); }
    Pane& pane() const { return P.Wb1(); }
    Form& seeker() const { return Runtime::Current().Get("WinSeek"); }

    Products& P;
    Trap& on;
    std::string chosen_;  // the file picked in the dialog
    int filterIndex_ = 1;
    std::int16_t count_ = 0;  // the count that WinSeek shows
    std::int16_t nextNumber_ = 0;
    // The file in hand.
    std::string itemName_, stockNo_, folderName_, folderText_, extension_, path_, note_;
    std::string folderOfTexts_;  // the folder that folderName_ and folderText_ were made from
    std::int16_t checked_ = 0, added_ = 0, moved_ = 0, edited_ = 0;
};

void FolderRun::run() {
    Runtime& rt = Runtime::Current();
    // The program folder is always the current folder: nothing to change.
    on([&] { rt.Show(seeker()); });
    if (choose()) {
        std::string pattern;
        on([&] { pattern = searchPattern(filterIndex_); });
        on([&] { pane().Navigate2("about:blank"); });
        on([&] { pane().Write("<p align=center><font size=6 font color=blue>Working<br><br>"); });
        on([&] {
            pane().Write("<p align=center><font size=4 font color=blue>Please Wait!<br><br>");
        });
        search(pattern);
        on([&] { rt.Hide(seeker()); });
        on([&] { pane().Write("<p align=center><font size=6 font color=blue>Working<br><br>"); });
        on([&] {
            pane().Write("<p align=center><font size=6 font color=blue>Please Wait!<br><br>");
        });
        on([&] { count_ = CInt(Variant(Val(seeker()("lblCount").Caption()))); });
        // The files' records are committed a group at a time; every way out of the loop
        // commits the last group, so the ending's refresh finds every record written.
        std::optional<WriteGroup> group;
        on([&] { group.emplace(*P.Data2); });
        for (std::int16_t i = 0; i < count_; ++i) {
            std::string listed;
            on([&] { listed = seeker()("lstFoundFiles").List(i); });
            if (!listed.empty()) addFile(static_cast<std::int16_t>(i + 1), listed);
        }
        on([&] {
            if (group) group->End();
        });
    }
    ending();
}

bool FolderRun::choose() {
    CommonDialog dialog;
    dialog.FileName = "Click [Open] Button Or Any File Above";
    dialog.Filter = folderFilter();
    on([&] {
        chosen_ = Runtime::Current().ui().ShowOpen(dialog) ? dialog.FileName : "";
        filterIndex_ = dialog.FilterIndex;
    });
    return !when(on, [&] { return chosen_.empty(); });
}

// WinSeek finds the files: the pattern, the chosen file's folder, its search pressed, and
// a wait until its button reads "&Reset" (or the user has closed it).
void FolderRun::search(const std::string& pattern) {
    Form& seek = seeker();
    on([&] { P("File1").SetProperty("Pattern", Variant(pattern)); });
    on([&] { seek("txtSearchSpec").SetText(pattern); });
    on([&] {
        seek("dirList").SetProperty("Path", Variant(Left(chosen_, InStrRev(chosen_, "/") - 1)));
    });
    on([&] { seek("cmdSearch").Raise("Click"); });
    while (!when(on, [&] { return seek("cmdSearch").Caption() == "&Reset" || !seek.IsLoaded(); }))
        on([&] { Runtime::Current().WaitForUser(); });
}

void FolderRun::addFile(std::int16_t number, const std::string& listed) {
    derive(listed);
    on([&] { rs().MoveLast(); });
    on([&] { nextNumber_ = CInt(Variant(CLng(rs().GetValue(0)) + 1)); });
    on([&] { rs().FindFirst("[StockNo] = '" + stockNo_ + "'"); });
    if (when(on, [&] { return rs().NoMatch(); }))
        newFile();
    else
        knownFile();
    on([&] { rs().Update(); });
    on([&] {
        P("lblStatus")
            .SetCaption("Checking: " + std::to_string(number) + " of " + std::to_string(count_));
    });
}

void FolderRun::derive(const std::string& listed) {
    const long slash = InStrRev(listed, "/");
    const std::string folder = Left(listed, slash - 1);
    const std::string name = Mid(listed, slash + 1);
    on([&] { return addOne(checked_); });
    on([&] { P("File1").SetProperty("Path", Variant(folder)); });
    itemName_.clear();
    on([&] { itemName_ = withoutApostrophes(Left(name, Len(name) - 4)); });
    on([&] { stockNo_ = withoutApostrophes(UCase(name)); });
    // The folder's name and text are those of the file before when the folder is the same,
    // as it is for every file of a folder but the first.
    if (folder != folderOfTexts_) {
        folderOfTexts_.clear();
        const bool named = on([&] {
            folderName_ = withoutApostrophes(UCase(Mid(folder, InStrRev(folder, "/") + 1)));
        });
        if (on([&] { folderText_ = "Folder Path: " + folder + "/"; }) && named)
            folderOfTexts_ = folder;
    }
    on([&] { extension_ = UCase(Right(listed, 3)); });
    on([&] { path_ = withoutApostrophes(listed); });
}

void FolderRun::newFile() {
    // A substitute picture for a document or a program, judged by the record the store
    // stands on; the true path is put back, so only the look-up of an icon remains.
    std::string standing, picture = path_;
    on([&] { standing = UCase(textOf(rs().GetValue(PictureColumn))); });
    bool substitute = false;
    if (when(on, [&] { return InStr(standing, ".DOC") > 0; })) {
        on([&] { picture = CStr(Mod().AppDir) + "textpic.jpg"; });
        substitute = true;
    } else if (when(on, [&] { return InStr(standing, ".EXE") > 0; })) {
        const std::string icon = Left(picture, Len(picture) - 3) + "ico";
        on([&] { picture = fs::exists(icon) ? icon : CStr(Mod().AppDir) + "exepic.jpg"; });
        substitute = true;
    }
    if (substitute) on([&] { picture = path_; });
    on([&] { rs().AddNew(); });
    on([&] { return rs().TrySetValue(0, Variant::Integer(nextNumber_)); });
    on([&] { note_ = noteDate() + " Added From Folder: " + folderName_ + vb::vbCrLf; });
    on([&] { return addOne(added_); });
    on([&] { rs().SetValue(StockNoColumn, Variant(stockNo_)); });
    on([&] { rs().SetValue(NameColumn, Variant(itemName_)); });
    on([&] { rs().SetValue(DescColumn, Variant(folderText_ + stockNo_)); });
    on([&] { rs().SetValue(PageColumn, Variant(folderName_)); });
    for (int column = 7; column <= 12; ++column)
        on([&] { rs().SetValue(column, Variant::Integer(0)); });
    on([&] { rs().SetValue(PictureColumn, Variant(picture)); });
    if (when(on, [&] { return !extension_.empty(); }))
        on([&] { rs().SetValue(CategoryColumn, Variant(extension_)); });
    if (when(on, [&] { return !note_.empty(); }))
        on([&] {
            rs().SetValue(NotesColumn,
                          Variant(textOf(rs().GetValue(NotesColumn)) + note_ + vb::vbCrLf));
        });
}

void FolderRun::knownFile() {
    bool movedAway = false;
    if (when(on, [&] { return textOf(rs().GetValue(PictureColumn)) != path_; })) {
        on([&] { rs().FindFirst("[Picture] = '" + path_ + "'"); });
        if (when(on, [&] { return rs().NoMatch(); })) {
            on([&] { rs().FindFirst("[StockNo] = '" + stockNo_ + "'"); });
            movedAway = when(on, [&] { return !fs::exists(textOf(rs().GetValue(PictureColumn))); });
        }
    }
    if (movedAway) {
        on([&] { return addOne(moved_); });
        on([&] {
            note_ = noteDate() + " Moved From " + textOf(rs().GetValue(PageColumn)) + " To " +
                    folderName_ + vb::vbCrLf;
        });
    } else {
        on([&] { note_ = noteDate() + " Edited From Folder: " + folderName_ + vb::vbCrLf; });
    }
    on([&] { rs().Edit(); });
    if (when(on, [&] { return textOf(rs().GetValue(NameColumn)).empty(); }))
        on([&] { rs().SetValue(NameColumn, Variant(itemName_)); });
    if (when(on, [&] { return !note_.empty(); }))
        on([&] {
            rs().SetValue(NotesColumn,
                          Variant(textOf(rs().GetValue(NotesColumn)) + note_ + vb::vbCrLf));
        });
    on([&] { rs().SetValue(DescColumn, Variant(folderText_ + stockNo_)); });
    on([&] { rs().SetValue(PictureColumn, Variant(path_)); });
    on([&] { rs().SetValue(PageColumn, Variant(folderName_)); });
    on([&] { return addOne(edited_); });
}

void FolderRun::ending() {
    Runtime& rt = Runtime::Current();
    on([&] { rt.Unload(seeker()); });
    on([&] { P.Data2->Refresh(); });
    on([&] { pane().Navigate2("about:blank"); });
    on([&] {
        pane().Write("<p align=center><font size=6 font color=blue>Task Completed<br><br>");
    });
    on([&] {
        pane().Write("<p align=center><font size=5 font color=Black>Total Files Checked: " +
                     std::to_string(checked_) + "<br><br><p>");
    });
    on([&] {
        pane().Write("<p align=center><font size=4 font color=Green>New Files Added : " +
                     std::to_string(added_));
    });
    on([&] {
        pane().Write("<p align=center><font size=4 font color=red>File Locations Moved : " +
                     std::to_string(moved_));
    });
    on([&] {
        pane().Write("<p align=center><font size=4 font color=blue> Old Files Edited: " +
                     std::to_string(edited_) + "<br><br><p>");
    });
    continueAndReset(P, on);
}

}  // namespace

void Bulk::Folders() {
    Trap on = reportTo("(Form) products::Sub Folders");
    FolderRun(P, on).run();
}
