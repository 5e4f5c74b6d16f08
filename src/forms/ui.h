#pragma once

#include <functional>
#include <string>

class Form;
class Control;
class Pane;

// Message box styles and answers, with the classic values.
namespace vb {
inline constexpr int vbOKOnly = 0;
inline constexpr int vbOKCancel = 1;
inline constexpr int vbAbortRetryIgnore = 2;
inline constexpr int vbYesNoCancel = 3;
inline constexpr int vbYesNo = 4;
inline constexpr int vbRetryCancel = 5;
inline constexpr int vbCritical = 16;
inline constexpr int vbQuestion = 32;
inline constexpr int vbExclamation = 48;
inline constexpr int vbInformation = 64;

inline constexpr int vbOK = 1;
inline constexpr int vbCancel = 2;
inline constexpr int vbAbort = 3;
inline constexpr int vbRetry = 4;
inline constexpr int vbIgnore = 5;
inline constexpr int vbYes = 6;
inline constexpr int vbNo = 7;

inline constexpr int vbModal = 1;
inline constexpr int vbDefault = 0;
inline constexpr int vbNormal = vbDefault;  // the mouse pointer's
inline constexpr int vbHourglass = 11;

inline constexpr const char* vbCrLf = "\r\n";
}  // namespace vb

// The common dialog `dlgCommonDialog`: what the program sets before showing it and what it
// reads afterwards.
struct CommonDialog {
    std::string FileName, Filter, InitDir, DialogTitle, DefaultExt;
    int FilterIndex = 1;
    int Flags = 0;
    bool CancelError = false;
    // Font and colour.
    std::string FontName = "MS Sans Serif";
    double FontSize = 8;
    bool FontBold = false, FontItalic = false, FontUnderline = false, FontStrikethru = false;
    long Color = 0;
};

// A report's window: the pages the report engine laid out, and what it needs to print them.
struct ReportWindow {
    std::string Title;
    int WindowState = 0;  // 2 maximised
    std::string Html;     // every page, each printing on a sheet of its own
    int Pages = 0;
    // Where a program without a screen puts the pages.
    std::string File;
    // Writes the report as a PDF file; a file that cannot be written is a fault.
    std::function<void(const std::string& path)> WritePdf;
};

// What the program asks of the screen: the desktop answers with real dialogs, a scripted
// run with the script's answers.
class Ui {
  public:
    virtual ~Ui() = default;
    // Shows a message box; returns the button chosen. An empty title means none.
    virtual int MsgBox(const std::string& prompt, int buttons, const std::string& title) = 0;
    // "" when cancelled.
    virtual std::string InputBox(const std::string& prompt, const std::string& title,
                                 const std::string& defaultText) = 0;
    // Each returns false when the user cancelled; the dialog's fields hold the answer.
    virtual bool ShowOpen(CommonDialog& dialog) = 0;
    virtual bool ShowSave(CommonDialog& dialog) = 0;
    virtual bool ShowFont(CommonDialog& dialog) = 0;
    virtual bool ShowColor(CommonDialog& dialog) = 0;
    // Shows the items of a menu control's array as a popup; the chosen item, or nullptr.
    virtual Control* PopupMenu(Form& form, const std::string& menuName) = 0;
    // The HTML pane that stands in the form's control of that name (`Wb1`).
    virtual Pane& PaneFor(Form& form, const std::string& controlName) = 0;
    // Shows a report in the report window, which a further report sets up anew. Without a
    // screen the pages go to the report's File.
    virtual void ShowReport(const ReportWindow& report);
    // Hands a document or program to the desktop's opener.
    virtual void RunDocument(const std::string& path) = 0;
    virtual void MousePointerChanged(int /*pointer*/) {}
    // A form was shown or hidden: the desktop opens or closes its window.
    virtual void FormShown(Form& /*form*/, bool /*modal*/) {}
    virtual void FormHidden(Form& /*form*/) {}
    // Paint and let queued events through.
    virtual void LetEventsRun() = 0;
    // One pass of a wait for the user: the next user action happens inside it.
    virtual void WaitForUser() = 0;
};

// The Ui of the running program; message boxes go nowhere until one is set.
Ui* theUi();
void setUi(Ui* ui);

// MsgBox through the Ui of the running program; vbOK when there is none.
int MsgBox(const std::string& prompt, int buttons = vb::vbOKOnly, const std::string& title = "");
