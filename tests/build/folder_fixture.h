#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "base/convert.h"
#include "program_fixture.h"
#include "records/pane.h"
#include "shell/module.h"

// The program with a tree of files of its own beside the program folder, for the tools that
// read folders.
struct FolderTest : ProgramTest {
    FolderTest() { setting("Options", "Show Tips at Startup", "0"); }

    // A file under the program folder, its folders made as needed; its full path.
    std::string file(const std::string& relative, const std::string& text = "picture") {
        const std::filesystem::path path = std::filesystem::path(appDir()) / relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }
    std::string folder(const std::string& relative) {
        const std::string path = appDir() + relative;
        std::filesystem::create_directories(path);
        return path;
    }
    // Follows a link in the pane as the user would.
    void link(Products& p, const std::string& word) {
        bool cancel = false;
        p.Wb1().BeforeNavigate2("about:blank" + word, cancel);
    }
    // Every wait of a tool is the one for "Click Here To Continue": the user follows it,
    // having seen the page.
    void continueAtOnce(Products& p) {
        ui.onWait = [&p, this] {
            ++waits;
            pageAtWait = ui.pane().DocumentText();
            statusAtWait = p("lblStatus").Caption();
            p.ContinueFlag = true;
        };
    }
    // The prompts of the message boxes shown.
    std::string prompts() const {
        std::string all;
        for (const auto& box : ui.boxes)
            all += box.prompt + "\n";
        return all;
    }
    int waits = 0;
    std::string pageAtWait, statusAtWait;
};
