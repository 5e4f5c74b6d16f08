// What the desktop tests share: the desktop program started on a temporary copy of the
// shipped program folder with settings of its own, the windows and widgets of its forms,
// and the pane of the main form with the page it shows.
#pragma once

#include <gtest/gtest.h>

#include <QPoint>
#include <QRect>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariant>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "desktop/desktop_program.h"
#include "desktop/form_window.h"
#include "desktop/web_pane.h"
#include "shell/products.h"

class DesktopFixture : public ::testing::Test {
  protected:
    static constexpr int Patience = 20000;  // milliseconds a page or a window may take to show

    // What the program folder holds at first.
    enum class Folder { ProgramCopy, Empty };
    // Whether a user presses OK on the tip of the day once it shows while the program starts.
    enum class Tip { ClosedWithOk, Left };

    explicit DesktopFixture(std::string title, Folder folder = Folder::ProgramCopy,
                            Tip tip = Tip::ClosedWithOk);
    ~DesktopFixture() override;

    std::string appDir() const { return folder_.path().toStdString() + "/"; }

    // A value in the program's settings, and the one it holds ("<none>" when missing).
    void setting(const QString& section, const QString& key, const QString& value);
    QString saved(const QString& section, const QString& key);

    // Sub Main: started_ tells whether the program runs, ended_ whether it ended since.
    void start();

    Products& form();
    desktop::FormWindow& window(const Form& f);
    QWidget* widget(const Form& f, const std::string& name, int index = -1);
    desktop::WebPane& pane();
    std::string stockNo();
    // The main form's status line.
    QString status();

  public:
    // Runs the event loop until done() holds, at most timeout milliseconds; false when it did
    // not. It looks again after each event (a page's load, a window's paint), so the pane's
    // renderer is answered at once and nothing waits on a fixed interval.
    static bool waitFor(const std::function<bool()>& done, int timeout = Patience);

  protected:
    // The page the pane shows now, once it has finished loading.
    QString shownHtml();
    QVariant script(const QString& code);
    // Waits until the pane shows a page holding the text.
    bool paneShows(const QString& text);
    // The box that a script gives as [x, y, width, height]; empty when it gives no box.
    QRect pageBox(const QString& code);
    // A real click of the mouse at a point of the pane's page.
    void clickInPane(QPoint at);
    // A real click of the mouse on the element of the page that the selector names.
    bool clickInPage(const QString& selector);
    // Waits until the first picture of the pane's page has been drawn.
    bool paneShowsPicture();
    // Saves a picture of the window as the screen shows it, the pane's page included.
    static bool photograph(QWidget* window, const QString& path);
    // Whether the page, loaded, holds a link to the address as written.
    bool showsLink(const QString& href);

    QTemporaryDir folder_, settings_;
    std::unique_ptr<desktop::DesktopProgram> program_;
    bool started_ = false, ended_ = false, tipSeen_ = false, tipOkShows_ = false;

  private:
    QString settingsFile() const;

    const std::string title_;
    const Tip tip_;
    std::unique_ptr<QTimer> tipCloser_;
};
