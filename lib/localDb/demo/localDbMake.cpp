#include "localDbMake.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace localDbMake {

namespace {

// A connection of its own for each file made, so that making one never
// disturbs a connection that the caller keeps open.
class scratchConnection {
public:
    explicit scratchConnection(const QString &fileName) : name(QStringLiteral("localDbMake%1").arg(++serial))
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(fileName);
    }
    ~scratchConnection()
    {
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
    scratchConnection(const scratchConnection &) = delete;
    scratchConnection &operator=(const scratchConnection &) = delete;

    QSqlDatabase database() const { return QSqlDatabase::database(name, false); }

private:
    static int serial;
    const QString name;
};

int scratchConnection::serial = 0;

// The file is a build product, written once and read afterwards: nothing is
// gained by waiting for the disk after every statement.
bool connectionOpen(QSqlDatabase &database, QString &error)
{
    if (!database.isValid()) {
        error = QStringLiteral("the Qt SQLite driver (QSQLITE) is not installed");
        return false;
    }
    if (!database.open()) {
        error = QStringLiteral("cannot open %1: %2").arg(database.databaseName(), database.lastError().text());
        return false;
    }
    QSqlQuery pragma(database);
    pragma.exec(QStringLiteral("PRAGMA synchronous = OFF"));
    pragma.exec(QStringLiteral("PRAGMA journal_mode = MEMORY"));
    return true;
}

bool fileReplace(const QString &partName, const QString &fileName, QString &error)
{
    if (QFile::exists(fileName) && !QFile::remove(fileName)) {
        error = QStringLiteral("cannot replace %1").arg(fileName);
        return false;
    }
    if (!QFile::rename(partName, fileName)) {
        error = QStringLiteral("cannot move %1 to %2").arg(partName, fileName);
        return false;
    }
    return true;
}

} // namespace

std::vector<scriptStatement> scriptStatements(const QString &script)
{
    std::vector<scriptStatement> statements;
    QString text;
    int start = 0;
    const QVector<QStringRef> lines = script.splitRef(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        QStringRef line = lines[i];
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const QStringRef trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1String("--")))
            continue;
        const bool last = trimmed.endsWith(QLatin1Char(';'));
        const QStringRef part = last ? line.left(line.lastIndexOf(QLatin1Char(';'))) : line;
        if (!part.trimmed().isEmpty()) {
            if (text.isEmpty())
                start = i + 1;
            else
                text += QLatin1Char('\n');
            text += part;
        }
        if (last && !text.isEmpty()) {
            statements.push_back({text, start});
            text.clear();
        }
    }
    if (!text.isEmpty())
        statements.push_back({text, start});
    return statements;
}

bool scriptRun(QSqlDatabase &database, const QString &script, QString &error)
{
    for (const scriptStatement &statement : scriptStatements(script)) {
        QSqlQuery query(database);
        if (!query.exec(statement.text)) {
            error = QStringLiteral("the statement of line %1 failed: %2\n%3")
                        .arg(statement.line)
                        .arg(query.lastError().text(), statement.text);
            return false;
        }
    }
    return true;
}

bool databaseWrite(const QString &fileName, const std::function<bool(QSqlDatabase &, QString &)> &fill,
                   QString &error)
{
    const QString folder = QFileInfo(fileName).absolutePath();
    if (!QDir().mkpath(folder)) {
        error = QStringLiteral("cannot make the folder %1").arg(folder);
        return false;
    }
    const QString partName = fileName + QStringLiteral(".part");
    QFile::remove(partName);
    bool filled = false;
    {
        const scratchConnection connection(partName);
        QSqlDatabase database = connection.database();
        filled = connectionOpen(database, error) && fill(database, error);
        database.close();
    }
    if (filled && fileReplace(partName, fileName, error))
        return true;
    QFile::remove(partName);
    QFile::remove(fileName);
    return false;
}

bool scriptWrite(const QString &fileName, const QString &scriptFileName, QString &error)
{
    QFile file(scriptFileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot read %1: %2").arg(scriptFileName, file.errorString());
        return false;
    }
    const QString script = QString::fromUtf8(file.readAll());
    return databaseWrite(
        fileName, [&script](QSqlDatabase &database, QString &fault) { return scriptRun(database, script, fault); },
        error);
}

} // namespace localDbMake
