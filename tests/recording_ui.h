#pragma once

#include <functional>
#include <string>
#include <vector>

#include <deque>
#include <map>
#include <memory>

#include "forms/headless_pane.h"
#include "forms/ui.h"

// A Ui for unit tests: it records what the program shows and answers every dialog with
// its preset answer.
struct RecordingUi : Ui {
    struct Box {
        std::string prompt;
        int buttons;
        std::string title;
    };
    std::vector<Box> boxes;
    int msgBoxAnswer = vb::vbOK;
    std::string inputAnswer;
    // Answers to the next input boxes, in turn; inputAnswer once they are used up.
    std::deque<std::string> inputAnswers;
    int pointer = 0;

    int MsgBox(const std::string& prompt, int buttons, const std::string& title) override {
        boxes.push_back({prompt, buttons, title});
        return msgBoxAnswer;
    }
    std::vector<std::string> inputDefaults;
    // When set, runs as an input box opens (the user acting before answering).
    std::function<void(const std::string& prompt)> onInput;
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& defaultText) override {
        boxes.push_back({prompt, -1, title});
        inputDefaults.push_back(defaultText);
        if (onInput) onInput(prompt);
        if (inputAnswers.empty()) return inputAnswer;
        std::string answer = inputAnswers.front();
        inputAnswers.pop_front();
        return answer;
    }
    // The file the open dialog answers with; "" cancels it.
    std::string openAnswer;
    bool ShowOpen(CommonDialog& dialog) override {
        if (openAnswer.empty()) return false;
        dialog.FileName = openAnswer;
        return true;
    }
    // The file the save dialog answers with; "" cancels it.
    std::string saveAnswer;
    bool ShowSave(CommonDialog& dialog) override {
        if (saveAnswer.empty()) return false;
        dialog.FileName = saveAnswer;
        return true;
    }
    bool ShowFont(CommonDialog&) override { return false; }
    bool ShowColor(CommonDialog&) override { return false; }
    Control* PopupMenu(Form&, const std::string&) override { return nullptr; }
    Pane& PaneFor(Form&, const std::string& name) override {
        auto& pane = panes[name];
        if (!pane) pane = std::make_unique<HeadlessPane>();
        return *pane;
    }
    std::map<std::string, std::unique_ptr<HeadlessPane>> panes;
    void RunDocument(const std::string&) override {}
    void MousePointerChanged(int p) override { pointer = p; }
    void LetEventsRun() override {}
    void WaitForUser() override {}
};
