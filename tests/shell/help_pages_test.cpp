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

}  // namespace
