// The desktop program: it starts on the catalogue in its program folder, every form in a
// window of its own.
#include <QApplication>
#include <filesystem>

#include "desktop/desktop_program.h"
#include "desktop/guard.h"
#include "shell/program.h"

namespace {

// The folder of the running executable, with its trailing separator.
std::string programFolder() {
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string("./") : exe.parent_path().string() + "/";
}

}  // namespace

int main(int argc, char** argv) {
    desktop::prepareProcess();
    QApplication app(argc, argv);
    desktop::styleApplication(app);
    desktop::DesktopProgram program(programFolder(), ProgramTitle);
    desktop::setEndedHandler([] { QApplication::exit(0); });
    if (!program.start()) return 0;
    return app.exec();
}
