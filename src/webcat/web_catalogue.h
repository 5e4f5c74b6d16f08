#pragma once

#include "shell/products_part.h"

// The web catalogue part of the main form: the page layout, grouping and the writing of
// the site.
class WebCatalogue : public ProductsPart {
  public:
    explicit WebCatalogue(Products& form) : ProductsPart(form) {}

    // The contact sheet of the current records, `tmpthumb.htm` (webcat/thumbnails.cpp).
    void MakeThumbs();
};
