#include <cstdio>
#include <filesystem>
#include <memory>

#include "base/convert.h"
#include "records/store.h"
#include "shell/errhandler.h"

namespace {

// The folder of the running executable, with its trailing separator.
std::string programFolder() {
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string("./") : exe.parent_path().string() + "/";
}

const char* statementA =
    "select PID,Category,Cost1,Cost2,Cost3,Cost4,Cost5,Disco,Inventory,MinOrdR,MinOrdW,NoSold,"
    "Notes,OnOrder,OnSpecial,Orderable,OutStock,Packaging,PageNo,Picture,Price,ProdDesc,"
    "ProdName,ReOrder,Retail,Ship1,Ship2,StockNo,Supplier,Taxable,Weight from Products order by "
    "StockNo";

}  // namespace

int main(int argc, char** argv) {
    std::string DBName = argc > 1 ? argv[1] : programFolder() + "tandrel2004.mde";
    auto CatalogConn = CreateConnection();
    auto adoPrimaryRS = CreateRecordset();
    Trap on = reportTo("(Module) Module::Sub Main");
    bool opened = on([&] {
        CatalogConn->SetCursorLocation(ado::adUseClient);
        CatalogConn->Open(connectionText(DBName));
        adoPrimaryRS->Open(statementA, *CatalogConn);
    });
    if (!opened) {
        std::printf("Can't open the catalogue %s (error %d)\n", DBName.c_str(), Err().Number);
        return 1;
    }
    std::printf("Catalogue: %s\nProducts: %ld\n", DBName.c_str(), adoPrimaryRS->RecordCount());
    if (adoPrimaryRS->RecordCount() == 0) return 0;
    for (int i = 0; i < adoPrimaryRS->FieldCount(); ++i)
        std::printf("  %-10s %s\n", adoPrimaryRS->FieldName(i).c_str(),
                    textOf(adoPrimaryRS->GetValue(i)).c_str());
    return 0;
}
