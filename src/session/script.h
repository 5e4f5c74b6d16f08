#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "session/pattern.h"

// The lines of a session script, read into commands before the run.

// A word of a line: a bare word, or the inside of a double-quoted string with its escapes
// not yet read (a pattern reads `\*` differently from a text).
struct Word {
    std::string text;
    bool quoted = false;
};

// A line that is no command of the format.
struct ScriptSyntaxError : std::runtime_error {
    using std::runtime_error::runtime_error;
    int line = 0;      // set by parseScript
    std::string text;  // the line
};

// Splits a line into words; throws ScriptSyntaxError on an unclosed string.
std::vector<Word> splitWords(std::string_view line);
// The character an escape stands for: n, r, t as line feed, carriage return and tab, any
// other character as itself.
char unescape(char c);
// A quoted string's text with its escapes read.
std::string decodeText(std::string_view raw);
// Every "$APP" replaced by the program folder.
std::string replaceApp(std::string_view text, const std::string& folder);
// A decimal number, or a hex literal "&HFF"; throws ScriptSyntaxError otherwise.
long parseNumber(const std::string& word);

// `Form`, `Form.Control`, `Form.Control(3)`, `Form.Control.Property`,
// `Form.Control(3).List(2)`, `Form.Property`.
struct Ref {
    std::string form;
    std::string control;  // empty: the form itself
    int index = -1;
    std::string member;  // a property, or "" for a control alone
    int memberIndex = -1;
    std::string shown;  // as written
    std::string controlShown() const;
};
// What a reference may name: a form, a control, either, or a property (of a control, or
// the form's own when it has two names).
enum class RefUse { Form, Control, FormOrControl, Property };
// Throws ScriptSyntaxError when the word is no such reference.
Ref parseRef(const std::string& word, RefUse use);

enum class LineKind { Setup, User, Answer, Check };

enum class Op {
    ProgramFolder,
    Sql,
    WriteFile,
    WriteBytes,
    Delete,
    Copy,
    Today,
    Setting,
    Start,
    Click,
    DblClick,
    Type,
    Key,
    Focus,
    Blur,
    Select,
    SelectItem,
    Slide,
    GridRow,
    Drag,
    MouseUp,
    Link,
    Navigate,
    Close,
    Activate,
    Minimize,
    Restore,
    Answer,
    Check,
};

enum class DialogKind { MsgBox, InputBox, Open, Save, Font, Color, Popup };
const char* dialogName(DialogKind kind);  // "message box" ...
const char* answerWord(DialogKind kind);  // "msgbox" ...

enum class CheckKind {
    Property,
    Var,
    Pane,
    PaneUrl,
    File,
    NoFile,
    Sql,
    Setting,
    NoSetting,
    Dialogs,
    Form,
    MousePointer,
    Ended,
};

struct Command {
    int line = 0;
    std::string text;  // the line as written, without its leading blanks
    Op op = Op::Check;
    Ref ref, ref2;
    std::string a, b, c;  // texts, escapes read, "$APP" not yet replaced
    Pattern pattern;
    long n = 0;
    double size = 0;
    int shift = 0;
    bool cancel = false;  // an answer that cancels; `select ... off`
    bool negate = false;  // `expect not`
    bool hasFilter = false;
    int fontStyle = 0;  // 1 bold, 2 italic, 4 underline, 8 strikethru
    DialogKind dialog = DialogKind::MsgBox;
    CheckKind check = CheckKind::Property;

    LineKind kind() const;
};

// A whole script: its commands and the number of its last line.
struct Script {
    std::vector<Command> commands;
    int lastLine = 0;
};

// Reads a script; the first line that is no command throws ScriptSyntaxError.
Script parseScript(std::string_view text);
Command parseLine(std::string_view line, int number);
