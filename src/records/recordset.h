#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/variant.h"

class Connection;
class Recordset;

// The constants the program passes to the store.
namespace ado {
inline constexpr int adOpenStatic = 3;
inline constexpr int adLockOptimistic = 3;
inline constexpr int adCmdUnknown = -1;
inline constexpr int adUseClient = 3;
inline constexpr int adAffectCurrent = 1;
inline constexpr int adAffectAll = 3;
inline constexpr int adSearchForward = 1;
inline constexpr int adSearchBackward = -1;
inline constexpr int adStateClosed = 0;
inline constexpr int adStateOpen = 1;
inline constexpr int adPosUnknown = -1;
inline constexpr int adPosBOF = -2;
inline constexpr int adPosEOF = -3;
inline constexpr int adEditNone = 0;
inline constexpr int adEditInProgress = 1;
inline constexpr int adEditAdd = 2;
}  // namespace ado

// One column of the current row, reached by position or by name: rs.Fields(19).Value().
class FieldRef {
  public:
    FieldRef(Recordset& rs, int index) : rs_(rs), index_(index) {}
    Variant Value() const;
    void SetValue(const Variant& v) const;
    std::string Name() const;

  private:
    Recordset& rs_;
    int index_;
};

// A static client cursor over one statement: Open loads the rows into memory, moves,
// Filter, Sort and Find work on that copy, and edits write through to the file at once.
class Recordset {
  public:
    virtual ~Recordset() = default;

    virtual void Open(const std::string& source, Connection& conn,
                      int cursorType = ado::adOpenStatic, int lockType = ado::adLockOptimistic,
                      int options = ado::adCmdUnknown) = 0;
    virtual void Open() = 0;  // reopens the same statement
    virtual void Close() = 0;
    virtual void Requery(int options = ado::adCmdUnknown) = 0;
    virtual int State() const = 0;

    virtual void MoveFirst() = 0;
    virtual void MoveLast() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;
    virtual bool Bof() const = 0;  // BOF: EOF is a C macro, so both read Bof/Eof here
    virtual bool Eof() const = 0;
    virtual long RecordCount() const = 0;
    virtual long AbsolutePosition() const = 0;
    virtual void SetAbsolutePosition(long position) = 0;
    virtual Variant Bookmark() const = 0;
    virtual void SetBookmark(const Variant& bookmark) = 0;

    virtual int FieldCount() const = 0;
    virtual int FieldIndex(std::string_view name) const = 0;  // 3265 when unknown
    virtual std::string FieldName(int index) const = 0;
    virtual Variant GetValue(int index) const = 0;
    virtual void SetValue(int index, const Variant& value) = 0;
    FieldRef Fields(int index) { return FieldRef(*this, index); }
    FieldRef Fields(std::string_view name) { return FieldRef(*this, FieldIndex(name)); }

    virtual void AddNew() = 0;
    virtual void Update() = 0;
    virtual void UpdateBatch(int affect = ado::adAffectAll) = 0;
    virtual void CancelUpdate() = 0;
    virtual void Delete(int affect = ado::adAffectCurrent) = 0;
    virtual int EditMode() const = 0;
    // The current row read again from the file, so that what another record set stored
    // shows; the position stays and no move is raised.
    virtual void Resync(int affect = ado::adAffectCurrent) = 0;

    virtual void Find(const std::string& criteria, long skipRows = 0,
                      int direction = ado::adSearchForward) = 0;
    virtual std::string Filter() const = 0;
    virtual void SetFilter(const std::string& criteria) = 0;
    virtual std::string Sort() const = 0;
    virtual void SetSort(const std::string& columns) = 0;

    // Raised after every change of position, also when the set opens.
    std::function<void()> MoveComplete;
    // Raised before a record changes; the program never cancels it.
    std::function<void()> WillChangeRecord;
};

inline Variant FieldRef::Value() const {
    return rs_.GetValue(index_);
}
inline void FieldRef::SetValue(const Variant& v) const {
    rs_.SetValue(index_, v);
}
inline std::string FieldRef::Name() const {
    return rs_.FieldName(index_);
}
