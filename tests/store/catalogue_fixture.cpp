#include "catalogue_fixture.h"

#include <unistd.h>

#include <atomic>
#include <filesystem>

#include "base/convert.h"
#include "store/catalogue_builder.h"
#include "store/scratch_folder.h"
#include "store/sqlite_file.h"

TempCatalogue::TempCatalogue(bool withSample) {
    static std::atomic<int> serial{0};
    folder_ = (scratchFolder() /
               ("cattest" + std::to_string(::getpid()) + "x" + std::to_string(serial++)))
                  .string() +
              "/";
    std::filesystem::create_directories(folder_);
    path_ = folder_ + "tandrel2004.mde";
    std::vector<std::string> scripts;
    if (withSample) scripts.push_back(std::string(FIXTURES_DIR) + "/sample.sql");
    copyCatalogue(std::string(FIXTURES_DIR) + "/empty.mde", path_, folder_, scripts);
}

TempCatalogue::~TempCatalogue() {
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
}

void TempCatalogue::sql(const std::string& statements) const {
    SqliteFile::open(path_)->execScript(statements);
}

std::string TempCatalogue::query(const std::string& select) const {
    return SqliteFile::open(path_)->firstColumnJoined(select);
}

std::unique_ptr<Connection> TempCatalogue::connect() const {
    auto conn = CreateConnection();
    conn->SetCursorLocation(ado::adUseClient);
    conn->Open(connectionText(path_));
    return conn;
}

std::unique_ptr<Recordset> TempCatalogue::open(const std::string& statement,
                                               Connection& conn) const {
    auto rs = CreateRecordset();
    rs->Open(statement, conn);
    return rs;
}
