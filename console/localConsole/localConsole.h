// The terminal of the program: a plain-text widget whose last line is the
// prompt and the only place the user can type. It keeps the command history
// on disk, maps the function keys to commands, shows everything written to
// std::cout above the input line, and keeps its size and place in
// localConsole.ini.
#ifndef LOCALCONSOLE_H
#define LOCALCONSOLE_H

#include <QPlainTextEdit>
#include <QPointer>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <streambuf>
#include <string>

class MyThread;
class localConsole;
class localConsoleLineHooks;
class localOperatorCompiled;
class localVclWidgetEditor;
class localContextUTF8;
class localValueList;

// The earlier direct form of the output stream: each completed line goes
// straight to the console's plain print. The console keeps one, but the
// stream that is installed on std::cout is localCoutBuffer.
class coutBufferClass : public std::streambuf {
public:
    explicit coutBufferClass(localConsole *owner);
    localConsole *console;
    std::string buffer;

protected:
    int_type overflow(int_type c) override;
};

class localConsole : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit localConsole(QWidget *parent = nullptr);
    ~localConsole() override;

    // A function key and the modifiers under which it sends its command.
    enum keyModifiers { keyModifiersNone, keyModifiersAltAny, keyModifiersCtrlOnly, keyModifiersShiftOnly };
    struct keyCommand {
        int key;
        keyModifiers modifiers;
        std::u16string command; // empty: the key does nothing
    };
    static constexpr int keyCommandCount = 15;

    std::unique_ptr<coutBufferClass> coutBuffer;
    std::u16string iniFileName;
    // The context typed commands run in.
    localContextUTF8 *context;
    bool busy = false;
    QStringList history; // oldest first
    // 0..history.size(); history.size() means the fresh line is shown.
    int32_t historyPosition = 0;
    std::u16string historyFileName;
    int32_t promptLength;
    QString promptCurrent;
    QString prompt;
    QString promptBusy;
    keyCommand keyCommands[keyCommandCount];

    // Runs one command line.
    void cmdExec(const QString &line);
    void promptPrint(bool newBlock, const std::u16string &text);
    // A result line, then a fresh prompt.
    void answerPrint(const QString &text);
    // A line, without a new prompt.
    void linePrint(const QString &text);
    void busySet(bool on);
    // Clears the input line (the "Wait!!!" line while busy), keeping its place.
    void inputLineRemove();
    void historyLoad();
    void historyUp();
    void historyDown();
    void enterKey();

    // Runs the help program in the global context.
    void commandHelpAsPrg();
    // Starts the program file named in `arguments` under the step debugger.
    void commandDebug(const std::u16string &arguments);

    // The session of the last DEBUG, and its editor (either goes null when
    // it ends or its window is closed).
    QPointer<MyThread> thread;
    QPointer<localVclWidgetEditor> debugEditor;

    // Applies the stored width and height.
    void iniLoad();
    // Places the window at the stored position and shows it in the
    // application's main window.
    void windowShow();

signals:
    // A STEP line, for the debugged program.
    void commandToThread(std::u16string line);

public slots:
    // Prints a line above the input line and keeps what the user has typed.
    void COUT(QString text);
    // A line from the worker; the console takes the text over.
    void fromThread(std::u16string *text);
    // Shows the operator about to run in the debugger's editor.
    void operChangedSlot(const localOperatorCompiled *record);
    // The debugged program has ended: one line says how, and the thread goes.
    void threadFinished();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    // Leaving the window is when the settings are saved.
    void focusOutEvent(QFocusEvent *event) override;
    // Pasting and dropping would write around the prompt.
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    std::unique_ptr<localConsoleLineHooks> line;

    void keyCommandsFill();
    // The command of a function key, or null when the key sends none.
    const std::u16string *keyCommandFind(int key, Qt::KeyboardModifiers modifiers) const;
    // Moves the cursor back into the input line when it is anywhere else.
    void inputCursorEnsure();
    void sizeApply(const localValueList &settings);
    static bool printable(const QKeyEvent *event);
    void scrollToEnd();
};

#endif
