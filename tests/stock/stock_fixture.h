#pragma once

#include <string>
#include <vector>

#include "base/convert.h"
#include "program_fixture.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "stock/record_form.h"

// The program started on a catalogue that a test fills, with the stock forms opened as the
// Forms menu opens them; every fault reported is kept as "number tag".
struct StockTest : ProgramTest {
    std::vector<std::string> reports;

    StockTest() { setting("Options", "Show Tips at Startup", "0"); }
    ~StockTest() override { setErrorTrace(nullptr); }

    void SetUp() override {
        setErrorTrace([this](const std::string& line) {
            // "Error - <n>\r\n  In  <tag>" becomes "<n> <tag>".
            const std::string head = "Error - ", in = "\r\n  In  ";
            const auto at = line.find(in);
            reports.push_back(line.substr(head.size(), at - head.size()) + " " +
                              line.substr(at + in.size()));
        });
    }

    // Starts the program and opens the form from the Forms menu of `Products`.
    RecordForm& open(const std::string& name) {
        start();
        form()("mnuData" + name).Raise("Click");
        return loaded(name);
    }
    RecordForm& loaded(const std::string& name) {
        Form* f = rt->Loaded(name);
        if (!f) throw std::runtime_error(name + " is not loaded");
        return static_cast<RecordForm&>(*f);
    }
    static void click(Form& f, const std::string& control) { f(control).Raise("Click"); }
    static std::string box(Form& f, int index) { return f("txtFields", index).Text(); }
    static void type(Form& f, int index, const std::string& text) {
        f("txtFields", index).SetText(text);
    }
    static std::string status(Form& f) { return f("lblStatus").Caption(); }
    static void key(Form& f, int code, int shift = 0) { f.Form_KeyDown(code, shift); }
    std::string sqlText(const std::string& query) { return cat.query(query); }
};
