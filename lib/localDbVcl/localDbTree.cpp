#include "localDbTree.h"

#include "localVCL.h"

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlRecord>
#include <QStyle>

namespace {

QIcon standardIcon(QStyle::StandardPixmap picture)
{
    return QApplication::style()->standardIcon(picture);
}

} // namespace

localDbTree::localDbTree(const QSqlDatabase &database, QWidget *parent) : QTreeWidget(parent)
{
    setColumnCount(1);
    setHeaderLabel(database.databaseName());
    QTreeWidgetItem *top = new QTreeWidgetItem(this, QStringList(database.connectionName()), itemDatabase);
    top->setIcon(0, standardIcon(QStyle::SP_DriveHDIcon));
    const QIcon tableIcon = standardIcon(QStyle::SP_FileDialogDetailedView);
    const QIcon folderIcon = standardIcon(QStyle::SP_DirClosedIcon);
    for (const QString &table : database.tables(QSql::Tables)) {
        QTreeWidgetItem *tableItem = new QTreeWidgetItem(top, QStringList(table), itemTable);
        tableItem->setIcon(0, tableIcon);
        QTreeWidgetItem *fieldsItem = new QTreeWidgetItem(tableItem, QStringList(QStringLiteral("Поля")), itemFields);
        fieldsItem->setIcon(0, folderIcon);
        const QSqlRecord fields = database.record(table);
        for (int i = 0; i < fields.count(); ++i)
            new QTreeWidgetItem(fieldsItem, QStringList(fields.fieldName(i)));
    }
    top->setExpanded(true);
    connect(this, &QTreeWidget::itemCollapsed, this, &localDbTree::collapsedItemSlot);
    connect(this, &QTreeWidget::itemExpanded, this, &localDbTree::expandedItemSlot);
}

void localDbTree::collapsedItemSlot(QTreeWidgetItem *item)
{
    if (item->type() == itemFields)
        item->setIcon(0, standardIcon(QStyle::SP_DirClosedIcon));
}

void localDbTree::expandedItemSlot(QTreeWidgetItem *item)
{
    if (item->type() == itemFields)
        item->setIcon(0, standardIcon(QStyle::SP_DirOpenIcon));
}

void localDbTree::treeShow(const QSqlDatabase &database)
{
    localDbTree *tree = new localDbTree(database);
    tree->resize(360, 480);
    localVCL::applicationShowWidget(tree, database.connectionName(), true);
}
