#include "shell/record_buttons.h"

void setRecordButtons(Form& form, Trap& on, bool bVal,
                      std::initializer_list<const char*> commands) {
    for (const char* name : commands)
        on([&] { form(name).SetVisible(bVal); });
    for (const char* name : {"cmdUpdate", "cmdCancel"})
        on([&] { form(name).SetVisible(!bVal); });
    for (const char* name : {"cmdNext", "cmdFirst", "cmdLast", "cmdPrevious"})
        on([&] { form(name).SetEnabled(bVal); });
}
