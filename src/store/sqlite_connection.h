#pragma once

#include <memory>

#include "records/connection.h"
#include "store/sqlite_file.h"

// A connection on an SQLite catalogue file.
class SqliteConnection : public Connection {
  public:
    void Open(const std::string& connectionText, const std::string& user,
              const std::string& password) override;
    void Close() override;
    int State() const override { return file_ ? ado::adStateOpen : ado::adStateClosed; }
    int CursorLocation() const override { return cursorLocation_; }
    void SetCursorLocation(int location) override { cursorLocation_ = location; }

    // 3709 when the connection is not open.
    std::shared_ptr<SqliteFile> file() const;

  private:
    std::shared_ptr<SqliteFile> file_;
    int cursorLocation_ = 2;  // server, until the program asks for the client cursor
};
