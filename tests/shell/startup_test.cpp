#include <gtest/gtest.h>

#include "base/convert.h"
#include "naming_faults.h"
#include "program_fixture.h"
#include "shell/module.h"
#include "vb_expect.h"

namespace {

using Startup = ProgramTest;

TEST_F(Startup, FirstStartWithNoSavedSettingsOpensTheDefaultCatalogue) {
    addProduct("A1");
    Products& f = start();
    EXPECT_EQ(Mod().DBName, appDir() + "tandrel2004.mde");
    EXPECT_EQ(f.Caption(), appDir() + "tandrel2004.mde");
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 1);
    EXPECT_EQ(f("txtFields", 27).Text(), "A1");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Startup, DBNameSetBeforeLoadIsKeptByASecondProductsForm) {
    addProduct("A1");
    Products& first = start();
    setting("Settings", "DBName", appDir() + "other.mde");
    first.mnuDataProducts_Click();
    Products& second = form();
    EXPECT_NE(&second, &first);
    EXPECT_TRUE(second.IsLoaded());
    EXPECT_EQ(second.Caption(), appDir() + "tandrel2004.mde");
    EXPECT_EQ(second.adoPrimaryRS->RecordCount(), 1);
    EXPECT_EQ(rt->MousePointer(), vb::vbDefault);
}

TEST_F(Startup, SavedDBNameOfADeletedFileShowsTheMessageThenAnEmptyWindow) {
    addProduct("A1");
    const std::string gone = appDir() + "gone.mde";
    setting("Settings", "DBName", gone);
    Products& f = start();
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_EQ(ui.boxes[0].prompt, "Can't find the database file" + gone);
    EXPECT_EQ(ui.boxes[0].buttons, vb::vbOKOnly);
    EXPECT_EQ(ui.boxes[0].title, title);
    EXPECT_FALSE(rt->Ended());
    EXPECT_TRUE(f.IsLoaded());
    EXPECT_TRUE(f.Visible());
    EXPECT_EQ(f("txtFields", 27).Text(), "");
    EXPECT_EQ(f("lblStatus").Caption(), "");
}

TEST_F(Startup, ActivatingAfterAMovePutsTheWindowBackAtTheSavedPlaceAndFixedSize) {
    setting("Settings", "MainLeft", "2000");
    setting("Settings", "MainTop", "3000");
    Products& f = start();
    f.SetNum("Left", 15);
    f.SetNum("Top", 30);
    f.SetNum("Width", 4000);
    f.SetNum("Height", 2000);
    rt->Activate(f);
    EXPECT_EQ(f.Num("Left"), 2000);
    EXPECT_EQ(f.Num("Top"), 3000);
    EXPECT_EQ(f.Num("Width"), 9480);
    EXPECT_EQ(f.Num("Height"), 7284);
}

TEST_F(Startup, ActivatingAfterASaleTakesTheSoldQuantityOffOnceOnly) {
    addProduct("A1", "", "Inventory, NoSold", "10, 2");
    addProduct("B2", "", "Inventory, NoSold", "20, 4");
    Products& f = start();
    Mod().SoldQty = 3;
    Mod().PassedKey = Variant("B2");
    rt->Activate(f);
    EXPECT_EQ(Mod().SoldQty, 0);
    EXPECT_EQ(Mod().PassedKey, Variant(""));
    EXPECT_EQ(cat.query("select Inventory from Products where StockNo = 'B2'"), "17");
    EXPECT_EQ(cat.query("select NoSold from Products where StockNo = 'B2'"), "7");
    rt->Activate(f);
    EXPECT_EQ(cat.query("select Inventory from Products where StockNo = 'B2'"), "17");
    EXPECT_EQ(cat.query("select Inventory from Products where StockNo = 'A1'"), "10");
}

TEST_F(Startup, ExitWhileMinimizedKeepsTheSettingsOfThePreviousRun) {
    setting("Settings", "MainLeft", "1234");
    setting("Settings", "DBName", appDir() + "tandrel2004.mde");
    Products& f = start();
    f.SetProperty("WindowState", Variant(1));
    f.SetNum("Left", 99);
    EXPECT_THROW(f.mnuFileExit_Click(), ProgramEnded);
    EXPECT_TRUE(rt->Ended());
    EXPECT_EQ(saved("Settings", "MainLeft"), "1234");
    EXPECT_EQ(saved("Settings", "MainWidth"), "<none>");
}

TEST_F(Startup, ExitSavesPlaceSizeAndCatalogueThenEnds) {
    Products& f = start();
    f.SetNum("Left", 1500);
    f.SetNum("Top", 1600);
    EXPECT_THROW(f.mnuFileExit_Click(), ProgramEnded);
    EXPECT_EQ(saved("Settings", "MainLeft"), "1500");
    EXPECT_EQ(saved("Settings", "MainTop"), "1600");
    EXPECT_EQ(saved("Settings", "MainWidth"), "9480");
    EXPECT_EQ(saved("Settings", "MainHeight"), "7284");
    EXPECT_EQ(saved("Settings", "DBName"), appDir() + "tandrel2004.mde");
}

TEST_F(Startup, CloseButtonEndsTheProgramThroughExit) {
    Products& f = start();
    EXPECT_THROW(f("cmdClose").Raise("Click"), ProgramEnded);
    EXPECT_EQ(saved("Settings", "DBName"), appDir() + "tandrel2004.mde");
}

TEST_F(Startup, CloseBoxWithAnOpenOrderIsRefused) {
    Products& f = start();
    f("Command2").SetVisible(true);
    EXPECT_FALSE(rt->Unload(f));
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_EQ(ui.boxes.back().prompt,
              "You Have An Open Order! Please Click On The 'Order Done' Button To Finish Your Last "
              "Order");
    EXPECT_TRUE(f.IsLoaded());
    EXPECT_FALSE(rt->Ended());
}

TEST_F(Startup, CloseBoxWithoutAnOrderEndsTheProcess) {
    Products& f = start();
    EXPECT_THROW(rt->Unload(f), ProgramEnded);
    EXPECT_TRUE(rt->Ended());
}

TEST_F(Startup, LoadFillsTheLayoutListsAndDefaults) {
    addProduct("A1");
    addProduct("B2");
    Products& f = start();
    for (int k = 0; k <= 5; ++k) {
        Control& list = f("lstAll", k);
        ASSERT_EQ(list.ListCount(), 31);
        for (int at : {0, 16, 18, 27})
            EXPECT_EQ(list.List(at), "N/A");
        EXPECT_EQ(list.List(1), "Stock #:");
        EXPECT_EQ(list.List(30), "Picture");
    }
    EXPECT_EQ(f("lstAll", 0).ListIndex(), 1);
    EXPECT_EQ(f("lstAll", 5).ListIndex(), 30);
    Control& combo = f("Combo1");
    ASSERT_EQ(combo.ListCount(), 7);
    EXPECT_EQ(combo.List(0), "Retail");
    EXPECT_EQ(combo.List(5), "Cost5");
    EXPECT_EQ(combo.List(6), "Sales Price");
    EXPECT_EQ(combo.ListIndex(), 0);
    Module& m = Mod();
    EXPECT_EQ(m.Marks.size(), 2u);
    EXPECT_EQ(m.HelpPage, Variant::Integer(-1));
    EXPECT_FALSE(m.StartingUp);
    EXPECT_EQ(m.ItemsPerRow, 4);
    EXPECT_EQ(m.PageAlign, "center");
    EXPECT_EQ(m.ImageSizeAttr, " width=100");
    EXPECT_EQ(m.FontColorOf[0][0], "#111111");
    EXPECT_EQ(m.FontSizeOf[0][0], 5);
    EXPECT_EQ(m.FontNameOf[1][20], "MS Sans Serif");
    EXPECT_EQ(m.PictureDir, Variant(appDir() + "Pictures/"));
    EXPECT_EQ(f("File1").Property("Path"), Variant(appDir() + "Pages"));
    EXPECT_EQ(f.Data1->DatabaseName(), m.DBName);
    EXPECT_EQ(f.Data2->DatabaseName(), m.DBName);
    EXPECT_EQ(m.BoxField[1][8], 10);
    EXPECT_EQ(m.BoxListIndex[0][5], Variant::Integer(30));
    EXPECT_EQ(m.BoxOrder[1][3], Variant::Integer(3));
    EXPECT_EQ(f("Label4", 2).Num("Top"),
              f("Label4", 0).Num("Top") + 2 * (f("Label4", 0).Num("Height") + 20));
    EXPECT_FALSE(f("txtFields", 19).Visible());
    EXPECT_EQ(rt->MousePointer(), vb::vbDefault);
}

TEST_F(Startup, SplashIsGoneAndTheTipShownOnceStarted) {
    start();
    EXPECT_EQ(rt->Loaded("frmSplash"), nullptr);
    ASSERT_GE(ui.shown.size(), 3u);
    EXPECT_EQ(ui.shown[0], "frmSplash");
    EXPECT_EQ(ui.shown[1], "Products");
    EXPECT_EQ(ui.shown[2], "frmTip");
}

TEST_F(Startup, RebuildOpensTheRecordSetsAgainOnTheCatalogue) {
    addProduct("B2");
    Products& f = start();
    addProduct("A1");
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 1);
    f.ReBuildDB();
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 2);
    EXPECT_EQ(f.adoprimaryrs2->RecordCount(), 2);
    EXPECT_EQ(f("txtFields", 27).Text(), "A1");
    f.cmdNext_Click();
    EXPECT_EQ(f("txtFields", 27).Text(), "B2");
    EXPECT_EQ(rt->MousePointer(), vb::vbDefault);
}

TEST_F(Startup, FormsMenuOpensTheRecordFormsModeless) {
    Products& f = start();
    ui.boxes.clear();
    const char* const forms[][2] = {
        {"mnuDatafrmOrders", "frmOrders"},       {"mnuDatafrmInvoice", "frmInvoice"},
        {"mnuDatafrmInventory", "frmInventory"}, {"mnuDatafrmSales", "frmSales"},
        {"mnuDatafrmSupplier", "frmSupplier"},   {"mnuDatafrmSetup", "frmSetup"}};
    for (const auto& [command, name] : forms) {
        f(command).Raise("Click");
        ASSERT_NE(rt->Loaded(name), nullptr) << name;
        EXPECT_TRUE(rt->Loaded(name)->Visible()) << name;
        EXPECT_EQ(ui.modal.size(), 0u) << name;
        EXPECT_EQ(rt->MousePointer(), vb::vbDefault) << name;
    }
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Startup, SharedVariablesAreReadableByName) {
    start();
    Mod().SearchCriteria = Variant("[PageNo] = '3'");
    EXPECT_EQ(rt->ModuleVars().Get("SearchCriteria"), Variant("[PageNo] = '3'"));
    EXPECT_EQ(rt->ModuleVars().Get("HelpPage"), Variant::Integer(-1));
    EXPECT_EQ(rt->ModuleVars().Get("StartingUp"), Variant(false));
}

TEST_F(Startup, TheLayoutDefaultsAreReadableBySideAndElement) {
    start();
    EXPECT_EQ(rt->ModuleVars().Get("FontColorOf(0, 0)"), Variant("#111111"));
    EXPECT_EQ(rt->ModuleVars().Get("FontSizeOf(0,0)"), Variant::Integer(5));
    EXPECT_EQ(rt->ModuleVars().Get("FontNameOf(1, 20)"), Variant("MS Sans Serif"));
    EXPECT_VBERROR(rt->ModuleVars().Get("FontNameOf(1, 21)"), 9);
}

TEST_F(Startup, AFreshStartEmptiesTheSharedVariables) {
    Mod().SoldQty = 5;
    Mod().SearchCriteria = Variant("x");
    startModule(*rt);
    EXPECT_EQ(Mod().SoldQty, 0);
    EXPECT_TRUE(Mod().SearchCriteria.IsEmpty());
}

}  // namespace
