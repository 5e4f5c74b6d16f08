#include "desktop/desktop_program.h"

#include <unistd.h>

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

#include "base/trap.h"
#include "desktop/web_pane.h"
#include "shell/program.h"

namespace desktop {

void prepareProcess() {
    if (geteuid() == 0 && qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    WebPane::registerScheme();
}

void styleApplication(QApplication& app) {
    if (QStyle* style = QStyleFactory::create(QStringLiteral("Fusion"))) app.setStyle(style);
    // The forms were laid out for a narrow 8-point face; a condensed one fits their boxes.
    QFont font = app.font();
    font.setFamilies({QStringLiteral("DejaVu Sans Condensed"), QStringLiteral("DejaVu Sans")});
    font.setPointSizeF(8);
    app.setFont(font);
    // Only the program ends itself (its End); closing a window asks the form.
    app.setQuitOnLastWindowClosed(false);
}

DesktopProgram::DesktopProgram(const std::string& appPath, const std::string& title,
                               const QString& settingsFolder)
    : settings_(settingsFolder), rt_(ui_, settings_, appPath, title) {
    RegisterForms(rt_);
}

DesktopProgram::~DesktopProgram() = default;

bool DesktopProgram::start() {
    try {
        SubMain();
    } catch (const ProgramEnded&) {
        return false;
    }
    return !rt_.Ended();
}

}  // namespace desktop
