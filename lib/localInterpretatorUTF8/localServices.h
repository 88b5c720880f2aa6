// What the language core needs from a screen, behind one small interface.
// The core only ever talks to localServices::instance(); the headless default
// prints where a window would appear. The graphical console installs its own
// implementation at start-up.
#ifndef LOCALSERVICES_H
#define LOCALSERVICES_H

#include <cstdint>
#include <string>

class localServices {
public:
    virtual ~localServices();

    // The kinds of a box with one OK button, as the message box knows them.
    enum boxKind { boxInformation, boxWarning, boxCritical, boxAbout };

    // A modal box with one OK button and no parent. Headless: title and text
    // are printed, each as a line.
    virtual void messageBox(boxKind kind, const std::u16string &title, const std::u16string &text);
    // A critical box (file write failures and the like).
    void criticalBox(const std::u16string &title, const std::u16string &text)
    {
        messageBox(boxCritical, title, text);
    }
    // A question with OK and Cancel, Cancel the default; true for OK.
    // Headless: printed like a box and answered with Cancel.
    virtual bool questionBox(const std::u16string &title, const std::u16string &text);
    // The name of an existing file to open, "" for Cancel. Headless: Cancel.
    virtual std::u16string openFileName(const std::u16string &title, const std::u16string &folder,
                                        const std::u16string &filter);
    // A name to save under, "" for Cancel. Headless: Cancel.
    virtual std::u16string saveFileName(const std::u16string &title, const std::u16string &folder,
                                        const std::u16string &filter);
    // The box of the fatal stop; shown just before the process ends.
    virtual void fatalBox(const std::u16string &title, const std::u16string &text);
    // The wait cursor around long work; nested calls pair up.
    virtual void waitCursorPush();
    virtual void waitCursorPop();
    // Lets pending non-input events through.
    virtual void processEvents();
    // True when the user pressed Esc since the last poll and, where a screen
    // can ask, agreed to stop the run.
    virtual bool escapePressed();
    // Opens a program file for editing: the built-in editor (EDIT COMMAND)
    // or the external one (MODIFY COMMAND). Headless: says that it needs the
    // graphical console.
    virtual void editFile(const std::u16string &fileName, int32_t codePage, bool builtIn);
    // True when a screen is there (graphical-only functions may run).
    virtual bool graphical() const;

    // The application's data file: the `dataFileName` setting (the
    // application object's property) or "../lib/Zakup200215.sqlite" relative
    // to the working directory of the moment; when that file does not exist,
    // the user is asked for one ("" for Cancel).
    static std::u16string applicationGetDataFullFileName();

    static localServices &instance();
    // Takes ownership; null restores the headless default.
    static void install(localServices *services);
};

// The wait cursor for the life of a scope: a compile stage, a form's module,
// a formula, a fetch.
class localWaitCursor {
public:
    localWaitCursor() { localServices::instance().waitCursorPush(); }
    ~localWaitCursor() { localServices::instance().waitCursorPop(); }
    localWaitCursor(const localWaitCursor &) = delete;
    localWaitCursor &operator=(const localWaitCursor &) = delete;
};

#endif
