#include "shell/errhandler.h"

#include <array>

#include "base/strings.h"
#include "base/trap.h"
#include "forms/ui.h"

namespace {

std::function<void(const std::string&)>& trace() {
    static std::function<void(const std::string&)> sink;
    return sink;
}

// The numbers that step over in silence, in the order they are tested.
constexpr std::array<std::array<int, 6>, 5> silentGroups = {{
    {3265, 3021, 481, 91, 5, 13},
    {3710, 3421, 35752, 76, 52, 0},
    {3709, 3706, 3704, 438, 364, 32755},
    {3219, 3001, 380, 62, 9, 0},
    {3078, 342, 20, 51, 0, 0},
}};

bool inSilentGroup(int number) {
    for (const auto& group : silentGroups)
        for (int n : group)
            if (n != 0 && n == number) return true;
    return false;
}

}  // namespace

void setErrorTrace(std::function<void(const std::string&)> sink) {
    trace() = std::move(sink);
}

void Errhandler(const std::string& Tag) {
    const int number = Err().Number;
    if (trace()) trace()("Error - " + Trim(std::to_string(number)) + "\r\n" + "  In  " + Tag);
    if (inSilentGroup(number)) return;
    if (number == 53) {
        MsgBox(std::string("Can't Find The File!") + vb::vbCrLf +
                   "Make Sure ALL Necessary Files Are In The Tandrel Folder!",
               vb::vbCritical + vb::vbOKOnly);
        return;
    }
    // Any other number passes over in silence as well.
}
