#include "localTestSupport.h"

#include "localFormElement.h"
#include "localFormMetadata.h"

#include <QDomDocument>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

using localTest::q;

namespace {

QString widgetLine(const localFormMetadataWidget &r)
{
    return QString("%1 %2,%3,%4,%5 id=%6 cap=%7 f=%8 w=%9 i=%10 c=%11 img=%12 t=%13 %14.%15 %16%17 d=%18")
        .arg(r.kind).arg(r.x).arg(r.y).arg(r.w).arg(r.h)
        .arg(q(r.identifier), q(r.caption), q(r.formula))
        .arg(r.font.weight()).arg(int(r.font.italic())).arg(r.fontColor.isValid() ? r.fontColor.name() : "-")
        .arg(q(r.imageAsBase64), q(r.type))
        .arg(r.len).arg(r.dec).arg(int(r.unlimited)).arg(int(r.multiline)).arg(q(r.details));
}

// The form as "w x h | widget; widget | module".
QString formLine(const localFormMetadata &form)
{
    QStringList widgets;
    for (const localFormMetadataWidget *record : form.widgets)
        widgets << widgetLine(*record);
    return QString("%1x%2 | %3 | %4").arg(form.width).arg(form.height).arg(widgets.join("; "), q(form.module));
}

localFormMetadata *parsed(const QString &xml)
{
    QDomDocument document;
    document.setContent(xml);
    return new localFormMetadata(document);
}

QString formXml(const QString &widgets, const QString &size = "w=\"300\" h=\"200\"")
{
    return "<FormMd><Form Name=\"x\" " + size + "><Widgets>" + widgets + "</Widgets></Form></FormMd>";
}

} // namespace

class tst_localFormMetadata : public QObject {
    Q_OBJECT
private slots:
    void reading_data();
    void reading();
    void unreadableFileIsEmptyForm();
    void sizeWithoutAreaIsHalfTheDesktop();
    void constructorRoundTrip();
    void designerFileHasNoModuleAndLosesWideText();
};

void tst_localFormMetadata::reading_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("expected");
    const QString label = "4 1,2,3,4 id=L cap=C f=F w=%1 i=0 c=-" " img=Mirtel t= 10.0 00 d=";
    QTest::newRow("no w and h: 0 by 0, widget h read as 0") << formXml("<Widget WidgetType=\"Frame\" x=\"5\"/>", "")
        << "0x0 | 2 5,0,0,0 id= cap= f= w=50 i=0 c=- img=Mirtel t= 10.0 00 d= | ";
    QTest::newRow("Edit without Len has length 0; its own flags are exactly 1")
        << formXml("<Widget WidgetType=\"Edit\" Identifier=\"N\" Type=\"Число\" Dec=\"2\" Unlimited=\"2\" "
                   "Multiline=\"1\" Caption=\"no\" Formula=\"N+1\" fontBold=\"1\" h=\"20\"/>")
        << "300x200 | 1 0,0,0,20 id=N cap= f=N+1 w=50 i=0 c=- img=Mirtel t=Число 0.2 01 d= | ";
    QTest::newRow("fontBold 2 is not bold")
        << formXml("<Widget WidgetType=\"Label\" Identifier=\"L\" Caption=\"C\" Formula=\"F\" fontBold=\"2\" "
                   "x=\"1\" y=\"2\" w=\"3\" h=\"4\"/>")
        << "300x200 | " + label.arg(50) + " | ";
    QTest::newRow("fontBold 1, italic, colour; Button keeps its image, Label has none")
        << formXml("<Widget WidgetType=\"Button\" fontBold=\"1\" fontItalic=\"1\" fontColor=\"#ff0000\" "
                   "ImageAsBase64=\"AAA\" h=\"1\"/><Widget WidgetType=\"Label\" ImageAsBase64=\"AAA\" h=\"1\"/>")
        << "300x200 | 0 0,0,0,1 id= cap= f= w=75 i=1 c=#ff0000 img=AAA t= 10.0 00 d=; "
           "4 0,0,0,1 id= cap= f= w=50 i=0 c=- img=Mirtel t= 10.0 00 d= | ";
    QTest::newRow("unknown type vanishes; any tag below Widgets is a widget; details read for every kind")
        << formXml("<Widget WidgetType=\"Combo\"/><Item WidgetType=\"Image\" details=\"{}\" Caption=\"c\" "
                   "Formula=\"P\" h=\"9\"/><Widget WidgetType=\"label\"/>")
        << "300x200 | 3 0,0,0,9 id= cap=c f=P w=50 i=0 c=- img=Mirtel t= 10.0 00 d={} | ";
    QTest::newRow("Module without Form") << "<FormMd><Module>VAR a = 1;</Module><Other/></FormMd>"
                                         << "100x100 |  | VAR a = 1;";
    QTest::newRow("Table reads identifier and details only")
        << formXml("<Widget WidgetType=\"Table\" Identifier=\"T\" Caption=\"c\" details=\"[1]\" h=\"5\"/>")
        << "300x200 | 5 0,0,0,5 id=T cap= f= w=50 i=0 c=- img=Mirtel t= 10.0 00 d=[1] | ";
    QTest::newRow("malformed") << "<FormMd><Form w=\"5\"" << "100x100 |  | ";
}

void tst_localFormMetadata::reading()
{
    QFETCH(QString, xml);
    QFETCH(QString, expected);
    std::unique_ptr<localFormMetadata> form(parsed(xml));
    QCOMPARE(formLine(*form), expected);
}

void tst_localFormMetadata::unreadableFileIsEmptyForm()
{
    QTemporaryDir folder;
    localTest::fileWrite(folder.filePath("bad.xml"), "<FormMd><Form w=\"7\" h=\"8\"><Widgets><Widget");
    for (const QString &name : {folder.filePath("missing.xml"), folder.filePath("bad.xml")}) {
        const localFormMetadata form(localTest::w(name));
        QCOMPARE(formLine(form), QString("100x100 |  | "));
    }
    // Read through float: the point size loses double precision.
    std::unique_ptr<localFormMetadata> sized(
        parsed(formXml("<Widget WidgetType=\"Label\" fontPointSizeF=\"10.123456789\"/>")));
    QCOMPARE(sized->widgets[0]->font.pointSizeF(), double(10.123456789f));
}

void tst_localFormMetadata::sizeWithoutAreaIsHalfTheDesktop()
{
    std::unique_ptr<localFormMetadata> form(parsed(formXml("", "w=\"640\"")));
    const QRect desktop = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(form->size(), QSize(desktop.width() / 2, desktop.height() / 2));
    form.reset(parsed(formXml("", "w=\"640\" h=\"1\"")));
    QCOMPARE(form->size(), QSize(640, 1));
}

// A holder with a surface of designer elements made from the records; the
// surface is no window, as in the designer, so its frame is its size.
static QWidget *surfaceOf(const localFormMetadata &form)
{
    QWidget *holder = new QWidget;
    QWidget *surface = new QWidget(holder);
    surface->resize(form.width, form.height);
    for (const localFormMetadataWidget *r : form.widgets) {
        auto *element = new localFormLayoutDesignerElementWidget(r->kind, 0, QRect(r->x, r->y, r->w, r->h), surface);
        element->identifier = r->identifier;
        element->captionSet(r->caption);
        element->formula = r->formula;
        if (localFormPropertyMaskOf(r->kind) & localFormPropertyFont)
            element->fontSet(r->font, r->fontColor);
        element->type = r->type;
        element->len = r->len;
        element->tableDetailsSet(r->details);
    }
    return holder;
}

void tst_localFormMetadata::constructorRoundTrip()
{
    const QString widgets =
        "<Widget WidgetType=\"Label\" Identifier=\"Итог\" Caption=\"Сумма\" details=\"lost\" fontBold=\"1\" "
        "fontColor=\"#00ff00\" x=\"12\" y=\"34\" w=\"56\" h=\"78\"/>"
        "<Widget WidgetType=\"Edit\" Identifier=\"N\" Type=\"Число\" Len=\"7\" x=\"1\" y=\"2\" w=\"3\" h=\"4\"/>"
        "<Widget WidgetType=\"Table\" details=\"{&quot;grid:dataSource:varName&quot;: &quot;T&quot;}\" "
        "x=\"100\" y=\"0\" w=\"200\" h=\"90\"/>";
    std::unique_ptr<localFormMetadata> original(parsed(formXml(widgets, "w=\"400\" h=\"300\"")));
    std::unique_ptr<QWidget> surface(surfaceOf(*original));
    const std::u16string written = localFormXmlWithModule(surface->findChild<QWidget *>(), u"VAR Итог = 1;");
    QDomDocument document;
    QVERIFY(document.setContent(q(written)));
    const localFormMetadata back(document);
    QCOMPARE(back.width, 400);
    QCOMPARE(q(back.module), QString("VAR Итог = 1;"));
    QCOMPARE(back.widgets.size(), size_t(3));
    for (size_t i = 0; i < 3; ++i) {
        const localFormMetadataWidget &a = *original->widgets[i], &b = *back.widgets[i];
        QCOMPARE(QRect(b.x, b.y, b.w, b.h), QRect(a.x, a.y, a.w, a.h));
        QCOMPARE(b.kind, a.kind);
        QCOMPARE(q(b.identifier), q(a.identifier));
    }
    QCOMPARE(q(back.widgets[0]->caption), QString("Сумма"));
    QCOMPARE(back.widgets[0]->font.weight(), 75);
    QCOMPARE(back.widgets[0]->fontColor.name(), QString("#00ff00"));
    QVERIFY(back.widgets[0]->details.empty());
    QCOMPARE(back.widgets[1]->len, 7);
    QVERIFY(q(back.widgets[2]->details).contains("\"T\""));
}

void tst_localFormMetadata::designerFileHasNoModuleAndLosesWideText()
{
    std::unique_ptr<localFormMetadata> original(parsed(formXml(
        "<Widget WidgetType=\"Button\" Caption=\"Ок\" Formula=\"a = 1\" x=\"10\" y=\"10\" w=\"50\" h=\"20\"/>")));
    // A weight of 51 is written as bold.
    QFont font;
    font.setWeight(51);
    original->widgets[0]->font = font;
    std::unique_ptr<QWidget> surface(surfaceOf(*original));
    const QByteArray written = localFormXmlWithoutModule(surface->findChild<QWidget *>());
    QVERIFY(!written.contains("Module"));
    QVERIFY(written.contains("Caption=\"??\""));
    QVERIFY(written.contains("fontBold=\"1\""));
    QVERIFY(written.contains("ImageAsBase64=\""));
}

QTEST_MAIN(tst_localFormMetadata)
#include "tst_localFormMetadata.moc"
