// A reading of rows once and forward: the store selects, joins and sorts them as a listing
// orders values, and meets the criteria a batch at a time.
#include <gtest/gtest.h>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "records/store.h"
#include "vb_expect.h"

namespace {

struct RowStreamTest : ::testing::Test {
    TempCatalogue cat;

    // Every row the query gives, each as its values joined by ",", Null as "Null".
    std::vector<std::string> read(const RowQuery& q) {
        auto conn = cat.connect();
        auto rows = CreateRowStream();
        rows->Open(q, *conn);
        std::vector<std::string> out;
        while (rows->Next()) {
            std::string line;
            for (std::size_t c = 0; c < q.columns.size(); ++c) {
                const Variant v = rows->GetValue(static_cast<int>(c));
                line += (c ? "," : "") + (v.IsNull() ? std::string("Null") : CStr(v));
            }
            out.push_back(line);
        }
        EXPECT_FALSE(rows->Next());
        return out;
    }
    static RowQuery products(std::vector<std::string> columns, std::vector<RowQuery::Key> order,
                             std::string where = "") {
        RowQuery q;
        q.table = "Products";
        q.columns = std::move(columns);
        q.order = std::move(order);
        q.where = std::move(where);
        return q;
    }
};

}  // namespace

TEST_F(RowStreamTest, SortsNothingFirstThenNumbersByValueThenTextIgnoringCase) {
    cat.sql(
        "INSERT INTO Products (StockNo, PageNo) VALUES ('a', '10'), ('b', 'b2'), ('c', NULL), "
        "('d', '9'), ('e', ''), ('f', 'B1'), ('g', '2.0'), ('h', 'a3'), ('i', '2')");
    // Nothing alike in the stored order, "2.0" and "2" alike, texts ignoring case.
    EXPECT_EQ(read(products({"StockNo"}, {{"PageNo", false}})),
              (std::vector<std::string>{"c", "e", "g", "i", "d", "a", "h", "f", "b"}));
    EXPECT_EQ(read(products({"StockNo"}, {{"PageNo", true}})),
              (std::vector<std::string>{"b", "f", "h", "a", "d", "g", "i", "c", "e"}));
}

TEST_F(RowStreamTest, SortsNumbersAndKeysInTurnAndKeepsTiesInTheStoredOrder) {
    cat.sql(
        "INSERT INTO Products (StockNo, Category, Cost1) VALUES ('A', 'x', 5), ('B', 'Y', NULL), "
        "('C', 'X', 1.5), ('D', 'y', 10), ('E', 'x', 1.5)");
    EXPECT_EQ(read(products({"StockNo", "Cost1"}, {{"Category", false}, {"Cost1", true}})),
              (std::vector<std::string>{"A,5", "C,1.5", "E,1.5", "D,10", "B,Null"}));
    EXPECT_EQ(read(products({"StockNo"}, {})), (std::vector<std::string>{"A", "B", "C", "D", "E"}));
}

TEST_F(RowStreamTest, MeetsTheCriteriaAcrossManyBatches) {
    std::string values;
    for (int i = 0; i < 1000; ++i)
        values += std::string(i ? "," : "") + "('S" + std::to_string(1000 + i) + "', " +
                  std::to_string(i % 7 == 0 ? -1 : 0) + ")";
    cat.sql("INSERT INTO Products (StockNo, Disco) VALUES " + values);
    const std::vector<std::string> kept =
        read(products({"StockNo"}, {{"StockNo", true}}, "Disco = True"));
    ASSERT_EQ(kept.size(), 143u);
    EXPECT_EQ(kept.front(), "S1994");
    EXPECT_EQ(kept.back(), "S1000");
    // Criteria may name columns that are not read.
    EXPECT_EQ(read(products({"StockNo"}, {}, "StockNo like 'S100*' and Disco = False")).size(), 8u);
    EXPECT_TRUE(read(products({"StockNo"}, {}, "StockNo = 'none'")).empty());
}

TEST_F(RowStreamTest, JoinsTheFirstRowOfAKeyIgnoringCase) {
    cat.sql(
        "INSERT INTO Products (StockNo, Supplier) VALUES ('RB615', 'First'), ('rb615', 'Second'), "
        "('', 'Blank')");
    cat.sql(
        "INSERT INTO Orders ([Order ID], ProductOrderID) VALUES ('1', 'Rb615'), ('2', 'ZZ9'), "
        "('3', NULL)");
    RowQuery q;
    q.table = "Orders";
    q.joinTable = "Products";
    q.joinFrom = "ProductOrderID";
    q.joinTo = "StockNo";
    q.columns = {"Order ID", "Products.Supplier"};
    q.order = {{"products.supplier", false}};
    // No value joins the row with an empty key, as an empty text would.
    EXPECT_EQ(read(q), (std::vector<std::string>{"2,Null", "3,Blank", "1,First"}));
}

TEST_F(RowStreamTest, AnUnknownTableColumnOrBrokenCriteriaIsAFault) {
    auto conn = cat.connect();
    RowQuery other = products({"StockNo"}, {});
    other.table = "Customers";
    EXPECT_VBERROR(CreateRowStream()->Open(other, *conn), 3078);
    EXPECT_VBERROR(CreateRowStream()->Open(products({"Colour"}, {}), *conn), vberr::ItemNotFound);
    EXPECT_VBERROR(CreateRowStream()->Open(products({"StockNo"}, {{"Colour", false}}), *conn),
                   vberr::ItemNotFound);
    EXPECT_VBERROR(CreateRowStream()->Open(products({"StockNo"}, {}, "Colour = 1"), *conn),
                   vberr::ItemNotFound);
    EXPECT_VBERROR(CreateRowStream()->Open(products({"StockNo"}, {}, "StockNo = 'A"), *conn),
                   vberr::BadArguments);
}

TEST_F(RowStreamTest, HasNoRowBeforeTheFirstMoveNorAfterTheLast) {
    cat.sql("INSERT INTO Products (StockNo) VALUES ('A')");
    auto conn = cat.connect();
    auto rows = CreateRowStream();
    rows->Open(products({"StockNo"}, {}), *conn);
    EXPECT_VBERROR(rows->GetValue(0), vberr::NoCurrentRecord);
    ASSERT_TRUE(rows->Next());
    EXPECT_EQ(CStr(rows->GetValue(0)), "A");
    EXPECT_FALSE(rows->Next());
    EXPECT_VBERROR(rows->GetValue(0), vberr::NoCurrentRecord);
}
