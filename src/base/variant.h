#pragma once

#include <cstdint>
#include <string>
#include <string_view>

enum class VarType : std::uint8_t {
    Empty,
    Null,
    Boolean,
    Integer,  // 16-bit
    Long,     // 32-bit
    Single,
    Double,
    Currency,  // fixed point, four decimals
    Date,      // days since 1899-12-30, time as the fraction
    String,
};

// The program's one value type. Null is not "" and not 0; Empty is the value of a
// variable that was never set. Conversions between kinds live in convert.h.
class Variant {
  public:
    Variant() = default;  // Empty
    Variant(bool b);
    Variant(int l);  // Long
    Variant(double d);
    Variant(std::string s);
    Variant(std::string_view s);
    Variant(const char* s);

    static Variant Null();
    static Variant Integer(int i);
    static Variant Long(std::int32_t l);
    static Variant Single(float f);
    static Variant Double(double d);
    static Variant CurrencyFromScaled(std::int64_t tenThousandths);
    static Variant Currency(double value);
    static Variant Date(double serial);

    VarType Type() const { return type_; }
    bool IsEmpty() const { return type_ == VarType::Empty; }
    bool IsNull() const { return type_ == VarType::Null; }
    bool IsString() const { return type_ == VarType::String; }
    // True for the number kinds, Boolean and Date included (they take part in arithmetic).
    bool IsNumberKind() const;

    bool BoolValue() const { return num_ != 0; }
    std::int64_t CurrencyScaled() const { return scaled_; }
    // The number held by a number kind, Boolean (True is -1) or Date, as a double.
    double Number() const;
    const std::string& Str() const { return str_; }
    // Makes it the text s, in the room its own text already has.
    void AssignText(std::string_view s);

    // Same kind and same value; Empty equals Empty and Null equals Null.
    bool operator==(const Variant& other) const;

  private:
    VarType type_ = VarType::Empty;
    double num_ = 0;
    std::int64_t scaled_ = 0;
    std::string str_;
};

// The name of a kind as TypeName gives it ("Integer", "String", "Null" ...).
const char* TypeName(VarType t);
