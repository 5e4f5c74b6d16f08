#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/variant.h"
#include "forms/vars.h"

class Products;
class Runtime;

// The variables that every form of the program shares. They exist once per run of the
// program and start zero or empty.
struct Module {
    template <class T>
    using Layout = std::array<std::array<T, 21>, 2>;  // side 0 catalogue page, 1 detail page
    template <class T>
    using Boxes = std::array<std::array<T, 9>, 2>;
    template <class T>
    using BoxLists = std::array<std::array<T, 31>, 2>;
    using Totals = std::array<Variant, 8>;  // entry i goes into txtFields(i) of frmInvoice

    // Each variable is readable by its name in the table given.
    explicit Module(VarTable& table) : vars_(table) {}
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    VarTable& Vars() { return vars_; }

  private:
    VarTable& vars_;

  public:
    NAMED_VAR(Products*, MainForm);
    NAMED_VAR(std::string, DBName);
    NAMED_VAR(Variant, AppDir);
    NAMED_VAR(Variant, PictureDir);
    NAMED_VAR(std::int16_t, LoopI);
    NAMED_VAR(std::int16_t, LoopJ);
    NAMED_VAR(bool, StartingUp);
    NAMED_VAR(Variant, HelpShowing);
    NAMED_VAR(Variant, HelpPage);
    NAMED_VAR(Variant, HelpPageFile);
    NAMED_VAR(std::vector<std::int16_t>, Marks);
    NAMED_VAR(std::int16_t, MarkRow);
    NAMED_VAR(std::string, LastUrl);
    NAMED_VAR(bool, ThumbsMode);
    NAMED_VAR(Variant, DeleteChoice);
    NAMED_VAR(bool, BulkEditMode);
    NAMED_VAR(Variant, SearchCriteria);
    NAMED_VAR(Variant, SearchFormOpen);
    NAMED_VAR(std::int16_t, SoldQty);
    NAMED_VAR(std::int16_t, SaleQty);
    NAMED_VAR(bool, SaleMode);
    NAMED_VAR(Variant, SalePrice);
    NAMED_VAR(Variant, PassedKey);
    NAMED_VAR(Variant, OrderOpen);
    NAMED_VAR(Variant, ViewOrderKey);
    NAMED_VAR(Variant, SearchOrder);
    // The pieces of the condition the detailed search form is building.
    NAMED_VAR(Variant, SearchField);
    NAMED_VAR(Variant, SearchOperator);
    NAMED_VAR(Variant, SearchOpen);
    NAMED_VAR(Variant, SearchClose);
    NAMED_VAR(Variant, SearchAccum);
    NAMED_VAR(bool, ReverseOrder);
    NAMED_VAR(Totals, OrderTotals);  // the running totals of the open order
    NAMED_VAR(Variant, OrderTaxRate);
    NAMED_VAR(Variant, NewOrder);
    NAMED_VAR(bool, SupplierClosed);
    NAMED_VAR(std::string, SupplierUser);
    NAMED_VAR(std::string, SupplierPassword);
    NAMED_VAR(bool, TipsAsked);

    // The page layout.
    NAMED_VAR(std::int16_t, ItemsPerRow);
    NAMED_VAR(std::int16_t, ItemsPerPage);
    NAMED_VAR(std::string, PageAlign);
    NAMED_VAR(std::string, ImageSizeAttr);
    NAMED_VAR(Variant, ImageBorder);
    NAMED_VAR(Variant, LayoutSide);
    NAMED_VAR(Layout<std::int16_t>, FontSizeOf);
    NAMED_VAR(Layout<std::string>, FontColorOf);
    NAMED_VAR(Layout<std::string>, FontNameOf);
    NAMED_VAR(Layout<std::string>, BoldOn);
    NAMED_VAR(Layout<std::string>, ItalicOn);
    NAMED_VAR(Layout<std::string>, StrikeOn);
    NAMED_VAR(Layout<std::string>, UnderlineOn);
    NAMED_VAR(Layout<std::string>, CloseTags);
    NAMED_VAR(Boxes<std::int16_t>, BoxField);
    NAMED_VAR(Boxes<Variant>, BoxOrder);
    NAMED_VAR(BoxLists<Variant>, BoxListIndex);

    // The page generator's run.
    NAMED_VAR(bool, PanelGo);  // set by every panel button and setting; ends the run's waits
    NAMED_VAR(Variant, SelectItemsMode);
    NAMED_VAR(bool, SelectDefault);
    NAMED_VAR(Variant, ItemSerial);
    NAMED_VAR(Variant, TotalPages);
};

// The shared variables of the running program.
Module& Mod();

// A fresh start of the program: every shared variable back to zero or empty, each readable
// by name in the runtime's module variables.
void startModule(Runtime& rt);
