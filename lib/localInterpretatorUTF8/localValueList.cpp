#include "localValueList.h"

#include "localJson.h"
#include "localServices.h"
#include "localString.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <unordered_map>

localListDialogs localListDialogs::handlers;

namespace {

// Hands the content of `from` to `to` without touching object links: the
// link that `from` held now belongs to `to`.
void valueTake(localValueDescription &to, localValueDescription &from)
{
    to.localValueClear();
    to.type = from.type;
    to.localValueNumber = from.localValueNumber;
    to.localValueClass = from.localValueClass;
    to.localValueObject = from.localValueObject;
    to.localValueString.swap(from.localValueString);
    from.type = localValueTypeNUM;
    from.localValueNumber = 0.0;
    from.localValueClass = nullptr;
    from.localValueObject = nullptr;
}

// --- methods of the language class ---
// Each gets the list, the arguments (never null) and the fresh result cell.

bool rangeFault(localErrorType &status)
{
    status = localErrorTypeRANGE;
    return false;
}

bool methodToString(localErrorType &status, localValueList &list, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(list.toString());
    return true;
}

bool methodClear(localErrorType &status, localValueList &list, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    list.clear();
    result->setVal(1.0);
    return true;
}

bool methodSize(localErrorType &status, localValueList &list, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setVal(double(list.size()));
    return true;
}

bool methodToJson(localErrorType &status, localValueList &list, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    std::u16string text;
    if (!localJson::valueListToJson(status, list, text))
        return false;
    result->setString(std::move(text));
    return true;
}

// The list dialog in a loop: each chosen row shows its value's string form
// under its presentation, until the user cancels.
bool methodShow(localErrorType &status, localValueList &list, localValueVector &arguments,
                localValueDescription *result)
{
    std::u16string title;
    if (!localArgCountRange(status, &arguments, 0, 1) || !localArgOptionalString(status, arguments, 0, title))
        return false;
    if (!localListDialogs::chooserAvailable() || localListDialogs::handlers.textShow == nullptr) {
        status = localErrorTypeMETHODgraphicOnly;
        return false;
    }
    size_t row = 0;
    for (;;) {
        row = localListDialogs::handlers.rowChoose(title, list.captions(), row);
        const localValueDescription *value = list.valueByIndex(row);
        if (value == nullptr)
            break;
        localListDialogs::handlers.textShow(*list.presentationByIndex(row), value->toString());
    }
    result->setVal(1.0);
    return true;
}

bool methodRowChoose(localErrorType &status, localValueList &list, localValueVector &arguments,
                     localValueDescription *result)
{
    std::u16string title;
    if (!localArgCountRange(status, &arguments, 0, 2) || !localArgOptionalString(status, arguments, 0, title))
        return false;
    if (arguments.size() > 1 && !localArgType(status, &arguments, 1, localValueTypeNUM))
        return false;
    size_t start = 0;
    if (arguments.size() > 1) {
        const double wanted = arguments[1]->localValueNumber;
        if (wanted != 0.0) {
            start = localIndexFromNumber(wanted, list.size());
            if (start == 0 && std::trunc(wanted) != 0.0)
                return rangeFault(status);
        }
    }
    if (!localListDialogs::chooserAvailable()) {
        status = localErrorTypeMETHODgraphicOnly;
        return false;
    }
    const size_t chosen = localListDialogs::handlers.rowChoose(title, list.captions(), start);
    result->setVal(chosen <= list.size() ? double(chosen) : 0.0);
    return true;
}

bool methodValueAdd(localErrorType &status, localValueList &list, localValueVector &arguments,
                    localValueDescription *result)
{
    std::u16string presentation;
    if (!localArgCountRange(status, &arguments, 1, 2) || !localArgOptionalString(status, arguments, 1, presentation))
        return false;
    result->setVal(double(list.valueAdd(arguments[0], presentation)));
    return true;
}

bool methodValueInsert(localErrorType &status, localValueList &list, localValueVector &arguments,
                       localValueDescription *result)
{
    std::u16string presentation;
    if (!localArgCountRange(status, &arguments, 2, 3) || !localArgType(status, &arguments, 0, localValueTypeNUM)
        || !localArgOptionalString(status, arguments, 2, presentation))
        return false;
    const size_t index = localIndexFromNumber(arguments[0]->localValueNumber, list.size());
    if (!list.valueInsert(index, arguments[1], presentation))
        return rangeFault(status);
    result->setVal(double(list.size()));
    return true;
}

bool methodValueGet(localErrorType &status, localValueList &list, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    const localValueDescription *value =
        list.valueByIndex(localIndexFromNumber(arguments[0]->localValueNumber, list.size()));
    if (value == nullptr)
        return rangeFault(status);
    localValueDescription::localValueCopy(result, value);
    return true;
}

bool methodValueGetByPresentation(localErrorType &status, localValueList &list, localValueVector &arguments,
                                  localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const localValueDescription *value = list.valueByKey(arguments[0]->localValueString);
    if (value == nullptr)
        result->setString(std::u16string());
    else
        localValueDescription::localValueCopy(result, value);
    return true;
}

bool methodValueSet(localErrorType &status, localValueList &list, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    result->setBool(list.valueSet(localIndexFromNumber(arguments[0]->localValueNumber, list.size()), arguments[1]));
    return true;
}

bool methodValueSetByPresentation(localErrorType &status, localValueList &list, localValueVector &arguments,
                                  localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 1, localValueTypeSTR))
        return false;
    result->setVal(double(list.valueSetByPresentation(arguments[0], arguments[1]->localValueString)));
    return true;
}

bool methodValuePresentationGet(localErrorType &status, localValueList &list, localValueVector &arguments,
                                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    const std::u16string *presentation =
        list.presentationByIndex(localIndexFromNumber(arguments[0]->localValueNumber, list.size()));
    if (presentation == nullptr)
        return rangeFault(status);
    result->setString(*presentation);
    return true;
}

bool methodValueSetPresentation(localErrorType &status, localValueList &list, localValueVector &arguments,
                                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 0, localValueTypeNUM)
        || !localArgType(status, &arguments, 1, localValueTypeSTR))
        return false;
    result->setBool(list.presentationSet(localIndexFromNumber(arguments[0]->localValueNumber, list.size()),
                                         arguments[1]->localValueString));
    return true;
}

bool methodValueRemove(localErrorType &status, localValueList &list, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    if (!list.valueRemove(localIndexFromNumber(arguments[0]->localValueNumber, list.size())))
        return rangeFault(status);
    result->setVal(1.0);
    return true;
}

// The arguments at the odd places (1st, 3rd, ...) are added, each with its own
// string form as presentation; those at the even places are skipped. The pair
// that ends exactly on the last argument leaves its presentation empty. The
// answer is the number of pairs walked.
bool methodValuesAdd(localErrorType &status, localValueList &list, localValueVector &arguments,
                     localValueDescription *result)
{
    if (arguments.empty()) {
        status = localErrorTypePARAMcount;
        return false;
    }
    size_t steps = 0;
    for (size_t i = 0; i < arguments.size(); i += 2, ++steps) {
        const bool pairEndsLast = i + 1 == arguments.size() - 1;
        list.valueAdd(arguments[i], pairEndsLast ? std::u16string() : arguments[i]->toString());
    }
    result->setVal(double(steps));
    return true;
}


// In the declared order of the class's members.
const localValueList::member members[] = {
    {u"TOSTRING", u"СТРОКА", methodToString},
    {u"CLEAR", u"ОЧИСТИТЬ", methodClear},
    {u"SIZE", u"КОЛИЧЕСТВО", methodSize},
    {u"TOJSON", nullptr, methodToJson},
    {u"SHOW", u"ПОКАЗАТЬ", methodShow},
    {u"ROWCHOOSE", u"РЯДВЫБРАТЬ", methodRowChoose},
    {u"VALUEADD", u"ЗНАЧЕНИЕДОБАВИТЬ", methodValueAdd},
    {u"VALUEINSERT", u"ЗНАЧЕНИЕВСТАВИТЬ", methodValueInsert},
    {u"VALUEGET", u"ЗНАЧЕНИЕПОЛУЧИТЬ", methodValueGet},
    {u"VALUEGETBYPRESENTATION", u"ЗНАЧЕНИЕПОЛУЧИТЬПОПРЕДСТАВЛЕНИЮ", methodValueGetByPresentation},
    {u"VALUESET", u"ЗНАЧЕНИЕУСТАНОВИТЬ", methodValueSet},
    {u"VALUESETBYPRESENTATION", u"ЗНАЧЕНИЕУСТАНОВИТЬПОПРЕДСТАВЛЕНИЮ", methodValueSetByPresentation},
    {u"VALUEPRESENTATIONGET", u"ЗНАЧЕНИЕПРЕДСТАВЛЕНИЕПОЛУЧИТЬ", methodValuePresentationGet},
    {u"VALUESETPRESENTATION", u"ЗНАЧЕНИЕУСТАНОВИТЬПРЕДСТАВЛЕНИЕ", methodValueSetPresentation},
    {u"VALUEREMOVE", u"ЗНАЧЕНИЕУДАЛИТЬ", methodValueRemove},
    {u"VALUESADD", u"ЗНАЧЕНИЯДОБАВИТЬ", methodValuesAdd},
};


} // namespace

// ---------------------------------------------------------------------------

localValueListItem::localValueListItem(const localValueDescription *source, const std::u16string &itemPresentation)
    : presentation(itemPresentation)
{
    if (source != nullptr)
        localValueDescription::localValueCopy(&value, source);
}

localValueListItem::localValueListItem(localValueListItem &&other) noexcept
    : presentation(std::move(other.presentation))
{
    valueTake(value, other.value);
}

localValueListItem &localValueListItem::operator=(localValueListItem &&other) noexcept
{
    if (this != &other) {
        presentation = std::move(other.presentation);
        valueTake(value, other.value);
    }
    return *this;
}

bool localListDialogs::chooserAvailable()
{
    return handlers.rowChoose != nullptr && localServices::instance().graphical();
}

size_t localIndexFromNumber(double number, size_t count)
{
    // The comparison is false for NaN as well.
    if (!(number >= 1.0 && number < double(count) + 1.0))
        return 0;
    return size_t(number);
}

localValueList *localArgValueList(localErrorType &status, const localValueVector &arguments, size_t index)
{
    localValueList *list = localValueList::fromValue(arguments[index]);
    if (list == nullptr)
        status = localErrorTypePARAMtype;
    return list;
}

// ---------------------------------------------------------------------------

localValueList::~localValueList()
{
    clear();
}

localValueDescription *localValueList::valueByIndex(size_t n)
{
    return n >= 1 && n <= items.size() ? &items[n - 1].value : nullptr;
}

const localValueDescription *localValueList::valueByIndex(size_t n) const
{
    return n >= 1 && n <= items.size() ? &items[n - 1].value : nullptr;
}

const std::u16string *localValueList::presentationByIndex(size_t n) const
{
    return n >= 1 && n <= items.size() ? &items[n - 1].presentation : nullptr;
}

size_t localValueList::indexOfPresentation(const std::u16string &presentation) const
{
    for (size_t i = 0; i < items.size(); ++i)
        if (items[i].presentation == presentation)
            return i + 1;
    return 0;
}

localValueDescription *localValueList::valueByKey(const std::u16string &presentation)
{
    return valueByIndex(indexOfPresentation(presentation));
}

const localValueDescription *localValueList::valueByKey(const std::u16string &presentation) const
{
    return valueByIndex(indexOfPresentation(presentation));
}

size_t localValueList::valueAdd(const localValueDescription *value, const std::u16string &presentation)
{
    items.emplace_back(value, presentation);
    return items.size();
}

size_t localValueList::valueSetByPresentation(const localValueDescription *value, const std::u16string &presentation)
{
    const size_t index = indexOfPresentation(presentation);
    if (index == 0)
        return valueAdd(value, presentation);
    localValueDescription::localValueCopy(&items[index - 1].value, value);
    return index;
}

size_t localValueList::valueSetByPresentation(double number, const std::u16string &presentation)
{
    localValueDescription value;
    value.setVal(number);
    return valueSetByPresentation(&value, presentation);
}

size_t localValueList::valueSetByPresentation(const std::u16string &text, const std::u16string &presentation)
{
    localValueDescription value;
    value.setString(text);
    return valueSetByPresentation(&value, presentation);
}

bool localValueList::valueInsert(size_t n, const localValueDescription *value, const std::u16string &presentation)
{
    if (n < 1 || n > items.size())
        return false;
    items.emplace(items.begin() + std::ptrdiff_t(n - 1), value, presentation);
    return true;
}

bool localValueList::valueSet(size_t n, const localValueDescription *value)
{
    localValueDescription *target = valueByIndex(n);
    if (target == nullptr)
        return false;
    localValueDescription::localValueCopy(target, value);
    return true;
}

bool localValueList::presentationSet(size_t n, const std::u16string &presentation)
{
    if (n < 1 || n > items.size())
        return false;
    items[n - 1].presentation = presentation;
    return true;
}

bool localValueList::valueRemove(size_t n)
{
    if (n < 1 || n > items.size())
        return false;
    // The value is released only after the vector is whole again, since
    // releasing an object may run code that looks at lists.
    localValueListItem removed(std::move(items[n - 1]));
    items.erase(items.begin() + std::ptrdiff_t(n - 1));
    return true;
}

void localValueList::clear()
{
    std::vector<localValueListItem> removed;
    removed.swap(items);
}

std::u16string localValueList::toJson() const
{
    return localJson::valueListToJson(*this);
}

std::u16string localValueList::toString() const
{
    return u"объект класса [СПИСОКЗНАЧЕНИЙ] элементов [" + localNumberToWide(double(items.size()))
           + u"] по адресу [" + localAddressText(this) + u"]";
}

QStringList localValueList::captions() const
{
    QStringList captions;
    captions.reserve(int(items.size()));
    for (const localValueListItem &item : items)
        captions.append(localToQString(item.presentation));
    return captions;
}

// ---------------------------------------------------------------------------

const localNativeClassShape<localValueList> &localValueList::classShape()
{
    static const localNativeClassShape<localValueList> shape = {u"VALUELIST", u"СПИСОКЗНАЧЕНИЙ", nullptr, u"класс СписокЗначений",
                                                             "localValueList::classImplementationMethodFunction()", members,
                                                             std::size(members)};
    return shape;
}

localValueList *localValueList::newInCell(localValueDescription *cell)
{
    return putInCell(new localValueList, cell);
}
