#pragma once

#include <memory>
#include <vector>

#include "records/data_control.h"
#include "store/cursor.h"

// The record set of a data control on the SQLite store. Field writes need Edit or AddNew
// first; a move discards an edit that was not updated. The rows are read on first use: a
// form that only asks for the field names never holds the table in memory.
class SqliteDaoRecordset : public DaoRecordset {
  public:
    SqliteDaoRecordset(std::shared_ptr<SqliteFile> file, SelectStatement statement);

    long RecordCount() const override { return rows().count(); }
    bool Bof() const override { return rows().bof(); }
    bool Eof() const override { return rows().eof(); }
    bool NoMatch() const override { return noMatch_; }
    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    void FindFirst(const std::string& criteria) override;
    void FindNext(const std::string& criteria) override;

    void AddNew() override;
    void Edit() override;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;

    int FieldCount() const override { return static_cast<int>(names_.size()); }
    int FieldIndex(std::string_view name) const override { return rows().columnIndex(name); }
    std::string FieldName(int index) const override;
    Variant GetValue(int index) const override { return rows().value(index); }
    Fault TryGetValue(int index, Variant& value) const override {
        return rows().tryValue(index, value);
    }
    void SetValue(int index, const Variant& value) override;
    Fault TrySetValue(int index, const Variant& value) override;

  private:
    Cursor& rows() const;
    void leaveRow();
    void findFrom(const std::string& criteria, long from);

    std::shared_ptr<SqliteFile> file_;
    SelectStatement statement_;
    std::vector<std::string> names_;
    mutable std::unique_ptr<Cursor> cursor_;
    bool noMatch_ = false;
    long positionBeforeAdd_ = -1;
};

class SqliteDataControl : public DataControl {
  public:
    std::string DatabaseName() const override { return databaseName_; }
    void SetDatabaseName(const std::string& path) override { databaseName_ = path; }
    std::string RecordSource() const override { return recordSource_; }
    void SetRecordSource(const std::string& source) override { recordSource_ = source; }
    std::string Connect() const override { return connect_; }
    void SetConnect(const std::string& connect) override { connect_ = connect; }
    void Refresh() override;
    DaoRecordset& Recordset() override;
    int TableCount() override;
    std::string TableName(int index) override;
    void BeginWriteGroup() override;
    void EndWriteGroup() override;

  private:
    std::shared_ptr<SqliteFile> file();

    std::string databaseName_, recordSource_, connect_ = "Access 2000;";
    std::shared_ptr<SqliteFile> file_;
    std::unique_ptr<SqliteDaoRecordset> recordset_;
    // The files of the open groups, innermost last: a group ends on the file it began on.
    std::vector<std::shared_ptr<SqliteFile>> groups_;
};
