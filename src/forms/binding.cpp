#include "forms/binding.h"

#include <algorithm>

#include "base/convert.h"
#include "base/trap.h"

namespace {

bool isCheckBox(const Control& c) {
    return c.Kind() == ControlKind::CheckBox;
}

int stretches = 0;
// The bindings with a box that still awaits its row.
std::vector<Binding*>& awaiting() {
    static std::vector<Binding*> bindings;
    return bindings;
}

}  // namespace

Binding::~Binding() {
    if (!awaiting_) return;
    for (auto& b : bound_)
        b.box->RowShown();
    std::erase(awaiting(), this);
}

void Binding::Bind(Control& box, Recordset& rs, int field) {
    for (auto& b : bound_)
        if (b.box == &box) {
            b.rs = &rs;
            b.field = field;
            return;
        }
    bound_.push_back({&box, &rs, field});
}

void Binding::Clear() {
    settle();
    std::erase(awaiting(), this);
    bound_.clear();
}

void Binding::show(const Bound& b) {
    b.box->RowShown();
    Trap ignore = Trap::Ignoring();
    ignore([&] {
        Variant v;
        if (b.rs->State() == ado::adStateOpen && !b.rs->Bof() && !b.rs->Eof())
            v = b.rs->GetValue(b.field);
        if (isCheckBox(*b.box)) {
            b.box->SetValue(Variant::Integer(v.IsNull() || v.IsEmpty() ? 0 : (CBool(v) ? 1 : 0)));
        } else if (v.IsString()) {
            b.box->ShowText(v.Str());
        } else {
            b.box->ShowText(textOf(v));
        }
    });
}

void Binding::Refresh() {
    const bool was = std::exchange(showing_, true);
    for (const auto& b : bound_)
        show(b);
    showing_ = was;
}

void Binding::Moved() {
    if (!RowsAwaited::active()) return Refresh();
    const bool was = std::exchange(showing_, true);
    for (const auto& b : bound_) {
        if (b.box->HeardWhenWritten())
            show(b);  // its procedure runs at the move, as it would
        else
            b.box->AwaitRow(*this);
    }
    showing_ = was;
    if (!std::exchange(awaiting_, true)) awaiting().push_back(this);
}

void Binding::Show(const Control& box) {
    for (const auto& b : bound_)
        if (b.box == &box) {
            const bool was = std::exchange(showing_, true);
            show(b);
            showing_ = was;
            return;
        }
}

void Binding::settle() {
    if (!std::exchange(awaiting_, false)) return;
    const bool was = std::exchange(showing_, true);
    for (const auto& b : bound_)
        if (b.box->AwaitsRow()) show(b);
    showing_ = was;
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

RowsAwaited::RowsAwaited() {
    stretches += 1;
}

RowsAwaited::~RowsAwaited() {
    if (--stretches == 0) showAll();
}

bool RowsAwaited::active() {
    return stretches > 0;
}

void RowsAwaited::showAll() {
    // Showing a row can run nothing that binds, but the list is taken first all the same.
    std::vector<Binding*> bindings;
    bindings.swap(awaiting());
    for (Binding* binding : bindings)
        binding->settle();
}
