// File, Open: another catalogue in a further main form. The window in hand keeps its own
// connection on its file; the shared DBName, which every form and report opened from now on
// reads, names the new one.
#include "base/trap.h"
#include "forms/runtime.h"
#include "reports/reports.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

void Reports::mnuFileOpen_Click() {
    Trap on = Trap::Ignoring();
    Runtime& rt = Runtime::Current();
    CommonDialog dialog;
    on([&] { dialog.FileName = ""; });
    on([&] { dialog.Filter = "Access DataBases|*.mdb;*.mde"; });
    on([&] { dialog.CancelError = false; });
    on([&] { rt.ui().ShowOpen(dialog); });
    if (!when(on, [&] { return dialog.FileName.empty(); })) {
        on([&] { Mod().DBName = dialog.FileName; });
        on([&] { rt.SetMousePointer(vb::vbHourglass); });
        on([&] { P.mnuDataProducts_Click(); });
    }
    on([&] { P.SetCaption(Mod().DBName); });
}
