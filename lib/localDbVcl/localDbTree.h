// The tables of a connection and their fields as a tree.
#ifndef LOCALDBTREE_H
#define LOCALDBTREE_H

#include <QTreeWidget>

class QSqlDatabase;

class localDbTree : public QTreeWidget {
    Q_OBJECT
public:
    // Item types of the levels: the connection, a table, a table's
    // "Поля" item; the fields themselves are plain items.
    enum itemType { itemDatabase = 1002, itemTable = 1003, itemFields = 1004 };

    explicit localDbTree(const QSqlDatabase &database, QWidget *parent = nullptr);

    // The handler of TREESHOW: the tree shown modally.
    static void treeShow(const QSqlDatabase &database);

public slots:
    void collapsedItemSlot(QTreeWidgetItem *item);
    void expandedItemSlot(QTreeWidgetItem *item);
};

#endif
