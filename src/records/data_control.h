#pragma once

#include <string>
#include <string_view>

#include "base/variant.h"

// The record set of an old-style data control: explicit Edit/AddNew before Update, no
// move events, FindFirst with NoMatch, fields in the table's stored column order.
class DaoRecordset {
  public:
    virtual ~DaoRecordset() = default;

    virtual long RecordCount() const = 0;
    virtual bool Bof() const = 0;  // BOF: EOF is a C macro, so both read Bof/Eof here
    virtual bool Eof() const = 0;
    virtual bool NoMatch() const = 0;
    virtual void MoveFirst() = 0;
    virtual void MoveLast() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;
    virtual void FindFirst(const std::string& criteria) = 0;
    virtual void FindNext(const std::string& criteria) = 0;

    virtual void AddNew() = 0;
    virtual void Edit() = 0;
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;
    virtual void Delete() = 0;

    virtual int FieldCount() const = 0;
    virtual int FieldIndex(std::string_view name) const = 0;  // 3265 when unknown
    virtual std::string FieldName(int index) const = 0;
    virtual Variant GetValue(int index) const = 0;
    virtual void SetValue(int index, const Variant& value) = 0;
    Variant GetValue(std::string_view name) const { return GetValue(FieldIndex(name)); }
    void SetValue(std::string_view name, const Variant& v) { SetValue(FieldIndex(name), v); }
};

// A hidden data control on a form: a database file and a record source (a table name or
// a select text), opened by Refresh.
class DataControl {
  public:
    virtual ~DataControl() = default;

    virtual std::string DatabaseName() const = 0;
    virtual void SetDatabaseName(const std::string& path) = 0;
    virtual std::string RecordSource() const = 0;
    virtual void SetRecordSource(const std::string& source) = 0;
    virtual std::string Connect() const = 0;
    virtual void SetConnect(const std::string& connect) = 0;
    virtual void Refresh() = 0;
    // 91 when the control has no record set yet.
    virtual DaoRecordset& Recordset() = 0;

    // The workspace's transaction: the writes between BeginTrans and CommitTrans reach the
    // file together, or, if the program dies between them, none of them. A source that is
    // never written has nothing to group.
    virtual void BeginTrans() {}
    virtual void CommitTrans() {}

    // The database's tables.
    virtual int TableCount() = 0;
    virtual std::string TableName(int index) = 0;
};
