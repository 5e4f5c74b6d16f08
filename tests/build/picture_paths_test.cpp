// Changing every picture's path to one new place, and copying the chosen items' pictures into
// the site's image folder.
#include <gtest/gtest.h>

#include "build/bulk.h"
#include "build/run_steps.h"
#include "folder_fixture.h"
#include "shell/module.h"
#include "webcat/web_catalogue.h"

namespace fs = std::filesystem;

namespace {

struct ChangePicPath : FolderTest {
    // Starts the change from the build menu's link, the user following "Click Here To
    // Continue" at once.
    Products& change() {
        Products& p = Mod().MainForm ? form() : start();
        continueAtOnce(p);
        link(p, "ChangePicPath");
        return p;
    }
    std::string pictures() const {
        return cat.query("SELECT Picture FROM Products ORDER BY StockNo");
    }
};

TEST_F(ChangePicPath, AFolderAndATypeNameEveryPictureByItsStockNumber) {
    addProduct("A1", "/old/a.jpg");
    addProduct("B2", "/old/b.jpg", "Notes", "'kept\r\n'");
    const std::string chosen = file("Pics/any name.gif");
    ui.msgBoxAnswer = vb::vbNo;
    ui.openAnswer = chosen;
    ui.inputAnswer = "New place";
    Products& p = change();
    EXPECT_EQ(pictures(), appDir() + "Pics/A1.gif|" + appDir() + "Pics/B2.gif");
    EXPECT_EQ(cat.query("SELECT Notes FROM Products ORDER BY StockNo"),
              "New place\r\n|kept\r\nNew place\r\n");
    EXPECT_EQ(ui.openShown.Filter,
              "Jpeg Pictures|*.jpg|Gif Pictures|*.gif|Bitmap Pictures|*.bmp|All Files|*.*");
    EXPECT_EQ(ui.inputDefaults.back(), noteDate() + " Updated Picture Path");
    EXPECT_EQ(statusAtWait, "Total Records Changed Was: 2");
    EXPECT_EQ(textOf(p("File1").Property("Pattern")), "*.gif");
    EXPECT_EQ(waits, 1);
    EXPECT_FALSE(p.ContinueFlag);
}

TEST_F(ChangePicPath, AnInternetAddressTakesASlashAndTheTypeAsTyped) {
    addProduct("A1", "/old/a.jpg");
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswers = {"http://shop.example/pics", ".JPG", ""};
    Products& p = change();
    EXPECT_EQ(pictures(), "http://shop.example/pics/A1.JPG");
    EXPECT_EQ(ui.boxes.at(1).title, "Choose Internet Address");
    EXPECT_EQ(ui.inputDefaults.at(0), "http://");
    EXPECT_EQ(ui.boxes.at(2).title, "Choose File Type");
    // An empty note leaves the notes alone.
    EXPECT_EQ(cat.query("SELECT Notes FROM Products"), "Null");
    EXPECT_EQ(pageAtWait.substr(pageAtWait.size() - 45),
              "<a href='CONTINUE'>Click Here To Continue</a>");
    EXPECT_FALSE(p.ContinueFlag);
}

TEST_F(ChangePicPath, ABaseEndingInASlashGetsASecondOne) {
    addProduct("A1", "/old/a.jpg");
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswers = {"ftp://shop.example/", ".gif", ""};
    change();
    EXPECT_EQ(pictures(), "ftp://shop.example//A1.gif");
}

TEST_F(ChangePicPath, AnUnknownTypeBringsTheErrorBoxAndAsksAgain) {
    addProduct("A1", "/old/a.jpg");
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswers = {"http://x", ".png", ".gif", ""};
    change();
    EXPECT_NE(prompts().find("That Is NOT A Valid Extention, Try Again?\n"), std::string::npos);
    EXPECT_EQ(ui.boxes.at(3).buttons, vb::vbCritical);
    EXPECT_EQ(pictures(), "http://x/A1.gif");
}

TEST_F(ChangePicPath, AnEmptyAddressEndsAtOnceWithThePaneUnchanged) {
    addProduct("A1", "/old/a.jpg");
    Products& p = start();
    const std::string before = p.Wb1().DocumentText();
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswers = {"", ".jpg"};
    change();
    EXPECT_EQ(pictures(), "/old/a.jpg");
    EXPECT_EQ(p.Wb1().DocumentText(), before);
    EXPECT_EQ(waits, 0);
}

TEST_F(ChangePicPath, AnEmptyTableChangesNothingAndReportsNone) {
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswers = {"http://x", ".jpg", "note"};
    change();
    EXPECT_EQ(statusAtWait, "Total Records Changed Was: 0");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(waits, 1);
}

TEST_F(ChangePicPath, ACancelledDialogChangesNothingAndStillWaits) {
    addProduct("A1", "/old/a.jpg");
    ui.msgBoxAnswer = vb::vbNo;
    change();
    EXPECT_EQ(pictures(), "/old/a.jpg");
    EXPECT_EQ(statusAtWait, "Total Records Changed Was: 0");
    EXPECT_EQ(waits, 1);
}

struct MoveCopy : FolderTest {
    std::string images() const { return appDir() + "Pages/images/"; }
    void choose(Products& p, std::initializer_list<const char*> stockNumbers) {
        for (const char* s : stockNumbers)
            p("List3").AddItem(s);
    }
};

TEST_F(MoveCopy, AJpgAndAGifOfOneStemAreBothCopied) {
    file("pics/a.jpg");
    file("pics/a.gif");
    file("pics/b.bmp");
    addProduct("A1", appDir() + "pics/a.bmp");
    addProduct("B2", appDir() + "pics/b.bmp");
    Products& p = start();
    choose(p, {"A1", "B2"});
    p.bulk->MoveCopy();
    EXPECT_TRUE(fs::exists(images() + "a.jpg"));
    EXPECT_TRUE(fs::exists(images() + "a.gif"));
    EXPECT_TRUE(fs::exists(images() + "b.bmp"));
    EXPECT_FALSE(fs::exists(images() + "a.bmp"));
    EXPECT_EQ(p("Label7").Caption(), "File Copy Now Completed, Copied: 3 Files");
    EXPECT_TRUE(Mod().PicturesCopied);
}

TEST_F(MoveCopy, PicturesAtInternetAddressesAndOnesAlreadyThereAreLeftOut) {
    file("pics/c.jpg", "new");
    file("Pages/images/c.jpg", "old");
    addProduct("C3", appDir() + "pics/c.jpg");
    addProduct("W4", "http://shop.example/w.jpg");
    Products& p = start();
    choose(p, {"C3", "W4"});
    p.bulk->MoveCopy();
    std::ifstream kept(images() + "c.jpg");
    std::string text;
    kept >> text;
    EXPECT_EQ(text, "old");
    EXPECT_EQ(p("Label7").Caption(), "File Copy Now Completed, Copied: ");
    EXPECT_TRUE(ui.boxes.empty());
}

// The page setup's own roads to the copy: a layout loaded with "Copy Pictures To" on, and
// the Picture field chosen in a box's list while it is on.
TEST_F(MoveCopy, ALayoutLoadedWithCopyPicturesOnCopiesTheChosenItemsPictures) {
    file("pics/d.jpg");
    file("pics/e.jpg");
    addProduct("D5", appDir() + "pics/d.jpg");
    addProduct("E6", appDir() + "pics/e.jpg");
    Products& p = start();
    folder("Pages");
    choose(p, {"D5"});
    p("chkDetail", 1).SetValue(Variant::Integer(1));
    ui.saveAnswer = appDir() + "Pages/copy.spd";
    p.webcat->SaveLoad_Click(0);
    p("chkDetail", 1).SetValue(Variant::Integer(0));
    ui.saveAnswer = appDir() + "Pages/plain.spd";
    p.webcat->SaveLoad_Click(0);
    EXPECT_FALSE(fs::exists(images() + "d.jpg"));

    ui.openAnswer = appDir() + "Pages/plain.spd";
    p.webcat->SaveLoad_Click(1);
    EXPECT_FALSE(fs::exists(images() + "d.jpg"));
    EXPECT_FALSE(Mod().PicturesCopied);

    ui.openAnswer = appDir() + "Pages/copy.spd";
    p.webcat->SaveLoad_Click(1);
    EXPECT_TRUE(fs::exists(images() + "d.jpg"));
    EXPECT_FALSE(fs::exists(images() + "e.jpg"));  // not chosen for the pages
    EXPECT_EQ(p("Label7").Caption(), "File Copy Now Completed, Copied: 1 Files");
    EXPECT_TRUE(Mod().PicturesCopied);
}

TEST_F(MoveCopy, ChoosingThePictureFieldWithCopyPicturesOnCopies) {
    file("pics/f.gif");
    addProduct("F7", appDir() + "pics/f.gif");
    Products& p = start();
    choose(p, {"F7"});
    p("lstAll", 2).SetListIndex(30);
    EXPECT_FALSE(fs::exists(images() + "f.gif"));
    p("chkDetail", 1).SetValue(Variant::Integer(1));
    p("lstAll", 2).SetListIndex(0);
    p("lstAll", 2).SetListIndex(30);
    EXPECT_TRUE(fs::exists(images() + "f.gif"));
    EXPECT_EQ(p("Label7").Caption(), "File Copy Now Completed, Copied: 1 Files");
}

}  // namespace
