#include "session/runner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>

#include "base/clock.h"
#include "base/convert.h"
#include "base/dates.h"
#include "base/strings.h"
#include "base/trap.h"
#include "base/vb_error.h"
#include "forms/runtime.h"
#include "forms/settings.h"
#include "forms/user_input.h"
#include "records/recordset.h"
#include "session/script.h"
#include "session/scripted_ui.h"
#include "store/catalogue_builder.h"
#include "store/scratch_folder.h"
#include "store/sqlite_file.h"

namespace fs = std::filesystem;

namespace {

// Passes of a wait for the user, with the script at its end, after which the program is
// taken to wait for ever.
constexpr long MaxIdlePasses = 100000;

bool sameName(std::string_view a, std::string_view b) {
    return UCase(a) == UCase(b);
}

std::string valueText(const Variant& v) {
    return v.IsNull() ? std::string("Null") : CStr(v);
}

std::string readWhole(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool isExecutable(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    char magic[4] = {};
    in.read(magic, 4);
    return in.gcount() == 4 && magic[0] == 0x7f && magic[1] == 'E' && magic[2] == 'L' &&
           magic[3] == 'F';
}

// What a key code types, as KeyPress sees it; 0 for a key that types nothing.
int keyAscii(int code, int shift) {
    if (code == 13) return 13;
    if (shift & 6) return 0;
    if (code == 32 || (code >= 48 && code <= 57)) return code;
    if (code >= 65 && code <= 90) return (shift & 1) ? code : code + 32;
    if (code >= 96 && code <= 105) return '0' + code - 96;
    switch (code) {
        case 106:
            return '*';
        case 107:
            return '+';
        case 109:
            return '-';
        case 110:
            return '.';
        case 111:
            return '/';
        case 186:
            return ';';
        case 187:
            return '=';
        case 188:
            return ',';
        case 189:
            return '-';
        case 190:
            return '.';
        case 191:
            return '/';
        case 192:
            return '`';
        case 219:
            return '[';
        case 220:
            return '\\';
        case 221:
            return ']';
        case 222:
            return '\'';
        default:
            return 0;
    }
}

// The buttons a message box of that style offers.
std::vector<int> buttonsOf(int style) {
    switch (style & 7) {
        case vb::vbOKCancel:
            return {vb::vbOK, vb::vbCancel};
        case vb::vbAbortRetryIgnore:
            return {vb::vbAbort, vb::vbRetry, vb::vbIgnore};
        case vb::vbYesNoCancel:
            return {vb::vbYes, vb::vbNo, vb::vbCancel};
        case vb::vbYesNo:
            return {vb::vbYes, vb::vbNo};
        case vb::vbRetryCancel:
            return {vb::vbRetry, vb::vbCancel};
        default:
            return {vb::vbOK};
    }
}

const char* buttonName(int button) {
    static const char* names[] = {"", "OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No"};
    return button >= 1 && button <= 7 ? names[button] : "?";
}

// "a message box", "an input box".
std::string aDialog(DialogKind kind) {
    std::string name = dialogName(kind);
    return (std::string("aeiou").find(name[0]) != std::string::npos ? "an " : "a ") + name;
}

std::string programFault(const VbError& e) {
    return "a fault no procedure trapped: error " + std::to_string(e.Number()) + " (" +
           e.Description() + ")";
}

class Session final : public ScriptedUi::Host {
  public:
    Session(std::string name, const ProgramHooks& hooks, const RunnerOptions& options)
        : name_(std::move(name)), hooks_(hooks), options_(options) {}
    ~Session() override { finish(); }

    ScriptResult run(const std::string& text) {
        try {
            script_ = parseScript(text);
        } catch (const ScriptSyntaxError& e) {
            return {false, name_, e.line, e.text, e.what()};
        }
        endLine_.line = script_.lastLine + 1;
        endLine_.text = "end of script";
        setClock(&clock_);
        // A statement naming a control, property or form the program lacks is our mistake.
        NamingFaultWatcher before = WatchNamingFaults([this](int number, const std::string& d) {
            const Command& line = pos_ > 0 ? script_.commands[pos_ - 1] : endLine_;
            Fail(line, "",
                 "a statement naming what the program does not have: error " +
                     std::to_string(number) + " (" + d + ")");
        });
        while (pos_ < script_.commands.size() && !failure_) {
            const Command& c = script_.commands[pos_++];
            try {
                topLevel(c);
            } catch (const ProgramEnded&) {
                // A failure unwinds the program this way; it is recorded.
            }
        }
        finish();
        WatchNamingFaults(std::move(before));
        if (failure_) return *failure_;
        ScriptResult ok;
        ok.passed = true;
        ok.file = name_;
        return ok;
    }

    // --- ScriptedUi::Host -------------------------------------------------------------

    void WaitPass() override {
        if (failure_) throw ProgramEnded{};
        const Command* c = nextAction();
        if (!c) {
            if (++idlePasses_ >= MaxIdlePasses)
                Fail(endLine_, "the program idle when the script ends",
                     "it waiting for the user (" + std::to_string(MaxIdlePasses) +
                         " passes with no user line)");
            return;
        }
        if (c->kind() == LineKind::Answer)
            Fail(*c, "an open dialog", "no dialog (the program waits for the user)");
        if (c->kind() != LineKind::User)
            Fail(*c, "a user line",
                 "the program waiting for the user (" + c->text + " comes only when it is idle)");
        ++pos_;
        idlePasses_ = 0;
        guarded(*c, [&] { perform(*c); });
    }

    const Command& TakeAnswer(DialogKind kind, const std::string& prompt, int buttons) override {
        if (failure_) throw ProgramEnded{};
        std::string open =
            std::string("the ") + dialogName(kind) + " " + shownText(prompt) + " open";
        const Command* c = nextAction();
        if (!c) Fail(endLine_, std::string("answer ") + answerWord(kind), open);
        if (c->kind() != LineKind::Answer)
            Fail(*c, std::string("answer ") + answerWord(kind), open);
        ++pos_;
        if (c->dialog != kind) Fail(*c, aDialog(c->dialog), open);
        if (kind == DialogKind::MsgBox || kind == DialogKind::InputBox) {
            Pattern wanted = ScriptPattern(c->pattern);
            if (!wanted.matches(prompt))
                Fail(*c, aDialog(kind) + " " + wanted.shown(),
                     std::string("the ") + dialogName(kind) + " " + shownText(prompt));
        }
        if (kind == DialogKind::MsgBox) {
            auto offered = buttonsOf(buttons);
            if (std::find(offered.begin(), offered.end(), c->n) == offered.end()) {
                std::string names;
                for (int b : offered)
                    names += (names.empty() ? "" : ", ") + std::string(buttonName(b));
                Fail(*c, "one of its buttons " + names, c->a);
            }
        }
        return *c;
    }

    std::string ScriptPath(const std::string& path) const override {
        std::string resolved = replaceApp(path, folder_);
        return !resolved.empty() && resolved[0] == '/' ? resolved : folder_ + resolved;
    }

    Pattern ScriptPattern(const Pattern& pattern) const override {
        return pattern.withApp(folder_);
    }

    [[noreturn]] void Fail(const Command& line, const std::string& expected,
                           const std::string& found) override {
        if (!failure_) {
            ScriptResult r;
            r.file = name_;
            r.line = line.line;
            r.text = line.text;
            r.message = expected.empty() ? found : "expected " + expected + ", found " + found;
            failure_ = r;
        }
        throw ProgramEnded{};
    }

  private:
    // --- The flow of lines ------------------------------------------------------------

    void topLevel(const Command& c) {
        switch (c.kind()) {
            case LineKind::Setup:
                if (c.op == Op::Start)
                    start(c);
                else
                    setup(c);
                break;
            case LineKind::User:
                if (!rt_) Fail(c, "", "the program has not started");
                if (ended_) Fail(c, "", "the program has ended");
                runProgram(c, [&] { perform(c); });
                break;
            case LineKind::Answer:
                Fail(c, "an open dialog", "no dialog");
                break;
            case LineKind::Check:
                check(c);
                break;
        }
    }

    // Reads on while the program is busy: checks are evaluated and the set-up lines that may
    // come at any time are carried out. The next line of another kind, or nullptr at the end.
    const Command* nextAction() {
        while (pos_ < script_.commands.size()) {
            const Command& c = script_.commands[pos_];
            if (c.kind() == LineKind::Check) {
                ++pos_;
                check(c);
            } else if (c.kind() == LineKind::Setup && c.op != Op::Start &&
                       c.op != Op::ProgramFolder) {
                ++pos_;
                setup(c);
            } else {
                return &c;
            }
        }
        return nullptr;
    }

    // Runs an action of the program's; a fault that escapes every procedure fails the line.
    template <class Action>
    void guarded(const Command& c, Action&& action) {
        try {
            action();
        } catch (const ProgramEnded&) {
            throw;
        } catch (const VbError& e) {
            Fail(c, "", programFault(e));
        } catch (const std::exception& e) {
            Fail(c, "", std::string("an exception no procedure caught: ") + e.what());
        }
    }

    // Runs the program from idle until it is idle again; its End is noted.
    template <class Action>
    void runProgram(const Command& c, Action&& action) {
        idlePasses_ = 0;
        try {
            guarded(c, action);
        } catch (const ProgramEnded&) {
            if (failure_) throw;
            ended_ = true;
        }
        if (!ended_) {
            // Idle: no procedure runs, so the forms unloaded meanwhile can go.
            ui_.KeepPanesOf(rt_->LoadedForms());
            rt_->CollectRetired();
        }
    }

    void start(const Command& c) {
        if (rt_ && !ended_) Fail(c, "", "the program is running already");
        ensureFolder(c);
        ui_.ForgetPanes();
        rt_.reset();
        Err().Clear();
        rt_ = std::make_unique<Runtime>(ui_, settings_, folder_, hooks_.title);
        ended_ = false;
        runProgram(c, [&] {
            if (hooks_.registerForms) hooks_.registerForms(*rt_);
            if (hooks_.subMain) hooks_.subMain();
        });
    }

    void finish() {
        if (finished_) return;
        finished_ = true;
        try {
            ui_.ForgetPanes();
            rt_.reset();
        } catch (...) {
        }
        setClock(nullptr);
        if (!folder_.empty()) {
            std::error_code ec;
            fs::remove_all(folder_, ec);
        }
    }

    // --- Set-up lines ------------------------------------------------------------------

    void ensureFolder(const Command& c) {
        if (folder_.empty()) makeFolder(c, "");
    }

    std::string cataloguePath() const { return folder_ + options_.catalogueName; }

    void makeFolder(const Command& c, const std::string& mode) {
        static int serial = 0;
        // The item view cuts picture paths at "-" and "S0", so the folder holds neither.
        fs::path base = scratchFolder();
        std::string b = base.string();
        if (b.find('-') != std::string::npos || b.find("S0") != std::string::npos) base = "/tmp";
        fs::path folder =
            base / ("catsession" + std::to_string(::getpid()) + "x" + std::to_string(serial++));
        try {
            fs::remove_all(folder);
            fs::create_directories(folder);
            folder_ = folder.string() + "/";
            const std::string skip = UCase(options_.catalogueName);
            if (!options_.programDir.empty() && fs::is_directory(options_.programDir)) {
                // Other tests run the program in this folder meanwhile: the catalogue's
                // journal files come and go, and a file gone before its copy is passed over.
                for (const auto& entry : fs::recursive_directory_iterator(options_.programDir)) {
                    const fs::path rel = entry.path().lexically_relative(options_.programDir);
                    if (UCase(rel.string()).rfind(skip, 0) == 0) continue;
                    std::error_code gone;
                    if (entry.is_directory(gone)) {
                        fs::create_directories(folder / rel);
                    } else if (entry.is_regular_file(gone) && !isExecutable(entry.path())) {
                        fs::create_directories((folder / rel).parent_path());
                        if (!fs::copy_file(entry.path(), folder / rel,
                                           fs::copy_options::overwrite_existing, gone) &&
                            fs::exists(entry.path()))
                            throw fs::filesystem_error("cannot copy", entry.path(), gone);
                    }
                }
            }
            if (mode != "no-catalogue") {
                std::vector<std::string> scripts;
                if (mode.empty()) scripts.push_back(options_.fixturesDir + "/sample.sql");
                copyCatalogue(options_.fixturesDir + "/empty.mde", cataloguePath(), folder_,
                              scripts);
            }
        } catch (const VbError& e) {
            Fail(c, "",
                 "the program folder could not be made: error " + std::to_string(e.Number()) +
                     " (" + e.Description() + ")");
        } catch (const std::exception& e) {
            Fail(c, "", std::string("the program folder could not be made: ") + e.what());
        }
    }

    void setup(const Command& c) {
        try {
            switch (c.op) {
                case Op::ProgramFolder:
                    if (!folder_.empty())
                        Fail(c, "",
                             "the program folder is made already (program-folder comes first)");
                    makeFolder(c, c.a);
                    break;
                case Op::Sql:
                    ensureFolder(c);
                    SqliteFile::open(cataloguePath())->execScript(replaceApp(c.a, folder_));
                    break;
                case Op::WriteFile:
                case Op::WriteBytes: {
                    ensureFolder(c);
                    fs::path path = ScriptPath(c.a);
                    fs::create_directories(path.parent_path());
                    std::ofstream out(path, std::ios::binary | std::ios::trunc);
                    if (c.op == Op::WriteFile)
                        out << replaceApp(c.b, folder_);
                    else
                        out << std::string(static_cast<std::size_t>(c.n), '\0');
                    if (!out) Fail(c, "", "the file could not be written");
                    break;
                }
                case Op::Delete:
                    ensureFolder(c);
                    fs::remove_all(ScriptPath(c.a));
                    break;
                case Op::Copy:
                    ensureFolder(c);
                    copyIn(c);
                    break;
                case Op::Today:
                    clock_.set(c.size);
                    break;
                case Op::Setting:
                    settings_.Write(hooks_.title, c.a, c.b, replaceApp(c.c, folder_));
                    break;
                default:
                    break;
            }
        } catch (const VbError& e) {
            Fail(c, "", "error " + std::to_string(e.Number()) + " (" + e.Description() + ")");
        } catch (const std::exception& e) {
            Fail(c, "", e.what());
        }
    }

    // A file or folder from beside the script into the program folder.
    void copyIn(const Command& c) {
        fs::path from = replaceApp(c.a, folder_);
        if (from.is_relative()) from = fs::absolute(fs::path(name_).parent_path()) / from;
        if (!fs::exists(from)) Fail(c, "a file or folder " + shownText(from.string()), "none");
        fs::path to = ScriptPath(c.b);
        if (to.has_parent_path()) fs::create_directories(to.parent_path());
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }

    // --- Forms and controls --------------------------------------------------------------

    Form& formOf(const Command& c, const std::string& name) {
        if (!rt_) Fail(c, "", "the program has not started");
        if (Form* f = rt_->Loaded(name)) return *f;
        if (!rt_->Registered(name)) Fail(c, "", "no form " + name);
        Fail(c, "form " + name + " loaded", "it unloaded");
    }

    Control& controlOf(const Command& c, const Ref& ref) {
        Form& form = formOf(c, ref.form);
        Control* control = form.Find(ref.control, ref.index);
        if (!control) Fail(c, "", "no control " + ref.controlShown());
        return *control;
    }

    // A control the user can reach: its own Enabled and Visible are True.
    Control& reachable(const Command& c, const Ref& ref) {
        Control& control = controlOf(c, ref);
        if (!control.Enabled()) Fail(c, ref.controlShown() + " enabled", "it disabled");
        if (!control.Visible()) Fail(c, ref.controlShown() + " visible", "it invisible");
        return control;
    }

    HeadlessPane& paneOf(const Command& c) {
        if (!rt_) Fail(c, "", "the program has not started");
        HeadlessPane* pane = ui_.CurrentPane(rt_->LoadedForms());
        if (!pane) Fail(c, "", "no pane");
        return *pane;
    }

    // --- User lines --------------------------------------------------------------------

    void perform(const Command& c) {
        switch (c.op) {
            case Op::Click:
                UserInput::MouseClick(reachable(c, c.ref));
                break;
            case Op::DblClick:
                UserInput::DblClick(reachable(c, c.ref));
                break;
            case Op::Type: {
                Control& x = reachable(c, c.ref);
                if (!x.HasProperty("Text")) Fail(c, "a text box", c.ref.controlShown());
                UserInput::Type(x, replaceApp(c.a, folder_));
                break;
            }
            case Op::Key:
                key(c);
                break;
            case Op::Focus:
                UserInput::Focus(controlOf(c, c.ref));
                break;
            case Op::Blur:
                UserInput::Blur(controlOf(c, c.ref));
                break;
            case Op::Select:
            case Op::SelectItem: {
                Control& x = reachable(c, c.ref);
                if (!x.HasProperty("ListIndex"))
                    Fail(c, "a list or combo box", c.ref.controlShown());
                if (c.n < 0 || c.n >= x.ListCount())
                    Fail(c, "an item from 0 to " + std::to_string(x.ListCount() - 1),
                         std::to_string(x.ListCount()) + " items");
                int i = static_cast<int>(c.n);
                if (c.op == Op::SelectItem)
                    UserInput::SelectItem(x, i, !c.cancel);
                else
                    UserInput::Select(x, i);
                break;
            }
            case Op::Slide: {
                Control& x = reachable(c, c.ref);
                if (x.Kind() != ControlKind::Slider) Fail(c, "a slider", c.ref.controlShown());
                double lo = x.Num("Min"), hi = x.Num("Max");
                if (c.n < lo || c.n > hi)
                    Fail(c,
                         "a value from " + CStr(Variant::Double(lo)) + " to " +
                             CStr(Variant::Double(hi)),
                         std::to_string(c.n));
                UserInput::Slide(x, static_cast<int>(c.n));
                break;
            }
            case Op::GridRow: {
                Control& grid = reachable(c, c.ref);
                Recordset* rs = grid.DataSource();
                if (!rs)
                    Fail(c, "a grid with a record set", c.ref.controlShown() + " showing none");
                long count = 0;
                try {
                    count = rs->RecordCount();
                } catch (const VbError&) {
                }
                if (c.n < 1 || c.n > count)
                    Fail(c, "a row from 1 to " + std::to_string(count), std::to_string(c.n));
                UserInput::GridRow(grid, static_cast<long>(c.n));
                break;
            }
            case Op::Drag: {
                // A script names no point: the source is let go over the middle of the target.
                Control& source = controlOf(c, c.ref);
                Control& target = controlOf(c, c.ref2);
                UserInput::Drag(source, target, static_cast<float>(target.Num("Width") / 2),
                                static_cast<float>(target.Num("Height") / 2));
                break;
            }
            case Op::MouseUp:
                UserInput::MouseUp(controlOf(c, c.ref), {static_cast<int>(c.n), 0, 0, 0}, false);
                break;
            case Op::Link: {
                HeadlessPane& pane = paneOf(c);
                std::string word = replaceApp(c.a, folder_);
                if (pane.DocumentText().find(word) == std::string::npos)
                    Fail(c, "a link " + shownText(word) + " in the page",
                         "the page " + shownText(pane.DocumentText()));
                pane.UserNavigate(HeadlessPane::resolveLink(word));
                break;
            }
            case Op::Navigate:
                paneOf(c).UserNavigate(replaceApp(c.a, folder_));
                break;
            case Op::Close:
                UserInput::CloseByFrame(formOf(c, c.ref.form));
                break;
            case Op::Activate:
                UserInput::Activate(formOf(c, c.ref.form));
                break;
            case Op::Minimize:
                UserInput::SetWindowState(formOf(c, c.ref.form), 1);
                break;
            case Op::Restore:
                UserInput::SetWindowState(formOf(c, c.ref.form), 0);
                break;
            default:
                break;
        }
    }

    void key(const Command& c) {
        const int code = static_cast<int>(c.n), shift = c.shift;
        Control* x = c.ref.control.empty() ? nullptr : &reachable(c, c.ref);
        Form& form = x ? x->Parent() : formOf(c, c.ref.form);
        UserInput::KeyDown(form, x, code, shift, keyAscii(code, shift));
        if (x) UserInput::KeyUp(*x, code, shift);
    }

    // --- Check lines -------------------------------------------------------------------

    std::string propertyText(const Command& c, const Ref& ref) {
        Form& form = formOf(c, ref.form);
        try {
            if (ref.control.empty()) {
                if (ref.memberIndex >= 0) Fail(c, "", "no property " + ref.shown);
                return valueText(form.Property(ref.member));
            }
            Control& control = controlOf(c, ref);
            if (sameName(ref.member, "List") && ref.memberIndex >= 0) {
                if (ref.memberIndex >= control.ListCount())
                    Fail(c, "an item below " + std::to_string(control.ListCount()), ref.shown);
                return control.List(ref.memberIndex);
            }
            if (sameName(ref.member, "Selected") && ref.memberIndex >= 0)
                return control.Selected(ref.memberIndex) ? "True" : "False";
            if (ref.memberIndex >= 0) Fail(c, "", "no property " + ref.shown);
            return valueText(control.Property(ref.member));
        } catch (const VbError&) {
            Fail(c, "", "no property " + ref.shown);
        }
    }

    std::string varText(const Command& c) {
        if (!rt_) Fail(c, "", "the program has not started");
        const std::string& name = c.a;
        auto dot = name.find('.');
        auto paren = name.find('(');
        try {
            if (dot != std::string::npos && (paren == std::string::npos || dot < paren)) {
                Form& form = formOf(c, name.substr(0, dot));
                std::string var = name.substr(dot + 1);
                if (!form.Vars().Has(var)) Fail(c, "", "no variable " + name);
                return valueText(form.Vars().Get(var));
            }
            if (!rt_->ModuleVars().Has(name)) Fail(c, "", "no variable " + name);
            return valueText(rt_->ModuleVars().Get(name));
        } catch (const VbError& e) {
            Fail(c, "", "no variable " + name + " (error " + std::to_string(e.Number()) + ")");
        }
    }

    std::string sqlText(const Command& c) {
        std::string out;
        try {
            out = SqliteFile::open(cataloguePath())->firstColumnJoined(replaceApp(c.a, folder_));
        } catch (const VbError& e) {
            Fail(c, "",
                 "the query failed: error " + std::to_string(e.Number()) + " (" + e.Description() +
                     ")");
        }
        return out;
    }

    void check(const Command& c) {
        bool holds = false;
        std::string expected, found;
        auto match = [&](const std::string& text) {
            Pattern wanted = ScriptPattern(c.pattern);
            holds = wanted.matches(text);
            expected = wanted.shown();
            found = shownText(text);
        };
        switch (c.check) {
            case CheckKind::Property:
                match(propertyText(c, c.ref));
                break;
            case CheckKind::Var:
                match(varText(c));
                break;
            case CheckKind::Pane:
            case CheckKind::PaneUrl: {
                HeadlessPane& pane = paneOf(c);
                match(c.check == CheckKind::Pane ? pane.DocumentText() : pane.LocationURL());
                break;
            }
            case CheckKind::File:
            case CheckKind::NoFile: {
                std::string path = ScriptPath(c.a);
                bool exists = !folder_.empty() && fs::exists(path);
                if (c.check == CheckKind::NoFile) {
                    holds = !exists;
                    expected = "no file " + shownText(c.a);
                    found = "the file " + shownText(path);
                } else if (!exists) {
                    expected = "a file " + shownText(c.a);
                    found = "no file " + shownText(path);
                } else {
                    match(readWhole(path));
                }
                break;
            }
            case CheckKind::Sql:
                match(sqlText(c));
                break;
            case CheckKind::Setting:
            case CheckKind::NoSetting: {
                auto value = settings_.Read(hooks_.title, c.a, c.b);
                if (c.check == CheckKind::NoSetting) {
                    holds = !value;
                    expected = "no setting " + shownText(c.a) + " " + shownText(c.b);
                    found = "the setting " + shownText(value.value_or(""));
                } else if (!value) {
                    expected = "a setting " + shownText(c.a) + " " + shownText(c.b);
                    found = "none";
                } else {
                    match(*value);
                }
                break;
            }
            case CheckKind::Dialogs:
                match(ui_.TakeDialogPrompts());
                break;
            case CheckKind::Form: {
                Form* form = rt_ ? rt_->Loaded(c.ref.form) : nullptr;
                if (rt_ && !form && !rt_->Registered(c.ref.form))
                    Fail(c, "", "no form " + c.ref.form);
                bool visible = form && form->Visible();
                if (c.a == "loaded")
                    holds = form != nullptr;
                else if (c.a == "unloaded")
                    holds = form == nullptr;
                else if (c.a == "visible")
                    holds = visible;
                else
                    holds = !visible;
                expected = "form " + c.ref.form + " " + c.a;
                found = !form     ? "it unloaded"
                        : visible ? "it loaded and visible"
                                  : "it loaded and hidden";
                break;
            }
            case CheckKind::MousePointer: {
                int pointer = rt_ ? rt_->MousePointer() : 0;
                holds = pointer == c.n;
                expected = "mouse pointer " + std::to_string(c.n);
                found = std::to_string(pointer);
                break;
            }
            case CheckKind::Ended:
                holds = ended_;
                expected = "the program ended";
                found = ended_ ? "it ended" : rt_ ? "it running" : "it not started";
                break;
        }
        if (c.negate) {
            holds = !holds;
            expected = "not " + expected;
        }
        if (!holds) Fail(c, expected, found);
    }

    std::string name_;
    const ProgramHooks& hooks_;
    const RunnerOptions& options_;
    Script script_;
    std::size_t pos_ = 0;
    Command endLine_;
    std::string folder_;
    MemorySettings settings_;
    FixedClock clock_{DateSerial(2004, 3, 7) + 0.5};
    ScriptedUi ui_{*this};
    std::unique_ptr<Runtime> rt_;
    bool ended_ = false;
    bool finished_ = false;
    long idlePasses_ = 0;
    std::optional<ScriptResult> failure_;
};

}  // namespace

std::string ScriptResult::report() const {
    if (passed) return "ok " + file;
    std::string message = "FAIL " + file + ":" + std::to_string(line) + ": ";
    if (!text.empty()) message += text + ": ";
    return message + this->message;
}

ScriptResult runScriptText(const std::string& name, const std::string& text,
                           const ProgramHooks& hooks, const RunnerOptions& options) {
    Session session(name, hooks, options);
    return session.run(text);
}

ScriptResult runScriptFile(const std::string& file, const ProgramHooks& hooks,
                           const RunnerOptions& options) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        ScriptResult r;
        r.file = file;
        r.message = "cannot read the file";
        return r;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return runScriptText(file, text.str(), hooks, options);
}

namespace {

struct Outcome {
    bool passed = false;
    std::string line;  // the report line
};

Outcome inProcess(const std::string& file, const ProgramHooks& hooks,
                  const RunnerOptions& options) {
    ScriptResult r = runScriptFile(file, hooks, options);
    return {r.passed, r.report()};
}

// Runs one file in a child process, so that nothing of one script outlives it, not even a
// crash.
Outcome isolated(const std::string& file, const ProgramHooks& hooks, const RunnerOptions& options) {
    int fds[2];
    if (::pipe(fds) != 0) return inProcess(file, hooks, options);
    std::fflush(nullptr);
    pid_t child = ::fork();
    if (child < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return inProcess(file, hooks, options);
    }
    if (child == 0) {
        ::close(fds[0]);
        ScriptResult r = runScriptFile(file, hooks, options);
        std::string report = (r.passed ? "1" : "0") + r.report();
        std::size_t done = 0;
        while (done < report.size()) {
            ssize_t n = ::write(fds[1], report.data() + done, report.size() - done);
            if (n <= 0) break;
            done += static_cast<std::size_t>(n);
        }
        ::close(fds[1]);
        std::fflush(nullptr);
        ::_exit(r.passed ? 0 : 1);
    }
    ::close(fds[1]);
    std::string report;
    char buffer[4096];
    for (;;) {
        ssize_t n = ::read(fds[0], buffer, sizeof buffer);
        if (n <= 0) break;
        report.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fds[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (report.size() > 1 && (report[0] == '1' || report[0] == '0'))
        return {report[0] == '1', report.substr(1)};
    return {false,
            "FAIL " + file + ":0: " +
                (WIFSIGNALED(status) ? "the run died of signal " + std::to_string(WTERMSIG(status))
                                     : std::string("the run ended without a report"))};
}

}  // namespace

int runScriptFiles(const std::vector<std::string>& files, const ProgramHooks& hooks,
                   const RunnerOptions& options, std::ostream& out, bool isolate) {
    int passed = 0, failed = 0;
    for (const auto& file : files) {
        Outcome outcome =
            isolate ? isolated(file, hooks, options) : inProcess(file, hooks, options);
        out << outcome.line << std::endl;
        (outcome.passed ? passed : failed)++;
    }
    out << passed << " passed, " << failed << " failed" << std::endl;
    return failed == 0 ? 0 : 1;
}
