// The manual that MANUAL opens stays true to the language: every global
// function and every method of every class CLASSLOAD knows has its page and
// no page names what does not exist; every example runs headless and prints
// what its page says it prints.
#include "localClassV77.h"
#include "localDbInstall.h"
#include "localForm.h"
#include "localGlobalFunctions.h"
#include "localJson.h"
#include "localNetwork.h"
#include "localSxl.h"
#include "localValueTable.h"

#include "localTestSupport.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <map>
#include <set>

using localTest::q;
using localTest::w;

namespace {

// What an example prints follows this line; an example that needs a window
// carries the other mark and is not run.
const QString outputMark = QStringLiteral("// вывод:");
const QString windowMark = QStringLiteral("// нужно окно");

struct manualMethod {
    QString nameEn;
    QString nameRu;
    QString example;
};
typedef std::map<QString, std::map<QString, manualMethod>> manualClasses;

QString text(const localValueDescription *cell)
{
    return cell != nullptr && cell->getType() == localValueTypeSTR ? q(cell->localValueString) : QString();
}

// The member `key` of a (key, value) table of the help file.
const localValueDescription *member(const localValueTable &table, const QString &key)
{
    for (size_t row = 1; row <= table.rowsCount(); ++row)
        if (text(table.cell(row, 1)) == key)
            return table.cell(row, 2);
    return nullptr;
}

manualClasses manualRead()
{
    std::u16string json;
    localErrorType status = localErrorTypeOK;
    if (!localString::fileRead(status, w(QStringLiteral(KORVEL_MANUAL)), json, localString::possibleCodePageUTF8))
        qFatal("the manual cannot be read");
    localValueTable top;
    size_t position = 0;
    if (!localJson::scanStringGetValueTableFromJson(status, json, position, top))
        qFatal("the manual is no help file");
    manualClasses classes;
    const localValueTable *classTable = localValueTable::fromValue(member(top, "class"));
    for (size_t row = 1; classTable != nullptr && row <= classTable->rowsCount(); ++row) {
        std::map<QString, manualMethod> &methods = classes[text(classTable->cell(row, 1))];
        const localValueTable *description = localValueTable::fromValue(classTable->cell(row, 2));
        const localValueTable *methodTable =
            description != nullptr ? localValueTable::fromValue(member(*description, "method")) : nullptr;
        for (size_t one = 1; methodTable != nullptr && one <= methodTable->rowsCount(); ++one) {
            const localValueTable *method = localValueTable::fromValue(methodTable->cell(one, 2));
            if (method != nullptr)
                methods[text(methodTable->cell(one, 1))] = {text(member(*method, "nameEn")),
                                                             text(member(*method, "nameRu")),
                                                             text(member(*method, "example"))};
        }
    }
    return classes;
}

// The names the language answers: CONTEXT's are the global functions.
std::map<QString, std::set<QString>> languageNames()
{
    localDbInstall();
    localSxlInstall();
    localNetworkInstall();
    localAutomation1CInstall();
    localContextUTF8 *context = localTest::globalContext();
    for (const std::u16string &name : localClassLoadableNames())
        localTest::evaluate(QStringLiteral("CLASSLOAD(\"%1\")").arg(q(name)), context);
    std::map<QString, std::set<QString>> names;
    size_t count = 0;
    const localGlobalFunctionRow *rows = localGlobalFunctionRows(count);
    for (size_t row = 0; row < count; ++row)
        for (const char16_t *name : {rows[row].english, rows[row].russian})
            if (name != nullptr && *name != 0)
                names["CONTEXT"].insert(q(name));
    // FORM has no constructor: FORMOPEN makes its objects, so CLASSLOAD never
    // declares it; its names come from the class's own table.
    const localNativeClassShape<localForm> &form = localForm::classShape();
    for (size_t one = 0; one < form.membersCount; ++one)
        for (const char16_t *name : {form.members[one].english, form.members[one].russian})
            if (name != nullptr)
                names[q(form.className)].insert(q(name));
    for (const localClassDeclaration *declaration : context->classes)
        for (const localClassMember *classMember : declaration->members)
            if (!classMember->name.empty() && classMember->name != u"~")
                names[q(declaration->className)].insert(q(classMember->name));
    return names;
}

QString htmlPlain(QString text)
{
    return text.replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"").replace("&amp;", "&");
}

} // namespace

class tst_korvelManual : public QObject {
    Q_OBJECT

    manualClasses manual = manualRead();

private slots:
    void everyNameHasItsPage()
    {
        const std::map<QString, std::set<QString>> names = languageNames();
        QStringList faults;
        for (const auto &[className, members] : names) {
            const auto found = manual.find(className);
            if (found == manual.end()) {
                faults << "no page of the class " + className;
                continue;
            }
            std::set<QString> documented;
            for (const auto &[key, method] : found->second)
                for (const QString &name : {method.nameEn, method.nameRu}) {
                    documented.insert(name);
                    if (!members.count(name))
                        faults << className + "." + key + " documents " + name + ", which is no member";
                }
            for (const QString &name : members)
                if (!documented.count(name))
                    faults << "no page of " + className + "." + name;
        }
        for (const auto &entry : manual)
            if (!names.count(entry.first))
                faults << "a page of the class " + entry.first + ", which is not there";
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

    // Links in the text and the see-also keys all lead to pages.
    void everyLinkHasItsPage()
    {
        std::set<QString> pages = {"#main", "#console", "#remarks", "#allPages"};
        for (const auto &[className, methods] : manual) {
            pages.insert("#class:" + className);
            for (const auto &entry : methods)
                pages.insert("#class:" + className + ":method:" + entry.first);
        }
        const QString text = QString::fromUtf8(localTest::fileBytes(QStringLiteral(KORVEL_MANUAL)));
        // A page key runs from '#' and a letter (entities have digits) to a quote or a backslash.
        const QRegularExpression linkTarget(QStringLiteral("#[A-Za-z][^\"\\\\]*"));
        QRegularExpressionMatchIterator link = linkTarget.globalMatch(text);
        QStringList dead;
        while (link.hasNext()) {
            const QString key = link.next().captured(0);
            if (!pages.count(key))
                dead << key;
        }
        QVERIFY2(dead.isEmpty(), qPrintable(dead.join('\n')));
    }

    void examplesPrintWhatTheySay_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("expected");
        for (const auto &[className, methods] : manual)
            for (const auto &[key, method] : methods) {
                if (method.example.isEmpty() || method.example.contains(windowMark))
                    continue;
                const QString example = htmlPlain(method.example);
                const int mark = example.indexOf(outputMark);
                // An example without its output is a fault of the page: the row then fails.
                QTest::newRow(qPrintable(className + "." + key))
                    << example.left(mark) << (mark < 0 ? QStringLiteral("<no output mark>")
                                                       : example.mid(mark + outputMark.size() + 1).trimmed());
            }
    }

    void examplesPrintWhatTheySay()
    {
        QFETCH(QString, program);
        QFETCH(QString, expected);
        QTemporaryDir directory;
        const QString data = directory.filePath("data.sqlite");
        QVERIFY(QFile::copy(QStringLiteral(KORVEL_DEMO_DATABASE), data));
        QVERIFY(localTest::fileWrite(directory.filePath("example.prg"), program.toUtf8()));
        QProcess cli;
        cli.setWorkingDirectory(directory.path());
        cli.start(QStringLiteral(KORVEL_CLI), {"--data", data, "example.prg"});
        QVERIFY(cli.waitForFinished(20000));
        // The data file's path and objects' addresses differ from run to run.
        QString output = QString::fromUtf8(cli.readAllStandardOutput()).replace(data, "<data>");
        output.replace(QRegularExpression("0x[0-9a-f]+"), "0x...");
        QCOMPARE(output.trimmed(), expected);
    }
};

QTEST_GUILESS_MAIN(tst_korvelManual)
#include "tst_korvelManual.moc"
