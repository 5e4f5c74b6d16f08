// Saves products one by one through the store, as the program's forms do, and prints each
// stock number once its save has returned. The kill test ends it at random moments.
// Usage: kill-writer <catalogue> <stock number prefix> <count>
#include <cstdio>
#include <string>

#include "base/vb_error.h"
#include "records/store.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: kill-writer <catalogue> <prefix> <count>\n");
        return 2;
    }
    const std::string prefix = argv[2];
    const long count = std::stol(argv[3]);
    try {
        auto conn = CreateConnection();
        conn->SetCursorLocation(ado::adUseClient);
        conn->Open(connectionText(argv[1]));
        auto rs = CreateRecordset();
        rs->Open("select StockNo, ProdName from Products", *conn);
        for (long i = 0; i < count; ++i) {
            const std::string stockNo = prefix + std::to_string(i);
            rs->AddNew();
            rs->Fields("StockNo").SetValue(Variant(stockNo));
            rs->Fields("ProdName").SetValue(Variant("Item " + std::to_string(i)));
            rs->Update();
            std::printf("%s\n", stockNo.c_str());
            std::fflush(stdout);
        }
    } catch (const VbError& e) {
        std::fprintf(stderr, "kill-writer: %s (%d)\n", e.what(), e.Number());
        return 1;
    }
    return 0;
}
