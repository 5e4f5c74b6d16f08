#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "forms/headless_pane.h"
#include "forms/runtime.h"
#include "forms/ui.h"

// The user of one benchmark run, as a script: each wait for the user takes the next action,
// and every dialog is refused unless a benchmark answers it.
class ScriptedUser : public Ui {
  public:
    std::deque<std::function<void()>> actions;

    int MsgBox(const std::string&, int, const std::string&) override { return vb::vbOK; }
    std::string InputBox(const std::string&, const std::string&,
                         const std::string& defaultText) override {
        return defaultText;
    }
    bool ShowOpen(CommonDialog&) override { return false; }
    bool ShowSave(CommonDialog&) override { return false; }
    bool ShowFont(CommonDialog&) override { return false; }
    bool ShowColor(CommonDialog&) override { return false; }
    Control* PopupMenu(Form&, const std::string&) override { return nullptr; }
    Pane& PaneFor(Form& form, const std::string& controlName) override {
        auto& pane = panes_[{&form, controlName}];
        if (!pane) pane = std::make_unique<HeadlessPane>();
        return *pane;
    }
    void RunDocument(const std::string&) override {}
    void LetEventsRun() override {}
    void WaitForUser() override {
        // A wait the script did not foresee ends the program rather than spinning.
        if (actions.empty()) Runtime::Current().End();
        auto next = std::move(actions.front());
        actions.pop_front();
        next();
    }

  private:
    std::map<std::pair<Form*, std::string>, std::unique_ptr<HeadlessPane>> panes_;
};
