#include "desktop/grid_model.h"

#include <utility>

#include "base/convert.h"
#include "base/vb_error.h"
#include "records/recordset.h"

namespace desktop {

namespace {
constexpr int Block = 64;

bool isOpen(const Recordset* rs) {
    try {
        return rs && rs->State() == ado::adStateOpen;
    } catch (const VbError&) {
        return false;
    }
}
}  // namespace

void GridModel::setSource(Recordset* rs) {
    beginResetModel();
    rs_ = rs;
    cache_.clear();
    names_.clear();
    rows_ = columns_ = 0;
    if (isOpen(rs_)) {
        try {
            rows_ = static_cast<int>(rs_->RecordCount());
            columns_ = rs_->FieldCount();
            for (int c = 0; c < columns_; ++c)
                names_ << QString::fromStdString(rs_->FieldName(c));
        } catch (const VbError&) {
            rows_ = columns_ = 0;
        }
    }
    endResetModel();
}

void GridModel::refresh() {
    int rows = 0, columns = 0;
    if (isOpen(rs_)) {
        try {
            rows = static_cast<int>(rs_->RecordCount());
            columns = rs_->FieldCount();
        } catch (const VbError&) {
        }
    }
    if (rows != rows_ || columns != columns_) {
        setSource(rs_);
        return;
    }
    cache_.clear();
    if (rows_ > 0 && columns_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
}

int GridModel::currentRow() const {
    if (!isOpen(rs_)) return -1;
    try {
        const long position = rs_->AbsolutePosition();
        return position > 0 ? static_cast<int>(position - 1) : -1;
    } catch (const VbError&) {
        return -1;
    }
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}
int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= rows_) return {};
    auto it = cache_.find(index.row());
    if (it == cache_.end()) {
        fetch(index.row());
        it = cache_.find(index.row());
        if (it == cache_.end()) return {};
    }
    return index.column() < it->second.size() ? it->second[index.column()] : QVariant();
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal)
        return section < names_.size() ? names_[section] : QVariant();
    return section + 1;
}

void GridModel::fetch(int row) const {
    if (!isOpen(rs_)) return;
    Recordset& rs = *rs_;
    // The set's events are held while the grid reads, and the set goes back where it was.
    auto moved = std::exchange(rs.MoveComplete, nullptr);
    auto willChange = std::exchange(rs.WillChangeRecord, nullptr);
    long position = ado::adPosUnknown;
    Variant mark;
    bool marked = false;
    try {
        position = rs.AbsolutePosition();
        if (position > 0) {
            mark = rs.Bookmark();
            marked = true;
        }
    } catch (const VbError&) {
    }
    const int first = row - row % Block;
    const int last = std::min(rows_, first + Block);
    try {
        for (int r = first; r < last; ++r) {
            rs.SetAbsolutePosition(r + 1);
            QStringList cells;
            for (int c = 0; c < columns_; ++c) {
                try {
                    cells << QString::fromStdString(textOf(rs.GetValue(c)));
                } catch (const VbError&) {
                    cells << QString();
                }
            }
            cache_[r] = cells;
        }
    } catch (const VbError&) {
    }
    try {
        if (marked) {
            rs.SetBookmark(mark);
        } else if (position == ado::adPosEOF) {
            rs.MoveLast();
            rs.MoveNext();
        } else if (position == ado::adPosBOF) {
            rs.MoveFirst();
            rs.MovePrevious();
        }
    } catch (const VbError&) {
    }
    rs.MoveComplete = std::move(moved);
    rs.WillChangeRecord = std::move(willChange);
}

}  // namespace desktop
