// The help set that ships in the program folder: every page it links to and every picture
// it shows is there, so a user who follows the help never lands on a missing page.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path Help = fs::path(SOURCE_DIR) / "data" / "program" / "Help";

// The values of one attribute (href or src) in a page, in the order they stand.
std::vector<std::string> references(const std::string& page, const std::string& attribute) {
    std::vector<std::string> found;
    const std::string key = attribute + "=\"";
    for (auto at = page.find(key); at != std::string::npos; at = page.find(key, at)) {
        at += key.size();
        found.push_back(page.substr(at, page.find('"', at) - at));
    }
    return found;
}

std::string read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(HelpPages, EveryLinkAndPictureOfTheHelpSetIsAFileOfIt) {
    std::set<std::string> pages;
    for (const auto& entry : fs::directory_iterator(Help))
        pages.insert(entry.path().filename());
    ASSERT_TRUE(pages.contains("index.htm"));
    int checked = 0;
    for (const std::string& name : pages) {
        if (!name.ends_with(".htm")) continue;
        const std::string page = read(Help / name);
        for (const char* attribute : {"href", "src"})
            for (const std::string& target : references(page, attribute)) {
                EXPECT_TRUE(pages.contains(target)) << name << " refers to " << target;
                ++checked;
            }
    }
    EXPECT_GT(checked, 20);
}

TEST(HelpPages, TheTextImportPageShowsTheBoardAndIsLinkedFromTheBulkPage) {
    const std::string page = read(Help / "textimport.htm");
    EXPECT_EQ(references(page, "src"), std::vector<std::string>{"board.png"});
    const auto links = references(read(Help / "intro4.htm"), "href");
    EXPECT_NE(std::find(links.begin(), links.end(), "textimport.htm"), links.end());
}

// The pages a reader reaches from the contents page by following links.
std::set<std::string> reachableFromContents() {
    std::set<std::string> seen{"index.htm"};
    std::vector<std::string> queue{"index.htm"};
    while (!queue.empty()) {
        const std::string name = queue.back();
        queue.pop_back();
        for (const std::string& target : references(read(Help / name), "href"))
            if (target.ends_with(".htm") && seen.insert(target).second) queue.push_back(target);
    }
    return seen;
}

TEST(HelpPages, EveryPageOfTheHelpSetIsReachableFromTheContents) {
    const std::set<std::string> reached = reachableFromContents();
    int pages = 0;
    for (const auto& entry : fs::directory_iterator(Help)) {
        const std::string name = entry.path().filename();
        if (!name.ends_with(".htm")) continue;
        EXPECT_TRUE(reached.contains(name)) << name << " cannot be reached from index.htm";
        ++pages;
    }
    EXPECT_GE(pages, 11);
}

TEST(HelpPages, TheContentsLinkTheReportsAndFileOpenPages) {
    const auto links = references(read(Help / "index.htm"), "href");
    for (const char* page : {"reports.htm", "fileopen.htm"})
        EXPECT_NE(std::find(links.begin(), links.end(), page), links.end()) << page;
}

TEST(HelpPages, TheReportsPageNamesEveryEntryOfTheMenuAndTheHeadlessCommand) {
    const std::string page = read(Help / "reports.htm");
    for (const char* caption :
         {"Cost Reports", "Cost 1 Price List", "Cost 5 Price List", "Retail Price List",
          "Category Report", "Inventory Report", "Order Report", "Page Name/Number",
          "ALL Items Report", "Browse For Report", "All Supported Reports", "Print...",
          "Export PDF...", "--report", "--pdf"})
        EXPECT_NE(page.find(caption), std::string::npos) << caption;
}

TEST(HelpPages, TheFileOpenPageNamesTheMenuEntryAndItsFileTypes) {
    const std::string page = read(Help / "fileopen.htm");
    for (const char* text :
         {"<b>File</b>", "Open Catalogue...", "Access DataBases", ".mdb", ".mde"})
        EXPECT_NE(page.find(text), std::string::npos) << text;
}

}  // namespace
