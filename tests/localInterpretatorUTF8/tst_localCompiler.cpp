// The statement compiler: program text in, the shape of the tree (or the
// status and position of the fault) out.
#include "localOperatorCompiled.h"
#include "localTestSupport.h"

using localTest::q;
using localTest::w;

namespace {

// A compact, one-line form of a tree, built from the record fields:
//   {...}               BLOCK, its functions first, then its statements
//   fn NAME(P,var Q){}  a function body
//   NAME=expr           EXPRESSION (var NAME=expr when declared, =expr without a name)
//   if[cond]{...}[]{..} IF with one block per branch ([] for ELSE)
//   while[expr](...)    WHILE with its children
//   ?expr  ret expr  break  cmd[text]
QString dump(const localOperatorCompiled &record);

QString dumpList(const std::vector<localOperatorCompiled> &records)
{
    QStringList parts;
    for (const localOperatorCompiled &record : records)
        parts << dump(record);
    return parts.join(' ');
}

QString dump(const localOperatorCompiled &record)
{
    switch (record.type) {
    case localCompiledOperatorTypeBLOCK: {
        QStringList parts;
        for (const localCompiledFunction &function : record.functions)
            parts << dump(*function.block);
        if (!record.children.empty())
            parts << dumpList(record.children);
        QString head;
        if (!record.name.empty()) {
            QStringList parameters;
            for (const localCompiledParameter &parameter : record.parameters)
                parameters << (parameter.byValue ? "var " : "") + q(parameter.name);
            head = "fn " + q(record.name) + "(" + parameters.join(',') + ")";
        }
        return head + "{" + parts.join(' ') + "}";
    }
    case localCompiledOperatorTypeEXPRESSION:
        return (record.declares ? "var " : "") + q(record.name) + "=" + q(record.expression);
    case localCompiledOperatorTypeIF: {
        QString text = "if";
        for (const localOperatorCompiled &branch : record.children)
            text += "[" + q(branch.expression) + "]" + dump(branch);
        return text;
    }
    case localCompiledOperatorTypeWHILE:
        return "while[" + q(record.expression) + "](" + dumpList(record.children) + ")";
    case localCompiledOperatorTypePRINT:
        return "?" + q(record.expression);
    case localCompiledOperatorTypeRENURN:
        return "ret" + q(record.expression);
    case localCompiledOperatorTypeBREAK:
        return "break";
    case localCompiledOperatorTypeCOMMAND:
        return "cmd[" + q(record.expression) + "]";
    default:
        return "kind" + QString::number(record.type);
    }
}

struct compiled {
    bool done;
    int status;
    int position;
    QString tree;
    QString output;
};

compiled compile(const QString &text, localExecuteFunction execute = nullptr)
{
    localTest::coutCapture captured;
    localOperatorCompiled program(execute);
    localOperatorCompiled *pointer = &program;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    const std::u16string wide = w(text);
    const bool done = textCompile(status, wide, position, &pointer);
    return {done, int(status), int(position), dump(program), captured.text()};
}

bool otherExecute(localErrorType &, localContextUTF8 *, const localOperatorCompiled *, localValueVector *,
                  localValueDescription **)
{
    return true;
}

// True when every record of the tree, function bodies included, runs through `execute`.
bool allExecuteThrough(const localOperatorCompiled &record, localExecuteFunction execute)
{
    if (record.execute != execute)
        return false;
    for (const localCompiledFunction &function : record.functions)
        if (!allExecuteThrough(*function.block, execute))
            return false;
    for (const localOperatorCompiled &child : record.children)
        if (!allExecuteThrough(child, execute))
            return false;
    return true;
}

} // namespace

class tst_localCompiler : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // Texts that compile: the tree they give. Every program ends with ret(1).
    // What the programs of the suite show by running is not repeated here.
    void shape_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tree");
        QTest::newRow("empty text") << "" << "{ret(1)}";
        QTest::newRow("assignment, name upper-cased") << "total = a + 1;" << "{TOTAL=a + 1 ret(1)}";
        QTest::newRow("blanks before =") << "x   =1;" << "{X=1 ret(1)}";
        QTest::newRow("VAR declares") << "VAR x = 1;" << "{var X=1 ret(1)}";
        QTest::newRow("Russian VAR cut to four") << "ПЕРЕ x = 1;" << "{var X=1 ret(1)}";
        QTest::newRow("a call drops its value") << "f(1, 2);" << "{=f(1, 2) ret(1)}";
        QTest::newRow("a member chain compares") << "a.b = 1;" << "{=a.b = 1 ret(1)}";
        QTest::newRow("PRINT is an empty statement") << "PRINT; x = 1;" << "{X=1 ret(1)}";
        QTest::newRow("if elseif else")
            << "IF a THEN x = 1; ELSEIF b THEN x = 2; ELSE x = 3; ENDIF;"
            << "{if[a]{X=1}[b]{X=2}[]{X=3} ret(1)}";
        QTest::newRow("stray ENDDO reads as ELSEIF")
            << "IF a THEN ENDDO b THEN x = 1; ENDIF;" << "{if[a]{}[b]{X=1} ret(1)}";
        QTest::newRow("ENDFUNCTION in a branch reads as ELSEIF")
            << "IF a THEN ENDFUNCTION b THEN ENDIF;" << "{if[a]{ret(1.0)}[b]{} ret(1)}";
        QTest::newRow("while") << "WHILE x < 3 DO x = x + 1; ENDDO;" << "{while[(x < 3)]({X=x + 1}) ret(1)}";
        QTest::newRow("for expands to assignment, test and step")
            << "FOR i = 1 TO n DO ? i; ENDDO;" << "{I=1 while[I<=(n)]({?i} I=I+1) ret(1)}";
        QTest::newRow("for with blanks and expressions")
            << "for k=a+1 to b*2 do enddo;" << "{K=a+1 while[K<=(b*2)]({} K=K+1) ret(1)}";
        QTest::newRow("function with reference and VAR parameters")
            << "FUNCTION f(a, VAR b) RETURN a; ENDFUNCTION;" << "{fn F(A,var B){ret(a) ret(1.0)} ret(1)}";
        QTest::newRow("cut command words") << "DISP MEMO;" << "{cmd[DISP MEMO] ret(1)}";
        QTest::newRow("comments between statements")
            << "// head\nx = 1; // tail\n// more\ny = 2;" << "{X=1 Y=2 ret(1)}";
    }
    void shape()
    {
        QFETCH(QString, text);
        QFETCH(QString, tree);
        const compiled outcome = compile(text);
        QCOMPARE(outcome.status, 54);
        QVERIFY(outcome.done);
        QCOMPARE(outcome.position, text.size());
        QCOMPARE(outcome.tree, tree);
    }

    // Texts that stop the compiler: the status, and the position it shows.
    // The faults whose whole report a program of the suite prints are there.
    void fault_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("done");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("position");
        // The position of a missing ";" is one before where the statement ended.
        QTest::newRow("no ; behind ENDIF") << "IF a THEN ? 1; ENDIF" << false << 42 << 19;
        QTest::newRow("no ; behind ENDDO") << "WHILE a DO ? 1; ENDDO x = 1;" << false << 42 << 20;
        QTest::newRow("blank before a call's bracket") << "f (1);" << false << 42 << 0;
        QTest::newRow("cut English VAR") << "VA x = 1;" << false << 37 << 3;
        QTest::newRow("Russian VAR cut to three") << "ПЕР x = 1;" << false << 37 << 4;
        QTest::newRow("VAR without =") << "VAR x;" << false << 37 << 5;
        QTest::newRow("VAR without a name") << "VAR = 1;" << false << 37 << 4;
        QTest::newRow("no name") << "-x;" << false << 37 << 0;
        QTest::newRow("= missing in FOR") << "FOR i 1 TO 3 DO ENDDO;" << false << 39 << 6;
        QTest::newRow("FOR without a name") << "FOR = 1 TO 3 DO ENDDO;" << false << 37 << 4;
        QTest::newRow("TO missing") << "FOR i = 1 UNTIL 3 DO ENDDO;" << false << 48 << 15;
        QTest::newRow("DO missing in FOR") << "FOR i = 1 TO 3 x = i; ENDDO;" << false << 43 << 16;
        QTest::newRow("ENDDO missing") << "WHILE x DO x = 1;" << false << 44 << 17;
        QTest::newRow("ENDIF closes a loop") << "WHILE x DO ENDIF;" << false << 44 << 16;
        QTest::newRow("( missing") << "FUNCTION f a) ENDFUNCTION;" << false << 40 << 10;
        QTest::newRow(", missing") << "FUNCTION f(a b) ENDFUNCTION;" << false << 40 << 13;
        QTest::newRow("empty parameter") << "FUNCTION f(a,) ENDFUNCTION;" << false << 16 << 13;
        QTest::newRow("ENDFUNCTION missing") << "FUNCTION f() RETURN 1;" << false << 46 << 22;
        QTest::newRow("bad expression in ?") << "? (1;" << false << 41 << 2;
        QTest::newRow("bad expression in a condition") << "IF (a THEN ENDIF;" << false << 41 << 6;
        QTest::newRow("DO without a name") << "DO" << false << 37 << 2;
        // A closing word at the top reports itself with true; the caller judges it.
        QTest::newRow("stray ENDIF") << "x = 1; ENDIF;" << true << 4 << 12;
        QTest::newRow("stray ENDDO") << "КОНЕЦЦИКЛА;" << true << 2 << 10;
        // QUIT and EXIT end the compile at once.
        QTest::newRow("EXIT inside a loop") << "WHILE 1 DO EXIT; ENDDO;" << false << 5 << 15;
    }
    void fault()
    {
        QFETCH(QString, text);
        QFETCH(bool, done);
        QFETCH(int, status);
        QFETCH(int, position);
        const compiled outcome = compile(text);
        QCOMPARE(outcome.status, status);
        QCOMPARE(outcome.done, done);
        QCOMPARE(outcome.position, position);
    }

    // Each word of the console's commands in a program, as an assignment's
    // target and as a statement of its own. A word that reads nothing behind
    // itself (HELP, DIR and every cut of DIRECTORY, RUN with no name) names a
    // variable like any other word; the others stay commands and read the
    // rest their own way. A tree is given for status 54, else the position.
    void commandWords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("tree");
        for (const QString &word :
             QStringList{"HELP", "help", "DIR", "DIRE", "DIREC", "DIRECT", "DIRECTO", "director", "DIRECTORY"}) {
            const QString upper = word.toUpper();
            QTest::addRow("%s =", qPrintable(word)) << word + " = 1;" << 54 << 0 << "{" + upper + "=1 ret(1)}";
            QTest::addRow("%s alone", qPrintable(word)) << word + ";" << 37 << int(word.size()) << "";
            QTest::addRow("%s at the end", qPrintable(word)) << word << 37 << int(word.size()) << "";
        }
        QTest::newRow("help called") << "help(1);" << 54 << 0 << "{=help(1) ret(1)}";
        QTest::newRow("dir's member") << "dir.x = 1;" << 54 << 0 << "{=dir.x = 1 ret(1)}";
        // RUN skips the blanks behind it looking for a name: with one before
        // the "=" it is a command that ended there, and ";" is missing.
        QTest::newRow("RUN=") << "run= 1;" << 54 << 0 << "{RUN=1 ret(1)}";
        QTest::newRow("RUN =") << "run = 1;" << 42 << 3 << "";
        QTest::newRow("RUN alone") << "RUN;" << 37 << 3 << "";
        QTest::newRow("RUN a name") << "RUN prog;" << 54 << 0 << "{cmd[RUN prog] ret(1)}";
        // An unquoted file name of DO runs up to a blank.
        QTest::newRow("DO =") << "DO = 1;" << 42 << 4 << "";
        QTest::newRow("DO alone") << "DO;" << 42 << 2 << "";
        // A second word is missing: the command fails where it looked for it.
        for (const QString &word :
             QStringList{"CLEAR", "CLEA", "DISPLAY", "DISP", "MODIFY", "MODI", "EDIT", "LOAD"}) {
            QTest::addRow("%s =", qPrintable(word)) << word + " = 1;" << 37 << int(word.size()) + 1 << "";
            QTest::addRow("%s alone", qPrintable(word)) << word + ";" << 37 << int(word.size()) << "";
        }
        // QUIT and EXIT end the compile whatever follows them.
        for (const QString &word : QStringList{"QUIT", "EXIT", "quit"}) {
            QTest::addRow("%s =", qPrintable(word)) << word + " = 1;" << 5 << 4 << "";
            QTest::addRow("%s alone", qPrintable(word)) << word + ";" << 5 << 4 << "";
        }
    }
    void commandWords()
    {
        QFETCH(QString, text);
        QFETCH(int, status);
        QFETCH(int, position);
        QFETCH(QString, tree);
        const compiled outcome = compile(text);
        QCOMPARE(outcome.status, status);
        QCOMPARE(outcome.done, status == 54);
        if (status == 54)
            QCOMPARE(outcome.tree, tree);
        else
            QCOMPARE(outcome.position, position);
    }

    // Each record holds where its statement starts; blocks hold their own start.
    void positions()
    {
        const QString text = "x = 1;\n  ? x;\nIF x THEN\n  y = 2;\nENDIF;\nFOR i = 1 TO 2 DO ENDDO;";
        localOperatorCompiled program;
        localOperatorCompiled *pointer = &program;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        const std::u16string wide = w(text);
        QVERIFY(textCompile(status, wide, position, &pointer));
        QList<int> starts;
        for (const localOperatorCompiled &child : program.children)
            starts << child.position;
        const int ifAt = text.indexOf("IF");
        const int forAt = text.indexOf("FOR");
        QCOMPARE(starts, (QList<int>{0, 9, ifAt, forAt, forAt, text.size()}));
        const localOperatorCompiled &branch = program.children[2].children[0];
        QCOMPARE(branch.position, text.indexOf("THEN") + 4);
        QCOMPARE(branch.children[0].position, text.indexOf("y ="));
        const localOperatorCompiled &loop = program.children[4];
        QCOMPARE(loop.children[0].position, text.indexOf("DO ENDDO") + 2);
    }

    // Every record takes its execute pointer from the block it is compiled
    // into, so a debugger that sets the root's reaches the whole tree.
    void executePointerInherited()
    {
        const QString text = "x = 1; IF x THEN WHILE x DO BREAK; ENDDO; ENDIF; FOR i = 1 TO 2 DO ? i; ENDDO;"
                             "FUNCTION f(a) IF a THEN RETURN 1; ENDIF; ENDFUNCTION; DISP MEMO;";
        localOperatorCompiled plain;
        QVERIFY(plain.execute == &localOperatorCompiled::executeRecord);
        localOperatorCompiled hooked(otherExecute);
        localOperatorCompiled *pointer = &hooked;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        const std::u16string wide = w(text);
        QVERIFY(textCompile(status, wide, position, &pointer));
        QCOMPARE(int(hooked.functions.size()), 1);
        QVERIFY(allExecuteThrough(hooked, otherExecute));
    }


    void nullBlock()
    {
        localTest::coutCapture captured;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        localOperatorCompiled *nothing = nullptr;
        QVERIFY(!textCompile(status, u"x = 1;", position, &nothing));
        QCOMPARE(int(status), 16);
        status = localErrorTypeOK;
        QVERIFY(!textCompile(status, u"x = 1;", position, nullptr));
        QCOMPARE(int(status), 16);
        QVERIFY(captured.text().startsWith("Для компиляции необходимо передавать уже инициализированный объект будущего влока"));
    }

    // Nesting deeper than the machine stack allows stops the compile with a
    // status instead of ending the process.
    void deepNesting()
    {
        const int depth = 200000;
        const compiled outcome = compile(QString("IF 1 THEN ").repeated(depth) + QString("ENDIF; ").repeated(depth));
        QVERIFY(!outcome.done);
        QCOMPARE(outcome.status, 16);
        QVERIFY(outcome.output.startsWith("ERROR!!! Стек исчерпан"));
    }

    // The messages the compiler prints itself, before the caller's report.
    void messages_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("output");
        QTest::newRow("empty parameter") << "FUNCTION f(,) ENDFUNCTION;" << " Ошибка считывания аргумента !!!  func: ";
        QTest::newRow("bad immediate statement")
            << "DISPLAY NOTHING;" << " Ошибка компиляции запрограммированной команды (оператора) !!!  func: ";
        QTest::newRow("bad print") << "? ;" << "ERROR!!! func: ";
    }
    void messages()
    {
        QFETCH(QString, text);
        QFETCH(QString, output);
        const compiled outcome = compile(text);
        QVERIFY(!outcome.done);
        QVERIFY2(outcome.output.startsWith(output), qPrintable(outcome.output));
    }
};

LOCAL_TEST_MAIN(tst_localCompiler)
#include "tst_localCompiler.moc"
