#pragma once

#include <functional>
#include <string>
#include <vector>

#include <deque>
#include <map>
#include <memory>
#include <optional>

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
    // The file the open dialog answers with; "" cancels it. The filter chosen, when set.
    std::string openAnswer;
    int openFilter = 0;
    // The open dialog as the program last set it.
    CommonDialog openShown;
    bool ShowOpen(CommonDialog& dialog) override {
        openShown = dialog;
        if (openAnswer.empty()) return false;
        dialog.FileName = openAnswer;
        if (openFilter) dialog.FilterIndex = openFilter;
        return true;
    }
    // The file the save dialog answers with; "" cancels it.
    std::string saveAnswer;
    bool ShowSave(CommonDialog& dialog) override {
        if (saveAnswer.empty()) return false;
        dialog.FileName = saveAnswer;
        return true;
    }
    // The font chosen in the next font dialogs, and what the program preset them with;
    // unset cancels the dialog.
    std::optional<CommonDialog> fontAnswer;
    std::vector<CommonDialog> fontPresets;
    bool ShowFont(CommonDialog& dialog) override {
        fontPresets.push_back(dialog);
        if (!fontAnswer) return false;
        dialog.FontName = fontAnswer->FontName;
        dialog.FontSize = fontAnswer->FontSize;
        dialog.FontBold = fontAnswer->FontBold;
        dialog.FontItalic = fontAnswer->FontItalic;
        dialog.FontUnderline = fontAnswer->FontUnderline;
        dialog.FontStrikethru = fontAnswer->FontStrikethru;
        dialog.Color = fontAnswer->Color;
        return true;
    }
    // The colour chosen in the next colour dialogs; unset cancels them.
    std::optional<long> colourAnswer;
    bool ShowColor(CommonDialog& dialog) override {
        if (!colourAnswer) return false;
        dialog.Color = *colourAnswer;
        return true;
    }
    Control* PopupMenu(Form&, const std::string&) override { return nullptr; }
    Pane& PaneFor(Form&, const std::string& name) override {
        auto& pane = panes[name];
        if (!pane) pane = std::make_unique<HeadlessPane>();
        return *pane;
    }
    std::map<std::string, std::unique_ptr<HeadlessPane>> panes;
    void RunDocument(const std::string&) override {}
    // Every change of the mouse pointer, in turn.
    std::vector<int> pointers;
    void MousePointerChanged(int p) override {
        pointer = p;
        pointers.push_back(p);
    }
    // The report windows shown, in turn; each also goes to its file, as without a screen.
    std::vector<ReportWindow> reportWindows;
    void ShowReport(const ReportWindow& report) override {
        reportWindows.push_back(report);
        Ui::ShowReport(report);
    }
    // When set, runs each time the program lets events run (the user acting meanwhile).
    std::function<void()> onLetEventsRun;
    void LetEventsRun() override {
        if (onLetEventsRun) onLetEventsRun();
    }
    void WaitForUser() override {}
};
