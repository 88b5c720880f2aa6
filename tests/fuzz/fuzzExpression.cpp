// Expressions, as "? expr" on the console and every compiled statement reach
// the evaluator. The text is first only checked, as the compiler checks it,
// then evaluated in a fresh context holding a few variables and objects.
// When the evaluation succeeds, the check must have passed and ended at the
// same place: the compiler keeps the text that the check delimited.
//
// A compiled statement reads its text through a kept form: the text is
// evaluated twice more that way, while the form fills and from what it
// kept, each time in a fresh context, and must answer as the plain reading
// did. Texts whose answers differ from one run to the next by nature (the
// clock, random numbers, class loading, addresses in the text of objects)
// are not compared. A text value is joined onto before it goes: a kept
// literal shares its characters with the values read from it, and a later
// reading through the form must not see what was built on them. The value
// must land in the same cell of the table, as a parameter bound to it shows
// where it lies.
#include "localFuzzSupport.h"

#include "localGlobalFunctions.h"
#include "localInterpretatorUTF8.h"
#include "localJson.h"

#include <iostream>
#include <vector>

typedef localInterpretatorUTF8 li;

namespace {

struct outcome {
    bool done = false;
    int status = 0;
    size_t end = 0;
    int type = -1;
    std::u16string value; // the text of a value other than an object
    size_t cell = 0;      // where the value lies in the table; a parameter bound to it would show it
    bool operator==(const outcome &other) const
    {
        return done == other.done && status == other.status && end == other.end && type == other.type
               && value == other.value && cell == other.cell;
    }
};

// Addresses ("0x..." in the text of objects) differ from one context to the
// next: they are left out of a compared value.
std::u16string withoutAddresses(const std::u16string &text)
{
    std::u16string kept;
    for (size_t i = 0; i < text.size(); ++i) {
        kept += text[i];
        if (text[i] == u'0' && i + 1 < text.size() && text[i + 1] == u'x') {
            kept += u'x';
            for (i += 2; i < text.size() && ((text[i] >= u'0' && text[i] <= u'9') || (text[i] >= u'a' && text[i] <= u'f')); ++i) {
            }
            --i;
        }
    }
    return kept;
}

outcome evaluated(const std::u16string &text, localExpressionForm *form, bool print)
{
    localContextUTF8 *context = localFuzz::contextWithValues();
    outcome result;
    localErrorType status = localErrorTypeOK;
    localValueDescription *value = nullptr;
    result.done = li::scanStringGetExpressionAndEvaluete(status, text, result.end, &value, context, false, form);
    result.status = status;
    if (result.done) {
        localFuzz::require(value != nullptr, "a successful evaluation gave no value");
        result.type = value->getType();
        const localMemoryManager &table = localMemoryManager::instance();
        result.cell = table.owns(value) ? size_t(value - &table.cellAt(0)) : table.getReservedCount();
        if (result.type != localValueTypeOBJ)
            result.value = withoutAddresses(value->toString());
        if (print) // what the console and VALUETOJSON then do with the value
            std::cout << localNarrow(value->toString()) << "\n" << localNarrow(localJson::valueToJson(*value)) << "\n";
        if (result.type == localValueTypeSTR)
            value->localValueString += u"~";
    } else {
        localFuzz::require(value == nullptr, "a failed evaluation left a value");
    }
    localValueRelease(value);
    delete context;
    return result;
}

// The names, in upper case, that make a text unrepeatable, with the Russian
// twins of the global functions among them.
const std::vector<std::u16string> &unrepeatableWords()
{
    static const std::vector<std::u16string> words = [] {
        const char16_t *const english[] = {u"RAND",       u"SECONDS", u"DATE",   u"CLASSLOAD",
                                           u"CONTEXTGET", u"DISPLAY", u"STRING", u"СТРОКА"};
        std::vector<std::u16string> found(std::begin(english), std::end(english));
        size_t count = 0;
        const localGlobalFunctionRow *rows = localGlobalFunctionRows(count);
        for (size_t i = 0; i < count; ++i) {
            if (rows[i].english == nullptr || rows[i].russian == nullptr || *rows[i].russian == 0)
                continue;
            const std::u16string name = rows[i].english;
            for (const char16_t *word : english)
                if (name.find(word) != std::u16string::npos) {
                    found.push_back(li::nameToUpper(rows[i].russian));
                    break;
                }
        }
        return found;
    }();
    return words;
}

bool repeatable(const std::u16string &text)
{
    const std::u16string upper = li::nameToUpper(text);
    for (const std::u16string &word : unrepeatableWords())
        if (upper.find(word) != std::u16string::npos)
            return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    localFuzz::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::u16string text = localFuzz::textOf(data, size);
    const localFuzz::cellsReturn cells;

    localErrorType status = localErrorTypeOK;
    size_t checkedEnd = 0;
    localValueDescription *checked = nullptr;
    const bool passed = li::scanStringGetExpressionAndEvaluete(status, text, checkedEnd, &checked, nullptr, true);
    localFuzz::require(passed == (checked != nullptr), "the check's result does not match its answer");
    localValueRelease(checked);

    const outcome read = evaluated(text, nullptr, true);
    if (read.done)
        localFuzz::require(passed && checkedEnd == read.end, "the check and the evaluation end apart");
    if (repeatable(text)) {
        localExpressionForm form(text);
        localFuzz::require(evaluated(text, &form, false) == read, "a form being filled answers otherwise");
        localFuzz::require(evaluated(text, &form, false) == read, "a kept form answers otherwise");
    }
    return 0;
}
