#include "store/sqlite_data_control.h"

#include "base/vb_error.h"
#include "store/dao_terms.h"

namespace {

constexpr int UpdateWithoutEdit = 3020;

}  // namespace

SqliteDaoRecordset::SqliteDaoRecordset(std::shared_ptr<SqliteFile> file, SelectStatement statement)
    : file_(std::move(file)), statement_(std::move(statement)) {
    names_ = inDaoTerms(vberr::SyntaxErrorInExpression,
                        [&] { return Cursor::fieldNames(*file_, statement_); });
}

Cursor& SqliteDaoRecordset::rows() const {
    if (!cursor_) cursor_ = std::make_unique<Cursor>(file_, statement_);
    return *cursor_;
}

void SqliteDaoRecordset::leaveRow() {
    rows().cancelUpdate();
}

void SqliteDaoRecordset::MoveFirst() {
    if (rows().count() == 0) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    rows().moveTo(0);
}

void SqliteDaoRecordset::MoveLast() {
    if (rows().count() == 0) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    rows().moveTo(rows().count() - 1);
}

void SqliteDaoRecordset::MoveNext() {
    if (rows().eof()) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    rows().moveNext();
}

void SqliteDaoRecordset::MovePrevious() {
    if (rows().bof()) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    rows().moveTo(rows().position() - 1);
}

void SqliteDaoRecordset::findFrom(const std::string& criteria, long from) {
    long found = inDaoTerms(vberr::SyntaxErrorInCriteria,
                            [&] { return rows().find(criteria, from, true, false); });
    noMatch_ = found < 0;
    if (noMatch_) return;
    leaveRow();
    rows().moveTo(found);
}

void SqliteDaoRecordset::FindFirst(const std::string& criteria) {
    findFrom(criteria, 0);
}

void SqliteDaoRecordset::FindNext(const std::string& criteria) {
    findFrom(criteria, rows().position() + 1);
}

void SqliteDaoRecordset::AddNew() {
    leaveRow();
    positionBeforeAdd_ = rows().position();
    rows().addNew();
}

void SqliteDaoRecordset::Edit() {
    leaveRow();
    rows().beginEdit();
}

void SqliteDaoRecordset::Update() {
    Cursor::Edit mode = rows().editMode();
    if (mode == Cursor::Edit::None) throw VbError(UpdateWithoutEdit);
    rows().update();
    // After adding, the record that was current before stays current.
    if (mode == Cursor::Edit::Add) rows().moveTo(positionBeforeAdd_);
}

void SqliteDaoRecordset::CancelUpdate() {
    if (rows().editMode() == Cursor::Edit::None) throw VbError(UpdateWithoutEdit);
    rows().cancelUpdate();
}

void SqliteDaoRecordset::Delete() {
    leaveRow();
    rows().deleteCurrent();
}

std::string SqliteDaoRecordset::FieldName(int index) const {
    if (index < 0 || index >= FieldCount()) throw VbError(vberr::ItemNotFound);
    return names_[index];
}

void SqliteDaoRecordset::SetValue(int index, const Variant& value) {
    if (rows().editMode() == Cursor::Edit::None) throw VbError(UpdateWithoutEdit);
    rows().setValue(index, value);
}

Fault SqliteDaoRecordset::TrySetValue(int index, const Variant& value) {
    try {
        if (rows().editMode() == Cursor::Edit::None) return {UpdateWithoutEdit};
        return rows().trySetValue(index, value);
    } catch (const VbError& e) {
        return {e.Number()};
    }
}

std::shared_ptr<SqliteFile> SqliteDataControl::file() {
    if (!file_ || file_->path() != databaseName_) file_ = SqliteFile::open(databaseName_);
    return file_;
}

void SqliteDataControl::Refresh() {
    recordset_.reset();
    auto opened = file();
    auto statement = inDaoTerms(vberr::SyntaxErrorInExpression,
                                [&] { return parseSelect(recordSource_, vberr::BadArguments); });
    recordset_ = std::make_unique<SqliteDaoRecordset>(opened, std::move(statement));
}

DaoRecordset& SqliteDataControl::Recordset() {
    if (!recordset_)
        throw VbError(vberr::ObjectNotSet, "Object variable or With block variable not set");
    return *recordset_;
}

int SqliteDataControl::TableCount() {
    return static_cast<int>(file()->tableNames().size());
}

std::string SqliteDataControl::TableName(int index) {
    auto names = file()->tableNames();
    if (index < 0 || index >= static_cast<int>(names.size()))
        throw VbError(vberr::SubscriptOutOfRange);
    return names[index];
}

void SqliteDataControl::BeginWriteGroup() {
    auto opened = file();
    opened->beginGroup();
    groups_.push_back(std::move(opened));
}

void SqliteDataControl::EndWriteGroup() {
    if (groups_.empty()) return;
    auto last = std::move(groups_.back());
    groups_.pop_back();
    last->endGroup();
}
