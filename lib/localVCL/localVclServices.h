// The widget implementation of the core's service interface: real boxes,
// the wait cursor, event processing and the Esc question.
#ifndef LOCALVCLSERVICES_H
#define LOCALVCLSERVICES_H

#include "localServices.h"

class localVclServices : public localServices {
public:
    void messageBox(boxKind kind, const std::u16string &title, const std::u16string &text) override;
    bool questionBox(const std::u16string &title, const std::u16string &text) override;
    std::u16string openFileName(const std::u16string &title, const std::u16string &folder,
                                const std::u16string &filter) override;
    std::u16string saveFileName(const std::u16string &title, const std::u16string &folder,
                                const std::u16string &filter) override;
    void fatalBox(const std::u16string &title, const std::u16string &text) override;
    void waitCursorPush() override;
    void waitCursorPop() override;
    void processEvents() override;
    // Esc seen by the poll, and the user agreed to stop.
    bool escapePressed() override;
    void editFile(const std::u16string &fileName, int32_t codePage, bool builtIn) override;
    bool graphical() const override;

    // The question a running loop asks after Esc; true for Yes.
    static bool escapeQuestion();
};

// Installs the services and registers the graphical global functions and
// the list dialogs.
// Called once, after the application object exists.
void localVclInstall();

// Registers the handlers of the global functions whose work is a window.
void localVclGlobalFunctionsRegister();
// Registers the list dialogs of VALUELIST and VALUETABLE.
void localVclListDialogsRegister();

#endif
