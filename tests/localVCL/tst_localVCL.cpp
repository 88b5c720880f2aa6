// The application services: showing widgets, messages, colours, Base64
// pictures, the event log, the Esc poll and question, and the global
// functions that the widget library answers.
#include "localMainWindow.h"
#include "localVCL.h"
#include "localVclEventEscapeFilter.h"
#include "localVclEventLog.h"
#include "localVclServices.h"

#include "localOperatorCompiled.h"
#include "localValueList.h"

#include "localTestSupport.h"
#include "localWidgetTestSupport.h"

#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QtTest>

using localTest::modalAnswer;

namespace {

QImage testImage(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(200, 10, 20));
    image.setPixelColor(0, 0, QColor(0, 0, 255));
    return image;
}

// Windows left open by a case.
void topLevelsClose()
{
    for (QWidget *top : QApplication::topLevelWidgets())
        top->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_localVCL : public QObject {
    Q_OBJECT

    localContextUTF8 *context = nullptr;

private slots:
    void initTestCase()
    {
        localVclInstall();
        context = localTest::globalContext();
        const std::u16string image = localVCL::pixmapToBase64(QPixmap::fromImage(testImage(4, 3)));
        context->variableCreate(context->variableNormalName(u"img"))->value->setString(image);
    }

    void cleanup() { topLevelsClose(); }

    void colours_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("magenta is Qt's") << "magenta" << true << QColor(Qt::magenta);
        QTest::newRow("by the Russian name") << "Пурпурный" << true << QColor(Qt::magenta);
        QTest::newRow("unknown") << "mauve" << false << QColor();
    }

    void colours()
    {
        QFETCH(QString, name);
        QFETCH(bool, found);
        QFETCH(QColor, colour);
        QColor answer;
        QCOMPARE(localVCL::colorFind(localTest::w(name), answer), found);
        if (found)
            QCOMPARE(answer, colour);
    }

    void base64Pictures()
    {
        const std::u16string text = localVCL::pixmapToBase64(QPixmap::fromImage(testImage(3, 2)));
        const QImage back = localVCL::pixmapFromBase64(text).toImage();
        QCOMPARE(back.size(), QSize(3, 2));
        QCOMPARE(back.pixelColor(0, 0), QColor(0, 0, 255));
        QCOMPARE(back.pixelColor(2, 1), QColor(200, 10, 20));
        QVERIFY(localVCL::pixmapFromBase64(u"not a picture").isNull());
    }

    void globalContextProperty()
    {
        qApp->setProperty("localGlobalContext", QVariant());
        localContextUTF8 *made = localVCL::globalContext();
        QVERIFY(made != nullptr);
        QCOMPARE(localVCL::globalContext(), made);
        qApp->setProperty("localGlobalContext", qlonglong(quintptr(context)));
        QCOMPARE(localVCL::globalContext(), context);
        delete made;
        qApp->setProperty("localGlobalContext", QVariant());
    }

    // Named types are seen through the log lines below.
    void unknownEventName() { QCOMPARE(localVclEventName(5000), QString("unknown (5000)")); }

    void eventLogLines_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("line");
        QTest::newRow("press") << int(QEvent::MouseButtonPress) << "MouseButtonPress  obj [button]";
        QTest::newRow("move") << int(QEvent::Move) << "QEvent::Move (Widget's position changed) obj [button]";
        QTest::newRow("hover move, the last logged") << int(QEvent::HoverMove)
                                                     << "QEvent::HoverMove (The mouse cursor moves inside a hover "
                                                        "widget) obj [button]";
        QTest::newRow("130 and above are not logged") << 130 << "";
    }

    void eventLogLines()
    {
        QFETCH(int, type);
        QFETCH(QString, line);
        QObject object;
        object.setObjectName(QStringLiteral("button"));
        QEvent event{QEvent::Type(type)};
        QCOMPARE(eventFilterForLog::logLine(&object, &event), line);
    }

    void messageWithDetails()
    {
        modalAnswer box(modalAnswer::press(QMessageBox::Ok));
        localVCL::applicationMessage(QStringLiteral("text"), QStringLiteral("more"), 0);
        QCOMPARE(box.title, QStringLiteral("Сообщение"));
        QCOMPARE(box.text, QStringLiteral("text\n..."));
    }

    void serviceBoxes_data()
    {
        QTest::addColumn<bool>("fatal");
        QTest::newRow("critical") << false;
        QTest::newRow("fatal") << true;
    }

    // The boxes come with the arrow, even under a program's wait cursor.
    void serviceBoxes()
    {
        QFETCH(bool, fatal);
        Qt::CursorShape shape = Qt::BlankCursor;
        modalAnswer box([&shape](QWidget *widget) {
            if (QApplication::overrideCursor() != nullptr)
                shape = QApplication::overrideCursor()->shape();
            modalAnswer::press(QMessageBox::Ok)(widget);
        });
        localServices &services = localServices::instance();
        services.waitCursorPush();
        if (fatal)
            services.fatalBox(u"Halt!!! Runtime error.", u"broken");
        else
            services.criticalBox(u"save", u"broken");
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        services.waitCursorPop();
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QCOMPARE(box.title, fatal ? QStringLiteral("Halt!!! Runtime error.") : QStringLiteral("save"));
        QCOMPARE(box.text, QStringLiteral("broken"));
        QCOMPARE(shape, Qt::ArrowCursor);
    }

    void dataFileName()
    {
        QTemporaryDir directory;
        const QString existing = directory.filePath(QStringLiteral("data.sqlite"));
        QFile file(existing);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        qApp->setProperty("dataFileName", existing);
        QCOMPARE(localVCL::applicationGetDataFullFileName(), existing);
        // A missing file is asked for; cancelling gives no name.
        qApp->setProperty("dataFileName", directory.filePath(QStringLiteral("missing.sqlite")));
        modalAnswer dialog(modalAnswer::finish(QDialog::Rejected));
        QCOMPARE(localVCL::applicationGetDataFullFileName(), QString());
        QCOMPARE(dialog.title, QStringLiteral("Open file database "));
        qApp->setProperty("dataFileName", QVariant());
    }

    void showWithoutMdiArea_data()
    {
        QTest::addColumn<bool>("modal");
        QTest::addColumn<bool>("placed");
        QTest::newRow("plain") << false << false;
        QTest::newRow("modal") << true << false;
        QTest::newRow("placed") << false << true;
    }

    void showWithoutMdiArea()
    {
        QFETCH(bool, modal);
        QFETCH(bool, placed);
        QLabel *label = new QLabel(QStringLiteral("shown"));
        label->resize(220, 130);
        localVclShowParameters parameters;
        parameters.title = QStringLiteral("title");
        parameters.modal = modal;
        parameters.hasX = parameters.hasY = placed;
        parameters.x = 33;
        parameters.y = 44;
        QWidget *frame = localVCL::applicationShowWidget(label, parameters);
        localMainWindow *window = qobject_cast<localMainWindow *>(frame);
        QVERIFY(window != nullptr);
        QCOMPARE(window->centralWidget(), label);
        QCOMPARE(window->windowTitle(), QStringLiteral("title"));
        QCOMPARE(window->windowModality(), modal ? Qt::WindowModal : Qt::NonModal);
        QCOMPARE(window->size(), QSize(220, 130));
        if (placed)
            QCOMPARE(window->pos(), QPoint(33, 44));
        QVERIFY(label->testAttribute(Qt::WA_DeleteOnClose));
        QVERIFY(window->isVisible());
    }

    void showInMdiArea()
    {
        QMdiArea *area = new QMdiArea();
        area->setObjectName(QStringLiteral("localMdiArea"));
        area->resize(600, 400);
        area->show();
        QCOMPARE(localVCL::mdiArea(), area);
        QLabel *label = new QLabel(QStringLiteral("inside"));
        QWidget *frame = localVCL::applicationShowWidget(label, QStringLiteral("sub"), false);
        QMdiSubWindow *sub = qobject_cast<QMdiSubWindow *>(frame);
        QVERIFY(sub != nullptr);
        QCOMPARE(area->subWindowList().size(), 1);
        QCOMPARE(sub->windowTitle(), QStringLiteral("sub"));
        QVERIFY(sub->isAncestorOf(label));
        delete area;
        QVERIFY(localVCL::mdiArea() == nullptr);
    }

    // Only Esc counts; the other input waiting meanwhile is swallowed.
    void escapePoll()
    {
        localVclEventEscapeFilter &filter = localVclEventEscapeFilter::instance();
        QLineEdit edit;
        QVERIFY(!filter.poll());
        // Posted from a timer that fires in the poll's first pass, the keys
        // wait for its second, as typed keys do.
        auto postKey = [&edit](int key, const QString &text) {
            QTimer::singleShot(0, &edit, [&edit, key, text] {
                QCoreApplication::postEvent(&edit, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
            });
        };
        postKey(Qt::Key_A, QStringLiteral("a"));
        QVERIFY(!filter.poll());
        QCOMPARE(edit.text(), QString());
        postKey(Qt::Key_Escape, QString());
        QVERIFY(filter.poll());
        QVERIFY(!filter.poll());
    }

    // A running WHILE with ESCAPE on asks after Esc; No goes on, Yes stops
    // with status 55.
    void escapeQuestionStopsALoop()
    {
        QWidget target;
        QTimer keys;
        connect(&keys, &QTimer::timeout, &target, [&target] {
            QCoreApplication::postEvent(&target, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
        });
        keys.start(30);
        int asked = 0;
        modalAnswer question([&asked](QWidget *widget) {
            ++asked;
            modalAnswer::press(asked == 1 ? QMessageBox::No : QMessageBox::Yes)(widget);
        });
        localContextUTF8 loopContext(context);
        localErrorType status = localErrorTypeOK;
        const bool done = textExec(
            status, u"SYS(2001, \"ESCAPE\", TRUE); i = 0; WHILE i < 10000000 DO i = i + 1; ENDDO;", &loopContext);
        QVERIFY(!done);
        QCOMPARE(int(status), int(localErrorTypeINTERRUPTED));
        QCOMPARE(asked, 2);
        QCOMPARE(question.title, QStringLiteral("Выход"));
        QCOMPARE(question.objectName, QStringLiteral("Вопрос"));
        QCOMPARE(question.text, QStringLiteral("Прервать выполнение обработки"));
        QCOMPARE(question.defaultButton, QMessageBox::No);
    }

    void graphicalFunctions_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<bool>("done");
        QTest::addColumn<QString>("result"); // the value, or the status on failure
        QTest::newRow("MESSAGEBOX in Russian") << "ПРЕДУПРЕЖДЕНИЕ(1)" << false << "33";
        QTest::newRow("STRINGSHOW no argument") << "STRINGSHOW()" << false << "31";
        QTest::newRow("FILECHOOSE number title") << "FILECHOOSE(1)" << false << "33";
        QTest::newRow("DATECHOOSEASSTRING number") << "DATECHOOSEASSTRING(1)" << false << "33";
        QTest::newRow("show no picture") << "PIXMAPASBASE64SHOW(\"xyz\")" << false << "32";
    }

    void graphicalFunctions()
    {
        QFETCH(QString, expression);
        QFETCH(bool, done);
        QFETCH(QString, result);
        const localTest::evaluation outcome = localTest::evaluate(expression, context);
        QCOMPARE(outcome.done, done);
        QCOMPARE(done ? outcome.text : QString::number(outcome.status), result);
    }

    void showingFunctions()
    {
        QVERIFY(localTest::evaluate(QStringLiteral("STRINGSHOW(42)"), context).done);
        QVERIFY(localTest::evaluate(QStringLiteral("PIXMAPASBASE64SHOW(img)"), context).done);
        QString shownText;
        QSize shownPicture;
        for (QWidget *top : QApplication::topLevelWidgets()) {
            if (QPlainTextEdit *edit = top->findChild<QPlainTextEdit *>())
                shownText = edit->toPlainText();
            if (QLabel *label = top->findChild<QLabel *>())
                shownPicture = label->pixmap(Qt::ReturnByValue).size();
        }
        QCOMPARE(shownText, QStringLiteral("42"));
        QCOMPARE(shownPicture, QSize(4, 3));
    }

    // MESSAGEBOX with a timeout shows the application's message, which closes itself.
    void messageBoxFunctionClosesItself()
    {
        QElapsedTimer clock;
        clock.start();
        const localTest::evaluation outcome = localTest::evaluate(QStringLiteral("MESSAGEBOX(\"hi\", 1)"), context);
        QVERIFY(outcome.done);
        QCOMPARE(outcome.text, QStringLiteral("1"));
        QVERIFY(clock.elapsed() >= 900);
    }

    void listChooser_data()
    {
        QTest::addColumn<int>("startRow"); // from 1, 0 for none
        QTest::addColumn<int>("shownRow"); // from 0
        QTest::addColumn<int>("pick");     // row from 0, -1 to cancel
        QTest::addColumn<int>("answer");   // from 1, 0 for cancel
        QTest::newRow("start at the third") << 3 << 2 << 1 << 2;
        QTest::newRow("no start shows the first") << 0 << 0 << 0 << 1;
        QTest::newRow("cancelled") << 2 << 1 << -1 << 0;
    }

    void listChooser()
    {
        QFETCH(int, startRow);
        QFETCH(int, shownRow);
        QFETCH(int, pick);
        QFETCH(int, answer);
        int current = -2;
        modalAnswer dialog([&current, pick](QWidget *widget) {
            QListWidget *list = widget->findChild<QListWidget *>();
            current = list->currentRow();
            list->setCurrentRow(pick);
            modalAnswer::finish(pick < 0 ? QDialog::Rejected : QDialog::Accepted)(widget);
        });
        const size_t chosen = localListDialogs::handlers.rowChoose(u"Pick", {"a", "b", "c"}, size_t(startRow));
        QCOMPARE(int(chosen), answer);
        QCOMPARE(dialog.title, QStringLiteral("Pick"));
        QCOMPARE(current, shownRow);
    }

    void listValueShown()
    {
        QString shown;
        bool readOnly = false;
        modalAnswer dialog([&shown, &readOnly](QWidget *widget) {
            QPlainTextEdit *text = widget->findChild<QPlainTextEdit *>();
            shown = text->toPlainText();
            readOnly = text->isReadOnly();
            modalAnswer::finish(QDialog::Accepted)(widget);
        });
        localListDialogs::handlers.textShow(u"presentation", u"value text");
        QCOMPARE(dialog.title, QStringLiteral("presentation"));
        QCOMPARE(shown, QStringLiteral("value text"));
        QVERIFY(readOnly);
    }

    // The language's VALUELIST ROWCHOOSE reaches the chooser.
    void listChooserFromTheLanguage()
    {
        localVariable *variable = context->variableCreate(context->variableNormalName(u"list"));
        localValueList *list = localValueList::newInCell(variable->value);
        for (const char16_t *item : {u"one", u"two", u"three"}) {
            localValueDescription value;
            value.setString(item);
            list->valueAdd(&value, item);
        }
        modalAnswer dialog([](QWidget *widget) {
            widget->findChild<QListWidget *>()->setCurrentRow(2);
            modalAnswer::finish(QDialog::Accepted)(widget);
        });
        const localTest::evaluation outcome =
            localTest::evaluate(QStringLiteral("list.ROWCHOOSE(\"Which\", 1)"), context);
        QVERIFY(outcome.done);
        QCOMPARE(outcome.text, QStringLiteral("3"));
        QCOMPARE(dialog.title, QStringLiteral("Which"));
    }

    void dateChooseFunction()
    {
        modalAnswer calendar(modalAnswer::finish(QDialog::Accepted));
        const localTest::evaluation outcome =
            localTest::evaluate(QStringLiteral("DATECHOOSEASSTRING(\"20240229\")"), context);
        QVERIFY(outcome.done);
        QCOMPARE(outcome.text, QStringLiteral("20240229"));
    }
};

QTEST_MAIN(tst_localVCL)
#include "tst_localVCL.moc"
