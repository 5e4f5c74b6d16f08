#include "reports/report_design.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/fold.h"
#include "base/vb_error.h"

namespace {

[[noreturn]] void refuse(int line, const std::string& why) {
    throw VbError(vberr::InvalidProcedureCall,
                  "Not a report file: line " + std::to_string(line) + ": " + why);
}

// A line's words: blanks part them; "quoted text" (with \" and \\) is one word, and so is
// a name in brackets with blanks inside ("[Order ID]*Cost").
std::vector<std::string> wordsOf(std::string_view line, int lineNo) {
    std::vector<std::string> words;
    std::size_t i = 0;
    while (i < line.size()) {
        if (std::isspace(static_cast<unsigned char>(line[i]))) {
            ++i;
            continue;
        }
        std::string word;
        if (line[i] == '"') {
            for (++i; i < line.size() && line[i] != '"'; ++i) {
                if (line[i] == '\\' && i + 1 < line.size()) ++i;
                word += line[i];
            }
            if (i >= line.size()) refuse(lineNo, "a quote is not closed");
            ++i;
        } else {
            while (i < line.size() && !std::isspace(static_cast<unsigned char>(line[i]))) {
                if (line[i] == '[') {
                    const std::size_t close = line.find(']', i);
                    if (close == std::string_view::npos) refuse(lineNo, "a bracket is not closed");
                    word.append(line.substr(i, close + 1 - i));
                    i = close + 1;
                } else {
                    word += line[i++];
                }
            }
        }
        words.push_back(word);
    }
    return words;
}

// A column's name without its brackets: "[Order ID]" is "Order ID".
std::string nameOf(std::string_view word) {
    std::string name;
    for (char c : word)
        if (c != '[' && c != ']') name += c;
    return name;
}

int numberOf(const std::string& word, int lineNo) {
    if (word.empty() || word.size() > 4 ||
        word.find_first_not_of("0123456789") != std::string::npos)
        refuse(lineNo, "\"" + word + "\" is not a number");
    return std::stoi(word);
}

void need(const std::vector<std::string>& words, std::size_t count, int lineNo) {
    if (words.size() < count) refuse(lineNo, "\"" + words[0] + "\" needs more");
}

// column SOURCE "Caption" WIDTH [mask "MASK"] [sum] [right]
ReportColumn columnOf(const std::vector<std::string>& words, int lineNo) {
    need(words, 4, lineNo);
    ReportColumn column;
    std::string_view source = words[1];
    for (std::size_t start = 0;;) {
        const std::size_t star = source.find('*', start);
        const std::string factor = nameOf(source.substr(start, star - start));
        if (factor.empty()) refuse(lineNo, "a column has no name");
        column.factors.push_back(factor);
        if (star == std::string_view::npos) break;
        start = star + 1;
    }
    column.caption = words[2];
    column.width = std::max(1, numberOf(words[3], lineNo));
    for (std::size_t i = 4; i < words.size(); ++i) {
        const std::string word = foldCase(words[i]);
        if (word == "mask" && i + 1 < words.size()) {
            column.mask = words[++i];
        } else if (word == "sum") {
            column.sum = true;
        } else if (word == "right") {
            column.right = true;
        } else {
            refuse(lineNo, "\"" + words[i] + "\" is no option of a column");
        }
    }
    column.right = column.right || column.sum || !column.mask.empty() || column.factors.size() > 1;
    return column;
}

// sort COLUMN [desc] [COLUMN [desc] ...]
std::vector<ReportSortKey> sortOf(const std::vector<std::string>& words) {
    std::vector<ReportSortKey> keys;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (equalFolded(words[i], "desc") && !keys.empty())
            keys.back().descending = true;
        else if (!equalFolded(words[i], "asc"))
            keys.push_back({nameOf(words[i]), false});
    }
    return keys;
}

}  // namespace

ReportDesign parseReportDesign(std::string_view text) {
    ReportDesign d;
    std::istringstream in{std::string(text)};
    int lineNo = 0;
    for (std::string line; std::getline(in, line);) {
        ++lineNo;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::vector<std::string> words = wordsOf(line, lineNo);
        if (words.empty() || words[0][0] == '#') continue;
        const std::string key = foldCase(words[0]);
        if (key == "column") {
            d.columns.push_back(columnOf(words, lineNo));
            continue;
        }
        if (key == "sort") {
            d.sort = sortOf(words);
            continue;
        }
        need(words, 2, lineNo);
        if (key == "title") {
            d.title = words[1];
        } else if (key == "table") {
            d.table = nameOf(words[1]);
        } else if (key == "where") {
            d.where = words[1];
        } else if (key == "join") {
            // join TABLE on FROM = TO
            if (words.size() != 6 || !equalFolded(words[2], "on") || words[4] != "=")
                refuse(lineNo, "a join reads: join TABLE on COLUMN = COLUMN");
            d.joinTable = nameOf(words[1]);
            d.joinFrom = nameOf(words[3]);
            d.joinTo = nameOf(words[5]);
        } else if (key == "group") {
            d.group = nameOf(words[1]);
            d.groupCaption = words.size() > 2 ? words[2] : d.group;
        } else if (key == "count") {
            d.countCaption = words[1];
        } else if (key == "lines") {
            d.lines = std::clamp(numberOf(words[1], lineNo), 1, MaxReportLines);
        } else if (key == "header") {
            d.header.push_back(words[1]);
        } else if (key == "footer") {
            d.footer = words[1];
        } else {
            refuse(lineNo, "\"" + words[0] + "\" is no word of a report");
        }
    }
    if (d.table.empty()) refuse(lineNo, "the report names no table");
    if (d.columns.empty()) refuse(lineNo, "the report has no column");
    return d;
}

ReportDesign readReportDesign(const std::string& path) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) throw VbError(vberr::FileNotFound);
    std::ifstream in(path, std::ios::binary);
    if (!in) throw VbError(vberr::FileNotFound);
    std::ostringstream text;
    text << in.rdbuf();
    return parseReportDesign(text.str());
}
