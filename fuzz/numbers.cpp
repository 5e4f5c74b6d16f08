// The ways of reading a number from a text box, and the masks and date formats a number
// or a text is shown in. Only the classic faults may come out, never a crash or UB.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/convert.h"
#include "base/dates.h"
#include "base/format.h"
#include "base/vb_error.h"
#include "tolerated.h"

namespace {

const char* const Masks[] = {"$#,###.##", "$#,###.00",  "$ #,###.00", "000000",
                             "MM/DD/YY",  "MM/DD/YYYY", "Short Date"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Variant box(text);
    double number = 0;
    tolerated([&] { strictNumber(text, number); });
    tolerated([&] { number = Val(text); });
    tolerated([&] { CDbl(box); });
    tolerated([&] { CInt(box); });
    tolerated([&] { CLng(box); });
    tolerated([&] { CCur(box); });
    tolerated([&] { CBool(box); });
    tolerated([&] { IsNumeric(box); });
    tolerated([&] { CDate(box); });
    tolerated([&] { CStr(Add(box, Variant::Integer(1))); });
    tolerated([&] { CStr(Add(Variant::Date(45000), box)); });
    for (const char* mask : Masks) {
        tolerated([&] { Format(box, mask); });
        tolerated([&] { Format(Variant::Double(number), mask); });
        tolerated([&] { Format(CCur(Variant::Double(number)), mask); });
        tolerated([&] { Format(Variant::Date(number), mask); });
    }
    tolerated([&] { CStr(Variant::Double(number)); });
    tolerated([&] { CStr(Variant::Date(number)); });
    return 0;
}
