#include "reports/win_seek.h"

#include "base/convert.h"
#include "base/strings.h"
#include "forms/placement.h"
#include "forms/runtime.h"

namespace {

// The count at which the walk stops, one below what the message says.
constexpr int ListLimit = 32766;
constexpr int OutOfMemory = 7;

// The process's current folder: the program never changes its working folder, so the
// program folder stands for it.
std::string currentFolder() {
    return Runtime::Current().AppPath();
}

}  // namespace

WinSeek::WinSeek() : Form("WinSeek") {
    SetCaption("Getting Files...");
    SetNum("Width", 7560);
    SetNum("Height", 5700);
    place(Add("lblCriteria", ControlKind::Label), {120, 120, 1600, 255})
        .SetCaption("Search &Criteria:");
    place(Add("txtSearchSpec", ControlKind::TextBox), {120, 400, 3200, 315}).SetText("*.*");
    place(Add("drvList", ControlKind::DriveList), {120, 800, 3200, 600});
    place(Add("dirList", ControlKind::DirList), {120, 1480, 3200, 1800});
    place(Add("filList", ControlKind::FileList), {120, 3360, 3200, 1700});
    place(Add("lblfound", ControlKind::Label), {3480, 120, 1300, 255}).SetCaption("&Files Found:");
    place(Add("lblCount", ControlKind::Label), {4800, 120, 1200, 255}).SetCaption("0");
    place(Add("lstFoundFiles", ControlKind::ListBox), {3480, 400, 3900, 4200});
    place(Add("cmdSearch", ControlKind::CommandButton), {3480, 4700, 1300, 375})
        .SetCaption("&Search");
    place(Add("cmdExit", ControlKind::CommandButton), {6080, 4700, 1300, 375}).SetCaption("E&xit");
    OnClick("cmdSearch", &WinSeek::cmdSearch_Click);
    OnClick("cmdExit", &WinSeek::cmdExit_Click);
    On("dirList", "Change", [this](EventArgs&) { dirList_Change(); });
    On("dirList", "LostFocus", [this](EventArgs&) { dirList_LostFocus(); });
    On("drvList", "Change", [this](EventArgs&) { drvList_Change(); });
    On("txtSearchSpec", "Change", [this](EventArgs&) { txtSearchSpec_Change(); });
    On("txtSearchSpec", "GotFocus", [this](EventArgs&) { txtSearchSpec_GotFocus(); });
}

void WinSeek::Form_Load() {
    // The lists start in the current folder, as the classic lists do; the labels already
    // have the form's font.
    Control& dirList = (*this)("dirList");
    dirList.SetProperty("Path", Variant(currentFolder()));
    (*this)("filList").SetProperty("Path", dirList.Property("Path"));
}

void WinSeek::cmdSearch_Click() {
    Control& dirList = (*this)("dirList");
    if ((*this)("cmdSearch").Caption() == "&Reset") {
        ResetSeeker();
        (*this)("txtSearchSpec").SetFocus();
        return;
    }
    // The first press only goes into the folder chosen in the list.
    const std::string chosen = dirList.List(dirList.ListIndex());
    if (textOf(dirList.Property("Path")) != chosen) {
        dirList.SetProperty("Path", Variant(chosen));
        return;
    }
    (*this)("cmdExit").SetCaption("Cancel");
    (*this)("filList").SetProperty("Pattern", Variant((*this)("txtSearchSpec").Text()));
    WalkFolder(textOf(dirList.Property("Path")), dirList.ListCount(), "");
    (*this)("filList").SetProperty("Path", dirList.Property("Path"));
    (*this)("cmdSearch").SetCaption("&Reset");
    (*this)("cmdExit").SetCaption("E&xit");
}

void WinSeek::cmdExit_Click() {
    if ((*this)("cmdExit").Caption() == "E&xit")
        Runtime::Current().Unload(*this);
    else
        SeekAllowed = false;
}

void WinSeek::ResetSeeker() {
    (*this)("lstFoundFiles").Clear();
    (*this)("lblCount").SetCaption("0");
    SeekAllowed = false;
    (*this)("cmdSearch").SetCaption("&Search");
    (*this)("cmdExit").SetCaption("E&xit");
    Control& dirList = (*this)("dirList");
    dirList.SetProperty("Path", Variant(currentFolder()));
    (*this)("drvList").SetProperty("Drive", dirList.Property("Path"));
}

bool WinSeek::WalkFolder(const std::string& FolderPath, int SubCount,
                         const std::string& ParentPath) {
    SeekAllowed = true;
    bool result = false;
    Runtime::Current().LetEventsRun();
    if (!SeekAllowed) return true;
    Trap on = Trap::Handled([&](int number) {
        const std::string text = Err().Description;
        if (number == OutOfMemory) {
            MsgBox("You've filled the list box. Abandoning search...");
            result = true;
            return Trap::Resume::Exit;
        }
        MsgBox(text);
        Runtime::Current().End();
    });
    Control& dirList = (*this)("dirList");
    int SubsLeft = 0;
    on([&] { SubsLeft = dirList.ListCount(); });
    while (!on.Exited() && SubsLeft > 0 && SeekAllowed) {
        bool abandoned = false;
        on([&] {
            const Variant SavedPath = dirList.Property("Path");
            dirList.SetProperty("Path", Variant(FolderPath));
            if (dirList.ListCount() > 0) {
                dirList.SetProperty("Path", Variant(dirList.List(SubsLeft - 1)));
                abandoned =
                    WalkFolder(textOf(dirList.Property("Path")), SubCount, textOf(SavedPath));
            }
        });
        --SubsLeft;
        if (abandoned) return true;
    }
    on([&] { listFiles(); });
    if (!ParentPath.empty()) on([&] { dirList.SetProperty("Path", Variant(ParentPath)); });
    return result;
}

void WinSeek::listFiles() {
    Control& filList = (*this)("filList");
    if (filList.ListCount() == 0) return;
    Control& found = (*this)("lstFoundFiles");
    Control& count = (*this)("lblCount");
    // A root already ends in the separator.
    std::string PathPrefix = textOf((*this)("dirList").Property("Path"));
    if (Right(PathPrefix, 1) != "/") PathPrefix += "/";
    for (int i = 0; i < filList.ListCount(); ++i) {
        found.AddItem(PathPrefix + filList.List(i));
        const int n = static_cast<int>(Val(count.Caption())) + 1;
        count.SetCaption(" " + std::to_string(n));
        if (n >= ListLimit) {
            if (n == ListLimit) MsgBox("Sorry, the database can have a maximum of 32,767 records!");
            SeekAllowed = false;
            break;
        }
    }
}

void WinSeek::dirList_Change() {
    (*this)("filList").SetProperty("Path", (*this)("dirList").Property("Path"));
}

void WinSeek::dirList_LostFocus() {
    Control& dirList = (*this)("dirList");
    dirList.SetProperty("Path", Variant(dirList.List(dirList.ListIndex())));
}

void WinSeek::drvList_Change() {
    (*this)("dirList").SetProperty("Path", (*this)("drvList").Property("Drive"));
}

void WinSeek::txtSearchSpec_Change() {
    (*this)("filList").SetProperty("Pattern", Variant((*this)("txtSearchSpec").Text()));
}

void WinSeek::txtSearchSpec_GotFocus() {
    Control& spec = (*this)("txtSearchSpec");
    spec.SetProperty("SelStart", Variant(0));
    spec.SetProperty("SelLength", Variant(static_cast<int>(Len(spec.Text()))));
}
