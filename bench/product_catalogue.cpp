#include "product_catalogue.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string_view>

#include "store/catalogue_builder.h"
#include "store/sqlite_file.h"

namespace {

const char* const kPrefixes[] = {"AB", "CD", "EF", "GH", "KT", "MR",  "PL", "ST",
                                 "WX", "ZB", "QN", "LM", "RV", "TAB", "ABR"};
const char* const kCategories[] = {"Beads",  "Findings",   "Wire",      "Tools",  "Stringing",
                                   "Charms", "Pendants",   "Chain",     "Clasps", "Crystals",
                                   "Glass",  "Seed Beads", "Gemstones", "Pearls", "Metal Beads",
                                   "Cord",   "Storage",    "Books",     "Kits",   "Polymer Clay"};
const char* const kSuppliers[] = {"Northwind Craft",  "Harbour Supply", "Bead Barn",
                                  "Rio Wholesale",    "Pacific Import", "Lakeside Metals",
                                  "Crystal Direct",   "Old Mill Tools", "Summit Trading",
                                  "Blue Heron Goods", "Cedar & Co",     "Tri-State Findings"};
const char* const kAdjectives[] = {"Round",   "Faceted", "Twisted", "Hammered", "Matte",
                                   "Antique", "Bright",  "Smooth",  "Oval",     "Square",
                                   "Fluted",  "Frosted", "Etched",  "Braided",  "Heavy",
                                   "Fine",    "Small",   "Large",   "Mini",     "Classic"};
const char* const kNouns[] = {"Bead",   "Spacer",  "Jump Ring", "Ear Wire", "Head Pin", "Eye Pin",
                              "Toggle", "Lobster", "Crimp",     "Bail",     "Cone",     "End Cap",
                              "Link",   "Charm",   "Pendant",   "Rondelle", "Bicone",   "Drop",
                              "Chip",   "Nugget",  "Tube",      "Disc",     "Heart",    "Star",
                              "Leaf",   "Cross",   "Bar",       "Hoop",     "Pliers",   "Cutter"};
const char* const kMaterials[] = {"sterling silver",
                                  "gold filled",
                                  "copper",
                                  "brass",
                                  "niobium",
                                  "glass",
                                  "crystal",
                                  "jade",
                                  "onyx",
                                  "hematite",
                                  "pewter",
                                  "bone",
                                  "wood",
                                  "shell",
                                  "acrylic",
                                  "steel"};
const char* const kWords[] = {"with",    "a",      "polished", "finish",   "hole",     "size",
                              "approx",  "ideal",  "for",      "earrings", "and",      "bracelets",
                              "sold",    "by",     "the",      "strand",   "lead",     "free",
                              "nickel",  "safe",   "hand",     "made",     "in",       "small",
                              "batches", "colour", "may",      "vary",     "slightly", "from"};
const char* const kPackaging[] = {"Each", "Pack of 6", "Pack of 12", "Box of 50",
                                  "Pair", "Strand",    "Set",        "Bag of 100"};
const char* const kShipping[] = {"UPS Ground", "USPS Priority", "FedEx", "Pickup", "Freight"};

std::string sqlText(std::string_view s) {
    std::string out = "'";
    for (char c : s) {
        if (c == '\'') out += '\'';
        out += c;
    }
    return out + "'";
}

std::string money(double d) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2f", d);
    return buf;
}

double cents(double d) {
    return static_cast<double>(static_cast<std::int64_t>(d * 100 + 0.5)) / 100;
}

std::string description(Random& r) {
    const std::size_t target = 40 + static_cast<std::size_t>(r.below(81));  // 40..120
    std::string d =
        std::string(r.pick(kAdjectives)) + " " + r.pick(kMaterials) + " " + r.pick(kNouns);
    while (d.size() < target)
        d += std::string(" ") + r.pick(kWords);
    d.resize(target - 1);
    while (!d.empty() && d.back() == ' ')
        d.pop_back();
    return d + ".";
}

// One product's column values as SQL literals, in the order of kInsertColumns.
const char* const kInsertColumns =
    "Supplier,StockNo,ProdName,ProdDesc,PageNo,Packaging,Cost1,Cost2,Cost3,Cost4,Cost5,Retail,"
    "Price,Weight,MinOrdW,MinOrdR,Picture,Category,OnSpecial,OutStock,Disco,Orderable,Inventory,"
    "OnOrder,ReOrder,NoSold,Ship1,Ship2,Notes,Taxable";

std::string productValues(Random& r, const std::string& stockNo) {
    const double cost1 = (50 + r.below(8000)) / 100.0;  // 0.50 .. 80.49
    std::vector<std::string> v;
    v.reserve(30);
    v.push_back(sqlText(r.pick(kSuppliers)));
    v.push_back(sqlText(stockNo));
    std::string name = std::string(r.pick(kAdjectives)) + " " + r.pick(kNouns);
    if (r.chance(60)) {
        name += ' ';
        name += std::to_string(2 + r.below(18));
        name += "mm";
    }
    v.push_back(sqlText(name));
    v.push_back(sqlText(description(r)));
    v.push_back(sqlText(std::to_string(1 + r.below(480))));
    v.push_back(sqlText(r.pick(kPackaging)));
    v.push_back(money(cost1));
    // Quantity breaks: fewer products have the deeper ones.
    double tier = cost1;
    for (int level = 2; level <= 5; ++level) {
        if (r.chance(110 - 20 * level)) {
            tier = cents(tier * 0.95);
            v.push_back(money(tier));
        } else {
            v.push_back("NULL");
        }
    }
    const double retail = cents(cost1 * (18 + r.below(12)) / 10.0);
    v.push_back(money(retail));
    v.push_back(r.chance(80) ? money(retail) : "NULL");
    v.push_back(sqlText(std::to_string(1 + r.below(400)) + " g"));
    v.push_back(sqlText(std::to_string(1 + r.below(3) * 5)));
    v.push_back(sqlText(std::to_string(1 + r.below(2))));
    v.push_back(r.chance(70) ? sqlText("pictures\\" + stockNo + ".jpg") : "NULL");
    v.push_back(sqlText(r.pick(kCategories)));
    v.push_back(r.chance(10) ? "-1" : "0");
    v.push_back(r.chance(10) ? sqlText("2-3 weeks") : "NULL");
    v.push_back(r.chance(5) ? "-1" : "0");
    v.push_back(r.chance(85) ? "-1" : "0");
    v.push_back(std::to_string(r.below(251)));
    v.push_back(r.chance(20) ? std::to_string(1 + r.below(50)) : "0");
    v.push_back(r.chance(60) ? sqlText(std::to_string(5 + r.below(20))) : "NULL");
    v.push_back(std::to_string(r.below(1001)));
    v.push_back(sqlText(r.pick(kShipping)));
    v.push_back(r.chance(30) ? sqlText(r.pick(kShipping)) : "NULL");
    v.push_back(r.chance(5) ? sqlText("Ask supplier about the " + std::string(r.pick(kMaterials)) +
                                      " version.")
                            : "NULL");
    v.push_back(r.chance(90) ? "-1" : "0");
    std::string row = "(";
    for (std::size_t i = 0; i < v.size(); ++i)
        row += (i ? "," : "") + v[i];
    return row + ")";
}

}  // namespace

std::vector<std::string> generateCatalogue(const std::string& path, const std::string& appDir,
                                           int rows) {
    buildCatalogue(path, appDir, {SCHEMA_SQL});
    Random r(20040117);
    // Unique numbers in a scrambled order, each behind one of a few prefixes.
    std::vector<int> numbers(rows);
    std::iota(numbers.begin(), numbers.end(), 1);
    for (int i = rows - 1; i > 0; --i)
        std::swap(numbers[i], numbers[r.below(i + 1)]);
    std::vector<std::string> stockNos;
    stockNos.reserve(rows);
    for (int i = 0; i < rows; ++i) {
        char buf[16];
        std::snprintf(buf, sizeof buf, "%06d", numbers[i]);
        stockNos.push_back(std::string(r.pick(kPrefixes)) + "-" + buf);
    }
    auto file = SqliteFile::open(path);
    file->execScript("BEGIN");
    constexpr int kBatch = 1000;
    for (int start = 0; start < rows; start += kBatch) {
        std::string sql = std::string("INSERT INTO Products (") + kInsertColumns + ") VALUES ";
        for (int i = start; i < std::min(rows, start + kBatch); ++i) {
            if (i > start) sql += ',';
            sql += productValues(r, stockNos[i]);
        }
        file->execScript(sql + ";");
    }
    file->execScript("COMMIT");
    return stockNos;
}
