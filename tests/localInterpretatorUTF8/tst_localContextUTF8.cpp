#include "localTestSupport.h"

#include <cstdlib>
#include <ctime>

using localTest::evaluate;
using localTest::q;

namespace {

bool echoName(localErrorType &status, localContextUTF8 *, void **object, const std::u16string &name,
              localValueVector *, localValueDescription **result)
{
    localDispatchBegin(status, object, result, "echo::classImplementationMethodFunction()");
    if (*object == nullptr && !name.empty()) {
        status = localErrorTypeMETHODnotDeclared;
        return false;
    }
    (*result)->setString(name);
    return true;
}

bool readAttribute(localErrorType &status, localContextUTF8 *, void **, const std::u16string &name,
                   localValueDescription **result)
{
    status = localErrorTypeOK;
    *result = localValueNew();
    (*result)->setString(u"attr " + name);
    return true;
}

bool answerTwo(localErrorType &status, localContextUTF8 *, void **, const std::u16string &, localValueVector *,
               localValueDescription **result)
{
    status = localErrorTypeOK;
    *result = localValueNew();
    (*result)->setVal(2);
    return true;
}

localClassDeclaration *echoClass()
{
    static localClassDeclaration *declaration = nullptr;
    if (declaration == nullptr) {
        declaration = new localClassDeclaration;
        declaration->className = u"ECHO";
        declaration->className2 = u"ЭХО";
        declaration->memberAdd2(u"TOSTRING", u"СТРОКА", echoName);
        declaration->memberAdd(u"READONLY", nullptr, nullptr, readAttribute);
        declaration->memberAdd(u"WRITEONLY", nullptr, nullptr, nullptr);
        declaration->memberAdd(u"STATIC", echoName);
    }
    return declaration;
}

} // namespace

class tst_localContextUTF8 : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    void memberStatuses_data()
    {
        QTest::addColumn<bool>("method");
        QTest::addColumn<bool>("withObject");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("value");
        QTest::newRow("two names one member") << true << true << "строка" << 54 << "СТРОКА";
        QTest::newRow("any letter case") << true << true << "toString" << 54 << "TOSTRING";
        QTest::newRow("no such method") << true << true << "NOPE" << 27 << "";
        QTest::newRow("no constructor") << true << false << "" << 11 << "";
        QTest::newRow("no class-level method") << true << false << "NOPE" << 12 << "";
        QTest::newRow("dispatch refuses class-level name") << true << false << "STATIC" << 29 << "";
        QTest::newRow("attribute read") << false << true << "READONLY" << 54 << "attr READONLY";
        QTest::newRow("member without GET") << false << true << "WRITEONLY" << 8 << "";
        QTest::newRow("no attribute, class-level") << false << false << "NOPE" << 13 << "";
        QTest::newRow("no attribute, no fallback") << false << true << "NOPE" << 10 << "";
    }
    void memberStatuses()
    {
        QFETCH(bool, method);
        QFETCH(bool, withObject);
        QFETCH(QString, name);
        QFETCH(int, status);
        QFETCH(QString, value);
        int object = 0;
        localErrorType actual = localErrorTypeOK;
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        void *target = withObject ? &object : nullptr;
        const bool done = method ? echoClass()->methodExec(actual, nullptr, target, localTest::w(name),
                                                           &noArguments, &result)
                                 : echoClass()->attrGet(actual, nullptr, target, localTest::w(name), &result);
        QCOMPARE(int(actual), status);
        QCOMPARE(done, status == 54);
        if (done)
            QCOMPARE(q(result->toString()), value);
        localValueRelease(result);
    }

    void attributeWritesHaveTheirStatuses()
    {
        localValueDescription value;
        localErrorType status = localErrorTypeOK;
        int object = 0;
        QVERIFY(!echoClass()->attrSet(status, nullptr, &object, u"READONLY", &value));
        QCOMPARE(int(status), 9);
        QVERIFY(!echoClass()->attrSet(status, nullptr, &object, u"NOPE", &value));
        QCOMPARE(int(status), 10);
        QVERIFY(!value.setAttr(status, nullptr, u"READONLY", &value));
        QCOMPARE(int(status), 51);
    }

    void classRegistration()
    {
        QVERIFY(localContextUTF8::classRegister(echoClass()));
        QVERIFY(localContextUTF8::classRegister(echoClass()));
        localClassDeclaration rival;
        rival.className = u"OTHER";
        rival.className2 = u"ЭХО";
        QVERIFY(!localContextUTF8::classRegister(&rival));
        QCOMPARE(localContextUTF8::classFind(u"эхо"), echoClass());
        QCOMPARE(localContextUTF8::classFind(u"Echo"), echoClass());
        QVERIFY(localContextUTF8::classRegistered(u"ECHO"));
        QVERIFY(!localContextUTF8::classRegistered(u"OTHER"));
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(!localContextUTF8::globalContext->createObj(status, u"NOSUCHCLASS", &noArguments, &result));
        QCOMPARE(int(status), 14);
    }

    void variableNamesAndCase()
    {
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        context->variableSetNumber(u"x", 1);
        context->variableSetNumber(u"X", 2);
        QCOMPARE(context->variables.size(), size_t(1));
        QCOMPARE(q(context->variables[0].name), QString("X"));
        QCOMPARE(evaluate("x", context.get()).text, QString("2"));

        std::unique_ptr<localContextUTF8> exact(new localContextUTF8(localTest::globalContext()));
        exact->caseSensitive = true;
        exact->variableSetNumber(u"x", 1);
        exact->variableSetNumber(u"X", 2);
        QCOMPARE(exact->variables.size(), size_t(2));
        QCOMPARE(evaluate("x", exact.get()).text, QString("1"));
        QCOMPARE(q(exact->variableToString(u"y")), QString("variable y not found!"));
    }

    // Setting a name that a parent holds changes the parent's variable.
    void innerVariableHidesOuter()
    {
        std::unique_ptr<localContextUTF8> outer(new localContextUTF8(localTest::globalContext()));
        std::unique_ptr<localContextUTF8> inner(new localContextUTF8(outer.get()));
        outer->variableSetNumber(u"V", 1);
        inner->variableSetNumber(u"V", 3);
        QCOMPARE(q(outer->variableToString(u"V")), QString("3"));
        inner->variableCreate(u"V");
        inner->variableSetNumber(u"V", 4);
        QCOMPARE(q(outer->variableToString(u"V")), QString("3"));
        QCOMPARE(evaluate("V", inner.get()).text, QString("4"));
    }

    void functionRegistration()
    {
        std::unique_ptr<localContextUTF8> outer(new localContextUTF8(localTest::globalContext()));
        std::unique_ptr<localContextUTF8> inner(new localContextUTF8(outer.get()));
        const size_t before = outer->functions.size();
        outer->functionRegister(u"two", answerTwo);
        outer->functionRegister(u"TWO", answerTwo);
        QCOMPARE(outer->functions.size(), before + 1);
        inner->functionRegister(u"Two", answerTwo);
        QCOMPARE(inner->functions.size(), size_t(1));
        const localContextUTF8 *foundIn = nullptr;
        QVERIFY(inner->functionLookup(u"TWO", &foundIn) != nullptr);
        QCOMPARE(foundIn, inner.get());
        QVERIFY(outer->functionLookup(u"MESSAGE", &foundIn) != nullptr);
        QCOMPARE(foundIn, localTest::globalContext());

        // A function of the context overrides the built-in of the same name.
        outer->functionRegister(u"MESSAGE", answerTwo);
        QCOMPARE(evaluate("MESSAGE(1)", inner.get()).text, QString("2"));
        QCOMPARE(evaluate("two() + two()", inner.get()).text, QString("4"));

        localValueVector noArguments;
        localValueDescription *result = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(!inner->funcExec(status, u"NOSUCH", &noArguments, &result));
        QCOMPARE(int(status), 24);
        status = localErrorTypeOK;
        QVERIFY(inner->funcExec(status, u"two", &noArguments, &result));
        QCOMPARE(q(result->toString()), QString("2"));
        localValueRelease(result);
    }

    void globalContextHoldsTheBuiltIns()
    {
        localContextUTF8 *global = localTest::globalContext();
        QVERIFY(global->parent == nullptr);
        QVERIFY(global->functionLookup(u"СООБЩИТЬ") != nullptr);
        std::unique_ptr<localContextUTF8> child(new localContextUTF8());
        QCOMPARE(child->parent, global);
        QVERIFY(child->functions.empty());
    }

    // Every new context seeds RAND from the clock, so RAND's first number
    // after a context is made is the clock's second's first number, however
    // many were drawn before.
    void newContextStartsRandFromTheClock()
    {
        localContextUTF8 *global = localTest::globalContext();
        for (int attempt = 0; attempt < 3; ++attempt) {
            const std::time_t second = std::time(nullptr);
            QString first;
            QString again;
            {
                localContextUTF8 context(global);
                first = evaluate("RAND()", &context).text;
                evaluate("RAND()", &context);
            }
            {
                localContextUTF8 context(global);
                again = evaluate("RAND()", &context).text;
            }
            std::srand(unsigned(second));
            const QString expected = q(localNumberToWide(float(std::rand() % 32768) / 32767.0f));
            if (std::time(nullptr) != second)
                continue; // the clock moved on between the two: try again
            QCOMPARE(first, expected);
            QCOMPARE(again, expected);
            return;
        }
        QFAIL("the clock's second changed on every attempt");
    }

    void destructionGivesBackVariableCells()
    {
        const size_t before = localMemoryManager::instance().getUsedCount();
        {
            localContextUTF8 context(localTest::globalContext());
            context.variableSetNumber(u"A", 1);
            context.variableSetNumber(u"B", 2);
            QCOMPARE(localMemoryManager::instance().getUsedCount(), before + 2);
        }
        QCOMPARE(localMemoryManager::instance().getUsedCount(), before);
    }
};

LOCAL_TEST_MAIN(tst_localContextUTF8)
#include "tst_localContextUTF8.moc"
