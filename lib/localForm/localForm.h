// The run-time form: a window whose module runs once in the form's own
// context, whose fields bind to that context's variables by name, and whose
// formulas and buttons are language text run in it. The language sees the
// form as an object of the class FORM / ФОРМА.
#ifndef LOCALFORM_H
#define LOCALFORM_H

#include "localNativeClass.h"

#include <QWidget>

#include <cstdint>
#include <string>

class QAction;
class QDomDocument;
class localFormMetadata;
class localFormMetadataWidget;
class localValueList;
class localVclWidgetEdit;

class localForm : public QWidget, public localNativeClass<localForm> {
    Q_OBJECT
public:
    QAction *userSettingsSaveAct = nullptr;
    QAction *userSettingsReadAct = nullptr;
    // Owned; made with the form, deleted with it.
    localContextUTF8 *context = nullptr;
    bool modified = false;

    // Each reads the metadata its way and then builds the same form; the
    // parameters (may be null) become variables of the form's context.
    localForm(const std::u16string &fileName, const localValueList *parameters, QWidget *parent = nullptr);
    localForm(const QDomDocument &document, const localValueList *parameters, QWidget *parent = nullptr);
    localForm(const localFormMetadata &metadata, const localValueList *parameters, QWidget *parent = nullptr);
    ~localForm() override;

    virtual localVclWidgetEdit *localFormEditWidgetCreate(const std::u16string &identifier,
                                                          localContextUTF8 *editContext);
    // СОБЫТИЕФОРМАПРИОТКРЫТИИ from the form's context or above it, else
    // EVENTFORMAFTERCREATE from the form's own context only.
    virtual bool eventFormAfterCreateRun(localErrorType &status);

    // Re-reads every field and repaints the elements whose identifier
    // matches `patternUpper` (empty: all).
    void refresh(const std::u16string &patternUpper);
    // Asks whether the form may close; true for yes. Invokable, so that a
    // main window that knows forms only by class name can ask.
    Q_INVOKABLE bool closeEventBefor();

    // The pattern of REFRESH: "*" ends the match with success, "?" takes any
    // one character, and both texts must run out together otherwise.
    static bool identifierMatches(const std::u16string &patternUpper, const std::u16string &identifierUpper);
    // The form that made `context`, or null.
    static localForm *creatorOf(const localContextUTF8 *context);

    static const localNativeClassShape<localForm> &classShape();
    static bool construct(localErrorType &status, localContextUTF8 *caller, localValueVector *arguments,
                          localValueDescription *result);

signals:
    void varValueChanged();

public slots:
    void valueModifiedSlot();
    void userSettingsReadSlot();
    void userSettingsSaveSlot();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void build(const localFormMetadata &metadata, const localValueList *parameters);
    void initialise(const localValueList *parameters);
    void moduleRun(const std::u16string &module);
    void elementsMake(const localFormMetadata &metadata);
    void editMake(const localFormMetadataWidget &record);
};

// Registers FORMOPEN and FORMEDIT. Call it after the widget library's install.
void localFormInstall();

#endif
