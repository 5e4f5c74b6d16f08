#include "forms/form.h"

#include <cstdint>

#include "base/convert.h"
#include "base/fold.h"
#include "base/vb_error.h"

namespace {

std::string handlerKey(std::string_view control, std::string_view event) {
    return std::string(control) + "_" + std::string(event);
}
}  // namespace

Form::Form(std::string name) : name_(std::move(name)) {
    props_["Caption"] = Variant("");
    props_["Visible"] = Variant(false);
    props_["Enabled"] = Variant(true);
    props_["KeyPreview"] = Variant(false);
    props_["WindowState"] = Variant(0);
    for (const char* n : {"Left", "Top", "Width", "Height"})
        props_[n] = Variant::Double(0);
}

Form::~Form() = default;

Control& Form::Add(const std::string& name, ControlKind kind, int index) {
    controls_.push_back(std::make_unique<Control>(*this, name, kind, index));
    byName_[name].push_back(controls_.back().get());
    return *controls_.back();
}

Control* Form::Find(std::string_view name, int index) const {
    const auto at = reinterpret_cast<std::uintptr_t>(name.data());
    Found& found = found_[(at ^ (at >> 6) ^ static_cast<std::uintptr_t>(index)) % found_.size()];
    if (found.control && found.name == name.data() && found.control->Index() == index &&
        (found.control->Name() == name || equalFolded(found.control->Name(), name)))
        return found.control;
    Control* c = lookUp(name, index);
    if (c) found = {name.data(), c};
    return c;
}

Control* Form::lookUp(std::string_view name, int index) const {
    auto it = byName_.find(name);
    if (it == byName_.end()) return nullptr;
    const std::vector<Control*>& elements = it->second;
    // Most arrays are added in the order of their indexes from 0.
    if (index >= 0 && static_cast<std::size_t>(index) < elements.size() &&
        elements[index]->Index() == index)
        return elements[index];
    for (Control* c : elements)
        if (c->Index() == index) return c;
    return nullptr;
}

Control& Form::operator()(std::string_view name, int index) const {
    Control* c = Find(name, index);
    if (!c) {
        std::string what =
            std::string(name) + (index >= 0 ? "(" + std::to_string(index) + ")" : "");
        throw VbError(vberr::ControlArrayElementMissing, "no control " + name_ + "." + what);
    }
    return *c;
}

void Form::On(std::string_view control, std::string_view event, Handler handler) {
    handlers_[handlerKey(control, event)] = std::make_shared<const Handler>(std::move(handler));
    ++handlersVersion_;
}

bool Form::HasHandler(std::string_view control, std::string_view event) const {
    return handlers_.count(handlerKey(control, event)) > 0;
}

void Form::RaiseEvent(Control& control, std::string_view event, EventArgs& args) {
    eventKey_.assign(control.Name()).append("_").append(event);
    auto it = handlers_.find(eventKey_);
    if (it == handlers_.end()) return;
    const std::shared_ptr<const Handler> handler = it->second;
    (*handler)(args);
}

Variant Form::Property(std::string_view name) const {
    auto it = props_.find(name);
    if (it == props_.end())
        throw VbError(vberr::PropertyNotFound, "Object doesn't support this property or method");
    return it->second;
}

void Form::SetProperty(std::string_view name, const Variant& value) {
    auto it = props_.find(name);
    if (it == props_.end())
        throw VbError(vberr::PropertyNotFound, "Object doesn't support this property or method");
    if (it->second.IsString())
        it->second = Variant(textOf(value));
    else if (it->second.Type() == VarType::Boolean)
        it->second = Variant(CBool(value));
    else
        it->second = value.IsNumberKind() ? value : Variant::Double(CDbl(value));
    NotifyChanged(nullptr, it->first);
}

std::string Form::Caption() const {
    return textOf(Property("Caption"));
}
bool Form::Visible() const {
    return Property("Visible").BoolValue();
}
int Form::WindowState() const {
    return static_cast<int>(CDbl(Property("WindowState")));
}
double Form::Num(std::string_view name) const {
    return CDbl(Property(name));
}

void Form::NotifyChanged(Control* control, std::string_view property) {
    for (const auto& observer : observers_)
        observer(*this, control, property);
}
