#include "site_links.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const char* const kAttributes[] = {"href", "src", "dynsrc", "background"};

std::string lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

bool nameChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_';
}

// The value after `=` at `at`, quoted or bare; `end` is where it stops.
std::string valueAt(const std::string& html, std::size_t at, std::size_t& end) {
    while (at < html.size() && (html[at] == ' ' || html[at] == '\t'))
        ++at;
    if (at < html.size() && (html[at] == '"' || html[at] == '\'')) {
        const std::size_t close = html.find(html[at], at + 1);
        if (close == std::string::npos) {
            end = html.size();
            return html.substr(at + 1);
        }
        end = close + 1;
        return html.substr(at + 1, close - at - 1);
    }
    end = at;
    while (end < html.size() && !std::isspace(static_cast<unsigned char>(html[end])) &&
           html[end] != '>')
        ++end;
    return html.substr(at, end - at);
}

bool hasScheme(const std::string& value) {
    const std::size_t colon = value.find(':');
    if (colon == std::string::npos || colon < 2) return false;  // "C:" is a drive, not a scheme
    return std::all_of(value.begin(), value.begin() + static_cast<long>(colon),
                       [](char c) { return std::isalpha(static_cast<unsigned char>(c)); });
}

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

std::vector<std::pair<std::string, std::string>> PageReferences(const std::string& html) {
    std::vector<std::pair<std::string, std::string>> found;
    const std::string low = lower(html);
    std::size_t at = 0;
    while ((at = low.find('<', at)) != std::string::npos) {
        const std::size_t close = low.find('>', at);
        const std::size_t tagEnd = close == std::string::npos ? low.size() : close;
        std::size_t i = at + 1;
        while (i < tagEnd) {
            bool matched = false;
            for (const char* name : kAttributes) {
                const std::string attr = name;
                if (low.compare(i, attr.size(), attr) != 0 || nameChar(low[i - 1])) continue;
                std::size_t eq = i + attr.size();
                while (eq < tagEnd && low[eq] == ' ')
                    ++eq;
                if (eq >= tagEnd || low[eq] != '=') continue;
                std::size_t end = eq + 1;
                found.emplace_back(attr, valueAt(html, eq + 1, end));
                i = end;
                matched = true;
                break;
            }
            if (!matched) ++i;
        }
        at = tagEnd;
    }
    return found;
}

SiteReferences CheckSite(const std::string& folder) {
    SiteReferences result;
    std::vector<fs::path> pages;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file() && lower(entry.path().extension().string()) == ".htm")
            pages.push_back(entry.path());
    std::sort(pages.begin(), pages.end());
    for (const fs::path& page : pages) {
        result.pages += 1;
        for (auto [attribute, value] : PageReferences(readFile(page))) {
            value = value.substr(0, value.find_first_of("#?"));
            if (hasScheme(value)) {
                result.outside += 1;
                continue;
            }
            if (value.empty() && attribute != "href") {
                result.empty += 1;
                continue;
            }
            const fs::path target = value.empty()          ? page
                                    : value.front() == '/' ? fs::path(value)
                                                           : page.parent_path() / value;
            if (fs::is_regular_file(target))
                result.resolved += 1;
            else
                result.broken.push_back({page.filename().string(), attribute, value});
        }
    }
    return result;
}
