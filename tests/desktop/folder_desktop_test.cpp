// Adding a folder of pictures in the real window: the build menu's link, the file seeker
// showing this machine's folders and files while the open dialog asks for the folder, the
// totals page, "Click Here To Continue", and the first new item shown with its picture.
#include <QApplication>
#include <QFileDialog>
#include <QListWidget>
#include <QScreen>
#include <QTest>
#include <filesystem>
#include <string>

#include "desktop_fixture.h"
#include "forms/runtime.h"
#include "user_steps.h"

namespace fs = std::filesystem;

namespace {

class FolderDesktopTest : public DesktopFixture {
  protected:
    FolderDesktopTest() : DesktopFixture("Catalogue Folder Desktop Test") {}

    QStringList rows(QWidget* w) {
        QStringList all;
        if (auto* list = qobject_cast<QListWidget*>(w))
            for (int i = 0; i < list->count(); ++i)
                all << list->item(i)->text().trimmed();
        return all;
    }
};

TEST_F(FolderDesktopTest, AFolderOfPicturesBecomesItemsAndTheFirstShowsItsPicture) {
    const std::string shop = appDir() + "Shop pictures";
    fs::create_directories(shop + "/garden");
    fs::copy_file(appDir() + "Pictures/4410.jpg", shop + "/garden/Bench.jpg");
    fs::copy_file(appDir() + "Pictures/4410.jpg", shop + "/Lamp.jpg");
    start();
    ASSERT_TRUE(started_);

    // While the open dialog asks, the seeker shows the program folder's folders and files.
    QStringList folders, files;
    UserSteps user(4 * Patience);
    user.then(
        "the open dialog beside the seeker",
        [] {
            return UserSteps::waiting<QFileDialog>() &&
                   Runtime::Current().Loaded("WinSeek") != nullptr;
        },
        [&] {
            Form& seek = *Runtime::Current().Loaded("WinSeek");
            folders = rows(widget(seek, "dirList"));
            files = rows(widget(seek, "filList"));
            EXPECT_TRUE(window(seek).window()->grab().save(QStringLiteral(FOLDER_SCREENSHOT)));
        });
    // The kind of files, then the file typed into the name box.
    user.answerFile("the open dialog", QString::fromStdString(shop + "/Lamp.jpg"), [] {
        auto* dialog = UserSteps::waiting<QFileDialog>();
        const QString jpgs = dialog->nameFilters().value(1);
        if (dialog->selectedNameFilter() != jpgs) dialog->selectNameFilter(jpgs);
    });
    user.then(
        "the totals page", [&] { return showsLink("CONTINUE"); },
        [&] {
            EXPECT_TRUE(shownHtml().contains("New Files Added : 2"));
            EXPECT_TRUE(clickInPage("a[href='CONTINUE']"));
        });
    QTest::mouseClick(widget(form(), "cmdAddAll"), Qt::LeftButton);
    ASSERT_TRUE(paneShows("Make Selection below"));
    ASSERT_TRUE(clickInPage("a[href='Folder']"));
    ASSERT_TRUE(user.finished(4 * Patience)) << "the user was still waiting for " << user.next();
    EXPECT_TRUE(folders.contains("Shop pictures")) << folders.join("|").toStdString();
    EXPECT_TRUE(folders.contains("Pictures")) << folders.join("|").toStdString();
    EXPECT_TRUE(files.contains("tandrel2004.mde")) << files.join("|").toStdString();

    ASSERT_TRUE(waitFor([&] { return !form().ContinueFlag && status().startsWith("Record:"); }));
    // The first new item, found with the quick search box.
    QTest::mouseClick(widget(form(), "Command21"), Qt::LeftButton);
    QWidget* box = widget(form(), "txtSrch");
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::keyClicks(box, "BENCH.JPG");
    QTest::mouseClick(widget(form(), "cmdSearch"), Qt::LeftButton);
    ASSERT_TRUE(waitFor([&] { return stockNo() == "BENCH.JPG"; })) << stockNo();
    ASSERT_TRUE(paneShows("Bench.jpg"));
    // The picture itself is shown: the image of the page has loaded with its size.
    EXPECT_TRUE(waitFor([&] {
        return script(
                   "Array.from(document.images).some(i => i.src.includes('Bench.jpg') && "
                   "i.complete && i.naturalWidth > 0)")
            .toBool();
    }));
}

}  // namespace
