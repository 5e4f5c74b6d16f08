#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/variant.h"

class Products;
class Runtime;

// The variables that every form of the program shares. They exist once per run of the
// program and start zero or empty.
struct Module {
    template <class T>
    using Layout = std::array<std::array<T, 21>, 2>;  // side 0 catalogue page, 1 detail page

    Products* MainForm = nullptr;
    std::string DBName;
    Variant AppDir;
    Variant PictureDir;
    std::int16_t LoopI = 0, LoopJ = 0;
    bool StartingUp = false;
    Variant HelpShowing;
    Variant HelpPage;
    Variant HelpPageFile;
    std::vector<std::int16_t> Marks;
    std::int16_t MarkRow = 0;
    std::string LastUrl;
    bool ThumbsMode = false;
    Variant DeleteChoice;
    bool BulkEditMode = false;
    Variant SearchCriteria;
    Variant SearchFormOpen;
    std::int16_t SoldQty = 0;
    std::int16_t SaleQty = 0;
    bool SaleMode = false;
    Variant SalePrice;
    Variant PassedKey;
    Variant OrderOpen;
    Variant ViewOrderKey;
    Variant SearchOrder;
    // The pieces of the condition the detailed search form is building.
    Variant SearchField;
    Variant SearchOperator;
    Variant SearchOpen;
    Variant SearchClose;
    Variant SearchAccum;
    bool ReverseOrder = false;
    Variant OrderTotals;
    Variant OrderTaxRate;
    Variant NewOrder;
    bool TipsAsked = false;

    // The page layout.
    std::int16_t ItemsPerRow = 0;
    std::int16_t ItemsPerPage = 0;
    std::string PageAlign;
    std::string ImageSizeAttr;
    Variant ImageBorder;
    Variant LayoutSide;
    Layout<std::int16_t> FontSizeOf{};
    Layout<std::string> FontColorOf;
    Layout<std::string> FontNameOf;
    Layout<std::string> BoldOn;
    Layout<std::string> ItalicOn;
    Layout<std::string> StrikeOn;
    Layout<std::string> UnderlineOn;
    Layout<std::string> CloseTags;
    std::array<std::array<std::int16_t, 9>, 2> BoxField{};
    std::array<std::array<Variant, 9>, 2> BoxOrder;
    std::array<std::array<Variant, 31>, 2> BoxListIndex;
};

// The shared variables of the running program.
Module& Mod();

// A fresh start of the program: every shared variable back to zero or empty, and each made
// readable by name in the runtime's module variables.
void startModule(Runtime& rt);
