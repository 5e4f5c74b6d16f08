#include "base/variant.h"

#include <cmath>

Variant::Variant(bool b) : type_(VarType::Boolean), num_(b ? -1 : 0) {}
Variant::Variant(int l) : type_(VarType::Long), num_(l) {}
Variant::Variant(double d) : type_(VarType::Double), num_(d) {}
Variant::Variant(std::string s) : type_(VarType::String), str_(std::move(s)) {}
Variant::Variant(std::string_view s) : type_(VarType::String), str_(s) {}
Variant::Variant(const char* s) : type_(VarType::String), str_(s) {}

void Variant::AssignText(std::string_view s) {
    type_ = VarType::String;
    num_ = 0;
    scaled_ = 0;
    str_.assign(s);
}

Variant Variant::Null() {
    Variant v;
    v.type_ = VarType::Null;
    return v;
}

Variant Variant::Integer(int i) {
    Variant v;
    v.type_ = VarType::Integer;
    v.num_ = static_cast<std::int16_t>(i);
    return v;
}

Variant Variant::Long(std::int32_t l) {
    Variant v;
    v.type_ = VarType::Long;
    v.num_ = l;
    return v;
}

Variant Variant::Single(float f) {
    Variant v;
    v.type_ = VarType::Single;
    v.num_ = f;
    return v;
}

Variant Variant::Double(double d) {
    Variant v;
    v.type_ = VarType::Double;
    v.num_ = d;
    return v;
}

Variant Variant::CurrencyFromScaled(std::int64_t tenThousandths) {
    Variant v;
    v.type_ = VarType::Currency;
    v.scaled_ = tenThousandths;
    v.num_ = static_cast<double>(tenThousandths) / 10000.0;
    return v;
}

Variant Variant::Currency(double value) {
    // Currency keeps four decimals; the fifth rounds half to even like the classic runtime.
    return CurrencyFromScaled(static_cast<std::int64_t>(std::nearbyint(value * 10000.0)));
}

Variant Variant::Date(double serial) {
    Variant v;
    v.type_ = VarType::Date;
    v.num_ = serial;
    return v;
}

bool Variant::IsNumberKind() const {
    switch (type_) {
        case VarType::Boolean:
        case VarType::Integer:
        case VarType::Long:
        case VarType::Single:
        case VarType::Double:
        case VarType::Currency:
        case VarType::Date:
            return true;
        default:
            return false;
    }
}

double Variant::Number() const {
    return num_;
}

bool Variant::operator==(const Variant& other) const {
    if (type_ != other.type_) return false;
    if (type_ == VarType::String) return str_ == other.str_;
    if (type_ == VarType::Currency) return scaled_ == other.scaled_;
    return num_ == other.num_;
}

const char* TypeName(VarType t) {
    switch (t) {
        case VarType::Empty:
            return "Empty";
        case VarType::Null:
            return "Null";
        case VarType::Boolean:
            return "Boolean";
        case VarType::Integer:
            return "Integer";
        case VarType::Long:
            return "Long";
        case VarType::Single:
            return "Single";
        case VarType::Double:
            return "Double";
        case VarType::Currency:
            return "Currency";
        case VarType::Date:
            return "Date";
        case VarType::String:
            return "String";
    }
    return "Unknown";
}
