#include "localVCL.h"

#include "localMainWindow.h"

#include "localColorTable.h"
#include "localContextUTF8.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"

#include <QApplication>
#include <QBuffer>
#include <QByteArray>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScrollArea>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <QVariant>

namespace {

QWidget *topLevelNamed(const QString &name)
{
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (top->objectName() == name)
            return top;
        if (QWidget *inside = top->findChild<QWidget *>(name))
            return inside;
    }
    return nullptr;
}

QString widgetName(const QWidget *widget)
{
    if (!widget->objectName().isEmpty())
        return widget->objectName();
    return QStringLiteral("0x") + QString::number(quintptr(widget), 16);
}

QToolBar *formToolBar()
{
    QToolBar *bar = new QToolBar();
    bar->setObjectName(QStringLiteral("form"));
    bar->setIconSize(QSize(16, 16));
    return bar;
}

// A tool bar without actions would only be an empty strip; settled before
// the frame is shown, so that the layout is right from the start.
void toolBarSettle(QToolBar *bar)
{
    bar->setVisible(!bar->actions().isEmpty());
}

void frameDecorate(QWidget *frame, const localVclShowParameters &parameters)
{
    if (!parameters.iconAsBase64.isEmpty())
        frame->setWindowIcon(QIcon(localVCL::pixmapFromBase64(localFromQString(parameters.iconAsBase64))));
    frame->setWindowTitle(parameters.title);
    if (parameters.modal)
        frame->setWindowModality(Qt::WindowModal);
}

void frameMove(QWidget *frame, const localVclShowParameters &parameters)
{
    if (parameters.hasX || parameters.hasY)
        frame->move(parameters.hasX ? parameters.x : frame->x(), parameters.hasY ? parameters.y : frame->y());
}

QWidget *showInMainWindow(QWidget *widget, QToolBar *bar, const localVclShowParameters &parameters)
{
    localMainWindow *window = new localMainWindow();
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->addToolBar(bar);
    frameDecorate(window, parameters);
    const QSize size = widget->size();
    window->setCentralWidget(widget);
    window->resize(size);
    frameMove(window, parameters);
    toolBarSettle(bar);
    window->show();
    return window;
}

QWidget *showInMdiArea(QMdiArea *area, QWidget *widget, QToolBar *bar, const localVclShowParameters &parameters)
{
    QWidget *holder = new QWidget();
    holder->setAttribute(Qt::WA_DeleteOnClose);
    QVBoxLayout *layout = new QVBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    QScrollArea *scroll = new QScrollArea();
    scroll->setWidgetResizable(true);
    QWidget *inner = new QWidget();
    QVBoxLayout *innerLayout = new QVBoxLayout(inner);
    innerLayout->setContentsMargins(0, 0, 0, 0);
    innerLayout->addWidget(bar);
    innerLayout->addWidget(widget);
    scroll->setWidget(inner);
    layout->addWidget(scroll);
    holder->resize(widget->size() + QSize(10, 10));

    // A new window opens where the user is working.
    QPoint opening;
    bool openingKnown = false;
    if (QMdiSubWindow *active = area->activeSubWindow())
        if (QWidget *focus = active->focusWidget()) {
            opening = focus->mapToGlobal(QPoint(0, 0));
            openingKnown = true;
        }
    QMdiSubWindow *sub = area->addSubWindow(holder);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    if (openingKnown)
        sub->move(area->viewport()->mapFromGlobal(opening));
    frameDecorate(sub, parameters);
    frameMove(sub, parameters);
    toolBarSettle(bar);
    sub->show();
    widget->setFocusPolicy(Qt::StrongFocus); // 11
    widget->setFocus(Qt::OtherFocusReason);  // 7
    return sub;
}


} // namespace

QMdiArea *localVCL::mdiArea()
{
    return qobject_cast<QMdiArea *>(topLevelNamed(QStringLiteral("localMdiArea")));
}

QWidget *localVCL::messagePanel()
{
    return topLevelNamed(QStringLiteral("localMessagePanel"));
}

QWidget *localVCL::applicationShowWidget(QWidget *widget, const localVclShowParameters &parameters)
{
    QToolBar *bar = formToolBar();
    // A form brings its own actions; the kit knows forms only by class name.
    if (widget->inherits("localForm"))
        bar->addActions(widget->actions());
    widget->setAttribute(Qt::WA_DeleteOnClose);
    QMdiArea *area = mdiArea();
    QWidget *frame = area != nullptr ? showInMdiArea(area, widget, bar, parameters)
                                     : showInMainWindow(widget, bar, parameters);
    logWrite(localFromQString(QStringLiteral("localVCL::applicationShowWidget() window for widget [")
                              + widgetName(widget) + QStringLiteral("]")));
    return frame;
}

QWidget *localVCL::applicationShowWidget(QWidget *widget, const QString &title, bool modal)
{
    localVclShowParameters parameters;
    parameters.title = title;
    parameters.modal = modal;
    return applicationShowWidget(widget, parameters);
}

QString localVCL::applicationGetDataFullFileName()
{
    return localToQString(localServices::applicationGetDataFullFileName());
}

int localVCL::applicationMessage(const QString &text, const QString &details, int seconds)
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("Сообщение"), text);
    if (!details.isEmpty()) {
        box.setText(text + QStringLiteral("\n..."));
        box.setDetailedText(details);
    }
    box.setSizeGripEnabled(true);
    QTimer timer;
    if (seconds > 0) {
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &box, &QMessageBox::accept);
        timer.start(seconds * 1000);
    }
    return box.exec();
}

std::u16string localVCL::saveAs(int32_t codePage, const std::u16string &text, const QString &title,
                                const QString &filter, const QString &folder)
{
    const QString name = QFileDialog::getSaveFileName(nullptr, title, folder, filter);
    if (name.isEmpty())
        return std::u16string();
    const std::u16string wide = localFromQString(name);
    if (!localString::fileWrite(false, localString::possibleCodePage(codePage), text, wide))
        return std::u16string();
    return wide;
}

bool localVCL::colorFind(const std::u16string &name, QColor &color)
{
    const localColorName *row = localColorFind(name);
    if (row == nullptr)
        return false;
    color = QColor(QRgb(row->rgb));
    return true;
}

QPixmap localVCL::pixmapFromBase64(const std::u16string &base64)
{
    QPixmap pixmap;
    pixmap.loadFromData(QByteArray::fromBase64(localToQString(base64).toLatin1()));
    return pixmap;
}

std::u16string localVCL::pixmapToBase64(const QPixmap &pixmap)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    pixmap.save(&buffer, "PNG");
    return localFromQString(QString::fromLatin1(bytes.toBase64()));
}

localContextUTF8 *localVCL::globalContext()
{
    bool converted = false;
    const qlonglong address = qApp->property("localGlobalContext").toLongLong(&converted);
    if (converted && address != 0)
        return reinterpret_cast<localContextUTF8 *>(quintptr(address));
    localContextUTF8 *context = new localContextUTF8();
    qApp->setProperty("localGlobalContext", qlonglong(reinterpret_cast<quintptr>(context)));
    return context;
}
