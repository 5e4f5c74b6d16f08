#pragma once

#include <string>

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

inline constexpr const char* vbCrLf = "\r\n";
}  // namespace vb

// What the program asks of the screen: the desktop answers with real dialogs, a scripted
// run with the script's answers.
class Ui {
public:
    virtual ~Ui() = default;
    // Shows a message box; returns the button chosen. An empty title means none.
    virtual int MsgBox(const std::string& prompt, int buttons, const std::string& title) = 0;
};

// The Ui of the running program; nothing is shown until one is set.
Ui* theUi();
void setUi(Ui* ui);

// MsgBox through the Ui of the running program; vbOK when there is none.
int MsgBox(const std::string& prompt, int buttons = vb::vbOKOnly, const std::string& title = "");
