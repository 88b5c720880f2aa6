#include "localTestSupport.h"

using localTest::q;

namespace {

// A small class whose objects count their links and their destructions.
struct counted {
    int64_t links = 0;
};
int destructions = 0;
localClassDeclaration *countedDeclaration = nullptr;
localClassDeclaration *uncountedDeclaration = nullptr;

int64_t countedLink(void **object, int delta)
{
    counted *target = static_cast<counted *>(*object);
    target->links += delta;
    return target->links;
}

// Constructs objects of the declaration `*owner`.
template <localClassDeclaration **owner>
bool countedDispatch(localErrorType &status, localContextUTF8 *, void **object, const std::u16string &name,
                     localValueVector *, localValueDescription **result)
{
    localDispatchBegin(status, object, result, "counted::classImplementationMethodFunction()");
    if (*object == nullptr) {
        if (!name.empty()) {
            status = localErrorTypeMETHODnotDeclared;
            return false;
        }
        (*result)->setObject(new counted, *owner);
        return true;
    }
    if (name == u"~") {
        ++destructions;
        delete static_cast<counted *>(*object);
        return true;
    }
    status = localErrorTypeMETHODunknown;
    return false;
}

localClassDeclaration *countedClass(bool withLinks)
{
    localClassDeclaration *declaration = new localClassDeclaration;
    const localMethodFunction dispatch =
        withLinks ? countedDispatch<&countedDeclaration> : countedDispatch<&uncountedDeclaration>;
    declaration->className = withLinks ? u"COUNTED" : u"UNCOUNTED";
    declaration->className2 = withLinks ? u"СЧЁТНЫЙ" : u"НЕСЧЁТНЫЙ";
    declaration->localObjectLinkFunction = withLinks ? countedLink : nullptr;
    declaration->memberAdd(u"", dispatch);
    declaration->memberAdd(u"~", dispatch);
    return declaration;
}

LOCAL_CHILD_CASE(exhaustion)
{
    localMemoryManager &manager = localMemoryManager::instance();
    for (size_t i = 0; i <= manager.reservedCount; ++i)
        manager.allocate();
}

LOCAL_CHILD_CASE(lastCell)
{
    localMemoryManager &manager = localMemoryManager::instance();
    manager.allocate();
    while (manager.getUsedCount() < manager.reservedCount)
        manager.allocate();
    std::cout << "all " << manager.getUsedCount() << " cells busy\n" << std::flush;
}

// A kept numeric expression that holds three cells at most on its way,
// run with `free` cells left: the way without cells must stop where the
// plain one would.
void numericWithFreeCells(size_t free)
{
    localContextUTF8 *context = localTest::globalContext();
    context->variableSetNumber(u"A", 7);
    const std::u16string text = u"a - 1 + 2 * a";
    localExpressionForm form(text);
    localErrorType status = localErrorTypeOK;
    for (int run = 0; run < 2; ++run) {
        localValueDescription *value = nullptr;
        localInterpretatorUTF8::evaluate(status, text, &value, context, &form);
        localValueRelease(value);
    }
    localMemoryManager &manager = localMemoryManager::instance();
    while (manager.getFreeCount() > free)
        manager.allocate();
    localValueDescription *value = nullptr;
    localInterpretatorUTF8::evaluate(status, text, &value, context, &form);
    std::cout << "value " << value->localValueNumber << "\n" << std::flush;
}

LOCAL_CHILD_CASE(numericAtLimit)
{
    numericWithFreeCells(3);
}

LOCAL_CHILD_CASE(numericPastLimit)
{
    numericWithFreeCells(2);
}

LOCAL_CHILD_CASE(negativeLinks)
{
    localValueDescription *cell = localValueNew();
    cell->linkCounterDec();
    cell->linkCounterDec();
}

LOCAL_CHILD_CASE(resultNotNull)
{
    localTest::globalContext();
    localValueDescription *result = localValueNew();
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, u"1", position, &result,
                                                              localContextUTF8::globalContext, false);
}

} // namespace

class tst_localValueDescription : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    void lowestFreeCellIsReusedAtOnce()
    {
        localValueDescription *a = localValueNew();
        localValueDescription *b = localValueNew();
        localValueDescription *c = localValueNew();
        QVERIFY(a < b && b < c);
        b->setString(u"left over");
        localValueDescription *freed = b;
        localValueRelease(b);
        localValueDescription *again = localValueNew();
        QCOMPARE(again, freed);
        QCOMPARE(again->getType(), int32_t(localValueTypeNUM));
        QVERIFY(again->localValueString.empty());
        QCOMPARE(again->linkCounter, 1u);
        localValueRelease(again);
        localValueRelease(a);
        localValueRelease(c);
    }

    // Each case runs in a child process: the table's limits, and the stops
    // that broken invariants make.
    void childOutcomes_data()
    {
        QTest::addColumn<QString>("childCase");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        const QString overflow = "Memory manager (localMemoryManager) overflow. Resize not available";
        QTest::newRow("last cell") << "lastCell" << 0 << "all 102400 cells busy";
        QTest::newRow("one past the last") << "exhaustion" << 1 << overflow;
        // 7 - (1 + 2 * 7), precedence being the operator's number.
        QTest::newRow("numeric, cells enough") << "numericAtLimit" << 0 << "value -8";
        QTest::newRow("numeric, a cell short") << "numericPastLimit" << 1 << overflow;
        QTest::newRow("negative links")
            << "negativeLinks" << 1 << "localValueDescription::linkCounterDec() Error!!!  linkCounter cannot be negative!";
        QTest::newRow("result not null")
            << "resultNotNull" << 1
            << "localInterpretatorUTF8::scanStringGetExpressionAndEvaluete() result must be NULL!";
    }
    void childOutcomes()
    {
        QFETCH(QString, childCase);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        QCOMPARE(localMemoryManager::instance().getReservedCount(), size_t(102400));
        const localTest::childResult result = localTest::runChild(childCase);
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(QString::fromUtf8(result.output).contains(message), result.output.constData());
    }

    void copiedStringIsIndependent()
    {
        localValueDescription a;
        a.setString(u"one");
        localValueDescription b(a);
        b.localValueString += u"two";
        QCOMPARE(q(a.toString()), QString("one"));
        QCOMPARE(b.linkCounter, 0u);
    }

    // A joined text grows its block in place only where no other text, and
    // no string handed out, can see the change.
    void textsGrowInPlaceUnseen()
    {
        const localText built(u"xy");
        const localText longer = built.joined(u"z");
        QVERIFY(longer.sharesWith(built));
        const localText fromPart = built.part(1, 1).joined(u"q");
        const localText again = built.joined(u"w");
        QCOMPARE(q(built.str()), QString("xy"));
        QCOMPARE(q(longer.str()), QString("xyz"));
        QCOMPARE(q(fromPart.str()), QString("yq"));
        QCOMPARE(q(again.str()), QString("xyw"));

        const localText held(u"abc");
        const std::u16string &whole = held.str();
        const localText behind = held.joined(u"d");
        QVERIFY(!behind.sharesWith(held));
        QCOMPARE(q(whole), QString("abc"));
        const localText self = behind.joined(behind.view());
        QCOMPARE(q(self.str()), QString("abcdabcd"));
    }

    void sharedObjectDiesWithItsLastCell()
    {
        countedDeclaration = countedClass(true);
        QVERIFY(localContextUTF8::classRegister(countedDeclaration));
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        localValueVector noArguments;
        localValueDescription *made = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(context->createObj(status, u"счётный", &noArguments, &made));
        context->variableSet(u"A", made);
        context->variableSet(u"B", made);
        localValueRelease(made);
        counted *object = static_cast<counted *>(context->variableFind(u"A")->value->localValueObject);
        QCOMPARE(object->links, int64_t(2));
        destructions = 0;
        context->variableFind(u"A")->value->localValueClear();
        QCOMPARE(destructions, 0);
        QCOMPARE(object->links, int64_t(1));
        context->variableFind(u"B")->value->setVal(1);
        QCOMPARE(destructions, 1);
    }

    void objectWithoutLinkFunctionStays()
    {
        localClassDeclaration *declaration = uncountedDeclaration = countedClass(false);
        localValueVector noArguments;
        localValueDescription *made = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(declaration->methodExec(status, nullptr, nullptr, u"", &noArguments, &made));
        void *object = made->localValueObject;
        destructions = 0;
        localValueRelease(made);
        QCOMPARE(destructions, 0);
        delete static_cast<counted *>(object);
        delete declaration;
    }

    void methodCallThroughValue()
    {
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        localErrorType status = localErrorTypeOK;
        localValueDescription number;
        QVERIFY(!number.methodExec(status, nullptr, u"TOSTRING", &noArguments, &result));
        QCOMPARE(int(status), 51);
        localValueDescription classless;
        classless.type = localValueTypeOBJ;
        QVERIFY(!classless.methodExec(status, nullptr, u"TOSTRING", &noArguments, &result));
        QCOMPARE(int(status), 14);
        classless.type = localValueTypeNUM;
    }
};

LOCAL_TEST_MAIN(tst_localValueDescription)
#include "tst_localValueDescription.moc"
