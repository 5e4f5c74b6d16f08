#pragma once

#include <string>
#include <vector>

// One generated product of the site benchmark.
struct SiteItem {
    std::string stockNo, name, description, picture;  // picture "" is Null
    double retail = 0, cost = 0;
};

// `rows` products with stock numbers P000000 up; seven of ten have one of twenty pictures,
// which are made in `appDir`/Pictures.
std::vector<SiteItem> generateItems(int rows, const std::string& appDir);
// A catalogue at `path` holding the items.
void fillCatalogue(const std::string& path, const std::string& appDir,
                   const std::vector<SiteItem>& items);

// Hugo builds a site from `folder`: a content file per item (its detail page) and a list of
// them 30 to a page, with a contents page of the list's pages and a frameset. The seconds
// of `hugo` itself, or -1 when it is not on the PATH.
double buildWithHugo(const std::string& folder, const std::vector<SiteItem>& items);
long countHugoPages(const std::string& publicFolder);
