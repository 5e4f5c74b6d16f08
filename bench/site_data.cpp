#include "site_data.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "store/catalogue_builder.h"
#include "store/sqlite_file.h"

namespace fs = std::filesystem;

namespace {

std::string quoted(const std::string& text) {
    return text.empty() ? "NULL" : "'" + text + "'";
}

}  // namespace

std::vector<SiteItem> generateItems(int rows, const std::string& appDir) {
    fs::create_directories(appDir + "Pictures");
    for (int p = 0; p < 20; ++p)
        std::ofstream(appDir + "Pictures/pic" + std::to_string(p) + ".jpg", std::ios::binary)
            << "JPEG " << p;
    std::vector<SiteItem> items;
    items.reserve(static_cast<std::size_t>(rows));
    for (int i = 0; i < rows; ++i) {
        char stock[16];
        std::snprintf(stock, sizeof stock, "P%06d", i);
        SiteItem item;
        item.stockNo = stock;
        item.name = "Item " + std::to_string(i);
        item.description = "A useful thing, number " + std::to_string(i % 997) + " of its kind.";
        if (i % 10 < 7) item.picture = appDir + "Pictures/pic" + std::to_string(i % 20) + ".jpg";
        item.cost = 1 + (i % 80);
        item.retail = item.cost * 2 + 0.5;
        items.push_back(item);
    }
    return items;
}

void fillCatalogue(const std::string& path, const std::string& appDir,
                   const std::vector<SiteItem>& items) {
    buildCatalogue(path, appDir, {SCHEMA_SQL});
    auto file = SqliteFile::open(path);
    file->execScript("BEGIN");
    constexpr std::size_t kBatch = 1000;
    for (std::size_t start = 0; start < items.size(); start += kBatch) {
        std::string sql =
            "INSERT INTO Products (PID, StockNo, ProdName, ProdDesc, PageNo, Category, Retail, "
            "Cost1, Picture) VALUES ";
        for (std::size_t i = start; i < std::min(items.size(), start + kBatch); ++i) {
            const SiteItem& it = items[i];
            sql += std::string(i > start ? "," : "") + "(" + std::to_string(i + 1) + ",'" +
                   it.stockNo + "','" + it.name + "','" + it.description + "','" +
                   std::to_string(i % 400 + 1) + "','Cat" + std::to_string(i % 20) + "'," +
                   std::to_string(it.retail) + "," + std::to_string(it.cost) + "," +
                   quoted(it.picture) + ")";
        }
        file->execScript(sql + ";");
    }
    file->execScript("COMMIT");
}

namespace {

void writeText(const std::string& path, const std::string& text) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

// Templates as simple as the program's pages: a cell per item 30 to a page, a detail page
// per item with its link back, the contents page of the list's pages and a frameset.
void writeHugoSite(const std::string& folder, const std::vector<SiteItem>& items) {
    const long pages = (static_cast<long>(items.size()) + 29) / 30;
    writeText(folder + "config.toml",
              "baseURL = '/'\nuglyURLs = true\npaginate = 30\n"
              "disableKinds = ['taxonomy', 'term', 'RSS', 'sitemap', 'robotsTXT', '404']\n");
    writeText(folder + "layouts/_default/list.html",
              "<html><head><title>{{ .Title }}</title></head><body><table><tr>\n"
              "{{ range $i, $p := (.Paginate (.Pages.ByParam \"stock\") 30).Pages }}"
              "<td><p><a href=\"{{ $p.Params.picture }}\">{{ $p.Params.stock }}</a></p>\n"
              "<p>{{ $p.Title }}</p><p><img src=\"{{ $p.Params.picture }}\" width=100></p>\n"
              "<p>Retail: {{ $p.Params.retail }}</p><p><a href=\"{{ $p.RelPermalink }}\">"
              "Click For Details</a></p></td>\n{{ if eq (mod $i 3) 2 }}</tr><tr>{{ end }}"
              "{{ end }}</tr></table></body></html>\n");
    writeText(folder + "layouts/_default/single.html",
              "<html><body><a href=\"{{ .Params.back }}\">Click Here To Return</a>\n"
              "<p>{{ .Title }}</p><p><img src=\"{{ .Params.picture }}\"></p>\n"
              "<p>{{ .Params.description }}</p><p>Retail: {{ .Params.retail }}</p>"
              "</body></html>\n");
    writeText(folder + "layouts/index.html",
              "<html><frameset cols=110,*><frame src=\"/contents.html\" name=Contents>"
              "<frame src=\"/items.html\" name=RightFrame></frameset></html>\n");
    writeText(folder + "layouts/_default/contents.html",
              "<html><body><p>Current Pages</p>\n{{ range .Params.pages }}"
              "<a href=\"/items/page/{{ . }}.html\" target=RightFrame>Page # {{ . }}</a><br>\n"
              "{{ end }}</body></html>\n");
    std::string numbers;  // Hugo's seq stops at 2,000
    for (long n = 1; n <= pages; ++n)
        numbers += (n > 1 ? ", " : "") + std::to_string(n);
    writeText(folder + "content/contents.md",
              "---\ntitle: Contents\nlayout: contents\npages: [" + numbers + "]\n---\n");
    writeText(folder + "content/items/_index.md", "---\ntitle: Catalogue\n---\n");
    for (std::size_t i = 0; i < items.size(); ++i) {
        const SiteItem& it = items[i];
        char retail[32];
        std::snprintf(retail, sizeof retail, "%.2f", it.retail);
        writeText(folder + "content/items/" + it.stockNo + ".md",
                  "---\ntitle: \"" + it.name + "\"\nstock: " + it.stockNo + "\ndescription: \"" +
                      it.description + "\"\npicture: \"" + it.picture + "\"\nretail: " + retail +
                      "\nback: /items/page/" + std::to_string(i / 30 + 1) + ".html\n---\n");
    }
}

}  // namespace

double buildWithHugo(const std::string& folder, const std::vector<SiteItem>& items) {
    if (std::system("hugo version > /dev/null 2>&1") != 0) return -1;
    fs::remove_all(folder);
    writeHugoSite(folder, items);
    const std::string command = "cd " + folder + " && hugo --quiet -d public > hugo.log 2>&1";
    const auto t0 = std::chrono::steady_clock::now();
    if (std::system(command.c_str()) != 0) {
        std::printf("hugo failed: see %shugo.log\n", folder.c_str());
        return -1;
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

long countHugoPages(const std::string& publicFolder) {
    long pages = 0;
    for (const auto& entry : fs::recursive_directory_iterator(publicFolder))
        pages += entry.is_regular_file() && entry.path().extension() == ".html";
    return pages;
}
