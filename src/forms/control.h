#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/fold.h"
#include "base/variant.h"

class Binding;
class Form;
class Control;

enum class ControlKind {
    Label,
    TextBox,
    CheckBox,
    OptionButton,
    CommandButton,
    Frame,
    ListBox,
    ComboBox,
    Slider,
    DataGrid,
    DriveList,
    DirList,
    FileList,
    Menu,
    Browser,
    Image,
    DataControl,
};

// What an event hands its procedure.
struct EventArgs {
    int Index = -1;    // the control's index in its array, -1 for a single control
    int KeyCode = 0;   // KeyDown, KeyUp
    int KeyAscii = 0;  // KeyPress
    int Shift = 0;     // 1 shift, 2 ctrl, 4 alt
    int Button = 0;    // 1 left, 2 right
    float X = 0, Y = 0;
    Control* Source = nullptr;  // DragDrop
    int Cancel = 0;
};

// Case-insensitive ordering for property names.
struct NoCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

// A control model: the classic properties, readable and writable by name. A write
// notifies the form's observers (the desktop host) and fires the event that the same write
// fires in the classic toolkit: Text -> Change, ListIndex -> Click, a check box's or an
// option button's Value -> Click.
class Control {
  public:
    Control(Form& form, std::string name, ControlKind kind, int index);
    // It keeps pointers into its own properties.
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Form& Parent() const { return form_; }
    const std::string& Name() const { return name_; }
    int Index() const { return index_; }
    ControlKind Kind() const { return kind_; }
    // "txtFields(27)" or "cmdNext".
    std::string Path() const;

    bool HasProperty(std::string_view name) const;
    // 438 for a property the control does not have.
    Variant Property(std::string_view name) const;
    void SetProperty(std::string_view name, Variant value);

    // The common properties, typed.
    std::string Caption() const;
    void SetCaption(std::string s) { setCommon(CaptionProp, "Caption", Variant(std::move(s))); }
    std::string Text() const;
    void SetText(std::string s) { setCommon(TextProp, "Text", Variant(std::move(s))); }
    // The same write for a text given in place, as a bound box shows its row's values:
    // the box's own text is compared and overwritten where it stands.
    void ShowText(std::string_view s);
    Variant Value() const { return Property("Value"); }
    void SetValue(const Variant& v) { setCommon(ValueProp, "Value", v); }
    bool Visible() const;
    void SetVisible(bool b) { setCommon(VisibleProp, "Visible", Variant(b)); }
    bool Enabled() const;
    void SetEnabled(bool b) { setCommon(EnabledProp, "Enabled", Variant(b)); }
    double Num(std::string_view name) const;  // Left, Top, Width, Height, Max ...
    void SetNum(std::string_view name, double v) { SetProperty(name, Variant::Double(v)); }

    // List and combo boxes; the drive, folder and file lists read the disk (forms/file_lists.h).
    int ListCount() const { return static_cast<int>(items_.size()); }
    std::string List(int i) const;  // "" out of range
    void SetList(int i, const std::string& text);
    void AddItem(const std::string& text, int at = -1);
    void RemoveItem(int i);
    void Clear();
    bool Selected(int i) const;
    void SetSelected(int i, bool on);
    int ListIndex() const;
    void SetListIndex(int i);
    // A file list reads its folder again: the files of Path that fit Pattern. A change of
    // Path or Pattern does the same; choosing a row sets FileName.
    void Refresh();

    // Runs this control's procedure for an event, if the form has one.
    void Raise(std::string_view event);
    void Raise(std::string_view event, EventArgs& args);

    // The record set a data grid shows; its current row is the grid's row.
    class Recordset* DataSource() const {
        return dataSource_;
    }
    void SetDataSource(class Recordset* rs) { dataSource_ = rs; }

    // The control it stands in: a frame's or a menu's name, "" for the form itself. Kept as
    // the property "Container"; positions are relative to it.
    std::string Container() const;
    void SetContainer(const std::string& name) { SetProperty("Container", Variant(name)); }

    // Front (0) or back (1) of its siblings; kept as the property "ZOrder".
    void ZOrder(int position) { SetProperty("ZOrder", Variant(position)); }

    // The keyboard focus comes here: the control that had it hears LostFocus, this one
    // GotFocus, and the window moves its focus here.
    void SetFocus();

    // Whether writing its text (its value, for a check box) runs a procedure of the form.
    bool HeardWhenWritten();
    // A bound box whose row moved while nobody looked: the binding shows it the row at its
    // next use, a property read or written, before the use.
    void AwaitRow(Binding& binding) {
        shownBy_ = &binding;
        rowAwaited_ = true;
    }
    void RowShown() { rowAwaited_ = false; }
    bool AwaitsRow() const { return rowAwaited_; }

  private:
    // The value of a property by name, without a copy; 438 for one the control does not have.
    const Variant& stored(std::string_view name) const;
    // The events a property write raises. The write raises one only when the form has a
    // procedure for it: with none it would do nothing, and most writes (a bound box following
    // its row, a button enabled) have none. What the form has is learnt once per version of
    // its procedures.
    enum class Written : std::uint8_t { Change, Click };
    void raiseIfHandled(Written event);
    struct Handled {
        unsigned version = 0;
        bool change = false, click = false;
    };
    const Handled& handled();
    // Shows an awaited row first; every use of the properties passes here.
    void settle() const;

    // What a write of a property does beyond storing its value, known once from its name.
    enum class Role : std::uint8_t { Plain, Text, ListIndex, Value, Path, Pattern, Drive };
    struct Prop {
        Variant value;
        Role role = Role::Plain;
    };
    using Entry = std::pair<const std::string, Prop>;
    // The properties that procedures write most, kept at hand (nullptr for one the control
    // does not have): a bound box is written at every move, its buttons and status line too,
    // and the lists of a page's fields are set for every product.
    enum Common : std::uint8_t {
        CaptionProp,
        TextProp,
        ValueProp,
        VisibleProp,
        EnabledProp,
        ListIndexProp,
        Commons
    };
    void setCommon(Common which, std::string_view name, Variant value);
    const Variant& common(Common which, std::string_view name) const;
    // Stores a written value and does what the write of that property does.
    void write(Entry& entry, Variant value);
    // Adds a property with its first value.
    void define(const char* name, Variant value);
    // The value of a property the control is known to have.
    Variant& slot(std::string_view name) {
        settle();
        return props_.find(name)->second.value;
    }
    // A folder or file list, whose Path is kept as the lists keep folders and read from the disk.
    bool isFolderList() const;
    // A folder list's current folder is -1, the folders above it -2, -3 ... up to the root.
    int lowestListIndex() const;
    // Fills a folder or file list from its folder.
    void readFolder();
    void unselectGroup();
    void notify(std::string_view name);

    Form& form_;
    std::string name_;
    ControlKind kind_;
    int index_;
    // By name, A-Z folded: every statement that names a property looks it up.
    std::unordered_map<std::string, Prop, FoldedHash, FoldedEqual> props_;
    std::vector<std::string> items_;
    std::vector<bool> selected_;
    class Recordset* dataSource_ = nullptr;
    Handled handled_;
    Entry* common_[Commons] = {};
    Binding* shownBy_ = nullptr;
    mutable bool rowAwaited_ = false;
};
