// The databases that dbMake writes: scripts split into statements, failures
// reported with nothing half-made left behind, and the demo database's shape.
#include "localDbMake.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// The rows of a query on a file, fields joined by "|", rows by "\n".
QString rows(const QString &fileName, const QString &sql)
{
    const QString name = QStringLiteral("reader");
    QStringList lines;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(fileName);
        QSqlQuery query(database);
        if (!database.open() || !query.exec(sql))
            lines << QStringLiteral("<failed> ") + sql;
        while (query.next()) {
            QStringList fields;
            for (int i = 0; i < query.record().count(); ++i)
                fields << query.value(i).toString();
            lines << fields.join(QLatin1Char('|'));
        }
    }
    QSqlDatabase::removeDatabase(name);
    return lines.join(QLatin1Char('\n'));
}

bool fileWrite(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    return QDir().mkpath(QFileInfo(fileName).absolutePath()) && file.open(QIODevice::WriteOnly)
           && file.write(bytes) == bytes.size();
}

} // namespace

class tst_localDbMake : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(localDbMake::demoWrite(demo, error), qPrintable(error));
    }
    void scriptStatements_data();
    void scriptStatements();
    void scriptFailure_data();
    void scriptFailure();
    void demoSameOverAnyFile();
    void demoShape_data();
    void demoShape();
    void fixture();

private:
    QTemporaryDir folder;
    const QString demo = folder.filePath(QStringLiteral("demo.sqlite"));
};

void tst_localDbMake::scriptStatements_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("statements"); // "line:text"
    QTest::newRow("one a line") << "create table a (x);\ninsert into a values (1);\n"
                                << QStringList{"1:create table a (x)", "2:insert into a values (1)"};
    QTest::newRow("over lines") << "create table a (\n  x\n);\nselect 'a;b',\n  2;"
                                << QStringList{"1:create table a (\n  x\n)", "4:select 'a;b',\n  2"};
    QTest::newRow("comments, blanks") << "-- a;\n\ncreate table a (x);\n;\n  ;\n-- b\n"
                                      << QStringList{"3:create table a (x)"};
    QTest::newRow("CRLF, blanks after ;") << "create table a (x);  \r\n  \r\nselect 1 ;\r\n"
                                          << QStringList{"1:create table a (x)", "3:select 1 "};
    QTest::newRow("no last ;") << "create table a (x);\nselect 1" << QStringList{"1:create table a (x)", "2:select 1"};
}

void tst_localDbMake::scriptStatements()
{
    QFETCH(QString, script);
    QFETCH(QStringList, statements);
    QStringList actual;
    for (const localDbMake::scriptStatement &statement : localDbMake::scriptStatements(script))
        actual << QString::number(statement.line) + QLatin1Char(':') + statement.text;
    QCOMPARE(actual, statements);
}

void tst_localDbMake::scriptFailure_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("reported");
    QTest::newRow("unknown table") << "create table a (x);\n\ninsert into missing\n  values (2);\n"
                                   << QStringList{"line 3", "insert into missing\n  values (2)", "missing"};
    // The driver runs only the first statement of a text: two on a line must
    // fail rather than lose the second.
    QTest::newRow("two on a line") << "create table a (x); create table b (y);\n"
                                   << QStringList{"line 1", "create table b (y)"};
}

// A failed script leaves no database, not even the one that stood there.
void tst_localDbMake::scriptFailure()
{
    QFETCH(QString, script);
    QFETCH(QStringList, reported);
    const QString out = folder.filePath(QStringLiteral("failed.sqlite"));
    const QString scriptName = folder.filePath(QStringLiteral("script.sql"));
    QVERIFY(fileWrite(out, "old") && fileWrite(scriptName, script.toUtf8()));
    QString error;
    QVERIFY(!localDbMake::scriptWrite(out, scriptName, error));
    for (const QString &part : reported)
        QVERIFY2(error.contains(part), qPrintable(error));
    QVERIFY(!QFile::exists(out) && !QFile::exists(out + QStringLiteral(".part")));
}

// Written again, into a new folder and over a file that is no database.
void tst_localDbMake::demoSameOverAnyFile()
{
    const QString again = folder.filePath(QStringLiteral("new/folder/demo.sqlite"));
    QVERIFY(fileWrite(again, "not a database"));
    QString error;
    QVERIFY2(localDbMake::demoWrite(again, error), qPrintable(error));
    QFile first(demo);
    QFile second(again);
    QVERIFY(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
    QVERIFY(first.size() > 500000);
    QVERIFY(first.readAll() == second.readAll());
}

void tst_localDbMake::demoShape_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("expected");
    QTest::newRow("indexes") << "select m.name, (select group_concat(name) from pragma_index_info(m.name)) "
                                "from sqlite_master m where m.type = 'index' order by 1"
                             << "Ref01_CODE|code,id\nRef01_DESCR|descr,id\nRef01_OWNER|Owner,id\nRef03_CODE|code,id\n"
                                "Ref03_DESCR|descr,id\nRef03_PCODE|parentid,isfolder,code,id\n"
                                "Ref03_PDESCR|parentid,isfolder,descr,id";
    // Folders nest three deep; an item's parent is a folder or the root.
    QTest::newRow("tree") << "select c.isfolder, count(*), sum(c.parentid = 0), "
                             "sum(c.isfolder = 1 and p.parentid > 0), sum(c.parentid <> 0 and p.isfolder is not 1) "
                             "from Ref03 c left join Ref03 p on p.id = c.parentid group by 1"
                          << "1|20|9|1|0\n2|3000|2|0|0";
    QTest::newRow("Cyrillic name in its folder")
        << QStringLiteral("select p.descr from Ref03 c join Ref03 p on p.id = c.parentid "
                          "where c.descr = 'Молоко 3,2% 1 л'")
        << QStringLiteral("Молоко и сливки");
    QTest::newRow("one price or none a good")
        << "select count(*) = count(distinct r.Owner), count(*) between 2000 and 2900, sum(g.isfolder is not 2) "
           "from Ref01 r left join Ref03 g on g.id = r.Owner"
        << "1|1|0";
}

void tst_localDbMake::demoShape()
{
    QFETCH(QString, sql);
    QFETCH(QString, expected);
    QCOMPARE(rows(demo, sql), expected);
}

// What the cases of tests/programs/database count on.
void tst_localDbMake::fixture()
{
    const QString out = folder.filePath(QStringLiteral("fixture.sqlite"));
    QString error;
    QVERIFY2(localDbMake::scriptWrite(out, QStringLiteral(KORVEL_FIXTURE_SQL), error), qPrintable(error));
    QCOMPARE(rows(out, QStringLiteral("select count(*), count(qty), (select count(*) from empty), "
                                      "(select наименование from товары where код = '001') from goods")),
             QStringLiteral("250|245|0|Молоко 3,2% 1 л"));
}

QTEST_GUILESS_MAIN(tst_localDbMake)
#include "tst_localDbMake.moc"
