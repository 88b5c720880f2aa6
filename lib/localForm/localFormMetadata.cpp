#include "localFormMetadata.h"

#include "localFormElement.h"

#include "localString.h"
#include "localVCL.h"

#include <QDomDocument>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QScreen>

const int32_t localFormPropertyMask[5] = {0x523, 0x021, 0x003, 0x023, 0x123};

int32_t localFormPropertyMaskOf(int32_t kind)
{
    return kind >= 0 && kind < 5 ? localFormPropertyMask[kind] : 0;
}

namespace {

// In the order the reader compares them; the index is the kind.
const char *const kindWords[] = {"Button", "Edit", "Frame", "Image", "Label", "Table"};
const int32_t kindsInReadingOrder[] = {localFormWidgetLabel, localFormWidgetButton, localFormWidgetEdit,
                                       localFormWidgetFrame, localFormWidgetImage,  localFormWidgetTable};

// A missing attribute reads as the empty string.
QString attribute(QDomElement element, const QString &name)
{
    return element.attributeNode(name).value();
}

std::u16string wideAttribute(const QDomElement &element, const QString &name)
{
    return localFromQString(attribute(element, name));
}

int32_t intAttribute(const QDomElement &element, const QString &name)
{
    return attribute(element, name).toInt();
}

bool flagAttribute(const QDomElement &element, const QString &name)
{
    return intAttribute(element, name) == 1;
}

int32_t kindOfWord(const QString &word)
{
    const QByteArray ascii = word.toLatin1();
    for (int32_t kind : kindsInReadingOrder)
        if (ascii == kindWords[kind])
            return kind;
    return -1;
}

void fontRead(const QDomElement &element, localFormMetadataWidget &record)
{
    record.font.setFamily(attribute(element, QStringLiteral("fontFamily")));
    // Through float, as the file was always read: the size loses double precision.
    const float pointSize = attribute(element, QStringLiteral("fontPointSizeF")).toFloat();
    if (pointSize > 0)
        record.font.setPointSizeF(pointSize);
    record.font.setWeight(intAttribute(element, QStringLiteral("fontBold")) == 1 ? 75 : 50);
    record.font.setItalic(flagAttribute(element, QStringLiteral("fontItalic")));
    record.fontColor.setNamedColor(attribute(element, QStringLiteral("fontColor")));
}

// Null for a widget of an unknown type, which the form drops.
localFormMetadataWidget *widgetRead(const QDomElement &element)
{
    localFormMetadataWidget *record = new localFormMetadataWidget;
    const QString word = attribute(element, QStringLiteral("WidgetType"));
    record->details = wideAttribute(element, QStringLiteral("details"));
    record->x = intAttribute(element, QStringLiteral("x"));
    record->y = intAttribute(element, QStringLiteral("y"));
    record->w = intAttribute(element, QStringLiteral("w"));
    record->h = intAttribute(element, QStringLiteral("h"));
    record->kind = kindOfWord(word);
    if (record->kind < 0) {
        delete record;
        return nullptr;
    }
    record->identifier = wideAttribute(element, QStringLiteral("Identifier"));
    const int32_t mask = localFormPropertyMaskOf(record->kind);
    if (mask & localFormPropertyCaption)
        record->caption = wideAttribute(element, QStringLiteral("Caption"));
    if (mask & localFormPropertyFormula)
        record->formula = wideAttribute(element, QStringLiteral("Formula"));
    if (mask & localFormPropertyFont)
        fontRead(element, *record);
    if (mask & localFormPropertyImage)
        record->imageAsBase64 = wideAttribute(element, QStringLiteral("ImageAsBase64"));
    if (record->kind == localFormWidgetEdit) {
        record->type = wideAttribute(element, QStringLiteral("Type"));
        record->len = intAttribute(element, QStringLiteral("Len"));
        record->dec = intAttribute(element, QStringLiteral("Dec"));
        record->unlimited = flagAttribute(element, QStringLiteral("Unlimited"));
        record->multiline = flagAttribute(element, QStringLiteral("Multiline"));
    }
    return record;
}

QString bit(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

void fontWrite(QDomElement &widget, const QWidget &content)
{
    const QFont font = content.font();
    widget.setAttribute(QStringLiteral("fontFamily"), font.family());
    widget.setAttribute(QStringLiteral("fontPixelSize"), QString::number(font.pixelSize()));
    // The format character is no format Qt knows; it then writes 5 significant digits.
    widget.setAttribute(QStringLiteral("fontPointSizeF"), QString::number(font.pointSizeF(), '.', 5));
    widget.setAttribute(QStringLiteral("fontBold"), bit(font.weight() >= 51));
    widget.setAttribute(QStringLiteral("fontItalic"), bit(font.style() != QFont::StyleNormal));
    widget.setAttribute(QStringLiteral("fontColor"), content.palette().color(QPalette::WindowText).name());
}

QDomElement widgetWrite(QDomDocument &document, const localFormLayoutDesignerElementWidget &element)
{
    QDomElement widget = document.createElement(QStringLiteral("Widget"));
    widget.setAttribute(QStringLiteral("WidgetType"), localFormWidgetTypeWord(element.kind));
    if (element.kind == localFormWidgetEdit) {
        widget.setAttribute(QStringLiteral("Type"), localToQString(element.type));
        widget.setAttribute(QStringLiteral("Len"), QString::number(uint32_t(element.len)));
        widget.setAttribute(QStringLiteral("Dec"), QString::number(uint32_t(element.dec)));
        widget.setAttribute(QStringLiteral("Unlimited"), bit(element.unlimited));
        widget.setAttribute(QStringLiteral("Multiline"), bit(element.multiline));
    }
    if (element.kind == localFormWidgetTable)
        widget.setAttribute(QStringLiteral("details"), localToQString(element.tableDetails()));
    widget.setAttribute(QStringLiteral("Identifier"), localToQString(element.identifier));
    const int32_t mask = localFormPropertyMaskOf(element.kind);
    if (mask & localFormPropertyCaption)
        widget.setAttribute(QStringLiteral("Caption"), localToQString(element.captionGet()));
    if ((mask & localFormPropertyFont) && element.contentWidget != nullptr)
        fontWrite(widget, *element.contentWidget);
    if (mask & localFormPropertyFormula)
        widget.setAttribute(QStringLiteral("Formula"), localToQString(element.formula));
    if (mask & localFormPropertyImage)
        widget.setAttribute(QStringLiteral("ImageAsBase64"), localToQString(localVCL::pixmapToBase64(element.pixmap)));
    // The file keeps the content's geometry: the frame of 5 pixels is undone.
    const int frame = localFormLayoutDesignerElementWidget::frameWidth;
    widget.setAttribute(QStringLiteral("x"), QString::number(element.x() + frame));
    widget.setAttribute(QStringLiteral("y"), QString::number(element.y() + frame));
    widget.setAttribute(QStringLiteral("w"), QString::number(element.width() - 2 * frame));
    widget.setAttribute(QStringLiteral("h"), QString::number(element.height() - 2 * frame));
    return widget;
}

QDomDocument documentWrite(QWidget *surface, bool withModule, const std::u16string &module)
{
    // An element keeps its attributes in a hash, which writes them in the order
    // of its seed: a fixed seed makes the same form give the same bytes in
    // every session. Hashes made before keep the seed they had.
    qSetGlobalQHashSeed(0);
    QDomDocument document(QStringLiteral("localForm"));
    document.appendChild(
        document.createProcessingInstruction(QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
    QDomElement root = document.createElement(QStringLiteral("FormMd"));
    document.appendChild(root);
    QDomElement form = document.createElement(QStringLiteral("Form"));
    form.setAttribute(QStringLiteral("Name"), QStringLiteral("Проба"));
    form.setAttribute(QStringLiteral("w"), QString::number(surface->frameSize().width()));
    form.setAttribute(QStringLiteral("h"), QString::number(surface->frameSize().height()));
    root.appendChild(form);
    QDomElement widgets = document.createElement(QStringLiteral("Widgets"));
    form.appendChild(widgets);
    for (const localFormLayoutDesignerElementWidget *element :
         surface->findChildren<localFormLayoutDesignerElementWidget *>())
        widgets.appendChild(widgetWrite(document, *element));
    if (withModule) {
        QDomElement moduleElement = document.createElement(QStringLiteral("Module"));
        moduleElement.appendChild(document.createTextNode(localToQString(module)));
        root.appendChild(moduleElement);
    }
    return document;
}

} // namespace

QString localFormWidgetTypeWord(int32_t kind)
{
    return kind >= 0 && kind <= localFormWidgetTable ? QString::fromLatin1(kindWords[kind]) : QString();
}

localFormMetadata::localFormMetadata(const std::u16string &fileName)
{
    QFile file(localToQString(fileName));
    QDomDocument document;
    if (file.open(QIODevice::ReadOnly | QIODevice::Text) && document.setContent(&file))
        read(document);
}

localFormMetadata::localFormMetadata(const QDomDocument &document)
{
    read(document);
}

localFormMetadata::~localFormMetadata()
{
    clear();
}

void localFormMetadata::clear()
{
    width = 100;
    height = 100;
    for (localFormMetadataWidget *record : widgets)
        delete record;
    widgets.clear();
    module.clear();
}

void localFormMetadata::read(const QDomDocument &document)
{
    clear();
    for (QDomElement child = document.documentElement().firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Form")) {
            width = intAttribute(child, QStringLiteral("w"));
            height = intAttribute(child, QStringLiteral("h"));
            for (QDomElement part = child.firstChildElement(); !part.isNull(); part = part.nextSiblingElement()) {
                if (part.tagName() != QLatin1String("Widgets"))
                    continue;
                // Any tag below Widgets is a widget.
                for (QDomElement item = part.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
                    if (localFormMetadataWidget *record = widgetRead(item))
                        widgets.push_back(record);
            }
        } else if (child.tagName() == QLatin1String("Module")) {
            module = localFromQString(child.text());
        }
    }
}

QSize localFormMetadata::size() const
{
    if (int64_t(width) * height != 0)
        return QSize(width, height);
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect available = screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 200, 200);
    return QSize(available.width() / 2, available.height() / 2);
}

std::u16string localFormXmlWithModule(QWidget *surface, const std::u16string &module)
{
    return localFromQString(documentWrite(surface, true, module).toString(1));
}

QByteArray localFormXmlWithoutModule(QWidget *surface)
{
    return documentWrite(surface, false, std::u16string()).toString(1).toLatin1();
}
