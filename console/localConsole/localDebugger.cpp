#include "localDebugger.h"

#include "localVclWidgetEditor.h"

#include "localInterpretatorUTF8.h"
#include "localNativeClass.h"
#include "localString.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QScreen>

#include <iostream>

namespace {

// What "thisThread" and "thisProcess" hold: the debugger behind the running
// program. The pointer goes null when the debugger goes, so a variable that
// outlives its session answers nothing instead of a dangling object.
class localDebuggerObject : public localNativeClass<localDebuggerObject> {
public:
    QPointer<QObject> target;

    static const localNativeClassShape<localDebuggerObject> &classShape()
    {
        static const localNativeClassShape<localDebuggerObject> shape = {
            u"DEBUGGER", u"ОТЛАДЧИК", nullptr, u"класс ОТЛАДЧИК",
            "localDebuggerObject::classImplementationMethodFunction()", nullptr, 0};
        return shape;
    }
};

void debuggerDeclare(localContextUTF8 *context, const std::u16string &name, QObject *target)
{
    localValueDescription *cell = localValueNew();
    localDebuggerObject *object = localDebuggerObject::putInCell(new localDebuggerObject, cell);
    object->target = target;
    context->variableSet(name, cell);
    localValueRelease(cell);
}

template <class T>
T *debuggerFind(localContextUTF8 *context, const std::u16string &name)
{
    localVariable *variable = context->variableFind(name);
    localDebuggerObject *object = variable != nullptr ? localDebuggerObject::fromValue(variable->value) : nullptr;
    return object != nullptr ? qobject_cast<T *>(object->target.data()) : nullptr;
}

void statusPrint(localErrorType status, const char *routine, int line)
{
    std::string out = localNarrow(localErrorText(status));
    out += localDiagTail(routine, __FILE__, line);
    std::cout << out << std::flush;
}

bool blank(const std::u16string &text)
{
    for (char16_t c : text)
        if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\r')
            return false;
    return true;
}

} // namespace

void localDebuggerRegisterTypes()
{
    qRegisterMetaType<const localOperatorCompiled *>("const localOperatorCompiled*");
    qRegisterMetaType<std::u16string *>("std::u16string*");
    qRegisterMetaType<std::u16string>("std::u16string");
}

bool localDebuggerSkips(const localOperatorCompiled *record)
{
    return record->type == localCompiledOperatorTypeNONE
           || (record->type == localCompiledOperatorTypeBLOCK && blank(record->expression));
}

bool localDebuggerProgramRead(localErrorType &status, const std::u16string &arguments, std::u16string &fileName,
                              std::u16string &text)
{
    size_t position = 0;
    localInterpretatorUTF8::scanStringSkipSpace(arguments, position);
    status = localErrorTypeOK;
    if (!localInterpretatorUTF8::scanStringGetFileName(status, arguments, position, fileName))
        return false;
    if (fileName.empty()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    return localString::fileRead(status, fileName, text, u"Utf8");
}

localVclWidgetEditor *localDebuggerEditor(const std::u16string &text, const QString &title)
{
    localVclWidgetEditor *editor = new localVclWidgetEditor();
    editor->setPlainText(localToQString(text));
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    editor->resize(available.width() / 2, available.height() * 95 / 100);
    QWidget *frame = editor->editorShow(title);
    frame->move(available.width() / 2, 10);
    return editor;
}

// --- DEBUG ----------------------------------------------------------------------

MyThread::MyThread(std::u16string programText, localContextUTF8 *programContext)
    : program(std::move(programText)), context(programContext)
{
    debuggerDeclare(context, u"thisThread", this);
}

MyThread::~MyThread() = default;

void MyThread::run()
{
    status = localErrorTypeOK;
    const std::u16string text = program;
    // A run that ends well leaves the RETURN of its last operator behind.
    if (call(status, text, context))
        status = localErrorTypeOK;
}

bool MyThread::call(localErrorType &callStatus, const std::u16string &text, localContextUTF8 *callContext)
{
    root.reset(new localOperatorCompiled(&MyThread::execute));
    size_t position = 0;
    localOperatorCompiled *block = root.get();
    if (!textCompile(callStatus, text, position, &block)) {
        statusPrint(callStatus, "MyThread::call", __LINE__);
        return false;
    }
    debuggerDeclare(callContext, u"thisProcess", this);
    localValueVector noArguments;
    localValueDescription *result = nullptr;
    const bool ran = root->execute(callStatus, callContext, root.get(), &noArguments, &result);
    localValueRelease(result);
    if (!ran) {
        statusPrint(callStatus, "MyThread::call", __LINE__);
        return false;
    }
    return true;
}

bool MyThread::execute(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                       localValueVector *arguments, localValueDescription **result)
{
    localResultMustBeNull(result, "MyThread::execute()");
    MyThread *thread = debuggerFind<MyThread>(context, u"thisThread");
    if (thread != nullptr) {
        // The loop listens before the console hears of the operator, so a
        // STEP typed at once is not lost.
        QEventLoop loop;
        const bool pauses = !localDebuggerSkips(record);
        if (pauses)
            connect(thread, &MyThread::toLoop, &loop, &QEventLoop::quit);
        emit thread->operChanged(record);
        if (pauses)
            loop.exec();
    }
    *result = nullptr;
    return localOperatorCompiled::executeRecord(status, context, record, arguments, result);
}

void MyThread::fromConsole(std::u16string line)
{
    command = std::move(line);
    emit toLoop();
}

// --- TRACE ----------------------------------------------------------------------

bool localProcess::trace(localErrorType &status, const std::u16string &arguments, localContextUTF8 *context)
{
    std::u16string fileName;
    std::u16string text;
    if (!localDebuggerProgramRead(status, arguments, fileName, text)) {
        if (fileName.empty())
            return false;
        std::cout << "Error! \n";
        statusPrint(status, "localProcess::trace", __LINE__);
        return false;
    }
    editor = localDebuggerEditor(text, localToQString(fileName));

    localOperatorCompiled root(&localProcess::execute);
    size_t position = 0;
    localOperatorCompiled *block = &root;
    if (!textCompile(status, text, position, &block)) {
        statusPrint(status, "localProcess::trace", __LINE__);
        return false;
    }
    std::cout << "trace СТАРТ!!!!!!: " << LOCAL_DIAG_TAIL;
    frames.push_back({context, &root, nullptr, 1});
    if (root.children.empty()) {
        status = localErrorTypeRANGE;
        statusPrint(status, "localProcess::trace", __LINE__);
        return false;
    }
    if (editor != nullptr) {
        QTextCursor cursor = editor->textCursor();
        cursor.setPosition(root.children[0].position);
        editor->setTextCursor(cursor);
    }

    std::cout << "СТАРТ!!!!!!: " << LOCAL_DIAG_TAIL;
    debuggerDeclare(context, u"thisProcess", this);
    std::cout << localNarrow(context->variableToString(u"thisProcess")) << "\n";
    localVariable *variable = context->variableFind(u"thisProcess");
    std::cout << variable->value->localValueObject << " " << static_cast<void *>(this) << LOCAL_DIAG_TAIL;
    std::cout << "СТАРТ!!!!!!: " << LOCAL_DIAG_TAIL << std::flush;

    localValueVector noArguments;
    localValueDescription *result = nullptr;
    const bool ran = root.execute(status, context, &root, &noArguments, &result);
    localValueRelease(result);
    if (!ran)
        statusPrint(status, "localProcess::trace", __LINE__);
    return ran;
}

bool localProcess::execute(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                           localValueVector *arguments, localValueDescription **result)
{
    if (localProcess *process = debuggerFind<localProcess>(context, u"thisProcess"))
        process->operShow(record);
    return localOperatorCompiled::executeRecord(status, context, record, arguments, result);
}

void localProcess::operShow(const localOperatorCompiled *record)
{
    std::cout << record->position << " type=" << record->type << " operShow!!!!!!: " << LOCAL_DIAG_TAIL
              << std::flush;
    if (localDebuggerSkips(record))
        return;
    if (editor != nullptr) {
        QTextCursor cursor = editor->textCursor();
        cursor.setPosition(record->position, QTextCursor::MoveAnchor);
        editor->setTextCursor(cursor);
    }
    // A busy wait, as designed: the window stands still while the reader
    // looks at the operator.
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < delay) {
    }
}
