#pragma once

#include <string>
#include <vector>

// One reference of a written page that names no file: the page, the attribute and its value.
struct BrokenReference {
    std::string page;
    std::string attribute;
    std::string value;
};

// What the pages of a site refer to, as a browser resolves it against each page's folder.
struct SiteReferences {
    int pages = 0;     // pages read
    int resolved = 0;  // references that name a file that exists
    int outside = 0;   // addresses of another scheme (http:, mailto:), not checked
    int empty = 0;     // empty picture sources: no picture given
    std::vector<BrokenReference> broken;
};

// Every href, src, dynsrc and background of every .htm page in `folder`, quoted with ' or "
// or bare. An empty link is the page itself; a fragment or query is cut off.
SiteReferences CheckSite(const std::string& folder);

// The attribute values of one page's text, in order, as {attribute, value}.
std::vector<std::pair<std::string, std::string>> PageReferences(const std::string& html);
