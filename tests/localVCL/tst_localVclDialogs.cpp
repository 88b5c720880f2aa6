// The small dialogs: the calculator's keys, the calendar's answer, the find
// dialog's history and the list chooser's result.
#include "localCalc.h"
#include "localVclDialogs.h"

#include "localWidgetTestSupport.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>
#include <QtTest>

using localTest::modalAnswer;

class tst_localVclDialogs : public QObject {
    Q_OBJECT

private slots:
    void calculator_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QString>("display");
        QTest::newRow("chain") << QStringList{"2", "+", "3", "*", "4", "="} << "20";
        QTest::newRow("one point only") << QStringList{"1", ".", ".", "5"} << "1.5";
        QTest::newRow("sign") << QStringList{"5", "+/-"} << "-5";
        QTest::newRow("inverse as an operand") << QStringList{"2", "+", "4", "1/x", "="} << "2.25";
        QTest::newRow("inverse of zero") << QStringList{"0", "1/x"} << " error ";
        QTest::newRow("division by zero") << QStringList{"8", "/", "0", "="} << " error ";
        QTest::newRow("a digit after an error") << QStringList{"8", "/", "0", "=", "7"} << "7";
        QTest::newRow("operator twice") << QStringList{"6", "-", "-", "1", "="} << "5";
        QTest::newRow("clear") << QStringList{"6", "-", "C", "2", "="} << "2";
    }

    void calculator()
    {
        QFETCH(QStringList, keys);
        QFETCH(QString, display);
        localCalc calc;
        for (const QString &key : keys)
            calc.keyPress(key);
        QCOMPARE(calc.displayText(), display);
    }

    void calendar_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("text");
        QTest::newRow("cancelled") << "20240229" << int(QDialog::Rejected) << "";
        QTest::newRow("accepted") << "20240229" << int(QDialog::Accepted) << "20240229";
        QTest::newRow("unreadable start is today") << "2024-02-29" << int(QDialog::Accepted)
                                                   << QDate::currentDate().toString("yyyyMMdd");
    }

    void calendar()
    {
        QFETCH(QString, start);
        QFETCH(int, result);
        QFETCH(QString, text);
        localCalendar calendar(start);
        calendar.done(result);
        QCOMPARE(calendar.dateText(), text);
    }

    void calendarActivationAccepts()
    {
        localCalendar calendar(QStringLiteral("20200105"));
        modalAnswer pick([](QWidget *widget) {
            QCalendarWidget *days = widget->findChild<QCalendarWidget *>();
            days->setSelectedDate(QDate(2020, 1, 9));
            emit days->activated(days->selectedDate());
        });
        QCOMPARE(calendar.exec(), int(QDialog::Accepted));
        QCOMPARE(calendar.dateText(), QStringLiteral("20200109"));
    }

    void findDialog_data()
    {
        QTest::addColumn<QStringList>("history");
        QTest::newRow("empty history") << QStringList();
        QTest::newRow("newest first") << QStringList{"newest", "older", "oldest"};
    }

    void findDialog()
    {
        QFETCH(QStringList, history);
        localDialogFindString dialog(history);
        QCOMPARE(dialog.combo->count(), history.size());
        for (int i = 0; i < history.size(); ++i)
            QCOMPARE(dialog.combo->itemText(i), history[i]);
        QCOMPARE(dialog.text(), history.value(0));
        QVERIFY(!dialog.caseSensitive());
        QVERIFY(dialog.forward());
        dialog.caseCheck->setChecked(true);
        dialog.backwardButton->setChecked(true);
        QVERIFY(dialog.caseSensitive());
        QVERIFY(!dialog.forward());
    }

    void listChooser_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("resultText");
        QTest::newRow("accepted") << int(QDialog::Accepted) << 2 << "Accepted";
        QTest::newRow("rejected") << int(QDialog::Rejected) << -1 << "Rejected";
        QTest::newRow("another code") << 7 << -1 << "Unexpected";
    }

    void listChooser()
    {
        QFETCH(int, code);
        QFETCH(int, answer);
        QFETCH(QString, resultText);
        localVclQStringListGetItemDialog dialog(QStringLiteral("choose"), {"a", "b", "c", "d"}, 1);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("choose"));
        QCOMPARE(dialog.list->currentRow(), 1);
        modalAnswer choose([code](QWidget *widget) {
            widget->findChild<QListWidget *>()->setCurrentRow(2);
            modalAnswer::finish(code)(widget);
        });
        QCOMPARE(dialog.exec(), answer);
        QCOMPARE(dialog.resultText, resultText);
    }

};

QTEST_MAIN(tst_localVclDialogs)
#include "tst_localVclDialogs.moc"
