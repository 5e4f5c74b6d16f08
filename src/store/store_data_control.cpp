#include "store/store_data_control.h"

#include "base/vb_error.h"
#include "records/store.h"
#include "store/dao_terms.h"
#include "store/statement.h"

namespace {

constexpr int NotSupported = 3251;

}  // namespace

std::unique_ptr<DataControl> CreateDataControl() {
    return std::make_unique<StoreDataControl>();
}

bool StoreDataControl::onAccessFile() const {
    return AccessFile::isAccessFile(DatabaseName());
}

std::shared_ptr<AccessFile> StoreDataControl::accessFile() {
    if (!accessFile_ || accessFile_->path() != DatabaseName())
        accessFile_ = AccessFile::open(DatabaseName());
    return accessFile_;
}

void StoreDataControl::Refresh() {
    accessRecordset_.reset();
    access_ = onAccessFile();
    if (!access_) {
        accessFile_.reset();
        SqliteDataControl::Refresh();
        return;
    }
    auto file = accessFile();
    auto statement = inDaoTerms(vberr::SyntaxErrorInExpression,
                                [&] { return parseSelect(RecordSource(), vberr::BadArguments); });
    // An Access file is a source to read a table from, whole.
    if (!statement.columns.empty() || !statement.where.empty() || !statement.orderBy.empty())
        throw VbError(NotSupported, "Operation is not supported for this type of object.");
    accessRecordset_ = std::make_unique<AccessDaoRecordset>(file, statement.table);
}

DaoRecordset& StoreDataControl::Recordset() {
    if (!access_) return SqliteDataControl::Recordset();
    if (!accessRecordset_)
        throw VbError(vberr::ObjectNotSet, "Object variable or With block variable not set");
    return *accessRecordset_;
}

int StoreDataControl::TableCount() {
    if (!onAccessFile()) return SqliteDataControl::TableCount();
    return static_cast<int>(accessFile()->tableNames().size());
}

std::string StoreDataControl::TableName(int index) {
    if (!onAccessFile()) return SqliteDataControl::TableName(index);
    const auto& names = accessFile()->tableNames();
    if (index < 0 || index >= static_cast<int>(names.size()))
        throw VbError(vberr::SubscriptOutOfRange);
    return names[static_cast<std::size_t>(index)];
}
