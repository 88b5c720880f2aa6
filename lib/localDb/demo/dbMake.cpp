// dbMake: makes the SQLite databases of the build and of the tests.
//   dbMake demo OUT.sqlite             the demo database
//   dbMake sql OUT.sqlite SCRIPT.sql   a database made from an SQL script
// Exit status 0 when OUT is written, 1 when it could not be (the reason on
// standard error), 2 for a usage error.
#include "localDbMake.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

int main(int argc, char **argv)
{
    // The SQLite driver is a plugin, found through the application's paths.
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    QString error;
    bool written = false;
    if (arguments.size() == 3 && arguments[1] == QLatin1String("demo")) {
        written = localDbMake::demoWrite(arguments[2], error);
    } else if (arguments.size() == 4 && arguments[1] == QLatin1String("sql")) {
        written = localDbMake::scriptWrite(arguments[2], arguments[3], error);
    } else {
        std::fprintf(stderr, "usage: dbMake demo OUT.sqlite\n       dbMake sql OUT.sqlite SCRIPT.sql\n");
        return 2;
    }
    if (!written) {
        std::fprintf(stderr, "dbMake: %s: %s\n", qUtf8Printable(arguments[2]), qUtf8Printable(error));
        return 1;
    }
    return 0;
}
