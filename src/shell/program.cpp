#include "shell/program.h"

#include <memory>

#include "forms/runtime.h"
#include "reports/win_seek.h"
#include "search/search_form.h"
#include "shell/errhandler.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"
#include "shell/frm_tip.h"
#include "shell/module.h"
#include "shell/products.h"
#include "stock/frm_inventory.h"
#include "stock/frm_invoice.h"
#include "stock/frm_orders.h"
#include "stock/frm_sales.h"
#include "stock/frm_setup.h"
#include "stock/frm_supplier.h"

void RegisterForms(Runtime& rt) {
    rt.Register("Products", [] { return std::make_unique<Products>(); });
    rt.Register("frmTip", [] { return std::make_unique<frmTip>(); });
    rt.Register("frmAbout", [] { return std::make_unique<frmAbout>(); });
    rt.Register("frmSplash", [] { return std::make_unique<frmSplash>(); });
    rt.Register("Search", [] { return std::make_unique<Search>(); });
    rt.Register("frmOrders", [] { return std::make_unique<frmOrders>(); });
    rt.Register("frmInvoice", [] { return std::make_unique<frmInvoice>(); });
    rt.Register("frmInventory", [] { return std::make_unique<frmInventory>(); });
    rt.Register("frmSales", [] { return std::make_unique<frmSales>(); });
    rt.Register("frmSupplier", [] { return std::make_unique<frmSupplier>(); });
    rt.Register("frmSetup", [] { return std::make_unique<frmSetup>(); });
    rt.Register("WinSeek", [] { return std::make_unique<WinSeek>(); });
}

void SubMain() {
    Runtime& rt = Runtime::Current();
    startModule(rt);
    // The first fault is reported and ends the start-up.
    Trap on = reportTo("(Module) Module::Sub Main");
    on([&] {
        Form& splash = rt.Get("frmSplash");
        rt.Show(splash);
        rt.LetEventsRun();
        Mod().MainForm = static_cast<Products*>(&rt.Get("Products"));
        rt.LetEventsRun();
        rt.Load(*Mod().MainForm);
        rt.LetEventsRun();
        rt.LetEventsRun();
        rt.Show(*Mod().MainForm);
        rt.LetEventsRun();
        rt.Unload(splash);
        rt.Show(rt.Get("frmTip"), vb::vbModal);
    });
}
