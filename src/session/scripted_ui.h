#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "forms/headless_pane.h"
#include "forms/ui.h"
#include "session/script.h"

// The Ui of a scripted run. Dialogs take their answers from the script's `answer` lines,
// a wait for the user takes the script's next user line, letting events run does nothing,
// and each form's pane is a HeadlessPane.
class ScriptedUi : public Ui {
  public:
    // The runner behind the Ui: it owns the script's lines.
    class Host {
      public:
        virtual ~Host() = default;
        // One pass of a wait for the user.
        virtual void WaitPass() = 0;
        // The `answer` line for the dialog now open, checked against its kind and prompt
        // (and, for a message box, its buttons). Never returns when there is none.
        virtual const Command& TakeAnswer(DialogKind kind, const std::string& prompt,
                                          int buttons) = 0;
        // A path of the script: "$APP" replaced, relative to the program folder.
        virtual std::string ScriptPath(const std::string& path) const = 0;
        virtual Pattern ScriptPattern(const Pattern& pattern) const = 0;
        [[noreturn]] virtual void Fail(const Command& line, const std::string& expected,
                                       const std::string& found) = 0;
    };

    explicit ScriptedUi(Host& host) : host_(host) {}

    int MsgBox(const std::string& prompt, int buttons, const std::string& title) override;
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& defaultText) override;
    bool ShowOpen(CommonDialog& dialog) override;
    bool ShowSave(CommonDialog& dialog) override;
    bool ShowFont(CommonDialog& dialog) override;
    bool ShowColor(CommonDialog& dialog) override;
    Control* PopupMenu(Form& form, const std::string& menuName) override;
    Pane& PaneFor(Form& form, const std::string& controlName) override;
    void RunDocument(const std::string& path) override { documents_.push_back(path); }
    void LetEventsRun() override {}
    void WaitForUser() override { host_.WaitPass(); }

    // The prompts of the dialogs shown since the last call, each followed by "\n".
    std::string TakeDialogPrompts();
    // The pane last asked for whose form is among `live`, or nullptr.
    HeadlessPane* CurrentPane(const std::vector<Form*>& live);
    // Forgets the panes of forms not among `live` (their forms are about to go).
    void KeepPanesOf(const std::vector<Form*>& live);
    void ForgetPanes();
    const std::vector<std::string>& Documents() const { return documents_; }

  private:
    bool fileDialog(CommonDialog& dialog, DialogKind kind);

    Host& host_;
    std::string prompts_;
    std::map<std::pair<Form*, std::string>, std::unique_ptr<HeadlessPane>> panes_;
    std::vector<std::pair<Form*, HeadlessPane*>> lastAsked_;
    std::vector<std::string> documents_;
};
