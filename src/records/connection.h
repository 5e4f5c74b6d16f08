#pragma once

#include <string>

#include "records/recordset.h"

// One open catalogue file. Each form opens its own; record sets on different connections
// see each other's changes only after a Requery.
class Connection {
  public:
    virtual ~Connection() = default;
    // "PROVIDER=Microsoft.Jet.OLEDB.4.0;Data Source=" + path.
    virtual void Open(const std::string& connectionText, const std::string& user = "",
                      const std::string& password = "") = 0;
    virtual void Close() = 0;
    virtual int State() const = 0;
    virtual int CursorLocation() const = 0;
    virtual void SetCursorLocation(int location) = 0;
};
