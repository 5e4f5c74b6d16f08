#include "shell/frm_tip.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "base/convert.h"
#include "base/textio.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/when.h"

namespace {
const char* const TipFile = "TIPOFDAY.TXT";
}

frmTip::frmTip() : Form("frmTip") {
    SetCaption("Tip of the Day");
    SetNum("Width", 5520);
    SetNum("Height", 3690);
    place(Add("Label1", ControlKind::Label), {600, 240, 3600, 255}).SetCaption("Did you know...");
    place(Add("lblTipText", ControlKind::Label), {600, 600, 3600, 2100});
    Control& ok = place(Add("cmdOK", ControlKind::CommandButton), {4200, 240, 1095, 375});
    ok.SetCaption("OK");
    // Enter or Escape puts the tip away, as OK does.
    ok.SetProperty("Default", Variant(true));
    ok.SetProperty("Cancel", Variant(true));
    place(Add("cmdNextTip", ControlKind::CommandButton), {4200, 720, 1095, 375})
        .SetCaption("&Next Tip");
    place(Add("chkLoadTipsAtStartup", ControlKind::CheckBox), {120, 2880, 3000, 315})
        .SetCaption("&Show Tips at Startup");
    OnClick("cmdOK", &frmTip::cmdOK_Click);
    OnClick("cmdNextTip", &frmTip::cmdNextTip_Click);
    OnClick("chkLoadTipsAtStartup", &frmTip::chkLoadTipsAtStartup_Click);
}

void frmTip::Form_Load() {
    Trap on = reportTo("(Form) frmTip::Sub Form_Load");
    Runtime& rt = Runtime::Current();
    Variant ShowAtStartup;
    on([&] { SetNum("Height", 3690); });
    on([&] { SetNum("Width", 5520); });
    on([&] {
        ShowAtStartup =
            Variant(CDbl(Variant(rt.GetSetting("Options", "Show Tips at Startup", "1"))));
    });
    if (when(on, [&] { return CDbl(ShowAtStartup) == 0 && !Mod().TipsAsked; })) {
        on([&] { rt.Unload(*this); });
        return;
    }
    on([&] { (*this)("chkLoadTipsAtStartup").SetValue(Variant::Integer(CInt(ShowAtStartup))); });
    // The generator is seeded but the tips are shown in file order.
    on([&] { std::srand(static_cast<unsigned>(std::time(nullptr))); });
    if (when(on, [&] { return !LoadTips(rt.AppPath() + TipFile); }))
        on([&] {
            (*this)("lblTipText")
                .SetCaption(std::string("There Was No ") + TipFile + " Found ? " + vb::vbCrLf +
                            vb::vbCrLf + "You Can Create A Text File Named " + TipFile +
                            " Using NotePad With 1 Tip Per Line. " +
                            "Then Place It In The Same Directory As The Tandrel Catalog 2000 "
                            "Application. ");
        });
}

bool frmTip::LoadTips(const std::string& sFile) {
    Trap on = reportTo("(Form) frmTip::Function LoadTips");
    bool loaded = false;
    std::error_code ec;
    if (when(on, [&] { return sFile.empty() || !std::filesystem::exists(sFile, ec); }))
        return false;
    TextFileReader file;
    on([&] { file.open(sFile); });
    while (!when(on, [&] { return file.eof(); }))
        if (!on([&] { Tips.push_back(file.lineInput()); })) break;
    on([&] { file.close(); });
    on([&] { DoNextTip(); });
    on([&] { loaded = true; });
    return loaded;
}

void frmTip::DoNextTip() {
    Trap on = reportTo("(Form) frmTip::Sub DoNextTip");
    on([&] { CurrentTip = CurrentTip + 1; });
    if (when(on, [&] { return CurrentTip > static_cast<int>(Tips.size()); }))
        on([&] { CurrentTip = 1; });
    on([&] { DisplayCurrentTip(); });
}

void frmTip::DisplayCurrentTip() {
    Trap on = reportTo("(Form) frmTip::Sub DisplayCurrentTip");
    if (when(on, [&] { return !Tips.empty(); }))
        on([&] {
            (*this)("lblTipText").SetCaption(Tips.at(static_cast<std::size_t>(CurrentTip - 1)));
        });
}

void frmTip::cmdNextTip_Click() {
    DoNextTip();
}

void frmTip::cmdOK_Click() {
    Runtime::Current().Unload(*this);
}

void frmTip::chkLoadTipsAtStartup_Click() {
    Runtime::Current().SaveSetting("Options", "Show Tips at Startup",
                                   CStr((*this)("chkLoadTipsAtStartup").Value()));
}
