#pragma once

#include <string>
#include <string_view>

#include "base/trap.h"
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
    // As GetValue, with a field the set does not have given back as a fault (3265) rather
    // than thrown: a procedure that takes a number from the data as a field's index misses
    // on most records.
    virtual Fault TryGetValue(int index, Variant& value) const {
        value = GetValue(index);
        return {};
    }
    virtual void SetValue(int index, const Variant& value) = 0;
    // As SetValue, with the fault given back, for a run that writes many records.
    virtual Fault TrySetValue(int index, const Variant& value) = 0;
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

    // The database's tables.
    virtual int TableCount() = 0;
    virtual std::string TableName(int index) = 0;

    // A long run of writes through the record set (an import) is committed a group at a
    // time instead of row by row; the end commits the last group. Groups nest.
    virtual void BeginWriteGroup() = 0;
    virtual void EndWriteGroup() = 0;
};

// The writes of one run, grouped while it lives: however the run is left, its writes are
// in the file afterwards. End() commits with the fault it may give; the destructor, on a
// way out that unwinds, commits in silence.
class WriteGroup {
  public:
    explicit WriteGroup(DataControl& control) : control_(&control) { control.BeginWriteGroup(); }
    ~WriteGroup() {
        try {
            End();
        } catch (...) {
            // Unwinding already; the file keeps what it could commit.
        }
    }
    WriteGroup(const WriteGroup&) = delete;
    WriteGroup& operator=(const WriteGroup&) = delete;

    void End() {
        if (!control_) return;
        DataControl* control = control_;
        control_ = nullptr;
        control->EndWriteGroup();
    }

  private:
    DataControl* control_;
};
