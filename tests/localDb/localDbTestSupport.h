// A real SQLite file in a temporary folder, opened as the main connection,
// and the boxes the layer shows while a test runs.
#ifndef LOCALDBTESTSUPPORT_H
#define LOCALDBTESTSUPPORT_H

#include "localDb.h"
#include "localTestSupport.h"

#include <QStringList>
#include <QTemporaryDir>

namespace localDbTest {

class database {
public:
    QTemporaryDir dir;
    QString fileName = dir.filePath("test.sqlite");
    localTest::boxRecorder *boxes;

    database()
    {
        localTest::fileWrite(fileName, QByteArray());
        localDb::testDbSqliteInit(localTest::w(fileName));
        boxes = localTest::boxRecorder::install();
    }
    ~database() { localServices::install(nullptr); }

    // Setup, past the layer.
    static void exec(const QString &sql)
    {
        QSqlQuery query(QSqlDatabase::database("dbMain", false));
        QVERIFY2(query.exec(sql), qPrintable(sql));
    }
    // The rows, their columns joined by ":", the rows by "|".
    static QString rows(const QString &sql)
    {
        QSqlQuery query(QSqlDatabase::database("dbMain", false));
        QStringList rows;
        for (bool ok = query.exec(sql); ok && query.next();) {
            QStringList values;
            for (int i = 0; i < query.record().count(); ++i)
                values << query.value(i).toString();
            rows << values.join(':');
        }
        return rows.join('|');
    }
    QString boxTitles() const
    {
        QStringList titles;
        for (const auto &box : boxes->boxes)
            titles << localTest::q(box.title);
        return titles.join('|');
    }
    QString lastBoxText() const { return boxes->boxes.empty() ? QString() : localTest::q(boxes->boxes.back().text); }
};

} // namespace localDbTest

#endif
