#pragma once

#include <memory>
#include <string>
#include <vector>

#include "store/row_table.h"
#include "store/sqlite_file.h"

// A Microsoft Access database (.mdb or .mde, Jet 3 or Jet 4), read through the mdbtools
// library and never written. The only code that speaks mdbtools.
class AccessFile {
  public:
    // True when the file begins as a Jet or ACE database does.
    static bool isAccessFile(const std::string& path);
    // 3024 when the file is missing, 3343 when mdbtools cannot read it as a database.
    static std::shared_ptr<AccessFile> open(const std::string& path);
    ~AccessFile();
    AccessFile(const AccessFile&) = delete;
    AccessFile& operator=(const AccessFile&) = delete;

    const std::string& path() const { return path_; }
    // Every table, the system tables too, in alphabetical order ignoring case.
    const std::vector<std::string>& tableNames() const { return tables_; }
    // The table's columns in stored order; 3078 when there is no such table.
    std::vector<ColumnInfo> tableColumns(const std::string& table);
    // Every row of the table, with the columns of tableColumns.
    RowTable readRows(const std::string& table);

    struct Handle;

  private:
    AccessFile(std::unique_ptr<Handle> handle, std::string path);

    std::unique_ptr<Handle> handle_;
    std::string path_;
    std::vector<std::string> tables_;
};
