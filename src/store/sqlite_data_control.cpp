#include "store/sqlite_data_control.h"

#include "base/vb_error.h"
#include "records/store.h"

namespace {

constexpr int UpdateWithoutEdit = 3020;
constexpr int TooFewParameters = 3061;
constexpr int ObjectNotSet = 91;

// The older access names its faults in its own numbers.
template <class F>
auto inDaoTerms(int syntaxNumber, F&& f) {
    try {
        return f();
    } catch (const VbError& e) {
        if (e.Number() == vberr::BadArguments) throw VbError(syntaxNumber);
        if (e.Number() == vberr::ItemNotFound)
            throw VbError(syntaxNumber == vberr::SyntaxErrorInCriteria ? vberr::UnknownField
                                                                       : TooFewParameters);
        throw;
    }
}

}  // namespace

std::unique_ptr<DataControl> CreateDataControl() {
    return std::make_unique<SqliteDataControl>();
}

void SqliteDaoRecordset::leaveRow() {
    cursor_->cancelUpdate();
}

void SqliteDaoRecordset::MoveFirst() {
    if (cursor_->count() == 0) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    cursor_->moveTo(0);
}

void SqliteDaoRecordset::MoveLast() {
    if (cursor_->count() == 0) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    cursor_->moveTo(cursor_->count() - 1);
}

void SqliteDaoRecordset::MoveNext() {
    if (cursor_->eof()) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    cursor_->moveNext();
}

void SqliteDaoRecordset::MovePrevious() {
    if (cursor_->bof()) throw VbError(vberr::NoCurrentRecord);
    leaveRow();
    cursor_->moveTo(cursor_->position() - 1);
}

void SqliteDaoRecordset::findFrom(const std::string& criteria, long from) {
    long found = inDaoTerms(vberr::SyntaxErrorInCriteria,
                            [&] { return cursor_->find(criteria, from, true, false); });
    noMatch_ = found < 0;
    if (noMatch_) return;
    leaveRow();
    cursor_->moveTo(found);
}

void SqliteDaoRecordset::FindFirst(const std::string& criteria) {
    findFrom(criteria, 0);
}

void SqliteDaoRecordset::FindNext(const std::string& criteria) {
    findFrom(criteria, cursor_->position() + 1);
}

void SqliteDaoRecordset::AddNew() {
    leaveRow();
    positionBeforeAdd_ = cursor_->position();
    cursor_->addNew();
}

void SqliteDaoRecordset::Edit() {
    leaveRow();
    cursor_->beginEdit();
}

void SqliteDaoRecordset::Update() {
    Cursor::Edit mode = cursor_->editMode();
    if (mode == Cursor::Edit::None) throw VbError(UpdateWithoutEdit);
    cursor_->update();
    // After adding, the record that was current before stays current.
    if (mode == Cursor::Edit::Add) cursor_->moveTo(positionBeforeAdd_);
}

void SqliteDaoRecordset::CancelUpdate() {
    if (cursor_->editMode() == Cursor::Edit::None) throw VbError(UpdateWithoutEdit);
    cursor_->cancelUpdate();
}

void SqliteDaoRecordset::Delete() {
    leaveRow();
    cursor_->deleteCurrent();
}

std::string SqliteDaoRecordset::FieldName(int index) const {
    if (index < 0 || index >= FieldCount()) throw VbError(vberr::ItemNotFound);
    return cursor_->table().column(index).name;
}

void SqliteDaoRecordset::SetValue(int index, const Variant& value) {
    if (cursor_->editMode() == Cursor::Edit::None) throw VbError(UpdateWithoutEdit);
    cursor_->setValue(index, value);
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
    auto cursor = inDaoTerms(vberr::SyntaxErrorInExpression,
                             [&] { return std::make_unique<Cursor>(opened, statement); });
    recordset_ = std::make_unique<SqliteDaoRecordset>(std::move(cursor));
}

DaoRecordset& SqliteDataControl::Recordset() {
    if (!recordset_) throw VbError(ObjectNotSet, "Object variable or With block variable not set");
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
