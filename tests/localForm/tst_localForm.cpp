#include "localTestSupport.h"

#include "localForm.h"
#include "localFormElement.h"
#include "localFormMetadata.h"
#include "localVclWidgetEdit.h"

#include "localOperatorCompiled.h"
#include "localSxl.h"
#include "localSxlWidget.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <QDomDocument>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <memory>

using localTest::q;
using localTest::w;

namespace {

std::unique_ptr<localForm> formOf(const QString &widgets, const QString &module)
{
    QDomDocument document;
    document.setContent("<FormMd><Form w=\"300\" h=\"200\"><Widgets>" + widgets + "</Widgets></Form><Module>"
                        + module.toHtmlEscaped() + "</Module></FormMd>");
    localTest::coutCapture quiet;
    return std::make_unique<localForm>(document, nullptr);
}

QString edit(const QString &identifier, const QString &type = "Строка", const QString &formula = "")
{
    return "<Widget WidgetType=\"Edit\" Identifier=\"" + identifier + "\" Type=\"" + type + "\" Len=\"5\" Formula=\""
           + formula.toHtmlEscaped() + "\" x=\"10\" y=\"10\" w=\"100\" h=\"24\"/>";
}

// Each element a row of its own, so that repainting one does not paint another.
QString element(const QString &kind, const QString &identifier, const QString &formula, const QString &caption = "")
{
    static int row = 0;
    row = (row + 1) % 5;
    return "<Widget WidgetType=\"" + kind + "\" Identifier=\"" + identifier + "\" Caption=\"" + caption
           + "\" Formula=\"" + formula.toHtmlEscaped() + "\" x=\"120\" y=\"" + QString::number(row * 35)
           + "\" w=\"100\" h=\"24\"/>";
}

// The value of an expression in the form's context, or "fail N".
QString value(localForm &form, const QString &expression)
{
    localTest::coutCapture quiet;
    const localTest::evaluation outcome = localTest::evaluate(expression, form.context);
    return outcome.done ? outcome.text : QString("fail %1").arg(outcome.status);
}

localVclWidgetEdit *field(localForm &form, const QString &identifier)
{
    return form.findChild<localVclWidgetEdit *>("localVclEditWidget " + identifier);
}

QString labelText(localForm &form, const QString &identifier)
{
    for (auto *element : form.findChildren<localFormLayoutDesignerElementWidget *>())
        if (q(element->identifier) == identifier)
            return static_cast<QLabel *>(element->contentWidget)->text();
    return "<none>";
}

void shown(localForm &form)
{
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    // The labels' own updates after the first paint, so that later paints
    // are only those a case asks for.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

} // namespace

class tst_localForm : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        localSxlInstall();
        localTest::globalContext();
    }
    void fieldsTakeTheShapeOfTheirVariable();
    void editsWriteBack_data();
    void editsWriteBack();
    void numericLine_data();
    void numericLine();
    void buttonAndLabelFormulas();
    void refreshByPattern();
    void identifierMatches_data();
    void identifierMatches();
    void failingModuleStillBuildsWidgets();
    void parametersReachTheModule();
    void formClass();
    void closingAsks();
    void afterCreateEvents_data();
    void afterCreateEvents();
};

void tst_localForm::fieldsTakeTheShapeOfTheirVariable()
{
    auto form = formOf(edit("N") + edit("S") + edit("M", "Число") + edit("D", "TABLEDOCUMENT") + edit("E", "TABLEDOCUMENT"),
                       "VAR N = 5; VAR S = \"abc\"; VAR D = CREATEOBJECT(\"TABLEDOCUMENT\"); D.CELLTEXTSET(1, 1, \"x\");");
    // A number stays a number whatever the Type, in 12 places with 3 decimals.
    auto *number = qobject_cast<localVclEditWidgetNumeric *>(field(*form, "N")->editWidget);
    QVERIFY(number != nullptr);
    QCOMPARE(number->displayText(), QString("       5.000"));
    QVERIFY(field(*form, "N")->buttonChoose != nullptr);
    QCOMPARE(qobject_cast<QLineEdit *>(field(*form, "S")->editWidget)->text(), QString("abc"));
    QCOMPARE(value(*form, "VALUETYPEASSTRING(M)"), QString("ЧИСЛО"));
    // The module's document is kept; a field of that Type without one gets a new one.
    QCOMPARE(qobject_cast<localSxlWidget *>(field(*form, "D")->editWidget)->sxl.document.cellTextGet(1, 1), QString("x"));
    QVERIFY(qobject_cast<localSxlWidget *>(field(*form, "E")->editWidget) != nullptr);
}

void tst_localForm::editsWriteBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("formulaRuns");
    QTest::newRow("number changes") << "N" << "7" << "7" << "1";
    QTest::newRow("same number: no formula") << "N" << "5" << "5" << "0";
    QTest::newRow("number that does not convert") << "N" << "abc" << "0" << "1";
    QTest::newRow("string changes") << "S" << "xyz" << "xyz" << "1";
    QTest::newRow("same string: formula runs") << "S" << "abc" << "abc" << "1";
}

void tst_localForm::editsWriteBack()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, formulaRuns);
    auto form = formOf(edit("N", "Число", "Runs = Runs + 1") + edit("S", "Строка", "Runs = Runs + 1"),
                       "VAR N = 5; VAR S = \"abc\"; VAR Runs = 0;");
    QLineEdit *line = qobject_cast<QLineEdit *>(field(*form, name)->editWidget);
    if (auto *number = qobject_cast<localVclEditWidgetNumeric *>(line))
        number->setText(typed);
    else
        line->setText(typed);
    emit line->editingFinished();
    QCOMPARE(value(*form, name), stored);
    QCOMPARE(value(*form, "Runs"), formulaRuns);
}

void tst_localForm::numericLine_data()
{
    QTest::addColumn<int>("len");
    QTest::addColumn<int>("dec");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("normalised");
    QTest::newRow("12.3") << 12 << 3 << "5" << "       5.000" << "      12.500";
    QTest::newRow("too long loses left digits") << 5 << 0 << "123456" << "23456" << " 12.5";
    QTest::newRow("width grows to hold sign and decimals") << 4 << 2 << "1.5" << " 1.50" << "12.50";
    QTest::newRow("text that is no number") << 6 << 1 << "x" << "   0.0" << "  12.5";
}

void tst_localForm::numericLine()
{
    QFETCH(int, len);
    QFETCH(int, dec);
    QFETCH(QString, text);
    localVclEditWidgetNumeric line(len, dec, false, text);
    QTEST(line.displayText(), "shown");
    QTEST(line.normalised("  12.5"), "normalised");
}

void tst_localForm::buttonAndLabelFormulas()
{
    auto form = formOf(element("Button", "B", "Total = Total * 10") + element("Button", "Bad", "Total = 2 )")
                           + element("Label", "TotalLabel", "\"Итого \" + STRING(Total)")
                           + element("Label", "Broken", "Missing + 1", "Cap"),
                       "VAR Total = 1;");
    shown(*form);
    QCOMPARE(labelText(*form, "TotalLabel"), QString("Итого 1"));
    // A failing formula leaves the label as it was: the caption.
    QCOMPARE(labelText(*form, "Broken"), QString("Cap"));
    auto buttons = form->findChildren<QPushButton *>();
    buttons[0]->click();
    QCOMPARE(labelText(*form, "TotalLabel"), QString("Итого 10"));
    localTest::coutCapture output;
    buttons[1]->click();
    QVERIFY(output.text().contains("Error!!!!!!   func: "));
}

void tst_localForm::refreshByPattern()
{
    auto form = formOf(element("Label", "AB1", "V") + element("Label", "ab2", "V") + element("Label", "XY", "V")
                           + edit("S"),
                       "VAR V = 1; VAR S = \"a\";");
    shown(*form);
    form->context->variableSetNumber(u"V", 2);
    localValueDescription text;
    text.setString(u"b");
    form->context->variableSet(u"S", &text);
    // The module's own copy of the method, with a pattern in small letters.
    QCOMPARE(value(*form, "ОБНОВИТЬ(\"ab*\")"), QString("1"));
    QCOMPARE(labelText(*form, "AB1") + labelText(*form, "ab2") + labelText(*form, "XY"), QString("221"));
    // The user's typing is not overwritten: the form gave the field its focus.
    QLineEdit *line = qobject_cast<QLineEdit *>(field(*form, "S")->editWidget);
    QVERIFY(line->hasFocus());
    QCOMPARE(line->text(), QString("a"));
    line->clearFocus();
    form->refresh(std::u16string());
    QCOMPARE(line->text(), QString("b"));
}

void tst_localForm::identifierMatches_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<bool>("matches");
    QTest::newRow("star ends") << "AB*" << "ABCD" << true;
    QTest::newRow("star at the start") << "*X" << "" << true;
    QTest::newRow("question mark") << "A?C" << "ABC" << true;
    QTest::newRow("identifier ends first") << "ABC" << "AB" << false;
    QTest::newRow("pattern ends first") << "AB" << "ABC" << false;
    QTest::newRow("both empty") << "" << "" << true;
    QTest::newRow("empty identifier") << "A" << "" << false;
    QTest::newRow("other letter") << "AX" << "AB" << false;
}

void tst_localForm::identifierMatches()
{
    QFETCH(QString, pattern);
    QFETCH(QString, identifier);
    QTEST(localForm::identifierMatches(w(pattern), w(identifier)), "matches");
}

void tst_localForm::failingModuleStillBuildsWidgets()
{
    auto form = formOf(element("Label", "L", "") + element("Button", "B", "") + edit("X"), "VAR a = ;");
    QCOMPARE(form->findChildren<localFormLayoutDesignerElementWidget *>().size(), 2);
    QCOMPARE(value(*form, "VALUETYPEASSTRING(X)"), QString("СТРОКА"));
    QCOMPARE(value(*form, "a"), QString("fail 10"));
}

void tst_localForm::parametersReachTheModule()
{
    localValueDescription holder;
    localValueList *parameters = localValueList::newInCell(&holder);
    localValueDescription five;
    five.setVal(5);
    parameters->items.emplace_back(&five, u"P");
    QDomDocument document;
    document.setContent(QString("<FormMd><Module>VAR Q = P * 2;</Module></FormMd>"));
    const localFormMetadata metadata(document);
    localForm form(metadata, parameters);
    QCOMPARE(value(form, "Q"), QString("10"));
}

void tst_localForm::formClass()
{
    const size_t cellsBefore = localMemoryManager::instance().getUsedCount();
    {
        // With the kinds that hold objects: a document field and a grid over a table.
        auto form = formOf(edit("N") + edit("D", "TABLEDOCUMENT")
                               + "<Widget WidgetType=\"Table\" details=\"{&quot;grid:dataSource:varName&quot;: "
                                 "&quot;G&quot;}\" x=\"0\" y=\"100\" w=\"200\" h=\"90\"/>",
                           "VAR N = 3; VAR T = TOSTRING(); VAR R = ОБНОВИТЬ(); VAR G = CREATEOBJECT(\"VALUETABLE\");");
        QCOMPARE(value(*form, "T"), "Форма adr [" + QString::number(quintptr(form.get())) + "] ");
        QCOMPARE(value(*form, "R"), QString("1"));
        auto *grid = form->findChild<localVclGrid200123localValueTable *>();
        QCOMPARE(grid->table(), localValueTable::fromValue(form->context->variableFind(u"G")->value));
        QCOMPARE(value(*form, "REFRESH(1, 2)"), QString("fail 31"));
        QCOMPARE(value(*form, "REFRESH(1)"), QString("fail 33"));
        // An attribute of a form object is the variable of its context.
        localValueDescription holder;
        localForm::putInCell(form.get(), &holder);
        localErrorType status = localErrorTypeOK;
        localValueDescription *read = nullptr;
        QVERIFY(localForm::classDeclaration()->attrGet(status, form->context, form.get(), u"n", &read));
        QCOMPARE(q(read->toString()), QString("3"));
        localValueRelease(read);
        QVERIFY(!localForm::classDeclaration()->attrGet(status, form->context, form.get(), u"Q", &read));
        QCOMPARE(int(status), 10);
        holder.localValueClear();
    }
    QCOMPARE(localMemoryManager::instance().getUsedCount(), cellsBefore);
}

void tst_localForm::closingAsks()
{
    auto form = formOf("", "");
    localTest::boxRecorder *boxes = localTest::boxRecorder::install();
    const bool refused = form->closeEventBefor();
    boxes->answer = true;
    const bool agreed = form->closeEventBefor();
    QCOMPARE(q(boxes->boxes.at(0).title) + "|" + q(boxes->boxes.at(0).text), QString("localForm::closeEventBefor()|Close?"));
    localServices::install(nullptr);
    QVERIFY(!refused && agreed);
}

void tst_localForm::afterCreateEvents_data()
{
    QTest::addColumn<QString>("aboveTheForm");
    QTest::addColumn<QString>("module");
    QTest::addColumn<QString>("ran");
    // The rows build on each other: what one defines above the form stays.
    QTest::newRow("English in the module runs")
        << "" << "VAR Ran = 0; FUNCTION EVENTFORMAFTERCREATE() Ran = 1; ENDFUNCTION;" << "1";
    QTest::newRow("English above the form does not")
        << "FUNCTION EVENTFORMAFTERCREATE() Ran = 2; ENDFUNCTION;" << "VAR Ran = 0;" << "0";
    QTest::newRow("Russian above the form runs")
        << "ФУНКЦИЯ СОБЫТИЕФОРМАПРИОТКРЫТИИ() Ran = 3; КОНЕЦФУНКЦИИ;" << "VAR Ran = 0;" << "3";
    QTest::newRow("Russian wins over English")
        << "" << "VAR Ran = 0; FUNCTION EVENTFORMAFTERCREATE() Ran = 1; ENDFUNCTION;" << "3";
}

void tst_localForm::afterCreateEvents()
{
    QFETCH(QString, aboveTheForm);
    QFETCH(QString, module);
    if (!aboveTheForm.isEmpty()) {
        localErrorType status = localErrorTypeOK;
        QVERIFY(textExec(status, w(aboveTheForm), localTest::globalContext()));
    }
    auto form = formOf("", module);
    QTEST(value(*form, "Ran"), "ran");
}

QTEST_MAIN(tst_localForm)
#include "tst_localForm.moc"
