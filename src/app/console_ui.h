#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "forms/headless_pane.h"
#include "forms/ui.h"

// The Ui of the headless program: message boxes are printed and answered with their
// default button, dialogs are cancelled, and a wait for the user closes the modal form.
class ConsoleUi : public Ui {
  public:
    int MsgBox(const std::string& prompt, int buttons, const std::string& title) override;
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& defaultText) override;
    bool ShowOpen(CommonDialog&) override { return false; }
    bool ShowSave(CommonDialog&) override { return false; }
    bool ShowFont(CommonDialog&) override { return false; }
    bool ShowColor(CommonDialog&) override { return false; }
    Control* PopupMenu(Form&, const std::string&) override { return nullptr; }
    Pane& PaneFor(Form& form, const std::string& controlName) override;
    void RunDocument(const std::string& path) override;
    void FormShown(Form& form, bool modal) override;
    void LetEventsRun() override {}
    void WaitForUser() override;

  private:
    std::map<std::pair<Form*, std::string>, std::unique_ptr<HeadlessPane>> panes_;
    std::vector<Form*> modal_;
};
