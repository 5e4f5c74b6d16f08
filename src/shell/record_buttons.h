#pragma once

#include <initializer_list>

#include "base/trap.h"
#include "forms/form.h"

// The buttons of a form that shows records, in the browsing state (bVal True) or the
// editing state: the commands given shown while browsing, Update and Cancel while
// editing, the four moves enabled while browsing. Each write is one statement of `on`.
void setRecordButtons(Form& form, Trap& on, bool bVal, std::initializer_list<const char*> commands);
