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
    if (!recordset_) throw VbError(ObjectNotSet, "Object variable or With block variable not set");
    return *recordset_;
}

void SqliteDataControl::BeginTrans() {
    auto opened = file();
    if (inTransaction_) return;
    opened->execScript("BEGIN IMMEDIATE");
    inTransaction_ = opened;
}

void SqliteDataControl::CommitTrans() {
    if (!inTransaction_) return;
    // A commit the file refuses leaves the transaction open for the next try.
    inTransaction_->execScript("COMMIT");
    inTransaction_.reset();
}

SqliteDataControl::~SqliteDataControl() {
    try {
        CommitTrans();
    } catch (const VbError&) {
        // The file is going; what it refused is lost with it.
    }
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
