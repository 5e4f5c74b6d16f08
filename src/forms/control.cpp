#include "forms/control.h"

#include <algorithm>

#include "base/convert.h"
#include "base/fold.h"
#include "base/vb_error.h"
#include "forms/binding.h"
#include "forms/file_lists.h"
#include "forms/form.h"

namespace {

constexpr int InvalidPropertyValue = 380;

bool hasCaption(ControlKind k) {
    switch (k) {
        case ControlKind::Label:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::CommandButton:
        case ControlKind::Frame:
        case ControlKind::Menu:
        case ControlKind::DataControl:
            return true;
        default:
            return false;
    }
}

bool hasText(ControlKind k) {
    return k == ControlKind::TextBox || k == ControlKind::ComboBox || k == ControlKind::ListBox;
}

bool sameName(std::string_view a, std::string_view b) {
    return equalFolded(a, b);
}

bool hasList(ControlKind k) {
    return k == ControlKind::ListBox || k == ControlKind::ComboBox || k == ControlKind::FileList ||
           k == ControlKind::DirList || k == ControlKind::DriveList;
}

}  // namespace

bool NoCase::operator()(std::string_view a, std::string_view b) const {
    return compareFolded(a, b) < 0;
}

Control::Control(Form& form, std::string name, ControlKind kind, int index)
    : form_(form), name_(std::move(name)), kind_(kind), index_(index) {
    define("Visible", Variant(true));
    define("Enabled", Variant(true));
    for (const char* n : {"Left", "Top", "Width", "Height"})
        define(n, Variant::Double(0));
    define("Tag", Variant(""));
    define("ToolTipText", Variant(""));
    define("BackColor", Variant::Long(0xFFFFFF));
    define("ForeColor", Variant::Long(0));
    define("ZOrder", Variant(0));
    define("Container", Variant(""));
    // 0 manual, 1 automatic: a press of the left button starts dragging the control.
    if (kind != ControlKind::Menu) define("DragMode", Variant::Integer(0));
    // Where the Tab key takes the focus next: the controls in the order the form adds them.
    if (kind != ControlKind::Menu)
        define("TabIndex", Variant::Integer(static_cast<int>(form.Controls().size())));
    if (hasCaption(kind)) define("Caption", Variant(""));
    if (hasText(kind)) define("Text", Variant(""));
    if (kind == ControlKind::TextBox) {
        define("SelStart", Variant(0));
        define("SelLength", Variant(0));
    }
    if (hasList(kind)) define("ListIndex", Variant(-1));
    switch (kind) {
        case ControlKind::CheckBox:
            define("Value", Variant::Integer(0));
            break;
        case ControlKind::OptionButton:
            define("Value", Variant(false));
            break;
        case ControlKind::Menu:
            define("Checked", Variant(false));
            break;
        case ControlKind::CommandButton:
            // Enter anywhere on the form clicks the default button, Escape the cancel one.
            define("Default", Variant(false));
            define("Cancel", Variant(false));
            break;
        case ControlKind::Label:
            define("LinkItem", Variant(""));  // what a label is linked to, as text
            break;
        case ControlKind::Slider:
            define("Value", Variant(0));
            define("Min", Variant(0));
            define("Max", Variant(10));
            break;
        case ControlKind::FileList:
            define("Pattern", Variant("*.*"));
            define("FileName", Variant(""));
            [[fallthrough]];
        case ControlKind::DirList:
            define("Path", Variant(""));
            break;
        case ControlKind::DriveList:
            define("Drive", Variant(FileLists::driveOf("")));
            items_ = FileLists::drives();
            selected_.assign(items_.size(), false);
            break;
        case ControlKind::DataGrid:
            define("Row", Variant(0));
            break;
        default:
            break;
    }
}

std::string Control::Path() const {
    return index_ < 0 ? name_ : name_ + "(" + std::to_string(index_) + ")";
}

bool Control::HasProperty(std::string_view name) const {
    return props_.count(name) > 0 || (hasList(kind_) && sameName(name, "ListCount"));
}

Variant Control::Property(std::string_view name) const {
    if (hasList(kind_) && sameName(name, "ListCount")) return Variant(ListCount());
    return stored(name);
}

const Variant& Control::stored(std::string_view name) const {
    settle();
    auto it = props_.find(name);
    if (it == props_.end())
        throw VbError(vberr::PropertyNotFound, "Object doesn't support this property or method");
    return it->second.value;
}

void Control::SetProperty(std::string_view name, Variant value) {
    settle();
    auto it = props_.find(name);
    if (it == props_.end())
        throw VbError(vberr::PropertyNotFound, "Object doesn't support this property or method");
    write(*it, std::move(value));
}

void Control::setCommon(Common which, std::string_view name, Variant value) {
    settle();
    if (!common_[which]) {
        SetProperty(name, std::move(value));  // 438 as any property it does not have
        return;
    }
    write(*common_[which], std::move(value));
}

void Control::ShowText(std::string_view s) {
    settle();
    Entry* entry = common_[TextProp];
    // Anything but a text box holding a text takes the general write.
    if (!entry || entry->second.role != Role::Text || !entry->second.value.IsString()) {
        SetText(std::string(s));
        return;
    }
    Variant& current = entry->second.value;
    const bool changed = current.Str() != s;
    if (changed) current.AssignText(s);
    notify(entry->first);
    if (changed) raiseIfHandled(Written::Change);
}

void Control::SetListIndex(int i) {
    settle();
    Entry* entry = common_[ListIndexProp];
    // A plain list holding a number takes the write as it stands: nothing to convert, nothing
    // else to keep in step.
    if (!entry || kind_ != ControlKind::ListBox || !entry->second.value.IsNumberKind()) {
        setCommon(ListIndexProp, "ListIndex", Variant(i));
        return;
    }
    if (i < lowestListIndex() || i >= ListCount())
        throw VbError(InvalidPropertyValue, "Invalid property value");
    Variant& current = entry->second.value;
    const bool changed = current.Number() != i;
    if (changed || current.Type() != VarType::Long) current = Variant(i);
    notify(entry->first);
    if (changed) raiseIfHandled(Written::Click);
}

const Variant& Control::common(Common which, std::string_view name) const {
    settle();
    return common_[which] ? common_[which]->second.value : stored(name);
}

void Control::write(Entry& entry, Variant value) {
    const std::string& key = entry.first;  // a map entry stays where it is
    Variant& current = entry.second.value;
    const Role role = entry.second.role;
    Variant stored = std::move(value);
    // Each property keeps its kind: a text stays a text, a number a number.
    if (current.IsString()) {
        if (!stored.IsString()) stored = Variant(textOf(stored));
    } else if (current.Type() == VarType::Boolean)
        stored = Variant(CBool(stored));
    else if (current.IsNumberKind() && !stored.IsNumberKind())
        stored = Variant::Double(CDbl(stored));
    const bool folderPath = role == Role::Path && isFolderList();
    if (folderPath) stored = Variant(FileLists::folderPath(textOf(stored)));
    if (role == Role::Drive) stored = Variant(FileLists::driveOf(textOf(stored)));
    if (role == Role::ListIndex) {
        int i = static_cast<int>(stored.Number());
        if (i < lowestListIndex() || i >= ListCount())
            throw VbError(InvalidPropertyValue, "Invalid property value");
        stored = Variant(i);
    }
    const bool changed =
        !(current == stored) &&
        !(current.IsNumberKind() && stored.IsNumberKind() && current.Number() == stored.Number());
    const bool selects = stored.BoolValue();
    current = std::move(stored);
    if (changed && (folderPath || (role == Role::Pattern && kind_ == ControlKind::FileList)))
        readFolder();
    if (role == Role::ListIndex && kind_ == ControlKind::ComboBox)
        slot("Text") = Variant(List(ListIndex()));
    if (role == Role::ListIndex && kind_ == ControlKind::FileList)
        slot("FileName") = Variant(List(ListIndex()));
    notify(key);
    if (role == Role::Text && changed)
        raiseIfHandled(Written::Change);
    else if (role == Role::ListIndex && changed)
        raiseIfHandled(Written::Click);
    else if (role == Role::Value && kind_ == ControlKind::CheckBox && changed)
        raiseIfHandled(Written::Click);
    else if (role == Role::Value && kind_ == ControlKind::OptionButton && selects) {
        unselectGroup();
        raiseIfHandled(Written::Click);
    } else if ((role == Role::Path || role == Role::Pattern || role == Role::Drive) && changed)
        raiseIfHandled(Written::Change);
}

const Control::Handled& Control::handled() {
    if (handled_.version != form_.HandlersVersion()) {
        handled_.change = form_.HasHandler(name_, "Change");
        handled_.click = form_.HasHandler(name_, "Click");
        handled_.version = form_.HandlersVersion();
    }
    return handled_;
}

void Control::raiseIfHandled(Written event) {
    if (event == Written::Change ? handled().change : handled().click)
        Raise(event == Written::Change ? "Change" : "Click");
}

bool Control::HeardWhenWritten() {
    return kind_ == ControlKind::CheckBox ? handled().click : handled().change;
}

void Control::settle() const {
    if (!rowAwaited_) return;
    rowAwaited_ = false;
    shownBy_->Show(*this);
}

std::string Control::Caption() const {
    return textOf(common(CaptionProp, "Caption"));
}
std::string Control::Text() const {
    return textOf(common(TextProp, "Text"));
}
bool Control::Visible() const {
    return common(VisibleProp, "Visible").BoolValue();
}
int Control::ListIndex() const {
    return static_cast<int>(CDbl(common(ListIndexProp, "ListIndex")));
}
bool Control::Enabled() const {
    return common(EnabledProp, "Enabled").BoolValue();
}
double Control::Num(std::string_view name) const {
    if (hasList(kind_) && sameName(name, "ListCount")) return ListCount();
    return CDbl(stored(name));
}
std::string Control::Container() const {
    return textOf(stored("Container"));
}

std::string Control::List(int i) const {
    if (kind_ == ControlKind::DirList && i < 0)
        return FileLists::ancestor(textOf(props_.at("Path").value), -i - 1);
    return i >= 0 && i < ListCount() ? items_[i] : std::string();
}

void Control::SetList(int i, const std::string& text) {
    if (i < 0 || i >= ListCount()) throw VbError(InvalidPropertyValue, "Invalid property value");
    items_[i] = text;
    notify("List");
}

void Control::AddItem(const std::string& text, int at) {
    if (at < 0 || at > ListCount()) at = ListCount();
    items_.insert(items_.begin() + at, text);
    selected_.insert(selected_.begin() + at, false);
    notify("List");
}

void Control::RemoveItem(int i) {
    if (i < 0 || i >= ListCount()) throw VbError(InvalidPropertyValue, "Invalid property value");
    items_.erase(items_.begin() + i);
    selected_.erase(selected_.begin() + i);
    if (ListIndex() >= ListCount()) slot("ListIndex") = Variant(-1);
    notify("List");
}

void Control::Clear() {
    items_.clear();
    selected_.clear();
    if (props_.count("ListIndex")) slot("ListIndex") = Variant(-1);
    notify("List");
}

bool Control::Selected(int i) const {
    return i >= 0 && i < ListCount() && selected_[i];
}

void Control::SetSelected(int i, bool on) {
    if (i < 0 || i >= ListCount()) throw VbError(InvalidPropertyValue, "Invalid property value");
    selected_[i] = on;
    notify("Selected");
}

void Control::Refresh() {
    if (kind_ != ControlKind::FileList) return;
    readFolder();
    slot("FileName") = Variant("");
}

void Control::SetFocus() {
    Control* before = form_.ActiveControl();
    form_.SetActiveControl(this);
    if (before && before != this) before->Raise("LostFocus");
    form_.NotifyChanged(this, "Focus");
    Raise("GotFocus");
}

void Control::Raise(std::string_view event) {
    EventArgs args;
    Raise(event, args);
}

void Control::Raise(std::string_view event, EventArgs& args) {
    args.Index = index_;
    form_.RaiseEvent(*this, event, args);
}

void Control::define(const char* name, Variant value) {
    static const std::pair<std::string_view, Role> roles[] = {
        {"Text", Role::Text}, {"ListIndex", Role::ListIndex}, {"Value", Role::Value},
        {"Path", Role::Path}, {"Pattern", Role::Pattern},     {"Drive", Role::Drive},
    };
    static const std::pair<std::string_view, Common> commons[] = {
        {"Caption", CaptionProp}, {"Text", TextProp},       {"Value", ValueProp},
        {"Visible", VisibleProp}, {"Enabled", EnabledProp}, {"ListIndex", ListIndexProp},
    };
    Role role = Role::Plain;
    for (const auto& [known, r] : roles)
        if (known == name) role = r;
    auto [it, added] = props_.insert_or_assign(name, Prop{std::move(value), role});
    for (const auto& [known, which] : commons)
        if (known == name) common_[which] = &*it;
}

bool Control::isFolderList() const {
    return kind_ == ControlKind::DirList || kind_ == ControlKind::FileList;
}

int Control::lowestListIndex() const {
    if (kind_ != ControlKind::DirList) return -1;
    int lowest = -1;
    while (!List(lowest - 1).empty())
        --lowest;
    return lowest;
}

void Control::readFolder() {
    const std::string folder = textOf(slot("Path"));
    items_ = kind_ == ControlKind::DirList ? FileLists::subfolders(folder)
                                           : FileLists::files(folder, textOf(slot("Pattern")));
    selected_.assign(items_.size(), false);
    slot("ListIndex") = Variant(-1);
    notify("List");
}

void Control::unselectGroup() {
    // The option buttons of one container exclude each other, whoever selects one.
    const std::string container = Container();
    for (const auto& other : form_.Controls())
        if (other.get() != this && other->Kind() == ControlKind::OptionButton &&
            other->Value().BoolValue() && sameName(other->Container(), container))
            other->SetValue(Variant(false));
}

void Control::notify(std::string_view name) {
    form_.NotifyChanged(this, name);
}
