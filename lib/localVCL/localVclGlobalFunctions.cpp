// The global functions whose work is a window or a picture: the core declares
// them, and these handlers answer them once the widget library is installed.
#include "localVclServices.h"

#include "localVCL.h"
#include "localVclDialogs.h"
#include "localVclHelpBrowser.h"

#include "localGlobalFunctions.h"
#include "localString.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>

namespace {

QString q(const std::u16string &text)
{
    return localToQString(text);
}

bool argumentsNumbers(localErrorType &status, localValueVector &arguments, size_t from)
{
    for (size_t i = from; i < arguments.size(); ++i)
        if (!localArgType(status, &arguments, i, localValueTypeNUM))
            return false;
    return true;
}

bool messageBox(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 1, 2) || !localArgType(status, &arguments, 0, localValueTypeSTR)
        || !argumentsNumbers(status, arguments, 1))
        return false;
    const int seconds = arguments.size() > 1 ? int(arguments[1]->localValueNumber) : 0;
    localVCL::applicationMessage(q(arguments[0]->localValueString), QString(), seconds);
    result->setVal(1.0);
    return true;
}

bool stringShow(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1))
        return false;
    QPlainTextEdit *text = new QPlainTextEdit();
    text->setPlainText(q(arguments[0]->toString()));
    localVCL::applicationShowWidget(text, QString(), false);
    result->setVal(1.0);
    return true;
}

bool fileChoose(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 0, 3))
        return false;
    for (size_t i = 0; i < arguments.size() && i < 2; ++i)
        if (!localArgType(status, &arguments, i, localValueTypeSTR))
            return false;
    const QString title = arguments.empty() ? QString() : q(arguments[0]->localValueString);
    QString directory = arguments.size() > 1 ? q(arguments[1]->localValueString) : QString();
    if (directory.isEmpty())
        directory = QDir::currentPath();
    const QString chosen = QFileDialog::getOpenFileName(nullptr, title, directory, QStringLiteral("*.*"));
    result->setString(localFromQString(chosen));
    if (!chosen.isEmpty() && arguments.size() > 1)
        arguments[1]->setString(localFromQString(QFileInfo(chosen).absolutePath()));
    return true;
}

bool dateChooseAsString(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 0, 1)
        || (!arguments.empty() && !localArgType(status, &arguments, 0, localValueTypeSTR)))
        return false;
    localCalendar calendar(arguments.empty() ? QString() : q(arguments[0]->localValueString));
    calendar.exec();
    result->setString(localFromQString(calendar.dateText()));
    return true;
}

bool pixmapShow(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const QPixmap pixmap = localVCL::pixmapFromBase64(arguments[0]->localValueString);
    if (pixmap.isNull()) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    QLabel *label = new QLabel();
    label->setPixmap(pixmap);
    label->resize(pixmap.size());
    localVCL::applicationShowWidget(label, QString(), false);
    result->setVal(1.0);
    return true;
}

struct graphicalRow {
    const char16_t *name; // either name of the row answers both
    localGlobalFunctionHandler handler;
};

const graphicalRow graphicalRows[] = {
    {u"___TEST__TEXTBROWSER", localVclTextBrowserOpen},
    {u"MESSAGEBOX", messageBox},
    {u"STRINGSHOW", stringShow},
    {u"FILECHOOSE", fileChoose},
    {u"DATECHOOSEASSTRING", dateChooseAsString},
    {u"PIXMAPASBASE64SHOW", pixmapShow},
};

} // namespace

void localVclGlobalFunctionsRegister()
{
    for (const graphicalRow &row : graphicalRows)
        localGlobalFunctionGraphicalSet(row.name, row.handler);
}
