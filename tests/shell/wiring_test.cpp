// Every button and menu item has its procedure, and every variable of the program's
// documents is readable by its name: a forgotten one fails here, not in a user's hands.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>

#include "program_fixture.h"
#include "search/search_form.h"

namespace {

using Names = std::set<std::string>;

std::string readFile(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// The names declared with NAMED_VAR in a header, and its plain data members, which must
// all be internal (a trailing "_", or a few named below).
struct Declared {
    Names named, plain;
};

bool isNameChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// The last name in a piece of a declaration ("std::int16_t LoopI " gives "LoopI").
std::string lastName(const std::string& text) {
    std::size_t end = text.size();
    while (end > 0 && !isNameChar(text[end - 1]))
        --end;
    std::size_t begin = end;
    while (begin > 0 && isNameChar(text[begin - 1]))
        --begin;
    return text.substr(begin, end - begin);
}

// A line such as "    Binding binding;" or "    bool retrying_ = false;": a data member.
bool declaresMember(const std::string& line) {
    const std::size_t first = line.find_first_not_of(' ');
    if (first == std::string::npos || first < 4 || line.find_first_of("()") != std::string::npos)
        return false;
    const std::string code = line.substr(first, line.find("//") - first);
    for (const char* word : {"using ", "return ", "friend ", "class ", "struct ", "enum ", "}"})
        if (code.rfind(word, 0) == 0) return false;
    const std::size_t semicolon = code.find(';');
    return semicolon != std::string::npos && code.find(' ') < semicolon;
}

Declared declaredIn(const std::string& header) {
    Declared d;
    std::istringstream lines(readFile(header));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t named = line.find("NAMED_VAR(");
        if (named != std::string::npos) {
            d.named.insert(lastName(line.substr(0, line.find(')', named))));
        } else if (declaresMember(line)) {
            const std::string code = line.substr(0, line.find_first_of("={;"));
            d.plain.insert(lastName(code));
        }
    }
    return d;
}

class Wiring : public ProgramTest {};

}  // namespace

TEST_F(Wiring, EveryButtonAndMenuItemHasAClickProcedure) {
    start();
    Names unwired;
    for (const std::string& name : rt->RegisteredNames()) {
        Form& form = rt->Get(name);
        Names menuTitles;
        for (const auto& c : form.Controls())
            if (c->Kind() == ControlKind::Menu) menuTitles.insert(c->Container());
        for (const auto& c : form.Controls()) {
            const bool command = c->Kind() == ControlKind::CommandButton ||
                                 (c->Kind() == ControlKind::Menu && !menuTitles.count(c->Name()));
            if (command && !form.HasHandler(c->Name(), "Click"))
                unwired.insert(name + "." + c->Name());
        }
    }
    EXPECT_EQ(unwired, Names{});
}

TEST_F(Wiring, TheSharedVariablesOfTheDocumentsAreReadableByName) {
    addProduct("A1");
    start();
    for (const char* name : {"MainForm",
                             "DBName",
                             "AppDir",
                             "PictureDir",
                             "LoopI",
                             "LoopJ",
                             "StartingUp",
                             "HelpShowing",
                             "HelpPage",
                             "HelpPageFile",
                             "Marks(0)",
                             "MarkRow",
                             "LastUrl",
                             "ThumbsMode",
                             "DeleteChoice",
                             "BulkEditMode",
                             "SearchCriteria",
                             "SearchFormOpen",
                             "SoldQty",
                             "SaleQty",
                             "SaleMode",
                             "SalePrice",
                             "PassedKey",
                             "OrderOpen",
                             "ViewOrderKey",
                             "ItemsPerRow",
                             "ItemsPerPage",
                             "PageAlign",
                             "ImageSizeAttr",
                             "ImageBorder",
                             "LayoutSide",
                             "FontSizeOf(1, 20)",
                             "FontColorOf(0,0)",
                             "FontNameOf(1,0)",
                             "BoldOn(0,3)",
                             "ItalicOn(0,3)",
                             "StrikeOn(0,3)",
                             "UnderlineOn(0,3)",
                             "CloseTags(1,20)",
                             "BoxField(1,8)",
                             "BoxOrder(0,0)",
                             "BoxListIndex(1,30)",
                             "NewOrder",
                             "OrderTotals(7)",
                             "SupplierClosed",
                             "SupplierUser",
                             "SupplierPassword",
                             "OrderTaxRate",
                             "SearchOrder",
                             "SearchField",
                             "SearchOperator",
                             "SearchOpen",
                             "SearchClose",
                             "SearchAccum",
                             "ReverseOrder"}) {
        EXPECT_TRUE(rt->ModuleVars().Has(name)) << name;
        EXPECT_NO_THROW(rt->ModuleVars().Get(name)) << name;
    }
    EXPECT_THROW(rt->ModuleVars().Get("BoxField(2,0)"), VbError);
    EXPECT_THROW(rt->ModuleVars().Get("Marks(99999)"), VbError);
}

TEST_F(Wiring, TheFormVariablesOfTheDocumentsAreReadableByName) {
    Products& p = start();
    for (const char* name :
         {"CatalogConn", "adoPrimaryRS", "adoprimaryrs2", "mbEditFlag", "mbAddNewFlag",
          "mbDataChanged", "mvBookMark", "ExitAfterRun", "GridClicked", "ContinueFlag",
          "LinkNumber", "LastBox", "Data1", "Data2", "Data3"})
        EXPECT_TRUE(p.Vars().Has(name)) << name;
    Form& search = rt->Get("Search");
    for (const char* name : {"SelectedField", "BooleanField", "ThenBy"})
        EXPECT_TRUE(search.Vars().Has(name)) << name;
    for (const char* name :
         {"frmOrders", "frmInvoice", "frmInventory", "frmSales", "frmSupplier", "frmSetup"})
        for (const char* var :
             {"adoPrimaryRS", "SavedBookmark", "EditFlag", "AddFlag", "ChangedFlag"})
            EXPECT_TRUE(rt->Get(name).Vars().Has(var)) << name << "." << var;
    for (const char* name : {"adoprimaryrs2", "adoprimaryrs3"})
        EXPECT_TRUE(rt->Get("frmOrders").Vars().Has(name)) << name;
}

TEST_F(Wiring, EveryVariableDeclaredInTheHeadersIsNamedAndReadable) {
    Products& p = start();
    // What the headers may hold besides the documents' variables: the binding of the
    // boxes, the parts of the main form and the Report control; and anything internal ends
    // in "_".
    const Names internal{"binding", "bulk", "webcat", "stock", "reports", "Report"};
    struct Header {
        const char* path;
        const VarTable& vars;
    };
    const Header headers[] = {{"src/shell/module.h", rt->ModuleVars()},
                              {"src/shell/products.h", p.Vars()},
                              {"src/build/bulk.h", p.Vars()},
                              {"src/webcat/web_catalogue.h", p.Vars()},
                              {"src/search/search_form.h", rt->Get("Search").Vars()},
                              {"src/stock/record_form.h", rt->Get("frmSupplier").Vars()},
                              {"src/stock/frm_orders.h", rt->Get("frmOrders").Vars()},
                              {"src/stock/ordering.h", p.Vars()},
                              {"src/reports/reports.h", p.Vars()}};
    for (const Header& h : headers) {
        Declared d = declaredIn(std::string(SOURCE_DIR) + "/" + h.path);
        const std::vector<std::string> readable = h.vars.Names();
        for (const std::string& name : d.named)
            EXPECT_NE(std::find(readable.begin(), readable.end(), name), readable.end()) << name;
        for (const std::string& name : d.plain)
            EXPECT_TRUE(name.back() == '_' || internal.count(name))
                << h.path << " declares " << name << " without its name";
    }
    EXPECT_GT(rt->ModuleVars().Names().size(), 50u);
}
