#include "localFormConstructor.h"

#include "localFormElement.h"
#include "localFormLayoutDesigner.h"
#include "localFormMetadata.h"

#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"
#include "localVCL.h"
#include "localVclWidgetEditor.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QScrollArea>


localFormConstructor::fonFormSubWindow_t::fonFormSubWindow_t(QWidget *parent) : QMdiSubWindow(parent)
{
    setWindowFlags(Qt::WindowFlags(0x2001012));
    setOption(QMdiSubWindow::RubberBandResize);
    setOption(QMdiSubWindow::RubberBandMove);
    setContentsMargins(0, 0, 0, 0);
}

void localFormConstructor::fonFormSubWindow_t::fit()
{
    // The frame's borders and title are known only once it is shown: grow
    // the frame by what they take, so that the surface keeps its size.
    layout()->activate();
    if (widget() != nullptr)
        resize(size() + surfaceSize - widget()->size());
}

void localFormConstructor::fonFormSubWindow_t::showEvent(QShowEvent *event)
{
    QMdiSubWindow::showEvent(event);
    if (!fitted) {
        fitted = true;
        fit();
    }
}

localFormConstructor::localFormConstructor(QWidget *parent) : QTabWidget(parent)
{
    setTabPosition(QTabWidget::South);
    scrollArea = new QScrollArea;
    scrollArea->setBackgroundRole(QPalette::Light);
    moduleEditor = new localVclWidgetEditor;
    moduleEditor->setFont(QFont(QStringLiteral("Courier")));
    tableWidget = new QWidget;
    addTab(scrollArea, QStringLiteral("Диалог"));
    addTab(moduleEditor, QStringLiteral("Модуль"));
    addTab(tableWidget, QStringLiteral("Таблица"));
    scrollArea->installEventFilter(this);
    moduleEditor->installEventFilter(this);
    const localFormMetadata empty;
    metadataApply(empty);
}

std::u16string localFormConstructor::formsFolder()
{
    return localFromQString(QCoreApplication::applicationDirPath() + QStringLiteral("/prgTest/forms"));
}

void localFormConstructor::metadataApply(const localFormMetadata &metadata)
{
    // The old surface goes with its frame, which the scroll area owns.
    fonFormSubWindow = new fonFormSubWindow_t;
    layoutDesigner = new localFormLayoutDesigner;
    layoutDesigner->saveHandler = [this] { save(); };
    for (const localFormMetadataWidget *record : metadata.widgets) {
        localFormLayoutDesignerElementWidget *element = new localFormLayoutDesignerElementWidget(
            record->kind, localFormLayoutDesignerElementWidget::modeDesigner,
            QRect(record->x, record->y, record->w, record->h), layoutDesigner);
        element->identifier = record->identifier;
        element->captionSet(record->caption);
        element->formula = record->formula;
        const int32_t mask = localFormPropertyMaskOf(record->kind);
        if (mask & localFormPropertyFont)
            element->fontSet(record->font, record->fontColor);
        if (mask & localFormPropertyImage)
            element->pixmapSet(localVCL::pixmapFromBase64(record->imageAsBase64));
        if (record->kind == localFormWidgetTable)
            element->tableDetailsSet(record->details);
        if (record->kind == localFormWidgetEdit) {
            element->type = record->type;
            element->len = record->len;
            element->dec = record->dec;
            element->unlimited = record->unlimited;
            element->multiline = record->multiline;
            static_cast<QLineEdit *>(element->contentWidget)->setText(localToQString(record->identifier));
        }
        layoutDesigner->elementAdopt(element);
    }
    fonFormSubWindow->setWidget(layoutDesigner);
    // Inside the scroll area the frame has its borders and title.
    scrollArea->setWidget(fonFormSubWindow);
    surfaceSizeSet(metadata.size());
    moduleEditor->setPlainText(localToQString(metadata.module));
    titleUpdate();
}

void localFormConstructor::surfaceSizeSet(const QSize &size)
{
    layoutDesigner->resize(size);
    fonFormSubWindow->surfaceSize = size;
    fonFormSubWindow->resize(size);
    if (fonFormSubWindow->isVisible())
        fonFormSubWindow->fit();
}

void localFormConstructor::titleUpdate()
{
    setWindowTitle(fileName.empty() ? QStringLiteral("Новая форма") : localToQString(fileName));
}

bool localFormConstructor::load(const std::u16string &name)
{
    std::u16string chosen = name;
    if (chosen.empty() || !localString::fileExist(chosen))
        chosen = localServices::instance().openFileName(u"Open formFile ", formsFolder(), u"*.xml *.xml");
    if (chosen.empty())
        return false;
    const localFormMetadata metadata(chosen);
    fileName = chosen;
    metadataApply(metadata);
    return true;
}

std::u16string localFormConstructor::xml() const
{
    return localFormXmlWithModule(layoutDesigner, localFromQString(moduleEditor->toPlainText()));
}

bool localFormConstructor::save()
{
    if (fileName.empty())
        return saveAs(formsFolder());
    return localString::fileWrite(false, localString::possibleCodePageUTF8, xml(), fileName);
}

bool localFormConstructor::saveAs(const std::u16string &folder)
{
    const std::u16string text = xml();
    localServices::instance().messageBox(localServices::boxAbout, u"XML", text);
    const std::u16string name = localServices::instance().saveFileName(u"Save form as ...", folder, u"*.xml");
    if (name.empty())
        return false;
    if (!localString::fileWrite(false, localString::possibleCodePageUTF8, text, name))
        return false;
    fileName = name;
    titleUpdate();
    return true;
}

bool localFormConstructor::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const QKeyEvent *key = static_cast<QKeyEvent *>(event);
    const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier && key->key() == Qt::Key_O) {
        logWrite(u"QEvent::KeyPress ");
        load(std::u16string());
        return true;
    }
    if (modifiers == Qt::ControlModifier && key->key() == Qt::Key_S) {
        logWrite(u"QEvent::KeyPress ");
        save();
        return true;
    }
    if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier) && key->key() == Qt::Key_S) {
        logWrite(u"QEvent::KeyPress ");
        saveAs(formsFolder());
        return true;
    }
    // Other keys go on to the editor or the surface; the log keeps them for tracing.
    logWrite(u"QEvent::KeyPress  event->type()=" + localFromQString(QString::number(event->type())) + u" this=" +
             localFromQString(QString::number(quintptr(this), 16)) + u" obj=" +
             localFromQString(QString::number(quintptr(watched), 16)));
    return false;
}

QWidget *localFormConstructorShow()
{
    return localVCL::applicationShowWidget(new localFormConstructor, QStringLiteral("localFormConstructor"), false);
}
