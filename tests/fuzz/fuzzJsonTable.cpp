// The reader that fills a value table from a JSON object (FILLFROMJSON), on a
// fresh table, followed by the table's string form.
#include "localFuzzSupport.h"

#include "localJson.h"
#include "localValueTable.h"

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
    localValueVector noArguments;
    localValueDescription *table = nullptr;
    localFuzz::require(localContextUTF8::globalContext->createObj(status, u"VALUETABLE", &noArguments, &table),
                       "no value table was made");
    size_t position = 0;
    if (localJson::scanStringGetValueTableFromJson(status, text, position, table))
        localFuzz::require(position <= text.size(), "the reader ended past the text");
    else
        localFuzz::require(status == localErrorTypeJSONparse || status == localErrorTypeINTERNAL,
                           "a failed read gave an unexpected status");
    table->toString();
    localValueRelease(table);
    return 0;
}
