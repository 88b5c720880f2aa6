// The two debuggers of the console. DEBUG runs a program on a worker thread
// that waits before each operator until the console sends STEP; TRACE runs
// it on the main thread and shows each operator for a second. Both put their
// own execution function into every compiled operator and move an editor's
// cursor to the operator at hand; a program run any other way never meets
// them.
#ifndef LOCALDEBUGGER_H
#define LOCALDEBUGGER_H

#include "localOperatorCompiled.h"

#include <QPointer>
#include <QThread>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class localVclWidgetEditor;

Q_DECLARE_METATYPE(const localOperatorCompiled *)
Q_DECLARE_METATYPE(std::u16string *)
Q_DECLARE_METATYPE(std::u16string)

// Registers the argument types of the signals that cross between the worker
// and the console; once per process.
void localDebuggerRegisterTypes();

// True when an operator gives the debugger no reason to stop: the empty
// operator, and a block whose text is only blanks, tabs and line ends.
bool localDebuggerSkips(const localOperatorCompiled *record);

class MyThread : public QThread {
    Q_OBJECT
public:
    MyThread(std::u16string programText, localContextUTF8 *programContext);
    ~MyThread() override;

    std::u16string command; // the last line received from the console
    std::u16string program;
    localContextUTF8 *context;
    // How the program ended, read once the thread has finished.
    localErrorType status = localErrorTypeOK;

    // Compiles and runs `text`, reporting a failure.
    bool call(localErrorType &callStatus, const std::u16string &text, localContextUTF8 *callContext);
    // The execution function of every operator of the program: announces the
    // operator, waits for STEP where it must, then executes it.
    static bool execute(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                        localValueVector *arguments, localValueDescription **result);

signals:
    void operChanged(const localOperatorCompiled *record);
    void toConsole(std::u16string *text);
    void toConsoleAsQString(QString text);
    void toLoop();

public slots:
    // Lives on the main thread: STEP stores the line and lets a waiting
    // operator go.
    void fromConsole(std::u16string line);

protected:
    void run() override;

private:
    // The compiled program stays until the thread object goes, so that the
    // operators announced to the console stay valid while the queued
    // announcements are delivered.
    std::unique_ptr<localOperatorCompiled> root;
};

class localProcess : public QObject {
    Q_OBJECT
public:
    struct frame {
        localContextUTF8 *context;
        const localOperatorCompiled *record;
        void *reserved;
        intptr_t index; // from 1
    };

    std::vector<frame> frames;
    QPointer<localVclWidgetEditor> editor;
    int32_t delay = 1000; // milliseconds each operator is shown

    // Runs the program file named first in `arguments` slowly, showing it in
    // an editor. False with status 37 and no message when no name is given.
    bool trace(localErrorType &status, const std::u16string &arguments, localContextUTF8 *context);
    static bool execute(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                        localValueVector *arguments, localValueDescription **result);
    // Prints the operator, puts the editor's cursor on it and holds the
    // main thread for `delay`.
    void operShow(const localOperatorCompiled *record);
};

// A program editor placed as both debuggers show it: half the screen's width
// and 95 % of its height, at the right half of the screen.
localVclWidgetEditor *localDebuggerEditor(const std::u16string &text, const QString &title);

// Reads the program file named at the start of `arguments` (UTF-8);
// false with the status when there is no name or no such file.
bool localDebuggerProgramRead(localErrorType &status, const std::u16string &arguments, std::u16string &fileName,
                              std::u16string &text);

#endif
