#include <gtest/gtest.h>

#include <fstream>

#include "catalogue_fixture.h"
#include "vb_expect.h"

namespace {

TEST(Connection, OpensTheCatalogueByItsConnectionText) {
    TempCatalogue cat;
    EXPECT_EQ(connectionText("/x/y.mde"), "PROVIDER=Microsoft.Jet.OLEDB.4.0;Data Source=/x/y.mde");
    auto conn = cat.connect();
    EXPECT_EQ(conn->State(), ado::adStateOpen);
    EXPECT_EQ(conn->CursorLocation(), ado::adUseClient);
    EXPECT_VBERROR(conn->Open(connectionText(cat.path())), 3705);
}

TEST(Connection, AMissingFileIsASilentFaultNotFileNotFound) {
    auto conn = CreateConnection();
    try {
        conn->Open(connectionText("/no/such/folder/tandrel2004.mde"));
        ADD_FAILURE() << "opened a missing file";
    } catch (const VbError& e) {
        EXPECT_NE(e.Number(), 53);  // 53 would put a box on the screen
        EXPECT_EQ(e.Number(), 3024);
    }
    EXPECT_EQ(conn->State(), ado::adStateClosed);
}

TEST(Connection, AForeignFileIsRefusedAsNoDatabase) {
    TempCatalogue cat;
    std::string foreign = cat.folder() + "notes.mde";
    std::ofstream(foreign) << "This is a text file, not a catalogue.\n";
    auto conn = CreateConnection();
    EXPECT_VBERROR(conn->Open(connectionText(foreign)), 3343);
}

TEST(Connection, AnotherProviderIsNotFound) {
    TempCatalogue cat;
    auto conn = CreateConnection();
    EXPECT_VBERROR(conn->Open("PROVIDER=Other;Data Source=" + cat.path()), 3706);
}

TEST(Connection, ARecordSetOnAClosedConnectionFails) {
    auto conn = CreateConnection();
    auto rs = CreateRecordset();
    EXPECT_VBERROR(rs->Open(StatementA, *conn), 3709);
    EXPECT_EQ(rs->State(), ado::adStateClosed);
}

TEST(Connection, TablesAndColumnsIgnoreCase) {
    TempCatalogue cat;
    auto conn = cat.connect();
    auto rs = cat.open("select [Order ID],[Back Ordered] from [orders] Order by [order id]", *conn);
    EXPECT_EQ(rs->FieldName(0), "Order ID");
    EXPECT_TRUE(rs->Eof());
}

}  // namespace
