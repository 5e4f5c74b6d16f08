#include "desktop/file_views.h"

#include <QAbstractFileIconProvider>
#include <QFileIconProvider>
#include <QListWidget>
#include <QString>

#include "forms/control.h"

namespace desktop {

namespace {

struct Row {
    QString text;
    QAbstractFileIconProvider::IconType icon;
    int depth;
};

QString nameOf(const std::string& path) {
    const QString p = QString::fromStdString(path);
    const int slash = p.lastIndexOf('/');
    return slash < 0 || p == "/" ? p : p.mid(slash + 1);
}

QList<Row> rowsOf(const Control& c) {
    QList<Row> rows;
    const int above = rowsAbove(c);
    for (int i = -above; i < 0; ++i)
        rows.append({nameOf(c.List(i)), QAbstractFileIconProvider::Folder, i + above});
    for (int i = 0; i < c.ListCount(); ++i) {
        switch (c.Kind()) {
            case ControlKind::DirList:
                rows.append({nameOf(c.List(i)), QAbstractFileIconProvider::Folder, above});
                break;
            case ControlKind::DriveList:
                rows.append(
                    {QString::fromStdString(c.List(i)), QAbstractFileIconProvider::Drive, 0});
                break;
            default:
                rows.append(
                    {QString::fromStdString(c.List(i)), QAbstractFileIconProvider::File, 0});
        }
    }
    return rows;
}

}  // namespace

bool isFileView(const Control& c) {
    return c.Kind() == ControlKind::DirList || c.Kind() == ControlKind::FileList ||
           c.Kind() == ControlKind::DriveList;
}

int rowsAbove(const Control& c) {
    if (c.Kind() != ControlKind::DirList) return 0;
    int above = 0;
    while (!c.List(-above - 1).empty())
        ++above;
    return above;
}

void fillFileView(QListWidget& list, const Control& c) {
    const QList<Row> rows = rowsOf(c);
    bool same = list.count() == rows.size();
    for (int i = 0; same && i < rows.size(); ++i)
        same = list.item(i)->data(Qt::UserRole).toString() == rows[i].text &&
               list.item(i)->data(Qt::UserRole + 1).toInt() == rows[i].depth;
    if (same) return;
    static const QFileIconProvider icons;
    list.clear();
    for (const Row& row : rows) {
        // Indented by depth: the tree of folders down to the one shown.
        auto* item = new QListWidgetItem(icons.icon(row.icon),
                                         QString(row.depth * 2, ' ') + row.text, &list);
        item->setData(Qt::UserRole, row.text);
        item->setData(Qt::UserRole + 1, row.depth);
        item->setToolTip(row.text);
    }
}

}  // namespace desktop
