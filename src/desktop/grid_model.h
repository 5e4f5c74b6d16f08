#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <map>

class Recordset;

namespace desktop {

// The rows of a data grid's record set, read through the record set itself: a block of rows
// is fetched by moving to each position and back to the row that was current, with the
// set's events held meanwhile, so that showing the grid changes nothing the program sees.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using QAbstractTableModel::QAbstractTableModel;

    Recordset* source() const { return rs_; }
    void setSource(Recordset* rs);
    // The set may have moved, grown or changed: the rows are read again when shown.
    void refresh();
    // The current row of the set, 0-based; -1 when there is none.
    int currentRow() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    void fetch(int row) const;

    Recordset* rs_ = nullptr;
    int rows_ = 0, columns_ = 0;
    QStringList names_;
    mutable std::map<int, QStringList> cache_;
};

}  // namespace desktop
