#include "localTestSupport.h"

using localTest::evaluate;
using localTest::q;
using localTest::w;

namespace {

int nativeCalls = 0;
// How many value objects were alive during F's last call, which the memory
// dump shows: a kept reading must not tell from the text's.
int64_t valuesAliveInCall = -1;

// A native function that counts its calls and answers 7.
bool countingFunction(localErrorType &status, localContextUTF8 *, void **, const std::u16string &,
                      localValueVector *, localValueDescription **result)
{
    ++nativeCalls;
    valuesAliveInCall = localValueDescription::counterStaticTotal;
    status = localErrorTypeOK;
    *result = localValueNew();
    (*result)->setVal(7);
    return true;
}

localContextUTF8 *freshContext()
{
    localContextUTF8 *context = new localContextUTF8(localTest::globalContext());
    context->variableSetNumber(u"X", 5);
    // Named like a member of CONTEXT and like a constant: reading them is not
    // reading the variables.
    context->variableSetNumber(u"PI", 7);
    context->variableSetNumber(u"TRUE", 9);
    localValueDescription text;
    text.setString(u"abc");
    context->variableSet(u"S", &text);
    localValueDescription flag;
    flag.setBool(true);
    context->variableSet(u"ES", &flag);
    context->functionRegister(u"F", countingFunction);
    localValueDescription object;
    object.setObject(context, localContextUTF8::classDeclaration());
    context->variableSet(u"O", &object);
    return context;
}

// What an evaluation gives that a kept form must give alike: success,
// status, kind, value, end position, printed lines, and the values alive
// while F ran (-1: not called).
QStringList outcomeFields(const QString &text, localContextUTF8 *context, localExpressionForm *form)
{
    localTest::coutCapture printed;
    const int64_t valuesBefore = localValueDescription::counterStaticTotal;
    valuesAliveInCall = -1;
    const localTest::evaluation outcome = evaluate(text, context, false, form);
    const int64_t valuesInCall = valuesAliveInCall < 0 ? -1 : valuesAliveInCall - valuesBefore;
    return QStringList{QString::number(outcome.done), QString::number(outcome.status),
                       QString::number(outcome.type), outcome.text, QString::number(outcome.position),
                       printed.text(), QString::number(valuesInCall)};
}

} // namespace

class tst_localScanner : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // Expression text in, value or status out.
    void expression_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("done");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("value");

        const int NUM = localValueTypeNUM, STR = localValueTypeSTR, BOO = localValueTypeBOO;
        // precedence is the operator's number
        QTest::newRow("mul before add") << "2 + 3 * 4" << true << 54 << NUM << "14";
        QTest::newRow("minus loosest") << "10 - 3 + 2" << true << 54 << NUM << "5";
        QTest::newRow("divide looser than multiply") << "8 / 2 * 2" << true << 54 << NUM << "2";
        QTest::newRow("comparison binds tighter than plus") << "X + 1 > 2" << false << 50 << -1 << "";
        QTest::newRow("brackets fix it") << "(X + 1) > 2" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("OR tighter than comparison") << "X > 1 OR X < 2" << false << 16 << -1 << "";
        QTest::newRow("AND looser than equal") << "X = 5 AND X = 5" << true << 54 << BOO << "ИСТИНА";
        // prefixes
        QTest::newRow("prefix binds to first operand") << "-2 * 3" << true << 54 << NUM << "-6";
        QTest::newRow("prefix in the middle") << "2 * -3" << false << 37 << -1 << "";
        QTest::newRow("not on boolean") << "!FALSE" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("not on number") << "!1" << false << 50 << -1 << "";
        QTest::newRow("minus on string") << "-S" << false << 50 << -1 << "";
        QTest::newRow("NOTES reads as NOT ES") << "NOTES" << true << 54 << BOO << "ЛОЖЬ";
        QTest::newRow("НЕ word") << "НЕ ЛОЖЬ" << true << 54 << BOO << "ИСТИНА";
        // numbers
        QTest::newRow("leading point") << ".5" << true << 54 << NUM << "0.5";
        QTest::newRow("second point ends the number") << "1.2.3" << true << 54 << NUM << "1.1999999999999999556";
        QTest::newRow("16 characters") << "1234567890123456" << true << 54 << NUM << "1234567890123456";
        QTest::newRow("16 with point") << "123456789012345.6" << false << 36 << -1 << "";
        QTest::newRow("17 digits") << "12345678901234567" << false << 36 << -1 << "";
        QTest::newRow("15 digits are exact") << "999999999999999 + 1" << true << 54 << NUM << "1000000000000000";
        QTest::newRow("16 digits round as a double") << "9007199254740993" << true << 54 << NUM << "9007199254740992";
        QTest::newRow("leading zeros") << "007 * 2" << true << 54 << NUM << "14";
        QTest::newRow("twenty digits of a third") << "1 / 3" << true << 54 << NUM << "0.33333333333333331483";
        QTest::newRow("no exponent") << "1e5" << true << 54 << NUM << "1";
        QTest::newRow("division by zero") << "1 / 0" << false << 21 << -1 << "";
        // remainder on 64-bit truncation
        QTest::newRow("remainder truncates right") << "7 % 2.5" << true << 54 << NUM << "1";
        QTest::newRow("remainder truncates left") << "7.9 % 2" << true << 54 << NUM << "1";
        QTest::newRow("remainder sign of left") << "-7 % 2" << true << 54 << NUM << "-1";
        QTest::newRow("remainder by a fraction") << "7 % 0.4" << false << 21 << -1 << "";
        // strings
        QTest::newRow("concatenation") << "\"a\" + \"b\"" << true << 54 << STR << "ab";
        QTest::newRow("single quotes") << "'it\"s'" << true << 54 << STR << "it\"s";
        QTest::newRow("string plus number") << "\"a\" + 1" << false << 50 << -1 << "";
        QTest::newRow("string minus string keeps status") << "\"a\" - \"b\"" << false << 54 << -1 << "";
        QTest::newRow("comparison by code") << "\"a\" < \"B\"" << true << 54 << BOO << "ЛОЖЬ";
        QTest::newRow("string equality") << "S = \"abc\"" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("unclosed string") << "\"abc" << false << 37 << -1 << "";
        // an intermediate text is appended to in place; a variable's never
        const QString seventy(70, 'x');
        QTest::newRow("texts joined on a long intermediate")
            << QString("S + \"%1\" + \"d\" + S").arg(seventy) << true << 54 << STR << "abc" + seventy + "dabc";
        QTest::newRow("texts joined on a bracket") << "(S + \"x\") + S + (S)" << true << 54 << STR << "abcxabcabc";
        QTest::newRow("two strings side by side") << "\"a\" \"b\"" << true << 54 << STR << "a";
        // mixed kinds and logic
        QTest::newRow("number equals string") << "1 = \"1\"" << false << 50 << -1 << "";
        QTest::newRow("OR of booleans") << "ИСТИНА ИЛИ ЛОЖЬ" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("И is AND") << "ИСТИНА И ЛОЖЬ" << true << 54 << BOO << "ЛОЖЬ";
        QTest::newRow("AND of numbers") << "1 AND 1" << false << 16 << -1 << "";
        QTest::newRow("boolean plus boolean") << "TRUE + TRUE" << false << 16 << -1 << "";
        QTest::newRow("boolean not equal") << "TRUE <> FALSE" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("all comparisons") << "(5 >= 5) AND (5 <> 4) AND (3 <= 4) AND (4 > 3)" << true << 54 << BOO
                                         << "ИСТИНА";
        QTest::newRow("object on the left") << "O = O" << false << 16 << -1 << "";
        QTest::newRow("object on the right") << "1 = O" << false << 50 << -1 << "";
        // conditional
        QTest::newRow("conditional true") << "1 ? 2 : 3" << true << 54 << NUM << "2";
        QTest::newRow("negative condition is false") << "-1 ? 2 : 3" << true << 54 << NUM << "3";
        QTest::newRow("conditional on top operand") << "10 + 0 ? 1 : 2" << true << 54 << NUM << "12";
        QTest::newRow("missing colon") << "1 ? 2" << false << 38 << -1 << "";
        QTest::newRow("losing branch only checked") << "1 ? 2 : UNKNOWN" << true << 54 << NUM << "2";
        QTest::newRow("losing branch syntax checked") << "1 ? 2 : (" << false << 37 << -1 << "";
        // names
        QTest::newRow("variable any case") << "x * 2" << true << 54 << NUM << "10";
        QTest::newRow("member name as written has no GET") << "PI" << false << 8 << -1 << "";
        QTest::newRow("member name in lower case is the variable") << "pi + 1" << true << 54 << NUM << "8";
        QTest::newRow("constant name hides the variable") << "true" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("unknown variable") << "Y" << false << 10 << -1 << "";
        QTest::newRow("member of a number") << "X.Y" << false << 51 << -1 << "";
        QTest::newRow("native call") << "F() + 1" << true << 54 << NUM << "8";
        QTest::newRow("calls nested in arguments") << "ABS(F(F(1), 2)) * 2" << true << 54 << NUM << "14";
        QTest::newRow("chain goes on after a call") << "CONTEXTGET().X + 1" << true << 54 << NUM << "6";
        QTest::newRow("call on a call's context") << "CONTEXTGET().F() + 1" << true << 54 << NUM << "8";
        QTest::newRow("member of a call's number") << "F().X" << false << 51 << -1 << "";
        QTest::newRow("call missing its bracket") << "F(1" << false << 41 << -1 << "";
        QTest::newRow("unknown function") << "NOSUCH(1)" << false << 27 << -1 << "";
        QTest::newRow("arguments without comma") << "MESSAGE(1 2)" << false << 31 << -1 << "";
        QTest::newRow("trailing comma") << "MESSAGE(1,)" << false << 54 << -1 << "";
        QTest::newRow("unclosed arguments") << "MESSAGE(1" << false << 41 << -1 << "";
        QTest::newRow("context object string") << "TOSTRING() = TOSTRING()" << true << 54 << BOO << "ИСТИНА";
        QTest::newRow("method through a variable") << "o.TOSTRING() = TOSTRING()" << true << 54 << BOO << "ИСТИНА";
        // syntax
        QTest::newRow("empty text") << "" << false << 37 << -1 << "";
        QTest::newRow("operand missing") << "1 +" << false << 37 << -1 << "";
        QTest::newRow("close bracket missing") << "(1 + 2" << false << 41 << -1 << "";
        QTest::newRow("comment where space is") << "1 // one\n + 2" << true << 54 << NUM << "3";
        QTest::newRow("bracket cannot begin a name") << "[1]" << false << 37 << -1 << "";
        // one place read as a binary operator, then as a prefix: "!" is no binary operator
        QTest::newRow("prefix where an operator was looked for") << "F(X!ES) + 1" << true << 54 << NUM << "8";
    }
    void expression()
    {
        QFETCH(QString, text);
        QFETCH(bool, done);
        QFETCH(int, status);
        QFETCH(int, type);
        QFETCH(QString, value);
        std::unique_ptr<localContextUTF8> context(freshContext());
        const size_t usedBefore = localMemoryManager::instance().getUsedCount();
        const localTest::evaluation outcome = evaluate(text, context.get());
        QCOMPARE(outcome.done, done);
        QCOMPARE(outcome.status, status);
        if (done) {
            QCOMPARE(outcome.type, type);
            QCOMPARE(outcome.text, value);
        }
        // Every path gives back every cell it took.
        QCOMPARE(localMemoryManager::instance().getUsedCount(), usedBefore);
    }

    // A kept form answers every read as the text does: the same value or
    // status, position and printed lines, when it is being filled and when
    // it is read back.
    void expressionThroughForm_data() { expression_data(); }
    void expressionThroughForm()
    {
        QFETCH(QString, text);
        // A fresh context each time: a prefix changes the variable it stands on.
        auto outcomeOf = [&](localExpressionForm *form) {
            std::unique_ptr<localContextUTF8> context(freshContext());
            return outcomeFields(text, context.get(), form);
        };
        const QStringList fromText = outcomeOf(nullptr);
        localExpressionForm form(localTest::w(text));
        QCOMPARE(outcomeOf(&form), fromText);
        QCOMPARE(outcomeOf(&form), fromText);
    }

    // A form that has read its text through once runs the same reads again
    // from what it kept, with whatever values stand then: X changes between
    // the run that kept them and the run compared with the text's reading.
    void keptReadingMeetsNewValues_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("later"); // the new value of X, as an expression
        QTest::newRow("divisor becomes 0") << "10 / X + 1" << "0";
        QTest::newRow("remainder by a fraction") << "7 % X" << "0.5";
        QTest::newRow("operand becomes text") << "X * 2 + X" << "\"t\"";
        QTest::newRow("text joins text") << "X + X" << "\"t\"";
        QTest::newRow("prefix meets text") << "-X + 1" << "\"t\"";
        QTest::newRow("prefix on a comparison") << "!(X = 5)" << "4";
        QTest::newRow("bracket fails inside") << "2 * (X - 1) / (X - 1)" << "1";
        QTest::newRow("call argument fails") << "ABS(X * 1) + 1" << "\"t\"";
        QTest::newRow("comparison after change") << "X >= 5 AND (X < 9)" << "4";
        QTest::newRow("object as operand") << "X + 1" << "O";
        QTest::newRow("method of an object meets text") << "O.ABS(X) + 1" << "\"t\"";
    }
    void keptReadingMeetsNewValues()
    {
        QFETCH(QString, text);
        QFETCH(QString, later);
        auto changed = [&](localContextUTF8 *context) {
            localValueDescription *cell = nullptr;
            localErrorType status = localErrorTypeOK;
            QVERIFY(localInterpretatorUTF8::evaluate(status, w(later), &cell, context));
            context->variableSet(u"X", cell);
            localValueRelease(cell);
        };
        std::unique_ptr<localContextUTF8> plain(freshContext());
        changed(plain.get());
        const QStringList fromText = outcomeFields(text, plain.get(), nullptr);

        std::unique_ptr<localContextUTF8> context(freshContext());
        localExpressionForm form(w(text));
        QCOMPARE(outcomeFields(text, context.get(), &form)[0], QString("1"));
        changed(context.get());
        QCOMPARE(outcomeFields(text, context.get(), &form), fromText);
    }

    // Where the scan stops tells the caller where the expression ended.
    void endPosition_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::newRow("second point") << "1.2.3" << 3;
        QTest::newRow("second string") << "\"a\" \"b\"" << 3;
        QTest::newRow("blank before bracket is a variable") << "X (1)" << 1;
        QTest::newRow("keyword behind") << "X > 1 THEN" << 5;
    }
    void endPosition()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        std::unique_ptr<localContextUTF8> context(freshContext());
        QCOMPARE(evaluate(text, context.get()).position, position);
    }

    void onlyBranchTakenIsCalled()
    {
        std::unique_ptr<localContextUTF8> context(freshContext());
        nativeCalls = 0;
        QCOMPARE(evaluate("0 ? F() : 3", context.get()).text, QString("3"));
        QCOMPARE(nativeCalls, 0);
        QCOMPARE(evaluate("1 ? F() : 3", context.get()).text, QString("7"));
        QCOMPARE(nativeCalls, 1);
    }

    void onlyCheckCallsNothingAndNeedsNoContext()
    {
        nativeCalls = 0;
        const localTest::evaluation outcome = evaluate("F(1, 2) + UNKNOWN * 3", nullptr, true);
        QVERIFY(outcome.done);
        QCOMPARE(outcome.text, QString("1"));
        QCOMPARE(nativeCalls, 0);
        QCOMPARE(evaluate("1 + ", nullptr, true).status, 37);
    }

    // A prefix works on the operand's own cell: a bare variable changes.
    void prefixChangesBareVariable()
    {
        std::unique_ptr<localContextUTF8> context(freshContext());
        QCOMPARE(evaluate("-X", context.get()).text, QString("-5"));
        QCOMPARE(q(context->variableToString(u"X")), QString("-5"));
        QCOMPARE(evaluate("-(X)", context.get()).text, QString("5"));
        QCOMPARE(q(context->variableToString(u"X")), QString("-5"));
        QCOMPARE(evaluate("!ES", context.get()).text, QString("ЛОЖЬ"));
        QCOMPARE(q(context->variableToString(u"ES")), QString("ЛОЖЬ"));
    }

    void bareNameIsTheVariablesOwnCell()
    {
        std::unique_ptr<localContextUTF8> context(freshContext());
        localVariable *x = context->variableFind(u"X");
        const uint32_t links = x->value->linkCounter;
        const std::u16string text = u"X";
        size_t position = 0;
        localValueDescription *result = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, text, position, &result,
                                                                           context.get(), false));
        QCOMPARE(result, x->value);
        QCOMPARE(x->value->linkCounter, links + 1);
        localValueRelease(result);
        QCOMPARE(x->value->linkCounter, links);
    }

    void operatorReaders_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("binary");
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("position");
        QTest::newRow("less or equal") << " <= 1" << true << 12 << 3;
        QTest::newRow("not equal") << "<>" << true << 9 << 2;
        QTest::newRow("less") << "< 1" << true << 13 << 1;
        QTest::newRow("ORANGE reads OR") << "ORANGE" << true << 14 << 2;
        QTest::newRow("and") << "And" << true << 7 << 3;
        QTest::newRow("ИЛИ") << "или" << true << 14 << 3;
        QTest::newRow("И then other letters") << "ИНАЧЕ" << true << 7 << 1;
        QTest::newRow("none moves only space") << "  THEN" << true << 0 << 2;
        QTest::newRow("unary minus") << "-1" << false << 1 << 1;
        QTest::newRow("unary not") << "Not x" << false << 2 << 3;
        QTest::newRow("unary НЕ") << "не" << false << 2 << 2;
        QTest::newRow("no unary") << "  x" << false << 0 << 2;
    }
    void operatorReaders()
    {
        QFETCH(QString, text);
        QFETCH(bool, binary);
        QFETCH(int, operation);
        QFETCH(int, position);
        const std::u16string wide = w(text);
        size_t at = 0;
        const int32_t read = binary ? localInterpretatorUTF8::scanStringGetBinaryOperator(wide, at)
                                    : localInterpretatorUTF8::scanStringGetUnaryOperator(wide, at);
        QCOMPARE(read, operation);
        QCOMPARE(int(at), position);
    }

    void nameRules()
    {
        QCOMPARE(q(localInterpretatorUTF8::nameToUpper(u"abcXyzабвяё_1Ђ")), QString("ABCXYZАБВЯЁ_1Ђ"));
        const std::u16string text = u"  // comment\n\tимя_1ё+2";
        size_t position = 0;
        QCOMPARE(q(localInterpretatorUTF8::scanStringGetNameToken(text, position)), QString("имя_1ё"));
        QCOMPARE(text[position], u'+');
    }

    void unclosedStringPrintsItsLine()
    {
        std::unique_ptr<localContextUTF8> context(freshContext());
        localTest::coutCapture captured;
        evaluate("'abc", context.get());
        QCOMPARE(captured.text(),
                 QString("ОШИБКА при сборке СТРОКОВОЙ костанты . Ожидается символ '''\n"));
    }
};

LOCAL_TEST_MAIN(tst_localScanner)
#include "tst_localScanner.moc"
