// Expressions, as "? expr" on the console and every compiled statement reach
// the evaluator. The text is first only checked, as the compiler checks it,
// then evaluated in a fresh context holding a few variables and objects.
// When the evaluation succeeds, the check must have passed and ended at the
// same place: the compiler keeps the text that the check delimited.
#include "localFuzzSupport.h"

#include "localInterpretatorUTF8.h"
#include "localJson.h"

#include <iostream>

typedef localInterpretatorUTF8 li;

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

    localContextUTF8 *context = localFuzz::contextWithValues();
    status = localErrorTypeOK;
    size_t evaluatedEnd = 0;
    localValueDescription *value = nullptr;
    if (li::scanStringGetExpressionAndEvaluete(status, text, evaluatedEnd, &value, context, false)) {
        localFuzz::require(value != nullptr, "a successful evaluation gave no value");
        localFuzz::require(passed && checkedEnd == evaluatedEnd, "the check and the evaluation end apart");
        // What the console and VALUETOJSON then do with the value.
        std::cout << localNarrow(value->toString()) << "\n" << localNarrow(localJson::valueToJson(*value)) << "\n";
    } else {
        localFuzz::require(value == nullptr, "a failed evaluation left a value");
    }
    localValueRelease(value);
    delete context;
    return 0;
}
