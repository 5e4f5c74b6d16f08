#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/runtime.h"
#include "forms/settings.h"
#include "recording_ui.h"
#include "shell/products.h"
#include "store/catalogue_fixture.h"

// A Ui for whole-program tests: it records the forms shown, and a wait for the user
// closes the modal form on top, as a user pressing its OK button would.
struct ProgramUi : RecordingUi {
    std::vector<std::string> shown;
    std::vector<Form*> modal;
    // When set, a wait for the user runs this instead (the user's action inside the wait).
    std::function<void()> onWait;
    void FormShown(Form& form, bool isModal) override;
    void WaitForUser() override;
    HeadlessPane& pane() { return *panes.at("Wb1"); }
};

// The program in a fresh program folder of its own: the shipped data files and an empty
// catalogue that a test fills.
class ProgramTest : public ::testing::Test {
  protected:
    // withSample: the catalogue holds the sample shop's rows, as the program ships.
    explicit ProgramTest(bool withSample = false);
    ~ProgramTest() override;

    const std::string& appDir() const { return cat.folder(); }
    // Adds a product. Text values are given as they stand; picture "" stores Null.
    void addProduct(const std::string& stockNo, const std::string& picture = "",
                    const std::string& extraColumns = "", const std::string& extraValues = "");
    // Runs the program's start; the main form.
    Products& start();
    Products& form() const;
    std::string page() const;
    std::vector<std::string> pageLines() const;
    void setting(const std::string& section, const std::string& key, const std::string& value);
    std::string saved(const std::string& section, const std::string& key) const;

    TempCatalogue cat;
    ProgramUi ui;
    MemorySettings settings;
    std::unique_ptr<Runtime> rt;
    const std::string title = "Catalogue Test";
};
