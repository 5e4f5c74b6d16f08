#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "records/data_control.h"
#include "store/access_file.h"

// The record set of a data control on a table of an Access file: read only, the rows read
// on first use and held in memory. Every write fails with 3027, and the file is never
// touched.
class AccessDaoRecordset : public DaoRecordset {
  public:
    // The table's field names; 3078 when there is no such table.
    AccessDaoRecordset(std::shared_ptr<AccessFile> file, std::string table);

    long RecordCount() const override { return rows().rowCount(); }
    bool Bof() const override { return pos_ < 0 || RecordCount() == 0; }
    bool Eof() const override { return pos_ >= RecordCount() || RecordCount() == 0; }
    bool NoMatch() const override { return noMatch_; }
    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    void FindFirst(const std::string& criteria) override;
    void FindNext(const std::string& criteria) override;

    void AddNew() override { readOnly(); }
    void Edit() override { readOnly(); }
    void Update() override { readOnly(); }
    void CancelUpdate() override { readOnly(); }
    void Delete() override { readOnly(); }

    int FieldCount() const override { return static_cast<int>(names_.size()); }
    int FieldIndex(std::string_view name) const override;
    std::string FieldName(int index) const override;
    Variant GetValue(int index) const override;
    void SetValue(int, const Variant&) override { readOnly(); }
    Fault TrySetValue(int, const Variant&) override { return {vberr::DatabaseReadOnly}; }

  private:
    const RowTable& rows() const;
    void findFrom(const std::string& criteria, long from);
    [[noreturn]] static void readOnly();

    std::shared_ptr<AccessFile> file_;
    std::string table_;
    std::vector<std::string> names_;
    mutable std::optional<RowTable> rows_;
    long pos_ = 0;
    bool noMatch_ = false;
};
