// Helpers shared by the Qt tests: running a case in a child process (for the
// fatal stops, which end the process), converting wide strings for QCOMPARE,
// capturing std::cout, and the bytes of files.
#ifndef LOCALTESTSUPPORT_H
#define LOCALTESTSUPPORT_H

#include "localServices.h"
#include "localString.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QtTest>

#include <iostream>
#include <sstream>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace localTest {

inline QString q(const std::u16string &text)
{
    return localToQString(text);
}

inline std::u16string w(const QString &text)
{
    return localFromQString(text);
}

// Service interface that records every box instead of showing it, and
// answers questions with `answer` (Cancel unless a test says otherwise).
class boxRecorder : public localServices {
public:
    struct box {
        boxKind kind;
        std::u16string title;
        std::u16string text;
        bool question;
    };
    std::vector<box> boxes;
    bool answer = false;

    void messageBox(boxKind kind, const std::u16string &title, const std::u16string &text) override
    {
        boxes.push_back({kind, title, text, false});
    }
    bool questionBox(const std::u16string &title, const std::u16string &text) override
    {
        boxes.push_back({boxWarning, title, text, true});
        return answer;
    }
    // Installs a new recorder as the services and answers it (owned there).
    static boxRecorder *install()
    {
        boxRecorder *recorder = new boxRecorder;
        localServices::install(recorder);
        return recorder;
    }
};

// Collects what std::cout receives while it lives.
class coutCapture {
public:
    coutCapture() : previous(std::cout.rdbuf(buffer.rdbuf())) {}
    ~coutCapture() { std::cout.rdbuf(previous); }
    QString text() const { return QString::fromStdString(buffer.str()); }

private:
    std::ostringstream buffer;
    std::streambuf *previous;
};

inline QByteArray fileBytes(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

inline bool fileWrite(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

struct childResult {
    int exitCode;
    QByteArray output;
};

// Cases that must run in a child process, by name. The test's main runs the
// named case instead of the tests when KORVEL_CHILD_CASE is set.
inline std::map<std::string, std::function<void()>> &childCases()
{
    static std::map<std::string, std::function<void()>> cases;
    return cases;
}

inline childResult runChild(const QString &caseName, const QString &workingDirectory = QString())
{
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("KORVEL_CHILD_CASE", caseName);
    child.setProcessEnvironment(env);
    child.setWorkingDirectory(workingDirectory);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    child.waitForFinished(60000);
    return {child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1, child.readAll()};
}

} // namespace localTest

// A main that runs a child case when asked to, and the test object otherwise.
#define LOCAL_TEST_MAIN(TestObject)                                                                                  \
    int main(int argc, char **argv)                                                                                  \
    {                                                                                                                \
        QCoreApplication app(argc, argv);                                                                            \
        const QByteArray childCase = qgetenv("KORVEL_CHILD_CASE");                                                   \
        if (!childCase.isEmpty()) {                                                                                  \
            auto found = localTest::childCases().find(childCase.toStdString());                                      \
            if (found == localTest::childCases().end())                                                              \
                return 99;                                                                                           \
            found->second();                                                                                         \
            return 0;                                                                                                \
        }                                                                                                            \
        TestObject test;                                                                                             \
        return QTest::qExec(&test, argc, argv);                                                                      \
    }

#endif

// Registers a child case: LOCAL_CHILD_CASE(name) { ... }
#define LOCAL_CHILD_CASE(name)                                                                                       \
    static void localChildCase_##name();                                                                             \
    static const bool localChildCaseRegistered_##name =                                                              \
        (localTest::childCases()[#name] = localChildCase_##name, true);                                              \
    static void localChildCase_##name()

#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"

namespace localTest {

// The process's global context, made once as the console makes it.
inline localContextUTF8 *globalContext()
{
    if (localContextUTF8::globalContext == nullptr)
        new localContextUTF8();
    return localContextUTF8::globalContext;
}

// Evaluates `text` in `context`; the outcome as one comparable line:
// "ok <type> <text>" or "fail <status>", with the position the scan reached.
struct evaluation {
    bool done = false;
    int status = 0;
    int type = -1;
    QString text;
    int position = 0;
};

// With a form, the reads go through it (the form must belong to `text`).
inline evaluation evaluate(const QString &text, localContextUTF8 *context, bool onlyCheck = false,
                           localExpressionForm *form = nullptr)
{
    evaluation outcome;
    const std::u16string wide = w(text);
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *result = nullptr;
    outcome.done = localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, wide, position, &result,
                                                                             context, onlyCheck, form);
    outcome.status = status;
    outcome.position = int(position);
    if (result != nullptr) {
        outcome.type = result->getType();
        outcome.text = q(result->toString());
        localValueRelease(result);
    }
    return outcome;
}

} // namespace localTest
