#include "plain_site.h"

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Row {
    std::string stockNo, name, description, picture;
    double retail = 0;
};

std::vector<Row> readRows(const std::string& catalogue) {
    std::vector<Row> rows;
    sqlite3* db = nullptr;
    sqlite3_open_v2(catalogue.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db,
                       "SELECT StockNo, ProdName, ProdDesc, Picture, Retail FROM Products "
                       "ORDER BY StockNo",
                       -1, &st, nullptr);
    auto text = [st](int col) {
        const unsigned char* t = sqlite3_column_text(st, col);
        return t ? std::string(reinterpret_cast<const char*>(t)) : std::string();
    };
    while (sqlite3_step(st) == SQLITE_ROW)
        rows.push_back({text(0), text(1), text(2), text(3), sqlite3_column_double(st, 4)});
    sqlite3_finalize(st);
    sqlite3_close(db);
    return rows;
}

// "$ #,###.00" for the benchmark's prices (at least 1).
std::string money(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.2f", value);
    std::string whole(digits, std::string(digits).find('.'));
    for (int at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3)
        whole.insert(static_cast<std::size_t>(at), ",");
    return "$ " + whole + std::string(digits).substr(std::string(digits).find('.'));
}

const std::string kFont = "<font face='Georgia'><font size='3' color='#333333'>";
const std::string kEnd = "</font></font></a></p>\r\n";

void cell(std::string& out, const Row& r) {
    const std::string link = "<p align='Center'><a href=\"" + r.picture + "\">";
    out += "<td width=33.3333333333333% height=100% align='Center' valign='Top' \r\n";
    out += link + kFont + r.stockNo + kEnd;
    out += "<p align='Center'>" + kFont + r.name + kEnd;
    out += "<br><p align='Center'>" + kFont + "Hand made" + kEnd;
    out += link + "<img border=1 dynsrc=\"" + r.picture + "\"width=100'></a></p>\r\n";
    out += "<p align='Center'>" + kFont + "Retail: " + money(r.retail) + "</font></font></p>\r\n";
    out +=
        "<p align='Center'><a href='" + r.stockNo + ".htm'>" + kFont + "Click For Details" + kEnd;
    out += "<p></td>\r\n";
}

void detail(std::string& out, const Row& r, long page) {
    out += "<body bgcolor='#FFFFFF'>\r\n";
    out += "<a href='catpage" + std::to_string(page) +
           ".htm'><p align='Center'><font face='Georgia'><font size='5' "
           "color='#333333'><b>Click Here To Return</b></font></font></a></p>\r\n";
    out += "<p align='Center'>" + kFont + r.name + "</font></font></p>\r\n";
    out += "<p align='Center'><img border=1 dynsrc=\"" + r.picture + "\" height=100%></p>\r\n";
    out += "<p align='Center'>" + kFont +
           (r.description.empty() ? "No Description Available!" : r.description) + kEnd;
    out += "<p align='Center'>" + kFont + "Retail: " + money(r.retail) + "</font></font></p>\r\n";
    out += "<br><p align='Center'>" + kFont + "Ask us about custom orders" + kEnd;
}

void save(const std::string& path, const std::string& text) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), f);
    std::fclose(f);
}

std::vector<std::string> templateLines(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

void writePlainSite(const std::string& folder, const std::string& templateFile,
                    const std::string& catalogue) {
    fs::create_directories(folder);
    const std::vector<Row> rows = readRows(catalogue);
    const std::vector<std::string> lines = templateLines(templateFile);
    const long perPage = 30;
    const long pages = (static_cast<long>(rows.size()) + perPage - 1) / perPage;
    std::string out;
    for (long page = 1; page <= pages; ++page) {
        out.clear();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const std::string& line = lines[i];
            if (line.find("PageName0") != std::string::npos) {
                out += "<title>Willow Creek" + std::to_string(page) + "</title>\r\n";
            } else if (line.find("BGColor") != std::string::npos) {
                out += "<body bgcolor='#FFFFEE'>\r\n";
            } else if (line.find("PageName1") != std::string::npos) {
                out += "<p align='Center'>" + kFont + "</font></font><font face='Georgia'>" +
                       "<font size='5' color='#333333'><b>Willow Creek</b></font></font>" + kFont +
                       "</font></font></p>\r\n";
            } else if (line.find("PageAlign") != std::string::npos) {
                out += "<p align=\"center\">\r\n";
            } else if (line.find("PFont(0)") != std::string::npos) {
                out += "<font face='Georgia'>\r\n";
            } else if (line.find("PicRef") != std::string::npos) {
                out += "<tr>\r\n";
                const long first = (page - 1) * perPage;
                const long last = std::min<long>(first + perPage, static_cast<long>(rows.size()));
                for (long n = first; n < last; ++n) {
                    cell(out, rows[static_cast<std::size_t>(n)]);
                    if ((n - first) % 3 == 2) out += "</tr>\r\n<tr>\r\n";
                }
                if (++i < lines.size()) out += lines[i] + "\r\n";
            } else {
                out += line + "\r\n";
            }
        }
        save(folder + "catpage" + std::to_string(page) + ".htm", out);
    }
    for (std::size_t n = 0; n < rows.size(); ++n) {
        out.clear();
        detail(out, rows[n], static_cast<long>(n) / perPage + 1);
        save(folder + rows[n].stockNo + ".htm", out);
    }
    save(folder + "FRcatpage.htm",
         "<html>\r\n<head>\r\n<title>Contents Frame</title>\r\n</head>\r\n"
         "<frameset frameborder=0 cols=110,*>\r\n"
         "<frame src='concatpage.htm' NAME='Contents' scrolling='yes' marginwidth='1' "
         "marginheight='1'>\r\n<frameset frameborder=0 cols=100%>\r\n"
         "<frame src='catpage1.htm' NAME='RightFrame' scrolling='YES' marginwidth='1' "
         "marginheight='1'>\r\n<noframes>\r\n<body>\r\n"
         "<p>This page uses frames, but your browser doesn't support them.\r\n</body>\r\n"
         "</noframes>\r\n</frameset>\r\n</frameset>\r\n</html>\r\n");
    out =
        "<html>\r\n<head>\r\n<title>Contents Frame</title>\r\n</head>\r\n<body>\r\n"
        "<body bgcolor='#FFFFEE'>\r\n"
        "<p align='center'><font face='Georgia'><font size='4' color='#333333'>\r\n"
        "Current Pages\r\n</center></font>\r\n"
        "<p align='center'><font face='Georgia'><font size='3' color='#333333'><b>\r\n";
    for (long page = 1; page <= pages; ++page)
        out += "<a HREF=catpage" + std::to_string(page) +
               ".htm target='RightFrame'><font color='#333333'> Page # " + std::to_string(page) +
               "</font></a>\r\n<br>\r\n";
    out += "</font></font></p><br>\r\n</body>\r\n</html>\r\n";
    save(folder + "concatpage.htm", out);
}
