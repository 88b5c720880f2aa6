// The database manager over a real file: its catalogue model, deleting
// through its questions, the table view's keys, the structure change and
// the tree.
#include "localDb/localDbTestSupport.h"
#include "localWidgetTestSupport.h"

#include "localDbManager.h"
#include "localDbTree.h"
#include "localDbVclInstall.h"
#include "localDbtQTableView.h"
#include "localModiStruDialog.h"

#include "localDataBase.h"

#include <QApplication>
#include <QLineEdit>
#include <QSqlQueryModel>
#include <QtTest>

using localDbTest::database;
using localTest::q;

namespace {

const QString catalogueAll = "table:t:2|table:sqlite_sequence:1|index:t_code:0";

// A table of two rows with an index on its text column.
void tableWithIndexMake()
{
    database::exec("create table t (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(10), price NUMERIC(10))");
    database::exec("insert into t (code, price) values ('a', 1.5), ('b', 2)");
    database::exec("create index t_code on t (code)");
}

QString modelRows(const localDbManagerTableModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 3; ++column)
            cells << model.data(model.index(row, column)).toString();
        rows << cells.join(':');
    }
    return rows.join('|');
}

// Replaces the text as typing does, so that the edit reports a change.
void retype(QLineEdit *edit, const QString &text)
{
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text);
}

} // namespace

class tst_localDbManager : public QObject {
    Q_OBJECT
private slots:
    void catalogue()
    {
        database db;
        tableWithIndexMake();
        localDbManagerTableModel model(u"dbMain");
        QCOMPARE(modelRows(model), catalogueAll);
        QCOMPARE(model.data(model.index(2, 3)).toString(), QString("CREATE INDEX t_code on t (code)"));
        QStringList heads;
        for (int section = 0; section < model.columnCount(); ++section)
            heads << model.headerData(section, Qt::Horizontal).toString();
        QCOMPARE(heads.join('|'), QString("objType|objName|rowCount|tabComment"));
        QCOMPARE(model.headerData(0, Qt::Vertical).toInt(), 1);

        localDbManagerTableModel missing(u"noSuchConnection");
        QCOMPARE(missing.rowCount(), 0);
        QCOMPARE(db.boxTitles(), QString("localDbManagerTableModel::localDbManagerTableModel"));
        QCOMPARE(db.lastBoxText(), QString("DB [noSuchConnection] not found!"));
    }

    void objectDelete_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QString>("rowsAfter");
        QTest::newRow("table, Cancel") << 0 << false << "Table \"t\" will be deleted" << catalogueAll;
        QTest::newRow("index, Cancel") << 2 << false << "Index \"t_code\" will be deleted" << catalogueAll;
        QTest::newRow("table, OK") << 0 << true << "Table \"t\" will be deleted" << "table:sqlite_sequence:0";
        QTest::newRow("index, OK") << 2 << true << "Index \"t_code\" will be deleted"
                                   << "table:t:2|table:sqlite_sequence:1";
    }
    void objectDelete()
    {
        QFETCH(int, row);
        QFETCH(QString, question);
        database db;
        tableWithIndexMake();
        QFETCH(bool, answer);
        db.boxes->answer = answer;
        localDbManagerTableView view(u"dbMain");
        view.setCurrentIndex(view.managerModel()->index(row, 0));
        QTest::keyClick(&view, Qt::Key_Delete);
        QVERIFY(db.boxes->boxes.at(0).question);
        QVERIFY2(q(db.boxes->boxes.at(0).text).startsWith(question), qPrintable(db.lastBoxText()));
        QTEST(modelRows(*view.managerModel()), "rowsAfter");
        // A fresh reading of the catalogue: the file itself is as the view says.
        QTEST(modelRows(localDbManagerTableModel(u"dbMain")), "rowsAfter");
    }

    void recordDelete_data()
    {
        QTest::addColumn<bool>("answer");
        QTest::addColumn<QString>("titles");
        QTest::addColumn<QString>("rowsAfter");
        QTest::newRow("Cancel") << false << "localDb::dbtRecordDelete()" << "1:a|2:b";
        QTest::newRow("OK") << true
                            << "localDb::dbtRecordDelete()|localDbTableView::keyPressEvent|"
                               "localDbTableView::keyPressEvent"
                            << "2:b";
    }
    void recordDelete()
    {
        database db;
        tableWithIndexMake();
        QFETCH(bool, answer);
        db.boxes->answer = answer;
        localDbtQTableView view(u"dbMain", u"t");
        view.setCurrentIndex(view.queryModel()->index(0, 0));
        QTest::keyClick(&view, Qt::Key_Delete);
        QTEST(db.boxTitles(), "titles");
        QTEST(database::rows("select id, code from t order by id"), "rowsAfter");
        QCOMPARE(view.queryModel()->rowCount(), answer ? 1 : 2);
    }

    // F4: the key's box first, then the editor; a number emptied in it is
    // written as NULL, not as a broken statement.
    void recordEdit()
    {
        database db;
        tableWithIndexMake();
        localDbtQTableView view(u"dbMain", u"t");
        view.setCurrentIndex(view.queryModel()->index(0, 0));
        QString log;
        localTest::modalAnswer editor([&log](QWidget *widget) {
            localDbRecordEditor *dialog = qobject_cast<localDbRecordEditor *>(widget);
            if (dialog == nullptr)
                return;
            log = dialog->fieldsLog();
            const QList<QLineEdit *> edits = dialog->findChildren<QLineEdit *>();
            retype(edits.at(1), "zz");
            retype(edits.at(2), "");
            dialog->accept();
        });
        QTest::keyClick(&view, Qt::Key_F4);
        QCOMPARE(q(db.boxes->boxes.at(0).text), QString("keyPress код F4"));
        QCOMPARE(log, QString("<B>localDbTableView::activatedSlot()</B> <BR/><BR/>"
                              "fieldName: id fieldType: unkn fieldValue: |1|<BR/>"
                              "fieldName: code fieldType: CHAR fieldValue: |a|<BR/>"
                              "fieldName: price fieldType: NUME fieldValue: |1.5|<BR/>"));
        QCOMPARE(database::rows("select id, code, ifnull(price, 'null') from t order by id"),
                 QString("1:zz:null|2:b:2"));
    }

    // Shift+F4 in the manager: the dialog's edits rebuild the table, its
    // data following each line's source column.
    void structureChange_data()
    {
        QTest::addColumn<QString>("newName"); // null: the line is not touched
        QTest::addColumn<QString>("added");
        QTest::addColumn<QString>("problem");
        QTest::addColumn<QString>("rowsAfter");
        QTest::addColumn<QString>("columnsAfter");
        const QString before = "1:a:1.5|2:b:2";
        QTest::newRow("rename") << "name" << "" << "" << before << "id:name:price";
        QTest::newRow("rename and add") << "name" << "note" << "" << "1:a:1.5:|2:b:2:" << "id:name:price:note";
        QTest::newRow("untouched") << QString() << "" << "" << before << "id:code:price";
        QTest::newRow("name emptied") << "" << "" << "A field has no name." << before << "id:code:price";
        QTest::newRow("name twice") << "PRICE" << "" << "The field price is there twice." << before
                                    << "id:code:price";
    }
    void structureChange()
    {
        QFETCH(QString, newName);
        QFETCH(QString, added);
        QFETCH(QString, problem);
        database db;
        tableWithIndexMake();
        localDbManagerTableView view(u"dbMain");
        QString title;
        bool keyLocked = false;
        localTest::modalAnswer answer([&](QWidget *widget) {
            localModiStruDialog *dialog = qobject_cast<localModiStruDialog *>(widget);
            if (dialog == nullptr)
                return;
            keyLocked = !dialog->fieldNameEdit(0)->isEnabled();
            if (!newName.isNull())
                retype(dialog->fieldNameEdit(1), newName);
            if (!added.isEmpty())
                dialog->fieldAdd(localTest::w(added));
            title = dialog->windowTitle();
            dialog->slotOk();
            if (dialog->isVisible())
                dialog->slotCancel();
        });
        QTest::keyClick(&view, Qt::Key_F4, Qt::ShiftModifier);
        QVERIFY(keyLocked);
        QCOMPARE(title.startsWith("[ * ] t"), !newName.isNull());
        if (!problem.isEmpty())
            QCOMPARE(db.lastBoxText(), problem);
        QTEST(database::rows("select * from t order by id"), "rowsAfter");
        QTEST(database::rows("select group_concat(name, ':') from pragma_table_info('t')"), "columnsAfter");
        // Only a rebuild loses the index, and the manager shows the rebuilt catalogue.
        const bool rebuilt = problem.isEmpty() && !newName.isNull();
        QCOMPARE(database::rows("select name from sqlite_master where type = 'index'"),
                 QString(rebuilt ? "" : "t_code"));
        QCOMPARE(modelRows(*view.managerModel()), modelRows(localDbManagerTableModel(u"dbMain")));
    }

    void tableBrowse_data()
    {
        QTest::addColumn<QString>("connection");
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("box"); // title and text; empty: the rows are shown
        QTest::newRow("no connection") << "nowhere" << "t" << "localDb::dbTableBrowse(): nowherenot found!";
        QTest::newRow("no table") << "dbMain" << "nope"
                                  << "Warning: dbManagelocalDb::dbTableBrowse() no such table: nope/n"
                                     "Unable to execute statement";
        QTest::newRow("table") << "dbMain" << "t" << "";
    }
    void tableBrowse()
    {
        QFETCH(QString, connection);
        QFETCH(QString, table);
        QFETCH(QString, box);
        database db;
        tableWithIndexMake();
        QCOMPARE(localDbManagerTableView::dbTableBrowse(localTest::w(connection), localTest::w(table)), box.isEmpty());
        QCOMPARE(db.boxes->boxes.empty() ? QString() : db.boxTitles() + ": " + db.lastBoxText(), box);
        QWidget *shown = QApplication::topLevelWidgets().value(0);
        QCOMPARE(shown != nullptr && shown->windowTitle() == table, box.isEmpty());
        delete shown;
    }

    void tree()
    {
        database db;
        database::exec("create table u (a CHAR(5), b INT)");
        localDbTree tree(QSqlDatabase::database("dbMain", false));
        QTreeWidgetItem *top = tree.topLevelItem(0);
        QCOMPARE(tree.topLevelItemCount(), 1);
        QCOMPARE(top->type(), int(localDbTree::itemDatabase));
        QCOMPARE(top->text(0), QString("dbMain"));
        QCOMPARE(top->childCount(), 1);
        QCOMPARE(top->child(0)->type(), int(localDbTree::itemTable));
        QTreeWidgetItem *fields = top->child(0)->child(0);
        QCOMPARE(fields->type(), int(localDbTree::itemFields));
        QCOMPARE(fields->text(0), QString("Поля"));
        QCOMPARE(fields->childCount(), 2);
        QCOMPARE(fields->child(1)->text(0), QString("b"));
        const QImage closed = fields->icon(0).pixmap(16).toImage();
        tree.expandItem(top->child(0));
        tree.expandItem(fields);
        QVERIFY(fields->icon(0).pixmap(16).toImage() != closed);
        tree.collapseItem(fields);
        QCOMPARE(fields->icon(0).pixmap(16).toImage(), closed);

        // TREESHOW reaches the same tree through the registered handler.
        localDbVclInstall();
        localDataBaseWindows::handlers.treeShow(QSqlDatabase::database("dbMain", false));
        QWidget *shown = nullptr;
        for (QWidget *top : QApplication::topLevelWidgets())
            if (top->findChild<localDbTree *>() != nullptr)
                shown = top;
        QVERIFY(shown != nullptr);
        QCOMPARE(shown->windowModality(), Qt::WindowModal);
        delete shown;
    }
};

QTEST_MAIN(tst_localDbManager)
#include "tst_localDbManager.moc"
