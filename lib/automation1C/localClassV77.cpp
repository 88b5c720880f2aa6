#include "localClassV77.h"

#include "localAutomation.h"

#include "localContextUTF8.h"
#include "localGlobalFunctions.h"
#include "localOperatorCompiled.h"
#include "localString.h"

#include <iterator>

namespace {

const QString applicationProgId = QStringLiteral("V77.Application");
const std::u16string createObjectSignature = u"CreateObject(const QVariant&)";
const std::u16string executeBatchSignature = u"ExecuteBatch(const QVariant&)";
const std::u16string attributeSignature = u"ПолучитьАтрибут(/const QString&/)";
const std::u16string bookkeepingTail = u"] для функции BOOKKEEPINGTOTALSDOQUERY215";

QVariant variantOf(const std::u16string &text)
{
    return QVariant(localToQString(text));
}

std::u16string textOf(const QVariant &value)
{
    return localFromQString(value.toString());
}

// Exactly `count` arguments, all strings.
bool stringArguments(localErrorType &status, const localValueVector &arguments, size_t count)
{
    if (!localArgCount(status, &arguments, count))
        return false;
    for (size_t i = 0; i < count; ++i)
        if (!localArgType(status, &arguments, i, localValueTypeSTR))
            return false;
    return true;
}

// A sub-object as a new V77 value of the same connection; status 28 when none came.
bool subObjectResult(localErrorType &status, localClassV77 &v77, const std::u16string &signature,
                     const QVariantList &arguments, localValueDescription *result)
{
    localAutomationObject *sub = v77.subObjectQuery(signature, arguments);
    if (sub == nullptr) {
        status = localErrorTypeOBJECTcreate;
        return false;
    }
    localClassV77 *made = new localClassV77(sub, v77.root);
    made->connected = true;
    localClassV77::putInCell(made, result);
    return true;
}

bool methodToString(localErrorType &status, localClassV77 &, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(u"объект класса [V77] ");
    return true;
}

bool methodConnect(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                   localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 1, 4) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    bool monopoly = false;
    if (arguments.size() > 1) {
        const int32_t kind = arguments[1]->getType();
        if (kind != localValueTypeNUM && kind != localValueTypeBOO) {
            status = localErrorTypePARAMtype;
            return false;
        }
        monopoly = arguments[1]->localValueNumber > 0.0;
    }
    std::u16string user;
    std::u16string password;
    if (!localArgOptionalString(status, arguments, 2, user) || !localArgOptionalString(status, arguments, 3, password))
        return false;
    const std::u16string &path = arguments[0]->localValueString;
    const std::u16string tail
        = std::u16string(monopoly ? u"в МОНОПОЛЬНОМ режиме" : u"") + u" к БД по адресу :[" + path + u"]";
    logWriteStamped(u"Пытаемся подключиться " + tail);
    v77.connected = true;

    std::u16string commandLine = u"/D " + path;
    if (monopoly)
        commandLine += u" /M ";
    if (!user.empty())
        commandLine += u" /N" + user;
    if (!password.empty())
        commandLine += u" /P" + password;
    const QVariant role = v77.call(u"RMTrade");
    v77.call(u"Initialize(const QVariant&, const QVariant&, const QVariant&)",
             {role, variantOf(commandLine), QVariant(QString())});

    // The one check of a connection: the base can make an object.
    std::unique_ptr<localAutomationObject> probe(v77.subObjectQuery(createObjectSignature, {QStringLiteral("Text")}));
    if (probe == nullptr) {
        logWriteStamped(u"Не получилось подключиться " + tail);
        v77.connected = false;
        result->setBool(false);
        return true;
    }
    logWriteStamped(u"Удачно подключился " + tail);
    result->setBool(true);
    return true;
}

bool methodIsConnected(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setBool(v77.connected);
    return true;
}

bool methodCreateObject(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                        localValueDescription *result)
{
    return stringArguments(status, arguments, 1)
        && subObjectResult(status, v77, createObjectSignature, {variantOf(arguments[0]->localValueString)}, result);
}

// A call with one string argument whose answer is read as a string.
bool stringCall(localErrorType &status, localClassV77 &v77, const std::u16string &signature,
                localValueVector &arguments, localValueDescription *result)
{
    if (!stringArguments(status, arguments, 1))
        return false;
    result->setString(textOf(v77.call(signature, {variantOf(arguments[0]->localValueString)})));
    return true;
}

bool methodEvaluate(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                    localValueDescription *result)
{
    return stringCall(status, v77, u"EvalExpr(const QVariant&)", arguments, result);
}

bool methodExecuteBatch(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                        localValueDescription *result)
{
    return stringCall(status, v77, executeBatchSignature, arguments, result);
}

bool methodGetAttrib(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                     localValueDescription *result)
{
    return stringCall(status, v77, attributeSignature, arguments, result);
}

bool methodGetAttribAsObject(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                             localValueDescription *result)
{
    return stringArguments(status, arguments, 1)
        && subObjectResult(status, v77, attributeSignature, {variantOf(arguments[0]->localValueString)}, result);
}

// GETITEM and SELECTITEMS: "1", or "0" when the number 0 is given; the answer as an integer.
bool itemCall(localErrorType &status, localClassV77 &v77, const std::u16string &signature, localValueVector &arguments,
              localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 0, 1)
        || (!arguments.empty() && !localArgType(status, &arguments, 0, localValueTypeNUM)))
        return false;
    const bool zero = !arguments.empty() && arguments[0]->localValueNumber == 0.0;
    result->setVal(v77.call(signature, {QString(zero ? QStringLiteral("0") : QStringLiteral("1"))}).toInt());
    return true;
}

bool methodGetItem(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                   localValueDescription *result)
{
    return itemCall(status, v77, u"ПолучитьЭлемент(/const QString&/)", arguments, result);
}

bool methodSelectItems(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                       localValueDescription *result)
{
    return itemCall(status, v77, u"ВыбратьЭлементы(/const QString&/)", arguments, result);
}

bool methodFindByCode(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!stringArguments(status, arguments, 1))
        return false;
    const QVariant answer = v77.call(u"НайтиПоКоду(/const QString&/)", {variantOf(arguments[0]->localValueString)});
    result->setVal(answer.toInt());
    return true;
}

// An argument of METHODCALL as the platform takes it: strings, numbers and
// V77 objects only.
bool methodArgument(localErrorType &status, const localValueDescription *value, QVariant &converted)
{
    if (value->getType() == localValueTypeSTR) {
        converted = variantOf(value->localValueString);
        return true;
    }
    if (value->getType() == localValueTypeNUM) {
        converted = QVariant(value->localValueNumber);
        return true;
    }
    if (const localClassV77 *other = localClassV77::fromValue(value)) {
        converted = other->object != nullptr ? other->object->asArgument() : QVariant();
        return true;
    }
    status = localErrorTypePARAMtype;
    return false;
}

bool methodMethodCall(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 1, 2) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const std::u16string &name = arguments[0]->localValueString;
    if (arguments.size() == 1) {
        result->setString(textOf(v77.call(name + u"()")));
        return true;
    }
    QVariant argument;
    if (!methodArgument(status, arguments[1], argument))
        return false;
    result->setString(textOf(v77.call(name + u"(/const QVariant&/)", {argument})));
    return true;
}

bool methodQuit(localErrorType &status, localClassV77 &v77, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    if (v77.connected)
        v77.call(executeBatchSignature, {QStringLiteral("ExitSystem()")});
    v77.connected = false;
    v77.object.reset();
    result->setBool(true);
    return true;
}

// YYYYMMDD to DD.MM.YY; any other length is logged as doubtful and gives "".
std::u16string bookkeepingDate(const char16_t *which, const std::u16string &text)
{
    if (text.size() != 8) {
        logWriteStamped(u"Сомнительный параметр " + std::u16string(which) + u" [" + text + bookkeepingTail);
        return std::u16string();
    }
    logWriteStamped(std::u16string(which) + u" [" + text + bookkeepingTail);
    return text.substr(6, 2) + u"." + text.substr(4, 2) + u"." + text.substr(2, 2);
}

// Tied to one configuration of the base: its subconto "Товары", its query
// and its accounts.
bool methodBookkeepingTotals(localErrorType &status, localClassV77 &v77, localValueVector &arguments,
                             localValueDescription *result)
{
    if (!stringArguments(status, arguments, 3))
        return false;
    std::u16string date1 = bookkeepingDate(u"date1", arguments[0]->localValueString);
    std::u16string date2 = bookkeepingDate(u"date2", arguments[1]->localValueString);
    v77.call(u"использоватьСубконто(/const QVariant&/,/const QVariant&/,/const QVariant&/,/const QVariant&/)",
             {QStringLiteral("Товары"), 0, 1, 1});
    if (date1.empty())
        date1 = u"01.01.20";
    if (date2.empty())
        date2 = u"31.01.20";
    const std::u16string &account = arguments[2]->localValueString;
    if (account.empty()) {
        logWriteStamped(u"Расчет по группе счетов пока не реализован!!");
        status = localErrorTypeINTERNAL;
        return false;
    }
    logWriteStamped(u"Счет [" + account + bookkeepingTail);
    const QVariant answer = v77.call(u"ВыполнитьЗапрос(/const QString&/,/const QString&/,/const QString&/,,2)",
                                     {variantOf(date1), variantOf(date2), variantOf(account), QVariant(QString())});
    result->setString(textOf(answer));
    return true;
}

const localClassV77::member members[] = {
    {u"SELF", nullptr, nullptr, localClassV77::attributeGet},
    {u"TOSTRING", u"СТРОКА", methodToString},
    {u"CONNECT", u"ПОДКЛЮЧИТЬ", methodConnect},
    {u"ISCONNECTED", u"ПОДКЛЮЧЕН", methodIsConnected},
    {u"CREATEOBJECT", u"СОЗДАТЬОБЪЕКТ", methodCreateObject},
    {u"EVALUATE", u"ВЫЧИСЛИТЬ", methodEvaluate},
    {u"EXECUTEBATCH", u"ВЫПОЛНИТЬКОМАНДУ", methodExecuteBatch},
    {u"GETATTRIB", u"ПОЛУЧИТЬАТРИБУТ", methodGetAttrib},
    {u"GETATTRIBASOBJ77", u"ПОЛУЧИТЬАТРИБУТКАКОБЪЕКТ77", methodGetAttribAsObject},
    {u"GETITEM", u"ПОЛУЧИТЬЭЛЕМЕНТ", methodGetItem},
    {u"FINDBYCODE", u"НАЙТИПОКОДУ", methodFindByCode},
    {u"METHODCALL", u"МЕТОДВЫЗВАТЬ", methodMethodCall},
    {u"SELECTITEMS", u"ВЫБРАТЬЭЛЕМЕНТЫ", methodSelectItems},
    {u"QUIT", u"ЗАВЕРШИТЬРАБОТУСИСТЕМЫ", methodQuit},
    {u"__BOOKKEEPINGTOTALSDOQUERY215", u"__БУХГАЛТЕРСКИЕИТОГИВЫПОЛНИТЬЗАПРОС215", methodBookkeepingTotals},
};

bool v77ClassRegister()
{
    return localContextUTF8::classRegister(localClassV77::classDeclaration());
}

} // namespace

localClassV77::localClassV77() : object(localAutomationPlatform::instance().create(applicationProgId))
{
    root = object.get();
}

localClassV77::localClassV77(localAutomationObject *subObject, const localAutomationObject *rootObject)
    : root(rootObject), object(subObject)
{
    if (rootObject == nullptr)
        exit_FAILURE("Error!!! exit(EXIT_FAILURE) func: localClassV77");
}

localClassV77::~localClassV77() = default;

QVariant localClassV77::call(const std::u16string &signature, const QVariantList &arguments)
{
    if (object == nullptr)
        return QVariant();
    return object->dynamicCall(localString::cp1251FromWide(signature).c_str(), arguments);
}

localAutomationObject *localClassV77::subObjectQuery(const std::u16string &signature, const QVariantList &arguments)
{
    if (object == nullptr)
        return nullptr;
    return object->querySubObject(localString::cp1251FromWide(signature).c_str(), arguments);
}

const localNativeClassShape<localClassV77> &localClassV77::classShape()
{
    static const localNativeClassShape<localClassV77> shape = {u"V77",
                                                               u"V77",
                                                               nullptr,
                                                               u"класс доступа к базам данных 1C версии 7.7",
                                                               "localClassV77::classImplementationMethodFunction()",
                                                               members,
                                                               std::size(members)};
    return shape;
}

bool localClassV77::attributeGet(localErrorType &status, localContextUTF8 *, void **object, const std::u16string &,
                                 localValueDescription **result)
{
    localResultMustBeNull(result, "localClassV77::attributeGet()");
    localClassV77 *self = static_cast<localClassV77 *>(*object);
    if (self == nullptr) {
        status = localErrorTypeSTATICATTRIBUTEunknown;
        return false;
    }
    *result = localValueNew();
    putInCell(self, *result);
    return true;
}

void localAutomation1CInstall()
{
    localClassLoaderSet(u"V77", v77ClassRegister);
}
