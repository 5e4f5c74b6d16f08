#pragma once

#include <functional>
#include <memory>

#include "records/recordset.h"
#include "store/cursor.h"

// The program's record set on the SQLite store: a static client cursor. Moving off a row
// with a pending edit saves it; every change of position raises MoveComplete.
class SqliteRecordset : public Recordset {
  public:
    void Open(const std::string& source, Connection& conn, int cursorType, int lockType,
              int options) override;
    void Open() override;
    void Close() override;
    void Requery(int options) override;
    int State() const override { return cursor_ ? ado::adStateOpen : ado::adStateClosed; }

    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    bool Bof() const override;
    bool Eof() const override;
    long RecordCount() const override;
    long AbsolutePosition() const override;
    void SetAbsolutePosition(long position) override;
    Variant Bookmark() const override;
    void SetBookmark(const Variant& bookmark) override;

    int FieldCount() const override;
    int FieldIndex(std::string_view name) const override;
    std::string FieldName(int index) const override;
    Variant GetValue(int index) const override;
    void SetValue(int index, const Variant& value) override;

    void AddNew() override;
    void Update() override;
    void UpdateBatch(int affect) override;
    void CancelUpdate() override;
    void Delete(int affect) override;
    int EditMode() const override;
    void Resync(int affect) override;

    void Find(const std::string& criteria, long skipRows, int direction) override;
    std::string Filter() const override;
    void SetFilter(const std::string& criteria) override;
    std::string Sort() const override;
    void SetSort(const std::string& columns) override;

    std::size_t memoryBytes() const { return cursor_ ? cursor_->table().memoryBytes() : 0; }

  private:
    Cursor& open() const;  // 3704 when closed
    void commitPending();
    // Saves the pending edit, then makes the move. A save the file refuses drops the edit
    // and still moves; the fault comes after the move.
    void leaveRow(const std::function<void()>& move);
    void fireMove();
    void fireWillChange();

    std::shared_ptr<SqliteFile> file_;
    std::string source_;
    std::unique_ptr<Cursor> cursor_;
};
