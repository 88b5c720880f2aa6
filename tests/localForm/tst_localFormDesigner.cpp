#include "localTestSupport.h"

#include "localFormConstructor.h"
#include "localFormElement.h"
#include "localFormLayoutDesigner.h"
#include "localFormMetadata.h"

#include "localForm.h"
#include "localString.h"
#include "localSxl.h"
#include "localVclWidgetEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QSizeGrip>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <tuple>

using localTest::q;
using localTest::w;

namespace {

// Answers every save dialog with one name.
class saveAnswer : public localTest::boxRecorder {
public:
    std::u16string name;
    std::u16string saveFileName(const std::u16string &, const std::u16string &, const std::u16string &) override
    {
        return name;
    }
};

struct surfaceOfThree {
    localFormLayoutDesigner surface;
    localFormLayoutDesignerElementWidget *a;
    localFormLayoutDesignerElementWidget *b;
    localFormLayoutDesignerElementWidget *c;
    surfaceOfThree()
    {
        surface.resize(600, 600);
        a = surface.elementNew(localFormWidgetLabel, QPoint(20, 20));
        b = surface.elementNew(localFormWidgetEdit, QPoint(200, 100));
        c = surface.elementNew(localFormWidgetButton, QPoint(50, 300));
    }
};

// A grid's layout as the grid itself gives it back, whatever the text's form.
QString tableLayout(const std::u16string &details)
{
    localFormLayoutDesignerElementWidget table(localFormWidgetTable, localFormLayoutDesignerElementWidget::modeDesigner,
                                               QRect(0, 0, 100, 100), nullptr);
    table.tableDetailsSet(details);
    return q(table.tableDetails());
}

// What a reader keeps of a record, for comparing two files of one form.
using recordKey = std::tuple<int, int, int, int, int, QString, QString, QString, QString, QString>;

std::vector<recordKey> recordsOf(const QString &fileName)
{
    const localFormMetadata metadata(w(fileName));
    std::vector<recordKey> records;
    for (const localFormMetadataWidget *record : metadata.widgets) {
        const bool font = localFormPropertyMaskOf(record->kind) & localFormPropertyFont;
        records.emplace_back(record->kind, record->x, record->y, record->w, record->h, q(record->identifier),
                             q(record->caption), q(record->formula),
                             font ? record->font.family() + record->fontColor.name() + QString::number(record->font.pointSizeF())
                                  : QString(),
                             record->kind == localFormWidgetTable ? tableLayout(record->details) : QString());
    }
    std::sort(records.begin(), records.end());
    return records;
}

// A widget the application showed, as a window of its own or inside a frame.
template <class T>
T *shownWidget()
{
    for (QWidget *top : QApplication::topLevelWidgets())
        if (T *found = qobject_cast<T *>(top) ? qobject_cast<T *>(top) : top->findChild<T *>())
            return found;
    return nullptr;
}

} // namespace

class tst_localFormDesigner : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        localSxlInstall();
        localTest::globalContext();
    }
    void selectionKeepsOrder();
    void alignAndMatch_data();
    void alignAndMatch();
    void downSnapsUpDoesNot();
    void deleteTakesTheSelection();
    void tablePropertiesAreTheGridLayout();
    void menuWithoutSelection_data();
    void menuWithoutSelection();
    void typeDecidesFields_data();
    void typeDecidesFields();
    void ctrlSInModuleSavesForm();
    void designerFileHasNoModule();
    void previewRunsTheLayout();
    void savedFormRoundTrips();
    void handWrittenFormKeepsFields();
    void formEditOpensTheConstructor();
};

void tst_localFormDesigner::selectionKeepsOrder()
{
    surfaceOfThree three;
    three.surface.selectionAdd(three.c);
    three.surface.selectionAdd(three.a);
    three.surface.selectionAdd(three.c);
    QCOMPARE(three.surface.selected, (std::vector<localFormLayoutDesignerElementWidget *>{three.c, three.a}));
    three.surface.selectionRemove(three.c);
    QCOMPARE(three.surface.selected.front(), three.a);
    QVERIFY(!three.c->isSelected());
    three.surface.selectionClear();
    QVERIFY(three.surface.selected.empty());
    QVERIFY(!three.a->findChild<QSizeGrip *>()->isEnabled());
}

void tst_localFormDesigner::alignAndMatch_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<bool>("single");
    QTest::addColumn<QRect>("expected");
    // The reference a stands at (15, 15, 110, 30) with its frame; c at (45, 295), 60 by 50.
    QTest::newRow("left") << "1" << false << QRect(15, 295, 60, 50);
    QTest::newRow("right") << "2" << false << QRect(65, 295, 60, 50);
    QTest::newRow("top") << "32" << false << QRect(45, 15, 60, 50);
    QTest::newRow("bottom") << "64" << false << QRect(45, -5, 60, 50);
    QTest::newRow("width") << "W" << false << QRect(45, 295, 110, 50);
    QTest::newRow("height") << "H" << false << QRect(45, 295, 60, 30);
    QTest::newRow("size") << "S" << false << QRect(45, 295, 110, 30);
    QTest::newRow("one element moves nothing") << "1" << true << QRect(45, 295, 60, 50);
}

void tst_localFormDesigner::alignAndMatch()
{
    QFETCH(QString, operation);
    QFETCH(bool, single);
    QFETCH(QRect, expected);
    surfaceOfThree three;
    three.c->resize(60, 50);
    if (!single)
        three.surface.selectionAdd(three.a);
    three.surface.selectionAdd(three.c);
    if (!single)
        three.surface.selectionAdd(three.b);
    const QRect reference = three.surface.selected.front()->geometry();
    bool isCode = false;
    const int code = operation.toInt(&isCode);
    if (isCode)
        three.surface.align(code);
    else
        three.surface.sizeMatch(operation.at(0).unicode());
    QCOMPARE(three.c->geometry(), expected);
    QCOMPARE(three.surface.selected.front()->geometry(), reference);
}

void tst_localFormDesigner::downSnapsUpDoesNot()
{
    surfaceOfThree three;
    three.c->move(45, 30);
    three.a->move(300, 200);
    three.surface.selectionAdd(three.a);
    three.surface.selectionAdd(three.c);
    localTest::coutCapture console;
    QTest::keyClick(&three.surface, Qt::Key_Down);
    QCOMPARE(three.c->y(), 50);
    QCOMPARE(three.a->y(), 220);
    QVERIFY(console.text().contains("1 dY= 1\n"));
    QVERIFY(console.text().contains("2 dY= 20\n"));
    QTest::keyClick(&three.surface, Qt::Key_Up);
    QCOMPARE(three.c->y(), 49);
    QTest::keyClick(&three.surface, Qt::Key_Down);
    QCOMPARE(three.c->y(), 50);
    three.surface.gridEnabled = false;
    QTest::keyClick(&three.surface, Qt::Key_Down);
    QCOMPARE(three.c->y(), 51);
}

void tst_localFormDesigner::deleteTakesTheSelection()
{
    surfaceOfThree three;
    const auto count = [&] { return three.surface.findChildren<localFormLayoutDesignerElementWidget *>().size(); };
    QTest::keyClick(&three.surface, Qt::Key_Delete);
    QCOMPARE(count(), 3);
    three.surface.selectionAdd(three.b);
    QTest::keyClick(&three.surface, Qt::Key_Delete);
    QCOMPARE(count(), 2);
    QVERIFY(three.surface.selected.empty());
}

void tst_localFormDesigner::tablePropertiesAreTheGridLayout()
{
    static std::u16string shown;
    const auto previous = localVclGrid200123::layoutDialog;
    localVclGrid200123::layoutDialog = [](QWidget *, std::u16string &json) {
        shown = json;
        return false;
    };
    localFormLayoutDesigner surface;
    localFormLayoutDesignerElementWidget *table = surface.elementNew(localFormWidgetTable, QPoint(10, 10));
    surface.selectionAdd(table);
    localTest::coutCapture console;
    surface.actPropertiesProc();
    localVclGrid200123::layoutDialog = previous;
    QVERIFY(console.text().contains("SAYS это localVclTestWidgetValueTable200617"));
    QCOMPARE(q(shown), q(table->tableDetails()));
    QVERIFY(!shown.empty());
}

void tst_localFormDesigner::menuWithoutSelection_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("label") << "NewLabel" << "Label" << true;
    QTest::newRow("table") << "NewTable" << "Table" << true;
    QTest::newRow("edit") << "NewEdit" << "Новый реквизит" << true;
    QTest::newRow("delete") << "Delete" << "Удалить" << false;
    QTest::newRow("align") << "AlignBottom" << "По нижнему краю" << false;
    QTest::newRow("size") << "SizeEqualSize" << "Один размер" << false;
    QTest::newRow("properties") << "Properties" << "Свойства" << false;
}

void tst_localFormDesigner::menuWithoutSelection()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    surfaceOfThree three;
    std::unique_ptr<QMenu> menu(three.surface.contextMenuMake(QPoint(5, 5)));
    QAction *action = menu->findChild<QAction *>(name);
    QVERIFY(action != nullptr);
    QCOMPARE(action->text(), text);
    QCOMPARE(action->isEnabled(), enabled);
    three.surface.selectionAdd(three.a);
    std::unique_ptr<QMenu> selectedMenu(three.surface.contextMenuMake(QPoint(5, 5)));
    QVERIFY(selectedMenu->findChild<QAction *>(name)->isEnabled());
}

void tst_localFormDesigner::typeDecidesFields_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("len");
    QTest::addColumn<bool>("dec");
    QTest::addColumn<bool>("flags");
    QTest::newRow("undefined") << "Неопределённый" << false << false << false;
    QTest::newRow("string") << "Строка" << true << false << true;
    QTest::newRow("number") << "Число" << true << true << false;
    QTest::newRow("table document") << q(localSxl::classDeclaration()->className) << false << false << false;
}

void tst_localFormDesigner::typeDecidesFields()
{
    QFETCH(QString, type);
    QFETCH(bool, len);
    QFETCH(bool, dec);
    QFETCH(bool, flags);
    localFormLayoutDesigner surface;
    localFormLayoutDesignerElementWidget *edit = surface.elementNew(localFormWidgetEdit, QPoint(10, 10));
    edit->type = u"Число";
    edit->len = 12;
    edit->dec = 2;
    localFormLayoutDesignerElementWidgetPropertiesDialog dialog(edit);
    dialog.typeCombo->setCurrentText(type);
    QCOMPARE(dialog.lenSpin->isEnabled(), len);
    QCOMPARE(dialog.decSpin->isEnabled(), dec);
    QCOMPARE(dialog.unlimitedCheck->isEnabled(), flags);
    QCOMPARE(dialog.multilineCheck->isEnabled(), flags);
    QCOMPARE(dialog.lenSpin->value(), len ? 12 : 0);
    QCOMPARE(dialog.decSpin->value(), dec ? 2 : 0);
    dialog.apply(edit);
    QCOMPARE(q(edit->type), type);
}

void tst_localFormDesigner::ctrlSInModuleSavesForm()
{
    QTemporaryDir folder;
    saveAnswer *services = new saveAnswer;
    localServices::install(services);
    services->name = w(folder.filePath("asked.xml"));
    const QString module = "Сумма = 5;\n// <&> в модуле\n";
    localFormConstructor constructor;
    constructor.layoutDesigner->elementNew(localFormWidgetEdit, QPoint(10, 10));
    constructor.setCurrentIndex(1);
    constructor.moduleEditor->setPlainText(module);
    QTest::keyClick(constructor.moduleEditor, Qt::Key_S, Qt::ControlModifier);
    // A new form has no name: the text is shown, then a name is asked for.
    QCOMPARE(services->boxes.size(), size_t(1));
    QCOMPARE(q(services->boxes[0].title), QString("XML"));
    QCOMPARE(constructor.fileName, services->name);
    QCOMPARE(constructor.moduleEditor->toPlainText(), module);
    // On the layout page too the whole form is saved, module and all.
    constructor.moduleEditor->setPlainText(module + "B = 2;");
    QTest::keyClick(constructor.layoutDesigner, Qt::Key_S, Qt::ControlModifier);
    QVERIFY(localTest::fileBytes(q(services->name)).contains("B = 2;</Module>"));
    localFormConstructor loaded;
    QVERIFY(loaded.load(services->name));
    QCOMPARE(loaded.moduleEditor->toPlainText(), module + "B = 2;");
    QCOMPARE(loaded.layoutDesigner->findChildren<localFormLayoutDesignerElementWidget *>().size(), 1);
    localTest::boxRecorder::install();
}

void tst_localFormDesigner::designerFileHasNoModule()
{
    QTemporaryDir folder;
    localFormLayoutDesigner surface;
    surface.formFileName = w(folder.filePath("designer.xml"));
    surface.elementNew(localFormWidgetButton, QPoint(30, 30));
    QTest::keyClick(&surface, Qt::Key_S, Qt::ControlModifier);
    localFormConstructor constructor;
    constructor.moduleEditor->setPlainText("left over");
    QVERIFY(constructor.load(surface.formFileName));
    QCOMPARE(constructor.moduleEditor->toPlainText(), QString());
    QCOMPARE(constructor.layoutDesigner->findChildren<localFormLayoutDesignerElementWidget *>().size(), 1);
}

void tst_localFormDesigner::previewRunsTheLayout()
{
    localFormLayoutDesigner surface;
    surface.elementNew(localFormWidgetButton, QPoint(30, 30))->formula = u"A = 1";
    surface.elementNew(localFormWidgetLabel, QPoint(30, 70));
    localTest::coutCapture quiet;
    std::unique_ptr<QWidget> shown(surface.preview());
    localForm *form = shownWidget<localForm>();
    QVERIFY(form != nullptr);
    const auto elements = form->findChildren<localFormLayoutDesignerElementWidget *>();
    QCOMPARE(elements.size(), 2);
    QCOMPARE(elements[0]->mode, int32_t(localFormLayoutDesignerElementWidget::modeRun));
    QCOMPARE(q(elements[0]->formula), QString("A = 1"));
}

void tst_localFormDesigner::savedFormRoundTrips()
{
    QTemporaryDir folder;
    const QString first = folder.filePath("first.xml");
    const QString second = folder.filePath("second.xml");
    localFormConstructor made;
    made.fileName = w(first);
    localFormLayoutDesigner *surface = made.layoutDesigner;
    made.surfaceSizeSet(QSize(400, 300));
    surface->elementNew(localFormWidgetFrame, QPoint(5, 5));
    surface->elementNew(localFormWidgetLabel, QPoint(20, 20));
    surface->elementNew(localFormWidgetButton, QPoint(20, 60))->formula = u"Сумма = Сумма + 1";
    localFormLayoutDesignerElementWidget *edit = surface->elementNew(localFormWidgetEdit, QPoint(150, 20));
    edit->identifier = u"Сумма";
    edit->type = u"Число";
    edit->len = 12;
    edit->dec = 2;
    surface->elementNew(localFormWidgetImage, QPoint(150, 60));
    surface->elementNew(localFormWidgetTable, QPoint(20, 100));
    made.moduleEditor->setPlainText("Сумма = 0;");
    QVERIFY(made.save());
    {
        localTest::coutCapture quiet;
        localForm opened(w(first), nullptr);
        QCOMPARE(opened.findChildren<localFormLayoutDesignerElementWidget *>().size(), 5);
    }
    localFormConstructor again;
    QVERIFY(again.load(w(first)));
    again.fileName = w(second);
    QVERIFY(again.save());
    QCOMPARE(localTest::fileBytes(second), localTest::fileBytes(first));
}

void tst_localFormDesigner::handWrittenFormKeepsFields()
{
    QTemporaryDir folder;
    const QString sample = QStringLiteral(KORVEL_SOURCE_DIR "/prgTest/forms/invoice.xml");
    const QString saved = folder.filePath("invoice.xml");
    localFormConstructor constructor;
    QVERIFY(constructor.load(w(sample)));
    constructor.fileName = w(saved);
    QVERIFY(constructor.save());
    const std::vector<recordKey> before = recordsOf(sample);
    QVERIFY(before.size() > 5);
    QCOMPARE(recordsOf(saved), before);
    QCOMPARE(localFormMetadata(w(saved)).module, localFormMetadata(w(sample)).module);
}

void tst_localFormDesigner::formEditOpensTheConstructor()
{
    localFormInstall();
    localTest::coutCapture quiet;
    const localTest::evaluation missing = localTest::evaluate("FORMEDIT(\"no such form.xml\")", localTest::globalContext());
    QCOMPARE(missing.status, 23);
    const localTest::evaluation opened =
        localTest::evaluate("FORMEDIT(\"  " KORVEL_SOURCE_DIR "/prgTest/forms/invoice.xml\")", localTest::globalContext());
    QCOMPARE(opened.text, QString("1"));
    localFormConstructor *constructor = shownWidget<localFormConstructor>();
    QVERIFY(constructor != nullptr);
    QVERIFY(constructor->moduleEditor->toPlainText().contains("Discount"));
    delete constructor->window();
}

QTEST_MAIN(tst_localFormDesigner)
#include "tst_localFormDesigner.moc"
