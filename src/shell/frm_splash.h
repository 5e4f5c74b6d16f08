#pragma once

#include "forms/form.h"

// Stands on the screen while the program starts; it has no logic.
class frmSplash : public Form {
  public:
    frmSplash();
};
