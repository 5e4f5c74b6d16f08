#pragma once

#include <memory>
#include <string>

#include "records/product_statements.h"
#include "records/store.h"

// A catalogue file of its own in a fresh temporary folder, a copy of the build's empty
// catalogue (with the sample rows when asked), removed afterwards.
class TempCatalogue {
  public:
    explicit TempCatalogue(bool withSample = false);
    ~TempCatalogue();

    const std::string& path() const { return path_; }
    const std::string& folder() const { return folder_; }
    void sql(const std::string& statements) const;
    // The first column of a query's rows joined with "|", NULL as "Null".
    std::string query(const std::string& select) const;

    std::unique_ptr<Connection> connect() const;
    std::unique_ptr<Recordset> open(const std::string& statement, Connection& conn) const;

  private:
    std::string folder_, path_;
};
