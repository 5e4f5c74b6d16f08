#include "forms/control.h"

#include <algorithm>

#include "base/convert.h"
#include "base/fold.h"
#include "base/vb_error.h"
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
    return !NoCase{}(a, b) && !NoCase{}(b, a);
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
    props_["Visible"] = Variant(true);
    props_["Enabled"] = Variant(true);
    for (const char* n : {"Left", "Top", "Width", "Height"})
        props_[n] = Variant::Double(0);
    props_["Tag"] = Variant("");
    props_["ToolTipText"] = Variant("");
    props_["BackColor"] = Variant::Long(0xFFFFFF);
    props_["ForeColor"] = Variant::Long(0);
    props_["ZOrder"] = Variant(0);
    props_["Container"] = Variant("");
    // 0 manual, 1 automatic: a press of the left button starts dragging the control.
    if (kind != ControlKind::Menu) props_["DragMode"] = Variant::Integer(0);
    // Where the Tab key takes the focus next; the form numbers its controls as it adds them.
    if (kind != ControlKind::Menu) props_["TabIndex"] = Variant::Integer(0);
    if (hasCaption(kind)) props_["Caption"] = Variant("");
    if (hasText(kind)) props_["Text"] = Variant("");
    if (kind == ControlKind::TextBox) {
        props_["SelStart"] = Variant(0);
        props_["SelLength"] = Variant(0);
    }
    if (hasList(kind)) props_["ListIndex"] = Variant(-1);
    switch (kind) {
        case ControlKind::CheckBox:
            props_["Value"] = Variant::Integer(0);
            break;
        case ControlKind::OptionButton:
            props_["Value"] = Variant(false);
            break;
        case ControlKind::Menu:
            props_["Checked"] = Variant(false);
            break;
        case ControlKind::CommandButton:
            // Enter anywhere on the form clicks the default button, Escape the cancel one.
            props_["Default"] = Variant(false);
            props_["Cancel"] = Variant(false);
            break;
        case ControlKind::Label:
            props_["LinkItem"] = Variant("");  // what a label is linked to, as text
            break;
        case ControlKind::Slider:
            props_["Value"] = Variant(0);
            props_["Min"] = Variant(0);
            props_["Max"] = Variant(10);
            break;
        case ControlKind::FileList:
            props_["Pattern"] = Variant("*.*");
            props_["FileName"] = Variant("");
            [[fallthrough]];
        case ControlKind::DirList:
            props_["Path"] = Variant("");
            break;
        case ControlKind::DriveList:
            props_["Drive"] = Variant(FileLists::driveOf(""));
            items_ = FileLists::drives();
            selected_.assign(items_.size(), false);
            break;
        case ControlKind::DataGrid:
            props_["Row"] = Variant(0);
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
    auto it = props_.find(name);
    if (it == props_.end())
        throw VbError(vberr::PropertyNotFound, "Object doesn't support this property or method");
    return it->second;
}

void Control::SetProperty(std::string_view name, const Variant& value) {
    auto it = props_.find(name);
    if (it == props_.end())
        throw VbError(vberr::PropertyNotFound, "Object doesn't support this property or method");
    const std::string& key = it->first;  // a map entry stays where it is
    Variant stored = value;
    // Each property keeps its kind: a text stays a text, a number a number.
    if (it->second.IsString())
        stored = Variant(textOf(value));
    else if (it->second.Type() == VarType::Boolean)
        stored = Variant(CBool(value));
    else if (it->second.IsNumberKind() && !value.IsNumberKind())
        stored = Variant::Double(CDbl(value));
    if (isFolderPath(key)) stored = Variant(FileLists::folderPath(textOf(stored)));
    if (key == "Drive") stored = Variant(FileLists::driveOf(textOf(stored)));
    if (key == "ListIndex") {
        int i = static_cast<int>(stored.Number());
        if (i < lowestListIndex() || i >= ListCount())
            throw VbError(InvalidPropertyValue, "Invalid property value");
        stored = Variant(i);
    }
    bool changed =
        !(it->second == stored) && !(it->second.IsNumberKind() && stored.IsNumberKind() &&
                                     it->second.Number() == stored.Number());
    it->second = stored;
    if (changed && (isFolderPath(key) || (key == "Pattern" && kind_ == ControlKind::FileList)))
        readFolder();
    if (key == "ListIndex" && kind_ == ControlKind::ComboBox)
        props_["Text"] = Variant(List(ListIndex()));
    if (key == "ListIndex" && kind_ == ControlKind::FileList)
        props_["FileName"] = Variant(List(ListIndex()));
    notify(key);
    if (key == "Text" && changed)
        Raise("Change");
    else if (key == "ListIndex" && changed)
        Raise("Click");
    else if (key == "Value" && kind_ == ControlKind::CheckBox && changed)
        Raise("Click");
    else if (key == "Value" && kind_ == ControlKind::OptionButton && stored.BoolValue()) {
        unselectGroup();
        Raise("Click");
    } else if ((key == "Path" || key == "Pattern" || key == "Drive") && changed)
        Raise("Change");
}

std::string Control::Caption() const {
    return textOf(Property("Caption"));
}
std::string Control::Text() const {
    return textOf(Property("Text"));
}
bool Control::Visible() const {
    return Property("Visible").BoolValue();
}
bool Control::Enabled() const {
    return Property("Enabled").BoolValue();
}
double Control::Num(std::string_view name) const {
    return CDbl(Property(name));
}
std::string Control::Container() const {
    return textOf(Property("Container"));
}

std::string Control::List(int i) const {
    if (kind_ == ControlKind::DirList && i < 0)
        return FileLists::ancestor(textOf(props_.at("Path")), -i - 1);
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
    if (ListIndex() >= ListCount()) props_["ListIndex"] = Variant(-1);
    notify("List");
}

void Control::Clear() {
    items_.clear();
    selected_.clear();
    if (props_.count("ListIndex")) props_["ListIndex"] = Variant(-1);
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
    props_["FileName"] = Variant("");
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

bool Control::isFolderPath(std::string_view key) const {
    return key == "Path" && (kind_ == ControlKind::DirList || kind_ == ControlKind::FileList);
}

int Control::lowestListIndex() const {
    if (kind_ != ControlKind::DirList) return -1;
    int lowest = -1;
    while (!List(lowest - 1).empty())
        --lowest;
    return lowest;
}

void Control::readFolder() {
    const std::string folder = textOf(props_["Path"]);
    items_ = kind_ == ControlKind::DirList ? FileLists::subfolders(folder)
                                           : FileLists::files(folder, textOf(props_["Pattern"]));
    selected_.assign(items_.size(), false);
    props_["ListIndex"] = Variant(-1);
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
