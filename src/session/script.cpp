#include "session/script.h"

#include <cctype>
#include <cstdio>

#include "base/dates.h"

namespace {

[[noreturn]] void bad(const std::string& message) {
    throw ScriptSyntaxError(message);
}

bool isNameChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// "Name" or "Name(12)".
void splitIndexed(const std::string& part, std::string& name, int& index, const std::string& word) {
    auto open = part.find('(');
    name = part.substr(0, open);
    index = -1;
    if (name.empty()) bad("no name in " + word);
    for (char c : name)
        if (!isNameChar(c)) bad("bad name " + name + " in " + word);
    if (open == std::string::npos) return;
    if (part.back() != ')' || part.size() < open + 3) bad("bad index in " + word);
    std::string digits = part.substr(open + 1, part.size() - open - 2);
    for (char c : digits)
        if (!std::isdigit(static_cast<unsigned char>(c))) bad("bad index in " + word);
    index = std::stoi(digits);
}

class LineReader {
  public:
    LineReader(std::vector<Word> words) : words_(std::move(words)) {}

    std::size_t size() const { return words_.size(); }
    bool has(std::size_t i) const { return i < words_.size(); }
    bool isWord(std::size_t i, const char* w) const {
        return has(i) && !words_[i].quoted && words_[i].text == w;
    }
    const std::string& bare(std::size_t i, const char* what) const {
        if (!has(i) || words_[i].quoted) bad("expected " + std::string(what));
        return words_[i].text;
    }
    std::string text(std::size_t i, const char* what) const {
        if (!has(i) || !words_[i].quoted) bad("expected " + std::string(what) + " in quotes");
        return decodeText(words_[i].text);
    }
    Pattern pattern(std::size_t i) const {
        if (!has(i)) bad("expected a pattern");
        if (words_[i].quoted) return Pattern::fromQuoted(words_[i].text);
        const std::string& w = words_[i].text;
        if (w.size() > 2 && (w[0] == '&') && (w[1] == 'H' || w[1] == 'h'))
            return Pattern::exact(std::to_string(parseNumber(w)));
        return Pattern::exact(w);
    }
    long number(std::size_t i, const char* what) const { return parseNumber(bare(i, what)); }
    void end(std::size_t count) const {
        if (words_.size() > count) bad("unexpected " + words_[count].text);
    }

  private:
    std::vector<Word> words_;
};

Op userOp(const std::string& verb, bool& known) {
    known = true;
    if (verb == "click") return Op::Click;
    if (verb == "dblclick") return Op::DblClick;
    if (verb == "type") return Op::Type;
    if (verb == "key") return Op::Key;
    if (verb == "focus") return Op::Focus;
    if (verb == "blur") return Op::Blur;
    if (verb == "select") return Op::Select;
    if (verb == "slide") return Op::Slide;
    if (verb == "grid-row") return Op::GridRow;
    if (verb == "drag") return Op::Drag;
    if (verb == "mouseup") return Op::MouseUp;
    if (verb == "link") return Op::Link;
    if (verb == "navigate") return Op::Navigate;
    if (verb == "close") return Op::Close;
    if (verb == "activate") return Op::Activate;
    if (verb == "minimize") return Op::Minimize;
    if (verb == "restore") return Op::Restore;
    known = false;
    return Op::Click;
}

void parseAnswer(const LineReader& r, Command& c) {
    c.op = Op::Answer;
    const std::string& kind = r.bare(1, "a dialog kind");
    bool cancelled = r.isWord(2, "cancel");
    if (kind == "msgbox") {
        c.dialog = DialogKind::MsgBox;
        c.pattern = r.pattern(2);
        const std::string& b = r.bare(3, "a button");
        static const std::pair<const char*, int> buttons[] = {
            {"OK", 1},     {"Cancel", 2}, {"Abort", 3}, {"Retry", 4},
            {"Ignore", 5}, {"Yes", 6},    {"No", 7}};
        c.n = 0;
        for (const auto& [name, value] : buttons)
            if (b == name) c.n = value;
        if (c.n == 0) bad("no button " + b + " (OK, Cancel, Yes, No, Retry, Abort or Ignore)");
        c.a = b;
        r.end(4);
    } else if (kind == "inputbox") {
        c.dialog = DialogKind::InputBox;
        c.pattern = r.pattern(2);
        if (r.isWord(3, "cancel"))
            c.cancel = true;
        else
            c.a = r.text(3, "the answer");
        r.end(4);
    } else if (kind == "open" || kind == "save") {
        c.dialog = kind == "open" ? DialogKind::Open : DialogKind::Save;
        if (cancelled) {
            c.cancel = true;
            r.end(3);
            return;
        }
        c.a = r.text(2, "a path");
        if (r.has(3)) {
            if (!r.isWord(3, "filter")) bad("expected filter N");
            c.hasFilter = true;
            c.n = r.number(4, "a filter index");
            r.end(5);
        }
    } else if (kind == "font") {
        c.dialog = DialogKind::Font;
        if (cancelled) {
            c.cancel = true;
            r.end(3);
            return;
        }
        c.a = r.text(2, "a font face");
        const std::string& size = r.bare(3, "a font size");
        try {
            std::size_t used = 0;
            c.size = std::stod(size, &used);
            if (used != size.size()) bad("bad font size " + size);
        } catch (const std::logic_error&) {
            bad("bad font size " + size);
        }
        std::size_t i = 4;
        for (; r.has(i); ++i) {
            const std::string& w = r.bare(i, "a font style or color N");
            if (w == "bold")
                c.fontStyle |= 1;
            else if (w == "italic")
                c.fontStyle |= 2;
            else if (w == "underline")
                c.fontStyle |= 4;
            else if (w == "strikethru")
                c.fontStyle |= 8;
            else if (w == "color") {
                c.n = r.number(i + 1, "a colour");
                r.end(i + 2);
                break;
            } else
                bad("unexpected " + w);
        }
    } else if (kind == "color") {
        c.dialog = DialogKind::Color;
        if (cancelled)
            c.cancel = true;
        else
            c.n = r.number(2, "a colour");
        r.end(3);
    } else if (kind == "popup") {
        c.dialog = DialogKind::Popup;
        if (r.isWord(2, "dismiss"))
            c.cancel = true;
        else
            c.pattern = r.pattern(2);
        r.end(3);
    } else {
        bad("no dialog kind " + kind);
    }
}

void parseCheck(const LineReader& r, Command& c) {
    c.op = Op::Check;
    std::size_t i = 1;
    if (r.isWord(1, "not")) {
        c.negate = true;
        i = 2;
    }
    const std::string& what = r.bare(i, "what to check");
    if (what == "ended") {
        c.check = CheckKind::Ended;
        r.end(i + 1);
    } else if (what == "mousepointer") {
        c.check = CheckKind::MousePointer;
        c.n = r.number(i + 1, "a mouse pointer");
        r.end(i + 2);
    } else if (what == "form") {
        c.check = CheckKind::Form;
        c.ref = parseRef(r.bare(i + 1, "a form"), RefUse::Form);
        c.a = r.bare(i + 2, "loaded, unloaded, visible or hidden");
        if (c.a != "loaded" && c.a != "unloaded" && c.a != "visible" && c.a != "hidden")
            bad("expected loaded, unloaded, visible or hidden");
        r.end(i + 3);
    } else if (what == "dialogs" || what == "pane" || what == "pane-url") {
        c.check = what == "dialogs" ? CheckKind::Dialogs
                  : what == "pane"  ? CheckKind::Pane
                                    : CheckKind::PaneUrl;
        c.pattern = r.pattern(i + 1);
        r.end(i + 2);
    } else if (what == "setting" || what == "no-setting") {
        c.check = what == "setting" ? CheckKind::Setting : CheckKind::NoSetting;
        c.a = r.text(i + 1, "a section");
        c.b = r.text(i + 2, "a key");
        if (c.check == CheckKind::Setting) {
            c.pattern = r.pattern(i + 3);
            r.end(i + 4);
        } else {
            r.end(i + 3);
        }
    } else if (what == "sql") {
        c.check = CheckKind::Sql;
        c.a = r.text(i + 1, "a query");
        c.pattern = r.pattern(i + 2);
        r.end(i + 3);
    } else if (what == "file" || what == "no-file") {
        c.check = what == "file" ? CheckKind::File : CheckKind::NoFile;
        c.a = r.text(i + 1, "a path");
        if (c.check == CheckKind::File) {
            c.pattern = r.pattern(i + 2);
            r.end(i + 3);
        } else {
            r.end(i + 2);
        }
    } else if (what == "var") {
        c.check = CheckKind::Var;
        c.a = r.bare(i + 1, "a variable");
        c.pattern = r.pattern(i + 2);
        r.end(i + 3);
    } else if (what.find('.') != std::string::npos) {
        c.check = CheckKind::Property;
        c.ref = parseRef(what, RefUse::Property);
        c.pattern = r.pattern(i + 1);
        r.end(i + 2);
    } else {
        bad("no check " + what);
    }
}

}  // namespace

char unescape(char c) {
    switch (c) {
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return c;
    }
}

std::vector<Word> splitWords(std::string_view line) {
    std::vector<Word> words;
    std::size_t i = 0;
    while (i < line.size()) {
        char c = line[i];
        if (c == ' ' || c == '\t') {
            ++i;
            continue;
        }
        Word w;
        if (c == '"') {
            w.quoted = true;
            ++i;
            bool closed = false;
            while (i < line.size()) {
                if (line[i] == '\\' && i + 1 < line.size()) {
                    w.text += line[i];
                    w.text += line[i + 1];
                    i += 2;
                } else if (line[i] == '"') {
                    closed = true;
                    ++i;
                    break;
                } else {
                    w.text += line[i++];
                }
            }
            if (!closed) bad("unclosed string");
            if (i < line.size() && line[i] != ' ' && line[i] != '\t')
                bad("no blank after a string");
        } else {
            while (i < line.size() && line[i] != ' ' && line[i] != '\t')
                w.text += line[i++];
        }
        words.push_back(std::move(w));
    }
    return words;
}

std::string decodeText(std::string_view raw) {
    std::string out;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '\\' && i + 1 < raw.size())
            out += unescape(raw[++i]);
        else
            out += raw[i];
    }
    return out;
}

std::string replaceApp(std::string_view text, const std::string& folder) {
    std::string out;
    std::size_t at = 0;
    for (;;) {
        std::size_t found = text.find("$APP", at);
        if (found == std::string_view::npos) break;
        out.append(text.substr(at, found - at));
        out += folder;
        at = found + 4;
    }
    out.append(text.substr(at));
    return out;
}

long parseNumber(const std::string& word) {
    try {
        std::size_t used = 0;
        long value;
        if (word.size() > 2 && word[0] == '&' && (word[1] == 'H' || word[1] == 'h')) {
            value = std::stol(word.substr(2), &used, 16);
            used += 2;
        } else {
            value = std::stol(word, &used, 10);
        }
        if (used == word.size()) return value;
    } catch (const std::logic_error&) {
    }
    bad("expected a number, found " + word);
}

std::string Ref::controlShown() const {
    std::string s = form + "." + control;
    if (index >= 0) s += "(" + std::to_string(index) + ")";
    return s;
}

Ref parseRef(const std::string& word, RefUse use) {
    std::vector<std::string> parts;
    std::size_t at = 0;
    for (;;) {
        std::size_t dot = word.find('.', at);
        parts.push_back(word.substr(at, dot == std::string::npos ? std::string::npos : dot - at));
        if (dot == std::string::npos) break;
        at = dot + 1;
    }
    Ref ref;
    ref.shown = word;
    int formIndex = -1;
    splitIndexed(parts[0], ref.form, formIndex, word);
    if (formIndex >= 0) bad("a form has no index: " + word);
    std::size_t count = parts.size();
    bool fits = (use == RefUse::Form && count == 1) || (use == RefUse::Control && count == 2) ||
                (use == RefUse::FormOrControl && (count == 1 || count == 2)) ||
                (use == RefUse::Property && (count == 2 || count == 3));
    if (!fits) {
        const char* wanted = use == RefUse::Form      ? "a form"
                             : use == RefUse::Control ? "Form.Control"
                             : use == RefUse::FormOrControl
                                 ? "a form or Form.Control"
                                 : "Form.Property or Form.Control.Property";
        bad("expected " + std::string(wanted) + ", found " + word);
    }
    if (use == RefUse::Property && count == 2) {
        splitIndexed(parts[1], ref.member, ref.memberIndex, word);
        return ref;
    }
    if (count >= 2) splitIndexed(parts[1], ref.control, ref.index, word);
    if (count == 3) splitIndexed(parts[2], ref.member, ref.memberIndex, word);
    return ref;
}

const char* dialogName(DialogKind kind) {
    switch (kind) {
        case DialogKind::MsgBox:
            return "message box";
        case DialogKind::InputBox:
            return "input box";
        case DialogKind::Open:
            return "open-file dialog";
        case DialogKind::Save:
            return "save dialog";
        case DialogKind::Font:
            return "font dialog";
        case DialogKind::Color:
            return "colour dialog";
        case DialogKind::Popup:
            return "popup menu";
    }
    return "dialog";
}

const char* answerWord(DialogKind kind) {
    switch (kind) {
        case DialogKind::MsgBox:
            return "msgbox";
        case DialogKind::InputBox:
            return "inputbox";
        case DialogKind::Open:
            return "open";
        case DialogKind::Save:
            return "save";
        case DialogKind::Font:
            return "font";
        case DialogKind::Color:
            return "color";
        case DialogKind::Popup:
            return "popup";
    }
    return "";
}

LineKind Command::kind() const {
    switch (op) {
        case Op::ProgramFolder:
        case Op::Sql:
        case Op::WriteFile:
        case Op::WriteBytes:
        case Op::Delete:
        case Op::Copy:
        case Op::Today:
        case Op::Setting:
        case Op::Start:
            return LineKind::Setup;
        case Op::Answer:
            return LineKind::Answer;
        case Op::Check:
            return LineKind::Check;
        default:
            return LineKind::User;
    }
}

Command parseLine(std::string_view line, int number) {
    Command c;
    c.line = number;
    c.text = std::string(line);
    LineReader r(splitWords(line));
    const std::string& verb = r.bare(0, "a command");
    bool user = false;
    Op op = userOp(verb, user);
    if (verb == "program-folder") {
        c.op = Op::ProgramFolder;
        if (r.has(1)) {
            c.a = r.bare(1, "empty-catalogue or no-catalogue");
            if (c.a != "empty-catalogue" && c.a != "no-catalogue")
                bad("expected empty-catalogue or no-catalogue, found " + c.a);
        }
        r.end(2);
    } else if (verb == "sql") {
        c.op = Op::Sql;
        c.a = r.text(1, "SQL");
        r.end(2);
    } else if (verb == "file") {
        c.a = r.text(1, "a path");
        if (r.isWord(2, "bytes")) {
            c.op = Op::WriteBytes;
            c.n = r.number(3, "a byte count");
            if (c.n < 0) bad("a negative byte count");
            r.end(4);
        } else {
            c.op = Op::WriteFile;
            c.b = r.text(2, "the content");
            r.end(3);
        }
    } else if (verb == "delete") {
        c.op = Op::Delete;
        c.a = r.text(1, "a path");
        r.end(2);
    } else if (verb == "copy") {
        c.op = Op::Copy;
        c.a = r.text(1, "the path to copy from");
        c.b = r.text(2, "the path to copy to");
        r.end(3);
    } else if (verb == "today") {
        c.op = Op::Today;
        const std::string& d = r.bare(1, "a date YYYY-MM-DD");
        int y = 0, m = 0, day = 0;
        char tail = 0;
        if (d.size() != 10 || std::sscanf(d.c_str(), "%4d-%2d-%2d%c", &y, &m, &day, &tail) != 3 ||
            m < 1 || m > 12 || day < 1 || day > 31)
            bad("expected a date YYYY-MM-DD, found " + d);
        c.size = DateSerial(y, m, day) + 0.5;
        c.a = d;
        r.end(2);
    } else if (verb == "setting") {
        c.op = Op::Setting;
        c.a = r.text(1, "a section");
        c.b = r.text(2, "a key");
        c.c = r.text(3, "a value");
        r.end(4);
    } else if (verb == "start") {
        c.op = Op::Start;
        r.end(1);
    } else if (verb == "answer") {
        parseAnswer(r, c);
    } else if (verb == "expect") {
        parseCheck(r, c);
    } else if (user) {
        c.op = op;
        switch (op) {
            case Op::Click:
            case Op::DblClick:
            case Op::Focus:
            case Op::Blur:
                c.ref = parseRef(r.bare(1, "a control"), RefUse::Control);
                r.end(2);
                break;
            case Op::Type:
                c.ref = parseRef(r.bare(1, "a control"), RefUse::Control);
                c.a = r.text(2, "the text");
                r.end(3);
                break;
            case Op::Key:
                c.ref = parseRef(r.bare(1, "a control or a form"), RefUse::FormOrControl);
                c.n = r.number(2, "a key code");
                for (std::size_t i = 3; r.has(i); ++i) {
                    const std::string& m = r.bare(i, "shift, ctrl or alt");
                    if (m == "shift")
                        c.shift |= 1;
                    else if (m == "ctrl")
                        c.shift |= 2;
                    else if (m == "alt")
                        c.shift |= 4;
                    else
                        bad("expected shift, ctrl or alt, found " + m);
                }
                break;
            case Op::Select:
                c.ref = parseRef(r.bare(1, "a control"), RefUse::Control);
                c.n = r.number(2, "an index");
                if (r.has(3)) {
                    const std::string& w = r.bare(3, "on or off");
                    if (w != "on" && w != "off") bad("expected on or off, found " + w);
                    c.op = Op::SelectItem;
                    c.cancel = w == "off";
                }
                r.end(4);
                break;
            case Op::Slide:
            case Op::GridRow:
                c.ref = parseRef(r.bare(1, "a control"), RefUse::Control);
                c.n = r.number(2, "a number");
                r.end(3);
                break;
            case Op::Drag:
                c.ref = parseRef(r.bare(1, "a control"), RefUse::Control);
                c.ref2 = parseRef(r.bare(2, "a control"), RefUse::Control);
                r.end(3);
                break;
            case Op::MouseUp: {
                c.ref = parseRef(r.bare(1, "a control"), RefUse::Control);
                const std::string& b = r.bare(2, "left or right");
                if (b != "left" && b != "right") bad("expected left or right, found " + b);
                c.n = b == "left" ? 1 : 2;
                r.end(3);
                break;
            }
            case Op::Link:
            case Op::Navigate:
                c.a = r.text(1, op == Op::Link ? "a link word" : "an address");
                r.end(2);
                break;
            default:  // close, activate, minimize, restore
                c.ref = parseRef(r.bare(1, "a form"), RefUse::Form);
                r.end(2);
                break;
        }
    } else {
        bad("no command " + verb);
    }
    return c;
}

Script parseScript(std::string_view text) {
    Script script;
    int number = 0;
    std::size_t at = 0;
    while (at <= text.size()) {
        std::size_t nl = text.find('\n', at);
        std::string_view line =
            text.substr(at, nl == std::string_view::npos ? std::string_view::npos : nl - at);
        at = nl == std::string_view::npos ? text.size() + 1 : nl + 1;
        ++number;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string_view::npos) continue;
        line.remove_prefix(first);
        while (!line.empty() && (line.back() == ' ' || line.back() == '\t'))
            line.remove_suffix(1);
        if (line[0] == '#') continue;
        try {
            script.commands.push_back(parseLine(line, number));
        } catch (const ScriptSyntaxError& e) {
            ScriptSyntaxError located(e.what());
            located.line = number;
            located.text = std::string(line);
            throw located;
        }
    }
    if (!text.empty() && text.back() == '\n') --number;
    script.lastLine = number;
    return script;
}
