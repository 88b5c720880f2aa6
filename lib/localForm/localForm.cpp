#include "localForm.h"

#include "localFormConstructor.h"
#include "localFormElement.h"
#include "localFormMetadata.h"
#include "localVclWidgetEdit.h"

#include "localContextUTF8.h"
#include "localGlobalFunctions.h"
#include "localInterpretatorUTF8.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"
#include "localSxl.h"
#include "localVCL.h"
#include "localValueList.h"
#include "localVclDialogs.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPixmap>

#include <iostream>
#include <unordered_map>

namespace {

// The form that made each form context: how a method copied into the
// context finds its form.
std::unordered_map<const localContextUTF8 *, localForm *> &creators()
{
    static std::unordered_map<const localContextUTF8 *, localForm *> map;
    return map;
}

void creatorSet(const localContextUTF8 *context, localForm *form)
{
    if (!creators().emplace(context, form).second)
        exit_FAILURE("localContextUTF8::ceatorSet() creator already set!");
}

// The entry of FORM's methods in the form context's function table.
bool formFunction(localErrorType &status, localContextUTF8 *context, void **, const std::u16string &name,
                  localValueVector *arguments, localValueDescription **result)
{
    localForm *form = localForm::creatorOf(context);
    if (form == nullptr) {
        std::cout << " Can not determine the FORM object!" << LOCAL_DIAG_TAIL;
        status = localErrorTypeINTERNAL;
        return false;
    }
    void *object = form;
    return localForm::classImplementationMethodFunction(status, context, &object, name, arguments, result);
}

bool methodToString(localErrorType &status, localForm &form, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(u"Форма adr [" + localAscii(std::to_string(uintptr_t(&form)).c_str()) + u"] ");
    return true;
}

bool methodRefresh(localErrorType &status, localForm &form, localValueVector &arguments,
                   localValueDescription *result)
{
    std::u16string pattern;
    if (!localArgCountRange(status, &arguments, 0, 1) || !localArgOptionalString(status, arguments, 0, pattern))
        return false;
    form.refresh(localString::toUpper(pattern));
    result->setVal(1);
    return true;
}

// Reading an attribute of a form reads the variable of its context.
bool attributeGet(localErrorType &status, localContextUTF8 *, void **object, const std::u16string &name,
                  const std::u16string &nameUpper, localValueDescription **result)
{
    localForm *form = static_cast<localForm *>(*object);
    localVariable *variable = form->context->variableLookup(name, nameUpper);
    if (variable == nullptr) {
        status = localErrorTypeATTRIBUTEunknown;
        return false;
    }
    variable->value->linkCounterInc();
    *result = variable->value;
    return true;
}

const localForm::member members[] = {
    {u"TOSTRING", u"СТРОКА", methodToString},
    {u"REFRESH", u"ОБНОВИТЬ", methodRefresh},
};

// The type names that decide whether a field's variable holds what its Type asks for.
std::u16string typeName(const localValueDescription *value)
{
    if (value->getType() == localValueTypeOBJ && value->localValueClass != nullptr)
        return value->localValueClass->className;
    return localValueTypeWord(value->getType());
}

bool isTableDocumentType(const std::u16string &type)
{
    const localClassDeclaration *declaration = localSxl::classDeclaration();
    return type == declaration->className || type == declaration->className2;
}

QString iconsFolder()
{
    // The working directory may have moved since the start: the absolute path.
    const QString program = QCoreApplication::applicationDirPath();
    const QString icons = program + QStringLiteral("/lib/icons");
    return QDir(icons).exists() ? icons : program;
}

// FORMOPEN and FORMEDIT share their checks of the file name.
bool formFileArgument(localErrorType &status, localValueVector &arguments, size_t most, std::u16string &name)
{
    if (!localArgCountRange(status, &arguments, 1, most) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    name = localString::trimLeft(arguments[0]->localValueString);
    if (!localString::fileExist(name)) {
        status = localErrorTypeFILEnotFound;
        return false;
    }
    return true;
}

bool formOpen(localErrorType &status, localContextUTF8 *, localValueVector &arguments, localValueDescription *result)
{
    std::u16string name;
    if (!formFileArgument(status, arguments, 2, name))
        return false;
    const localValueList *parameters = arguments.size() > 1 ? localValueList::fromValue(arguments[1]) : nullptr;
    localVCL::applicationShowWidget(new localForm(name, parameters),
                                    QStringLiteral("classImplementationMethodFunction"), false);
    result->setVal(1);
    return true;
}

bool formEdit(localErrorType &status, localContextUTF8 *, localValueVector &arguments, localValueDescription *result)
{
    std::u16string name;
    if (!formFileArgument(status, arguments, 1, name))
        return false;
    localFormConstructor *constructor = new localFormConstructor;
    constructor->load(name);
    localVCL::applicationShowWidget(constructor, QStringLiteral("classImplementationMethodFunction"), false);
    result->setVal(1);
    return true;
}

} // namespace

localForm::localForm(const std::u16string &fileName, const localValueList *parameters, QWidget *parent)
    : QWidget(parent)
{
    const localFormMetadata metadata(fileName);
    build(metadata, parameters);
}

localForm::localForm(const QDomDocument &document, const localValueList *parameters, QWidget *parent)
    : QWidget(parent)
{
    const localFormMetadata metadata(document);
    build(metadata, parameters);
}

localForm::localForm(const localFormMetadata &metadata, const localValueList *parameters, QWidget *parent)
    : QWidget(parent)
{
    build(metadata, parameters);
}

localForm::~localForm()
{
    // The widgets read the context while they live.
    qDeleteAll(findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly));
    creators().erase(context);
    delete context;
}

void localForm::build(const localFormMetadata &metadata, const localValueList *parameters)
{
    initialise(parameters);
    moduleRun(metadata.module);
    elementsMake(metadata);
    resize(metadata.size());
    valueModifiedSlot();
    repaint();
    resize(frameSize());
    localErrorType status = localErrorTypeOK;
    eventFormAfterCreateRun(status);
}

void localForm::initialise(const localValueList *parameters)
{
    // The form's own link: cells that hold the form never end it, its window does.
    objectLinks = 1;
    context = new localContextUTF8(localContextUTF8::globalContext);
    creatorSet(context, this);
    for (const localClassMember *member : classDeclaration()->members)
        if (member->EXEC != nullptr && !member->name.empty() && member->name != u"~")
            context->functionRegister(member->name, formFunction);
    if (parameters != nullptr)
        for (const localValueListItem &item : parameters->items)
            localValueDescription::localValueCopy(context->variableCreate(context->variableNormalName(item.presentation))->value,
                                                  &item.value);

    const QPixmap icons(iconsFolder() + QStringLiteral("/204.bmp"));
    userSettingsSaveAct = new QAction(QIcon(icons.copy(16, 0, 16, 16)), QStringLiteral("&userSettingsSave"), this);
    userSettingsSaveAct->setStatusTip(QStringLiteral("userSettingsSavegrid"));
    connect(userSettingsSaveAct, &QAction::triggered, this, &localForm::userSettingsSaveSlot);
    userSettingsReadAct = new QAction(QIcon(icons.copy(0, 0, 16, 16)), QStringLiteral("&userSettingsReadAct"), this);
    userSettingsReadAct->setStatusTip(QStringLiteral("userSettingsReadActgrid"));
    connect(userSettingsReadAct, &QAction::triggered, this, &localForm::userSettingsReadSlot);
    // The window's tool bar shows the widget's actions: read, then save.
    addAction(userSettingsReadAct);
    addAction(userSettingsSaveAct);
    resize(200, 200);
    modified = false;
    setAutoFillBackground(true);
    setFocusPolicy(Qt::WheelFocus);
}

void localForm::moduleRun(const std::u16string &module)
{
    logWrite(u"Начинаю выполнять!!!");
    localErrorType status = localErrorTypeOK;
    bool done = false;
    {
        localWaitCursor wait;
        done = textExec(status, module, context);
    }
    // A failing module stops nothing: the widgets are built anyway.
    logWrite(done ? u"Выполнил!!!" : u"НЕ Выполнил!!!");
}

void localForm::elementsMake(const localFormMetadata &metadata)
{
    for (const localFormMetadataWidget *record : metadata.widgets) {
        if (record->kind == localFormWidgetEdit) {
            editMake(*record);
            continue;
        }
        localFormLayoutDesignerElementWidget *element = new localFormLayoutDesignerElementWidget(
            record->kind, localFormLayoutDesignerElementWidget::modeRun, QRect(record->x, record->y, record->w, record->h),
            this);
        connect(element, &localFormLayoutDesignerElementWidget::varValueChanged, this, &localForm::valueModifiedSlot);
        element->context = context;
        if (record->kind == localFormWidgetTable) {
            element->tableDetailsSet(record->details);
            continue;
        }
        element->identifier = record->identifier;
        const int32_t mask = localFormPropertyMaskOf(record->kind);
        if (mask & localFormPropertyCaption)
            element->captionSet(record->caption);
        if (mask & localFormPropertyFormula)
            element->formula = record->formula;
        if (mask & localFormPropertyFont)
            element->fontSet(record->font, record->fontColor);
        if (mask & localFormPropertyImage)
            element->pixmapSet(localVCL::pixmapFromBase64(record->imageAsBase64));
    }
}

void localForm::editMake(const localFormMetadataWidget &record)
{
    // Bound after the module ran, so a variable the module made keeps its type.
    if (context->variableFind(record.identifier) == nullptr) {
        localValueDescription *value =
            context->variableCreate(context->variableNormalName(localString::trim(record.identifier)))->value;
        if (record.type == u"Число")
            value->setVal(0);
        else
            value->setString(std::u16string());
    }
    if (isTableDocumentType(record.type)) {
        localVariable *variable = context->variableFind(record.identifier);
        if (typeName(variable->value) != localSxl::classDeclaration()->className)
            localSxl::putInCell(new localSxl(context), variable->value);
    }
    localVclWidgetEdit *edit = localFormEditWidgetCreate(record.identifier, context);
    edit->formula = record.formula;
    edit->setParent(this);
    edit->setGeometry(record.x, record.y, record.w, record.h);
}

localVclWidgetEdit *localForm::localFormEditWidgetCreate(const std::u16string &identifier,
                                                         localContextUTF8 *editContext)
{
    localVclWidgetEdit *edit = new localVclWidgetEdit(identifier, editContext, this);
    connect(edit, &localVclWidgetEdit::varValueChanged, this, &localForm::valueModifiedSlot);
    return edit;
}

bool localForm::eventFormAfterCreateRun(localErrorType &status)
{
    const localContextUTF8 *foundIn = nullptr;
    std::u16string name = u"СОБЫТИЕФОРМАПРИОТКРЫТИИ";
    if (context->functionLookup(name, &foundIn) == nullptr) {
        // The English event counts only when the form's own module defines it.
        name = u"EVENTFORMAFTERCREATE";
        if (context->functionLookup(name, &foundIn) == nullptr || foundIn != context)
            return true;
    }
    localWaitCursor wait;
    localValueVector arguments;
    localValueDescription *result = nullptr;
    status = localErrorTypeOK;
    context->funcExec(status, name, &arguments, &result);
    localValueRelease(result);
    return true;
}

void localForm::valueModifiedSlot()
{
    if (!modified) {
        modified = true;
        QMdiArea *area = localVCL::mdiArea();
        QWidget *titled = area != nullptr ? area->currentSubWindow() : window();
        if (titled != nullptr)
            titled->setWindowTitle(QStringLiteral("[!] ") + titled->windowTitle());
    }
    refresh(std::u16string());
}

void localForm::refresh(const std::u16string &patternUpper)
{
    for (localVclWidgetEdit *edit : findChildren<localVclWidgetEdit *>()) {
        edit->varRead();
        edit->repaint();
    }
    for (localFormLayoutDesignerElementWidget *element : findChildren<localFormLayoutDesignerElementWidget *>())
        if (patternUpper.empty() || identifierMatches(patternUpper, localString::toUpper(element->identifier)))
            element->repaint();
}

bool localForm::identifierMatches(const std::u16string &patternUpper, const std::u16string &identifierUpper)
{
    for (size_t i = 0;; ++i) {
        if (i < patternUpper.size() && patternUpper[i] == u'*')
            return true;
        if (i == patternUpper.size() || i == identifierUpper.size())
            return i == patternUpper.size() && i == identifierUpper.size();
        if (patternUpper[i] != u'?' && patternUpper[i] != identifierUpper[i])
            return false;
    }
}

bool localForm::closeEventBefor()
{
    return localServices::instance().questionBox(u"localForm::closeEventBefor()", u"Close?");
}

localForm *localForm::creatorOf(const localContextUTF8 *context)
{
    const auto found = creators().find(context);
    return found != creators().end() ? found->second : nullptr;
}

void localForm::userSettingsReadSlot()
{
    logWrite(u"localForm::userSettingsReadSlot()");
}

void localForm::userSettingsSaveSlot()
{
    logWrite(u"localForm::userSettingsSaveSlot()");
    localDialogFormSettingsSave dialog(this);
    dialog.exec();
}

bool localForm::eventFilter(QObject *, QEvent *)
{
    return false;
}

void localForm::focusInEvent(QFocusEvent *)
{
    // The form holds no input of its own.
    focusNextPrevChild(true);
}

void localForm::paintEvent(QPaintEvent *event)
{
    for (localVclWidgetEdit *edit : findChildren<localVclWidgetEdit *>())
        edit->varRead();
    QWidget::paintEvent(event);
}

const localNativeClassShape<localForm> &localForm::classShape()
{
    static const localNativeClassShape<localForm> shape = {u"FORM",
                                                           u"ФОРМА",
                                                           nullptr,
                                                           u"класс Форма",
                                                           "localForm::classImplementationMethodFunction()",
                                                           members,
                                                           std::size(members),
                                                           attributeGet};
    return shape;
}

bool localForm::construct(localErrorType &, localContextUTF8 *, localValueVector *, localValueDescription *)
{
    std::cout << " localForm::classImplementationMethodFunction() CONSTRUNCTOR not AVAILABLE!" << LOCAL_DIAG_TAIL;
    return true;
}

void localFormInstall()
{
    localGlobalFunctionGraphicalSet(u"FORMOPEN", formOpen);
    localGlobalFunctionGraphicalSet(u"FORMEDIT", formEdit);
}
