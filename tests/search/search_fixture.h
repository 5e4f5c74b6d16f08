#pragma once

#include <deque>
#include <functional>
#include <string>

#include "base/convert.h"
#include "program_fixture.h"
#include "records/pane.h"
#include "search/search_form.h"
#include "shell/module.h"

// The program with a user who acts inside each wait, one queued action per wait: clicks
// on the search form, the CONTINUE link of the pane. A wait with nothing left to do ends
// the run, so a test never hangs.
struct SearchTest : ProgramTest {
    std::deque<std::function<void()>> actions;
    bool stuck = false;

    SearchTest() {
        setting("Options", "Show Tips at Startup", "0");
        ui.onWait = [this] {
            if (actions.empty()) {
                stuck = true;
                throw ProgramEnded{};
            }
            auto action = std::move(actions.front());
            actions.pop_front();
            action();
        };
    }

    // The next user action, taken in the next wait.
    void then(std::function<void()> action) { actions.push_back(std::move(action)); }
    // The user follows the CONTINUE link of the page in the pane.
    void thenContinue() {
        then([this] { ui.pane().UserNavigate("about:blankCONTINUE"); });
    }

    Products& f() { return form(); }
    Search& searchForm() {
        Form* s = rt->Loaded("Search");
        if (!s) throw std::runtime_error("the Search form is not loaded");
        return static_cast<Search&>(*s);
    }
    Control& on(const std::string& name, int index = -1) { return searchForm()(name, index); }
    void click(const std::string& name, int index = -1) {
        Control& c = on(name, index);
        if (c.Kind() == ControlKind::OptionButton)
            c.SetValue(Variant(true));
        else if (c.Kind() == ControlKind::CheckBox)
            c.SetValue(Variant::Integer(CDbl(c.Value()) != 0 ? 0 : 1));
        else
            c.Raise("Click");
    }

    std::string status() { return f()("lblStatus").Caption(); }
    std::string stockNo() { return f()("txtFields", 27).Text(); }
    std::string preview() { return on("Text1").Text(); }
    std::string paneText() { return ui.pane().DocumentText(); }
    static std::string var(const Variant& v) { return textOf(v); }
    long count() { return f().adoPrimaryRS->RecordCount(); }

    // Stock numbers of the main record set in its present order.
    std::string rows() {
        std::string out;
        Recordset& rs = *f().adoPrimaryRS;
        if (rs.RecordCount() == 0) return out;
        Variant at = rs.Bookmark();
        for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
            out += CStr(rs.Fields("StockNo").Value()) + " ";
        rs.SetBookmark(at);
        return out;
    }
};
