#include "forms/binding.h"

#include "base/convert.h"
#include "base/trap.h"

namespace {

bool isCheckBox(const Control& c) {
    return c.Kind() == ControlKind::CheckBox;
}

}  // namespace

void Binding::Bind(Control& box, Recordset& rs, int field) {
    for (auto& b : bound_)
        if (b.box == &box) {
            b.rs = &rs;
            b.field = field;
            return;
        }
    bound_.push_back({&box, &rs, field});
}

void Binding::Refresh() {
    showing_ = true;
    Trap ignore = Trap::Ignoring();
    for (const auto& b : bound_) {
        ignore([&] {
            Variant v;
            if (b.rs->State() == ado::adStateOpen && !b.rs->Bof() && !b.rs->Eof())
                v = b.rs->GetValue(b.field);
            if (isCheckBox(*b.box)) {
                b.box->SetValue(
                    Variant::Integer(v.IsNull() || v.IsEmpty() ? 0 : (CBool(v) ? 1 : 0)));
            } else if (v.IsString()) {
                b.box->ShowText(v.Str());
            } else {
                b.box->ShowText(textOf(v));
            }
        });
    }
    showing_ = false;
}

void Binding::Changed(Control& box, std::string_view property) {
    if (showing_) return;
    bool text = property == "Text", value = property == "Value";
    if (!text && !value) return;
    for (const auto& b : bound_) {
        if (b.box != &box) continue;
        if (isCheckBox(box) != value) return;
        Trap::Ignoring()([&] {
            if (value)
                b.rs->SetValue(b.field, Variant(CDbl(box.Value()) != 0));
            else
                b.rs->SetValue(b.field, Variant(box.Text()));
        });
        return;
    }
}
