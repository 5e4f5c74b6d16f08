// The desktop program: it starts on the catalogue in its program folder, every form in a
// window of its own. Installed for every user, its program folder is the user's copy
// (shell/program_folder.h).
#include <QApplication>

#include "desktop/desktop_program.h"
#include "desktop/guard.h"
#include "shell/program.h"
#include "shell/program_folder.h"

int main(int argc, char** argv) {
    desktop::prepareProcess();
    QApplication app(argc, argv);
    desktop::styleApplication(app);
    desktop::DesktopProgram program(ProgramFolder(), ProgramTitle);
    desktop::setEndedHandler([] { QApplication::exit(0); });
    if (!program.start()) return 0;
    return app.exec();
}
