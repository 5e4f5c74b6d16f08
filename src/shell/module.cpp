#include "shell/module.h"

#include <memory>

#include "base/vb_error.h"
#include "forms/runtime.h"

namespace {

std::unique_ptr<Module>& current() {
    static std::unique_ptr<Module> module = std::make_unique<Module>();
    return module;
}

Variant integer(std::int16_t v) {
    return Variant::Integer(v);
}

template <class Read>
void add(VarTable& vars, const std::string& name, Read read) {
    vars.Add(name, [read] { return read(Mod()); });
}

Variant asVariant(std::int16_t v) {
    return integer(v);
}
Variant asVariant(const std::string& v) {
    return Variant(v);
}
Variant asVariant(const Variant& v) {
    return v;
}

// A two-dimensional array of the layout, read as "Name(side, element)"; 9 outside it.
template <class Array>
void addByIndexes(VarTable& vars, const std::string& name, Array Module::*member) {
    vars.AddArray2(name, [member](int i, int j) {
        const Array& a = Mod().*member;
        if (i < 0 || i >= static_cast<int>(a.size()) || j < 0 || j >= static_cast<int>(a[0].size()))
            throw VbError(vberr::SubscriptOutOfRange);
        return asVariant(a[i][j]);
    });
}

}  // namespace

Module& Mod() {
    return *current();
}

void startModule(Runtime& rt) {
    current() = std::make_unique<Module>();
    VarTable& vars = rt.ModuleVars();
    add(vars, "DBName", [](Module& m) { return Variant(m.DBName); });
    add(vars, "AppDir", [](Module& m) { return m.AppDir; });
    add(vars, "PictureDir", [](Module& m) { return m.PictureDir; });
    add(vars, "LoopI", [](Module& m) { return integer(m.LoopI); });
    add(vars, "LoopJ", [](Module& m) { return integer(m.LoopJ); });
    add(vars, "StartingUp", [](Module& m) { return Variant(m.StartingUp); });
    add(vars, "HelpShowing", [](Module& m) { return m.HelpShowing; });
    add(vars, "HelpPage", [](Module& m) { return m.HelpPage; });
    add(vars, "HelpPageFile", [](Module& m) { return m.HelpPageFile; });
    vars.AddArray("Marks", [](int i) {
        if (i < 0 || i >= static_cast<int>(Mod().Marks.size()))
            throw VbError(vberr::SubscriptOutOfRange);
        return integer(Mod().Marks[i]);
    });
    add(vars, "MarkRow", [](Module& m) { return integer(m.MarkRow); });
    add(vars, "LastUrl", [](Module& m) { return Variant(m.LastUrl); });
    add(vars, "ThumbsMode", [](Module& m) { return Variant(m.ThumbsMode); });
    add(vars, "DeleteChoice", [](Module& m) { return m.DeleteChoice; });
    add(vars, "BulkEditMode", [](Module& m) { return Variant(m.BulkEditMode); });
    add(vars, "SearchCriteria", [](Module& m) { return m.SearchCriteria; });
    add(vars, "SearchFormOpen", [](Module& m) { return m.SearchFormOpen; });
    add(vars, "SoldQty", [](Module& m) { return integer(m.SoldQty); });
    add(vars, "SaleQty", [](Module& m) { return integer(m.SaleQty); });
    add(vars, "SaleMode", [](Module& m) { return Variant(m.SaleMode); });
    add(vars, "SalePrice", [](Module& m) { return m.SalePrice; });
    add(vars, "PassedKey", [](Module& m) { return m.PassedKey; });
    add(vars, "OrderOpen", [](Module& m) { return m.OrderOpen; });
    add(vars, "ViewOrderKey", [](Module& m) { return m.ViewOrderKey; });
    add(vars, "SearchOrder", [](Module& m) { return m.SearchOrder; });
    add(vars, "SearchField", [](Module& m) { return m.SearchField; });
    add(vars, "SearchOperator", [](Module& m) { return m.SearchOperator; });
    add(vars, "SearchOpen", [](Module& m) { return m.SearchOpen; });
    add(vars, "SearchClose", [](Module& m) { return m.SearchClose; });
    add(vars, "SearchAccum", [](Module& m) { return m.SearchAccum; });
    add(vars, "ReverseOrder", [](Module& m) { return Variant(m.ReverseOrder); });
    add(vars, "OrderTotals", [](Module& m) { return m.OrderTotals; });
    add(vars, "OrderTaxRate", [](Module& m) { return m.OrderTaxRate; });
    add(vars, "NewOrder", [](Module& m) { return m.NewOrder; });
    add(vars, "TipsAsked", [](Module& m) { return Variant(m.TipsAsked); });
    add(vars, "ItemsPerRow", [](Module& m) { return integer(m.ItemsPerRow); });
    add(vars, "ItemsPerPage", [](Module& m) { return integer(m.ItemsPerPage); });
    add(vars, "PageAlign", [](Module& m) { return Variant(m.PageAlign); });
    add(vars, "ImageSizeAttr", [](Module& m) { return Variant(m.ImageSizeAttr); });
    add(vars, "ImageBorder", [](Module& m) { return m.ImageBorder; });
    add(vars, "LayoutSide", [](Module& m) { return m.LayoutSide; });
    addByIndexes(vars, "FontSizeOf", &Module::FontSizeOf);
    addByIndexes(vars, "FontColorOf", &Module::FontColorOf);
    addByIndexes(vars, "FontNameOf", &Module::FontNameOf);
    addByIndexes(vars, "BoldOn", &Module::BoldOn);
    addByIndexes(vars, "ItalicOn", &Module::ItalicOn);
    addByIndexes(vars, "StrikeOn", &Module::StrikeOn);
    addByIndexes(vars, "UnderlineOn", &Module::UnderlineOn);
    addByIndexes(vars, "CloseTags", &Module::CloseTags);
    addByIndexes(vars, "BoxField", &Module::BoxField);
    addByIndexes(vars, "BoxOrder", &Module::BoxOrder);
    addByIndexes(vars, "BoxListIndex", &Module::BoxListIndex);
}
