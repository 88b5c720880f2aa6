// Making SQLite database files from scratch: the demo database that the build
// ships, and fixture databases for tests made from SQL scripts. A file is
// written under a temporary name and moved into place only when complete, so
// a failed run never leaves a half-made database where a program would open it.
#ifndef LOCALDBMAKE_H
#define LOCALDBMAKE_H

#include <QString>

#include <functional>
#include <vector>

class QSqlDatabase;

namespace localDbMake {

// One statement of a script and the line (from 1) on which it starts.
struct scriptStatement {
    QString text;
    int line;
};

// Splits a script into statements. A statement ends on a line whose last
// character other than blanks is ";" (the ";" is dropped); a line that starts
// with "--" is a comment and ends nothing. A statement that is all comments
// and blanks is left out; the text after the last ";" is a statement too.
std::vector<scriptStatement> scriptStatements(const QString &script);

// Runs the statements in their order; on the first failure `error` names the
// statement, its line and the driver's text, and the result is false.
bool scriptRun(QSqlDatabase &database, const QString &script, QString &error);

// Writes `fileName` anew, filled by `fill`; an existing file is replaced, and
// on failure removed, as its content would no longer match what was asked.
// The folder is made when it is missing.
bool databaseWrite(const QString &fileName, const std::function<bool(QSqlDatabase &, QString &)> &fill,
                   QString &error);

// The demo database: the goods reference Ref03 and the price list Ref01.
bool demoWrite(const QString &fileName, QString &error);

// A database made from the SQL script in `scriptFileName`.
bool scriptWrite(const QString &fileName, const QString &scriptFileName, QString &error);

} // namespace localDbMake

#endif
