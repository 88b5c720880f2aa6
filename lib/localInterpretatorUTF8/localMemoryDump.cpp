#include "localMemoryDump.h"

#include "localClassDeclaration.h"
#include "localContextUTF8.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <cstdio>
#include <iostream>

namespace {

// A table this small is shown whole, free cells included.
constexpr size_t wholeTableBelow = 257;

void appendAddress(std::u16string &out, const void *address)
{
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%p", address);
    out.append(buffer, buffer + length);
}

void appendNumber(std::u16string &out, int64_t number)
{
    char buffer[24];
    const int length = std::snprintf(buffer, sizeof buffer, "%lld", static_cast<long long>(number));
    out.append(buffer, buffer + length);
}

// A text of more than 30 characters is cut to its first 50 and gets "..."
// even when it was not cut at all (31 to 50 characters).
void appendShortened(std::u16string &out, const std::u16string &text)
{
    if (text.size() <= 30) {
        out += text;
        return;
    }
    out.append(text, 0, 50);
    out += u"...";
}

struct counterLine {
    const char16_t *label;
    const int64_t *counter;
};

// The counters in the order of the dump; the database ones are handed in.
counterLine counters[] = {
    {u"localContextUTF8::counterStaticTotal ", &localContextUTF8::counterStaticTotal},
    {u"localClassDeclaration::counterStaticTotal ", &localClassDeclaration::counterStaticTotal},
    {u"localValueDescription::counterStaticTotal ", &localValueDescription::counterStaticTotal},
    {u"localValueList::counterStaticTotal ", &localValueList::counterStaticTotal},
    {u"localValueTable::counterStaticTotal ", &localValueTable::counterStaticTotal},
    {u"localDataBase::counterStaticTotal ", nullptr},
    {u"localDataBaseTable::counterStaticTotal ", nullptr},
    {u"localDataBaseRecord::counterStaticTotal ", nullptr},
};

void appendCells(std::u16string &out, const localMemoryManager &manager)
{
    out += u" [num]  [addr]  [links] [obj-links]\n";
    const size_t reserved = manager.getReservedCount();
    const bool whole = reserved < wholeTableBelow;
    for (size_t index = 0; index < reserved; ++index) {
        const localValueDescription &cell = manager.cellAt(index);
        if (!whole && cell.linkCounter == 0)
            continue;
        out += u" [";
        appendNumber(out, int64_t(index));
        out += u"]  [";
        appendAddress(out, &cell);
        out += u"]  [";
        appendNumber(out, cell.linkCounter);
        out += u"] ";
        if (cell.type == localValueTypeOBJ && cell.localValueObject != nullptr && cell.localValueClass != nullptr
            && cell.localValueClass->localObjectLinkFunction != nullptr) {
            void *object = cell.localValueObject;
            out += u" [";
            appendNumber(out, cell.localValueClass->localObjectLinkFunction(&object, 0));
            out += u"] ";
        }
        out += localValueDump(cell);
        out += u'\n';
    }
}

} // namespace

std::u16string localValueDump(const localValueDescription &value)
{
    const bool object = value.type == localValueTypeOBJ;
    std::u16string out = u" address: [";
    appendAddress(out, &value);
    out += u"]  Type: [";
    if (object && value.localValueClass != nullptr)
        out += value.localValueClass->className;
    else
        out += localValueTypeWord(value.type);
    out += u"] ";
    if (object) {
        out += u" className: [";
        out += value.localValueClass != nullptr ? value.localValueClass->className : u"<unknown class>";
        out += u"] ";
    }
    out += u" num: [";
    out += localNumberToWide(value.localValueNumber);
    out += u"]  pointer: [";
    appendAddress(out, value.localValueObject);
    out += u"]  wStr: [";
    appendShortened(out, value.localValueString);
    out += u"]  Val: [";
    appendShortened(out, value.toString());
    out += u"] ";
    return out;
}

std::u16string memoryDisplayDataText(bool withCells)
{
    const localMemoryManager *manager = localMemoryManager::manager;
    if (manager == nullptr)
        return u"localMemoryManager::manager not created yet!\n";
    std::u16string out;
    if (withCells)
        appendCells(out, *manager);
    out += u"all reserved ";
    appendNumber(out, int64_t(manager->getReservedCount()));
    out += u"\nused ";
    appendNumber(out, int64_t(manager->getUsedCount()));
    out += u'\n';
    for (const counterLine &line : counters) {
        out += line.label;
        appendNumber(out, line.counter != nullptr ? *line.counter : 0);
        out += u'\n';
    }
    out += u"Внимание!!! При вызове из интерпретатора функции memoryDisplayData() два элемента данных добавляются "
           u"самим интерпретатором.\n";
    return out;
}

void memoryDisplayData(std::ostream *stream)
{
    std::ostream &out = stream != nullptr ? *stream : std::cout;
    out << localNarrow(memoryDisplayDataText(true)) << std::flush;
}

void memoryDisplayCounterSet(const std::string &className, const int64_t *counter)
{
    const std::u16string label = localString::wideFromUtf8(className) + u"::counterStaticTotal ";
    for (counterLine &line : counters) {
        if (label == line.label) {
            line.counter = counter;
            return;
        }
    }
    exit_FAILURE("memoryDisplayCounterSet() no counter line for the class " + className);
}
