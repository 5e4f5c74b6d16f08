#include "session/scripted_ui.h"

#include <algorithm>

#include "base/strings.h"
#include "forms/form.h"

namespace {

bool among(const std::vector<Form*>& live, Form* form) {
    return std::find(live.begin(), live.end(), form) != live.end();
}

}  // namespace

int ScriptedUi::MsgBox(const std::string& prompt, int buttons, const std::string&) {
    prompts_ += prompt + "\n";
    return static_cast<int>(host_.TakeAnswer(DialogKind::MsgBox, prompt, buttons).n);
}

std::string ScriptedUi::InputBox(const std::string& prompt, const std::string&,
                                 const std::string&) {
    prompts_ += prompt + "\n";
    const Command& answer = host_.TakeAnswer(DialogKind::InputBox, prompt, 0);
    if (answer.cancel) return {};
    return replaceApp(answer.a, host_.ScriptPath(""));
}

bool ScriptedUi::fileDialog(CommonDialog& dialog, DialogKind kind) {
    prompts_ += dialog.DialogTitle + "\n";
    const Command& answer = host_.TakeAnswer(kind, dialog.DialogTitle, 0);
    if (answer.cancel) return false;
    dialog.FileName = host_.ScriptPath(answer.a);
    if (answer.hasFilter) dialog.FilterIndex = static_cast<int>(answer.n);
    return true;
}

bool ScriptedUi::ShowOpen(CommonDialog& dialog) {
    return fileDialog(dialog, DialogKind::Open);
}
bool ScriptedUi::ShowSave(CommonDialog& dialog) {
    return fileDialog(dialog, DialogKind::Save);
}

bool ScriptedUi::ShowFont(CommonDialog& dialog) {
    prompts_ += dialog.DialogTitle + "\n";
    const Command& answer = host_.TakeAnswer(DialogKind::Font, dialog.DialogTitle, 0);
    if (answer.cancel) return false;
    dialog.FontName = answer.a;
    dialog.FontSize = answer.size;
    dialog.FontBold = answer.fontStyle & 1;
    dialog.FontItalic = answer.fontStyle & 2;
    dialog.FontUnderline = answer.fontStyle & 4;
    dialog.FontStrikethru = answer.fontStyle & 8;
    dialog.Color = answer.n;
    return true;
}

bool ScriptedUi::ShowColor(CommonDialog& dialog) {
    prompts_ += dialog.DialogTitle + "\n";
    const Command& answer = host_.TakeAnswer(DialogKind::Color, dialog.DialogTitle, 0);
    if (answer.cancel) return false;
    dialog.Color = answer.n;
    return true;
}

Control* ScriptedUi::PopupMenu(Form& form, const std::string& menuName) {
    prompts_ += menuName + "\n";
    const Command& answer = host_.TakeAnswer(DialogKind::Popup, menuName, 0);
    if (answer.cancel) return nullptr;
    Pattern wanted = host_.ScriptPattern(answer.pattern);
    std::string offered;
    for (const auto& c : form.Controls()) {
        // The items of a menu: the elements of its array, or the menus it holds.
        const bool item =
            UCase(c->Name()) == UCase(menuName) ||
            (c->Kind() == ControlKind::Menu && UCase(c->Container()) == UCase(menuName));
        if (!item || !c->HasProperty("Caption") || !c->Visible()) continue;
        std::string caption = c->Caption();
        if (wanted.matches(caption) || wanted.matches(Replace(caption, "&", ""))) {
            if (!c->Enabled())
                host_.Fail(answer, "an enabled item " + wanted.shown(), "it disabled");
            return c.get();
        }
        offered += (offered.empty() ? "" : ", ") + shownText(caption);
    }
    host_.Fail(answer, "an item " + wanted.shown() + " in the popup menu " + menuName,
               offered.empty() ? "no items" : "the items " + offered);
    return nullptr;  // not reached: Fail unwinds
}

Pane& ScriptedUi::PaneFor(Form& form, const std::string& controlName) {
    auto& pane = panes_[{&form, UCase(controlName)}];
    if (!pane) pane = std::make_unique<HeadlessPane>();
    lastAsked_.erase(std::remove_if(lastAsked_.begin(), lastAsked_.end(),
                                    [&](const auto& e) { return e.second == pane.get(); }),
                     lastAsked_.end());
    lastAsked_.push_back({&form, pane.get()});
    return *pane;
}

std::string ScriptedUi::TakeDialogPrompts() {
    std::string taken;
    taken.swap(prompts_);
    return taken;
}

HeadlessPane* ScriptedUi::CurrentPane(const std::vector<Form*>& live) {
    for (auto it = lastAsked_.rbegin(); it != lastAsked_.rend(); ++it)
        if (among(live, it->first)) return it->second;
    return nullptr;
}

void ScriptedUi::KeepPanesOf(const std::vector<Form*>& live) {
    lastAsked_.erase(std::remove_if(lastAsked_.begin(), lastAsked_.end(),
                                    [&](const auto& e) { return !among(live, e.first); }),
                     lastAsked_.end());
    for (auto it = panes_.begin(); it != panes_.end();)
        it = among(live, it->first.first) ? std::next(it) : panes_.erase(it);
}

void ScriptedUi::ForgetPanes() {
    lastAsked_.clear();
    panes_.clear();
}
