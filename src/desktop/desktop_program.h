#pragma once

#include <QString>
#include <string>

#include "desktop/qsettings_store.h"
#include "desktop/qt_ui.h"
#include "forms/runtime.h"

class QApplication;

namespace desktop {

// Before the QApplication is made: the pane's scheme, the shared GL contexts Qt WebEngine
// wants, and no sandbox for the pane's renderer when running as root.
void prepareProcess();
// The look of the windows: one style and a font small enough for the forms' twips.
void styleApplication(QApplication& app);

// The program on the desktop: the settings store, the Ui on Qt and the running program.
class DesktopProgram {
  public:
    // appPath: the program folder with its trailing separator. settingsFolder: empty for the
    // user's settings, else a folder of their own (tests).
    DesktopProgram(const std::string& appPath, const std::string& title,
                   const QString& settingsFolder = {});
    ~DesktopProgram();

    Runtime& runtime() { return rt_; }
    QtUi& ui() { return ui_; }
    // Sub Main: splash, main form, tip of the day. False when the program ended meanwhile.
    bool start();

  private:
    QSettingsStore settings_;
    QtUi ui_;
    Runtime rt_;
};

}  // namespace desktop
