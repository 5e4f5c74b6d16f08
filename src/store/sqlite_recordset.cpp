#include "store/sqlite_recordset.h"

#include <optional>

#include "base/vb_error.h"
#include "records/store.h"
#include "store/sqlite_connection.h"

std::unique_ptr<Recordset> CreateRecordset() {
    return std::make_unique<SqliteRecordset>();
}

void SqliteRecordset::fireMove() {
    if (MoveComplete) MoveComplete();
}

void SqliteRecordset::fireWillChange() {
    if (WillChangeRecord) WillChangeRecord();
}

Cursor& SqliteRecordset::open() const {
    if (!cursor_) throw VbError(vberr::ObjectClosed);
    return *cursor_;
}

void SqliteRecordset::commitPending() {
    if (open().editMode() == Cursor::Edit::None) return;
    fireWillChange();
    cursor_->update();
}

void SqliteRecordset::Open(const std::string& source, Connection& conn, int, int, int) {
    if (cursor_) throw VbError(vberr::ObjectOpen);
    auto* sqlite = dynamic_cast<SqliteConnection*>(&conn);
    if (!sqlite) throw VbError(vberr::ConnectionClosed);
    file_ = sqlite->file();
    source_ = source;
    Open();
}

void SqliteRecordset::Open() {
    if (cursor_) throw VbError(vberr::ObjectOpen);
    if (!file_) throw VbError(vberr::BadArguments);
    cursor_ = std::make_unique<Cursor>(file_, parseSelect(source_, vberr::BadArguments));
    fireMove();
}

void SqliteRecordset::Close() {
    open();
    cursor_.reset();
}

void SqliteRecordset::Requery(int) {
    commitPending();
    auto fresh = std::make_unique<Cursor>(file_, parseSelect(source_, vberr::BadArguments));
    // Filter and sort stay in force across a requery; a filter the fresh rows refuse
    // fails it, and the set keeps the rows it had.
    if (!cursor_->filterText().empty()) fresh->setFilter(cursor_->filterText());
    if (!cursor_->sortText().empty()) fresh->setSort(cursor_->sortText());
    cursor_ = std::move(fresh);
    fireMove();
}

void SqliteRecordset::leaveRow(const std::function<void()>& move) {
    std::optional<VbError> refused;
    try {
        commitPending();
    } catch (const VbError& e) {
        // The file refused the save (read only, or locked by another program): the user is
        // not held on the row. The edit is dropped, the move happens, then the fault is told.
        refused = e;
        cursor_->cancelUpdate();
    }
    move();
    fireMove();
    if (refused) throw *refused;
}

void SqliteRecordset::MoveFirst() {
    if (open().count() == 0) throw VbError(vberr::NoCurrentRecord);
    leaveRow([&] { cursor_->moveTo(0); });
}

void SqliteRecordset::MoveLast() {
    if (open().count() == 0) throw VbError(vberr::NoCurrentRecord);
    leaveRow([&] { cursor_->moveTo(cursor_->count() - 1); });
}

void SqliteRecordset::MoveNext() {
    // A deleted last row stays current until this move takes the set past the end.
    if (open().eof() && !cursor_->currentDeleted()) throw VbError(vberr::NoCurrentRecord);
    leaveRow([&] { cursor_->moveNext(); });
}

void SqliteRecordset::MovePrevious() {
    if (open().bof()) throw VbError(vberr::NoCurrentRecord);
    leaveRow([&] { cursor_->moveTo(cursor_->position() - 1); });
}

bool SqliteRecordset::Bof() const {
    return open().bof();
}
bool SqliteRecordset::Eof() const {
    return open().eof();
}
long SqliteRecordset::RecordCount() const {
    return open().count();
}

long SqliteRecordset::AbsolutePosition() const {
    const Cursor& c = open();
    if (c.count() == 0) return ado::adPosUnknown;
    if (c.bof()) return ado::adPosBOF;
    if (c.eof()) return ado::adPosEOF;
    return c.position() + 1;
}

void SqliteRecordset::SetAbsolutePosition(long position) {
    if (position < 1 || position > open().count()) throw VbError(vberr::BadArguments);
    leaveRow([&] { cursor_->moveTo(position - 1); });
}

// Bookmarks count from 1, so that a kept bookmark is always above 0.
Variant SqliteRecordset::Bookmark() const {
    return Variant::Double(open().currentRow() + 1);
}

void SqliteRecordset::SetBookmark(const Variant& bookmark) {
    Cursor& c = open();
    long position =
        bookmark.IsNumberKind() ? c.positionOfRow(static_cast<int>(bookmark.Number()) - 1) : -1;
    if (position < 0) throw VbError(vberr::BadArguments);
    leaveRow([&] { c.moveTo(position); });
}

int SqliteRecordset::FieldCount() const {
    return open().fieldCount();
}
int SqliteRecordset::FieldIndex(std::string_view name) const {
    return open().columnIndex(name);
}

std::string SqliteRecordset::FieldName(int index) const {
    const Cursor& c = open();
    if (index < 0 || index >= c.fieldCount()) throw VbError(vberr::ItemNotFound);
    return c.table().column(index).name;
}

Variant SqliteRecordset::GetValue(int index) const {
    return open().value(index);
}
void SqliteRecordset::SetValue(int index, const Variant& value) {
    open().setValue(index, value);
}

void SqliteRecordset::AddNew() {
    commitPending();
    fireWillChange();
    cursor_->addNew();
    fireMove();
}

void SqliteRecordset::Update() {
    commitPending();
}
void SqliteRecordset::UpdateBatch(int) {
    commitPending();
}

void SqliteRecordset::CancelUpdate() {
    bool adding = open().editMode() == Cursor::Edit::Add;
    cursor_->cancelUpdate();
    if (adding) fireMove();
}

void SqliteRecordset::Resync(int) {
    open().resync();
}

void SqliteRecordset::Delete(int) {
    open().currentRow();
    fireWillChange();
    cursor_->deleteCurrent();
}

int SqliteRecordset::EditMode() const {
    switch (open().editMode()) {
        case Cursor::Edit::None:
            return ado::adEditNone;
        case Cursor::Edit::InProgress:
            return ado::adEditInProgress;
        case Cursor::Edit::Add:
            return ado::adEditAdd;
    }
    return ado::adEditNone;
}

void SqliteRecordset::Find(const std::string& criteria, long skipRows, int direction) {
    Cursor& c = open();
    bool forward = direction != ado::adSearchBackward;
    long from = c.bof() ? 0 : c.position() + (forward ? skipRows : -skipRows);
    // A broken text fails here, before anything moves or is saved.
    long found = c.find(criteria, from, forward, true);
    commitPending();
    c.moveTo(found >= 0 ? found : (forward ? c.count() : -1));
    fireMove();
}

std::string SqliteRecordset::Filter() const {
    return open().filterText();
}

void SqliteRecordset::SetFilter(const std::string& criteria) {
    open();
    commitPending();
    try {
        cursor_->setFilter(criteria);
    } catch (const VbError&) {
        // A text the store refuses lifts the filter: the set shows, and counts, all its rows.
        cursor_->setFilter("");
        fireMove();
        throw;
    }
    fireMove();
}

std::string SqliteRecordset::Sort() const {
    return open().sortText();
}

void SqliteRecordset::SetSort(const std::string& columns) {
    open();
    commitPending();
    cursor_->setSort(columns);
    fireMove();
}
