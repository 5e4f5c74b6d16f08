#include "store/access_recordset.h"

#include <algorithm>

#include "base/fold.h"
#include "base/vb_error.h"
#include "store/criteria.h"
#include "store/dao_terms.h"

AccessDaoRecordset::AccessDaoRecordset(std::shared_ptr<AccessFile> file, std::string table)
    : file_(std::move(file)), table_(std::move(table)) {
    for (const ColumnInfo& column : file_->tableColumns(table_))
        names_.push_back(column.name);
}

const RowTable& AccessDaoRecordset::rows() const {
    if (!rows_) rows_.emplace(file_->readRows(table_));
    return *rows_;
}

void AccessDaoRecordset::readOnly() {
    throw VbError(vberr::DatabaseReadOnly);
}

void AccessDaoRecordset::MoveFirst() {
    if (RecordCount() == 0) throw VbError(vberr::NoCurrentRecord);
    pos_ = 0;
}

void AccessDaoRecordset::MoveLast() {
    if (RecordCount() == 0) throw VbError(vberr::NoCurrentRecord);
    pos_ = RecordCount() - 1;
}

void AccessDaoRecordset::MoveNext() {
    if (Eof()) throw VbError(vberr::NoCurrentRecord);
    ++pos_;
}

void AccessDaoRecordset::MovePrevious() {
    if (Bof()) throw VbError(vberr::NoCurrentRecord);
    --pos_;
}

void AccessDaoRecordset::findFrom(const std::string& criteria, long from) {
    const Criteria parsed =
        inDaoTerms(vberr::SyntaxErrorInCriteria, [&] { return Criteria::parse(criteria, rows()); });
    for (long row = std::max(from, 0L); row < RecordCount(); ++row)
        if (parsed.matches(rows(), static_cast<int>(row))) {
            noMatch_ = false;
            pos_ = row;
            return;
        }
    noMatch_ = true;
}

void AccessDaoRecordset::FindFirst(const std::string& criteria) {
    findFrom(criteria, 0);
}

void AccessDaoRecordset::FindNext(const std::string& criteria) {
    findFrom(criteria, pos_ + 1);
}

int AccessDaoRecordset::FieldIndex(std::string_view name) const {
    for (std::size_t i = 0; i < names_.size(); ++i)
        if (equalFolded(names_[i], name)) return static_cast<int>(i);
    throw VbError(vberr::ItemNotFound);
}

std::string AccessDaoRecordset::FieldName(int index) const {
    if (index < 0 || index >= FieldCount()) throw VbError(vberr::ItemNotFound);
    return names_[static_cast<std::size_t>(index)];
}

Variant AccessDaoRecordset::GetValue(int index) const {
    FieldName(index);  // 3265 for a field the table does not have
    if (Bof() || Eof()) throw VbError(vberr::NoCurrentRecord);
    return rows().get(static_cast<int>(pos_), index);
}
