#pragma once

#include <memory>

#include "store/access_file.h"
#include "store/access_recordset.h"
#include "store/sqlite_data_control.h"

// The data control the program makes: on a file in the catalogue's own SQLite format as
// the SQLite data control is, and read only on an Access file, whose kind is told by the
// file's first bytes each time the control opens it.
class StoreDataControl : public SqliteDataControl {
  public:
    void Refresh() override;
    DaoRecordset& Recordset() override;
    int TableCount() override;
    std::string TableName(int index) override;

  private:
    bool onAccessFile() const;
    std::shared_ptr<AccessFile> accessFile();

    bool access_ = false;  // the last Refresh opened an Access file
    std::shared_ptr<AccessFile> accessFile_;
    std::unique_ptr<AccessDaoRecordset> accessRecordset_;
};
