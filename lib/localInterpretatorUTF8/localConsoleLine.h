// What happens to one typed console line: a few words are the console's own,
// "# expr" is evaluated at once, everything else goes to the immediate
// statements. The graphical console and the headless runner share this
// classification and differ only in the hooks.
#ifndef LOCALCONSOLELINE_H
#define LOCALCONSOLELINE_H

#include "localContextUTF8.h"

#include <string>

class localConsoleLine {
public:
    explicit localConsoleLine(localContextUTF8 *lineContext);
    virtual ~localConsoleLine();

    localContextUTF8 *context;

    // Handles one line. Returns the status the line left: 5 when it asked
    // to leave (after "Good bye!"). `succeeded` tells whether the
    // interpreter reported success for lines that reach it.
    localErrorType cmdExec(const std::u16string &line, bool *succeeded = nullptr);

protected:
    // Prints an answer and ends the line (the console restores its prompt).
    virtual void answerPrint(const std::u16string &text);
    // Removes the busy line under the cursor (the "# expr" path).
    virtual void busyLineRemove() {}
    // After "Good bye!": the console closes its window.
    virtual void leave() {}

    // The console's own words. The defaults are those of a run without a
    // screen: the graphical ones say that they need the console.
    virtual void commandHelpAsPrg();
    virtual void commandDebug(const std::u16string &arguments);
    virtual void commandStep(const std::u16string &line);
    virtual void commandTrace(const std::u16string &arguments);
    virtual void commandEdit(const std::u16string &fileName, int32_t codePage);
    virtual void commandCleaMemo(const std::u16string &mask);
    virtual void displayMemory(const std::u16string &mask);
    virtual void displayClass();
    virtual void tryExample();

    // One line saying that `what` needs the graphical console.
    static void graphicalOnly(const char *what);

private:
    bool hashLine(const std::u16string &line);
    bool retiredEdit(const std::u16string &line, size_t position);
    void syntaxMessage(const std::u16string &word);
};

#endif
