// Helpers of the tests of the value list, the value table and JSON: objects
// bound to variables of the global context, expressions evaluated as a
// program would, outcomes as comparable lines.
#ifndef LOCALLIBRARYTESTSUPPORT_H
#define LOCALLIBRARYTESTSUPPORT_H

#include "localTestSupport.h"

#include "localValueList.h"
#include "localValueTable.h"

namespace localTest {

// "ЧИСЛО 3", "СТРОКА abc", ... or "fail 7".
inline QString outcomeLine(const evaluation &outcome)
{
    if (!outcome.done)
        return QString("fail %1").arg(outcome.status);
    return q(localValueTypeWord(outcome.type)) + " " + outcome.text;
}

// Evaluates an expression in the global context; the outcome as one line.
inline QString run(const QString &expression)
{
    coutCapture quiet;
    return outcomeLine(evaluate(expression, globalContext()));
}

// Binds a new empty list / table to a variable of the global context.
inline localValueList *listVariable(const std::u16string &name)
{
    localValueDescription holder;
    localValueList *list = localValueList::newInCell(&holder);
    globalContext()->variableSet(name, &holder);
    return list;
}

inline localValueTable *tableVariable(const std::u16string &name)
{
    localValueDescription holder;
    localValueTable *table = localValueTable::newInCell(&holder);
    globalContext()->variableSet(name, &holder);
    return table;
}

inline void numberAdd(localValueList &list, double number, const std::u16string &presentation)
{
    localValueDescription value;
    value.setVal(number);
    list.valueAdd(&value, presentation);
}

inline void stringAdd(localValueList &list, const std::u16string &text, const std::u16string &presentation)
{
    localValueDescription value;
    value.setString(text);
    list.valueAdd(&value, presentation);
}

// The items as "presentation=value" joined by "; ".
inline QString listDump(const localValueList &list)
{
    QStringList parts;
    for (const localValueListItem &item : list.items)
        parts << q(item.presentation) + "=" + q(item.value.toString());
    return parts.join("; ");
}

} // namespace localTest

#endif
