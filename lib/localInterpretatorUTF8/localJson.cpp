#include "localJson.h"

#include "localClassDeclaration.h"
#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"
#include "localStack.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <charconv>
#include <cmath>
#include <iostream>

namespace localJson {

namespace {

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

int hexDigit(char16_t c)
{
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

const char16_t *typeTag(int32_t type)
{
    switch (type) {
    case localValueTypeNUM:
        return u"NUM";
    case localValueTypeSTR:
        return u"STR";
    case localValueTypeBOO:
        return u"BOO";
    case localValueTypeOBJ:
        return u"OBJ";
    default:
        return u"UNK";
    }
}

void appendQuoted(std::u16string &out, const std::u16string &text)
{
    out += u'"';
    jsonEscapeAppend(out, text);
    out += u'"';
}

constexpr int nestingLimit = 10000;

// Counts the arrays and objects being read or written on this thread. Besides
// the stack, the depth is bounded, so that a list that holds itself fails
// soon and the depth a text may have does not hang on the thread's stack.
class nestingGuard {
public:
    nestingGuard() { ++depth(); }
    ~nestingGuard() { --depth(); }
    nestingGuard(const nestingGuard &) = delete;
    nestingGuard &operator=(const nestingGuard &) = delete;

    // False with status 16 (stack) or `tooDeep` and a line saying so.
    bool allowed(localErrorType &status, const char *where, localErrorType tooDeep) const
    {
        if (!localStackCheck(status, where))
            return false;
        if (depth() <= nestingLimit)
            return true;
        localDiag(u"JSON nested deeper than " + localNumberToWide(nestingLimit) + u" levels", true, where, __FILE__,
                  __LINE__);
        status = tooDeep;
        return false;
    }

private:
    static int &depth()
    {
        thread_local int current = 0;
        return current;
    }
};

// The "v" of an object: a value list's array; for other classes what their
// TOJSON gives, as it stands, or else the string form quoted.
bool objectValueAppend(localErrorType &status, std::u16string &out, const localValueDescription &value,
                       const std::u16string &stringForm)
{
    if (const localValueList *list = localValueList::fromValue(&value))
        return valueListToJson(status, *list, out);
    localClassDeclaration *declaration = value.localValueClass;
    const localClassMember *member = declaration != nullptr ? declaration->memberFind(u"TOJSON") : nullptr;
    if (member != nullptr && member->EXEC != nullptr) {
        localErrorType status = localErrorTypeOK;
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        const bool done = declaration->methodExec(status, localContextUTF8::globalContext, value.localValueObject,
                                                  u"TOJSON", &noArguments, &result);
        const bool written = done && result != nullptr && result->getType() == localValueTypeSTR
                             && !result->localValueString.empty();
        if (written)
            out += result->localValueString;
        localValueRelease(result);
        if (written)
            return true;
    }
    appendQuoted(out, stringForm);
    return true;
}

// --- the general reader ---

// "Json " and the rest of the text, with the diagnostic tail; status 34.
// The rest is cut after a couple of hundred characters: a fault deep inside
// a long text reports at every level it unwinds, and whole rests would
// make that output grow with the square of the text.
bool parseFault(localErrorType &status, const std::u16string &text, size_t position, const char *func, int line)
{
    constexpr size_t restShown = 200;
    std::u16string rest = position < text.size() ? text.substr(position, restShown) : std::u16string();
    if (position + restShown < text.size())
        rest += u"...";
    localDiag(u"Json " + rest, false, func, __FILE__, line);
    status = localErrorTypeJSONparse;
    return false;
}
#define JSON_PARSE_FAULT(status, text, position) parseFault((status), (text), (position), __func__, __LINE__)

// Reads a string from just behind its opening quote up to the unescaped
// closing quote (not consumed) or the end of the text. Known pairs are
// undone; any other pair keeps its backslash, so the writer's \[ \] \{ \}
// come back as they were written.
std::u16string readString(const std::u16string &text, size_t &position)
{
    std::u16string out;
    const size_t length = text.size();
    while (position < length && text[position] != u'"') {
        const char16_t c = text[position];
        if (c != u'\\' || position + 1 >= length) {
            out += c;
            ++position;
            continue;
        }
        const char16_t next = text[position + 1];
        char16_t plain = 0;
        switch (next) {
        case u'\'': plain = u'\''; break;
        case u'"': plain = u'"'; break;
        case u'\\': plain = u'\\'; break;
        case u'/': plain = u'/'; break;
        case u't': plain = u'\t'; break;
        case u'n': plain = u'\n'; break;
        case u'r': plain = u'\r'; break;
        case u'f': plain = u'\f'; break;
        case u'b': plain = u'\b'; break;
        default: break;
        }
        if (plain != 0) {
            out += plain;
            position += 2;
            continue;
        }
        if (next == u'u' && position + 6 <= length) {
            int code = 0;
            bool valid = true;
            for (size_t i = position + 2; i < position + 6 && valid; ++i) {
                const int digit = hexDigit(text[i]);
                valid = digit >= 0;
                code = code * 16 + digit;
            }
            if (valid) {
                out += char16_t(code);
                position += 6;
                continue;
            }
        }
        out += c; // the backslash stays; the next character is read as usual
        ++position;
    }
    return out;
}

bool parseInto(localErrorType &status, const std::u16string &text, size_t &position, localValueList &list);

// One member's value at `position`, stored into `item`.
bool parseValue(localErrorType &status, const std::u16string &text, size_t &position, localValueListItem &item)
{
    const char16_t c = position < text.size() ? text[position] : char16_t(0);
    if (c == u'-' || isDigit(c)) {
        localValueDescription *number = nullptr;
        if (!localInterpretatorUTF8::scanStringGetNumberTokenAndEvaluete(status, text, position, &number))
            return false;
        item.value.setVal(number->localValueNumber);
        localValueRelease(number);
        return true;
    }
    if (c == u'"') {
        ++position;
        std::u16string read = readString(text, position);
        if (position >= text.size())
            return JSON_PARSE_FAULT(status, text, position);
        ++position;
        item.value.setString(std::move(read));
        return true;
    }
    if (c == u'[' || c == u'{') {
        localValueList *inner = localValueList::newInCell(&item.value);
        if (!parseInto(status, text, position, *inner))
            return JSON_PARSE_FAULT(status, text, position);
        return true;
    }
    const size_t wordStart = position;
    const std::u16string word = localInterpretatorUTF8::scanStringGetNameToken(text, position);
    if (word == u"true")
        item.value.setBool(true);
    else if (word == u"false")
        item.value.setBool(false);
    else if (word == u"null")
        item.value.setVal(0.0);
    else
        return JSON_PARSE_FAULT(status, text, wordStart);
    return true;
}

// Reads an object or array at `position` into `list`.
bool parseInto(localErrorType &status, const std::u16string &text, size_t &position, localValueList &list)
{
    // Arrays and objects nest through here.
    const nestingGuard guard;
    if (!guard.allowed(status, "scanStringParseJson", localErrorTypeJSONparse))
        return false;
    localInterpretatorUTF8::scanStringSkipSpace(text, position);
    if (position >= text.size() || (text[position] != u'{' && text[position] != u'['))
        return JSON_PARSE_FAULT(status, text, position);
    const bool isObject = text[position] == u'{';
    const char16_t closing = isObject ? u'}' : u']';
    ++position;
    // Blanks are skipped first, so that the writer's empty list ("[", a line
    // feed, "]") reads back as an empty list.
    localInterpretatorUTF8::scanStringSkipSpace(text, position);
    if (position < text.size() && text[position] == closing) {
        ++position;
        return true;
    }
    if (!isObject && position >= text.size())
        return true;
    for (;;) {
        localInterpretatorUTF8::scanStringSkipSpace(text, position);
        std::u16string key;
        if (isObject) {
            if (position >= text.size() || text[position] != u'"')
                return JSON_PARSE_FAULT(status, text, position);
            ++position;
            key = readString(text, position);
            if (position >= text.size())
                return JSON_PARSE_FAULT(status, text, position);
            ++position;
            localInterpretatorUTF8::scanStringSkipSpace(text, position);
            if (position >= text.size() || text[position] != u':')
                return JSON_PARSE_FAULT(status, text, position);
            ++position;
            localInterpretatorUTF8::scanStringSkipSpace(text, position);
        }
        list.items.emplace_back();
        localValueListItem &item = list.items.back();
        item.presentation = std::move(key);
        if (!parseValue(status, text, position, item))
            return false;
        localInterpretatorUTF8::scanStringSkipSpace(text, position);
        if (position < text.size() && text[position] == u',') {
            ++position;
            continue;
        }
        break;
    }
    if (position >= text.size() || text[position] != closing)
        return JSON_PARSE_FAULT(status, text, position);
    ++position;
    return true;
}

// --- restoring values ---

bool restoreFault(localErrorType &status)
{
    status = localErrorTypeJSONrestore;
    return false;
}

bool restoreValueList(localErrorType &status, localContextUTF8 *context, const localValueList &records,
                      localValueList &target)
{
    for (const localValueListItem &record : records.items) {
        const localValueList *pair = localValueList::fromValue(&record.value);
        const localValueDescription *presentation = pair != nullptr ? pair->valueByKey(u"p") : nullptr;
        const localValueList *typed = pair != nullptr ? localValueList::fromValue(pair->valueByKey(u"v")) : nullptr;
        if (presentation == nullptr || typed == nullptr)
            return restoreFault(status);
        localValueDescription *restored = nullptr;
        const bool done = fromJsonValueList(status, context, *typed, &restored);
        if (done)
            target.valueAdd(restored, presentation->toString());
        localValueRelease(restored);
        if (!done)
            return false;
    }
    return true;
}

bool restoreObject(localErrorType &status, localContextUTF8 *context, const localValueList &record,
                   const localValueDescription *content, localValueDescription *result)
{
    const localValueList *contentList = localValueList::fromValue(content);
    if (contentList == nullptr)
        return restoreFault(status);
    const localValueDescription *className = record.valueByKey(u"tN");
    if (className == nullptr)
        return restoreFault(status);
    if (context == nullptr)
        context = localContextUTF8::globalContext;
    if (context == nullptr) {
        status = localErrorTypeCLASSunknown;
        return false;
    }
    localValueVector noArguments;
    localValueDescription *made = nullptr;
    if (!context->createObj(status, className->toString(), &noArguments, &made))
        return false;
    localValueDescription::localValueCopy(result, made);
    localValueRelease(made);
    localValueList *target = localValueList::fromValue(result);
    if (target == nullptr) {
        LOCAL_DIAG(u"Разбор jsonList для " + className->toString() + u" не реализован!");
        return restoreFault(status);
    }
    return restoreValueList(status, context, *contentList, *target);
}

// --- the table reader ---

bool tableFault(localErrorType &status, const std::u16string &text, size_t position, const char *func, int line)
{
    size_t lineStart = 0;
    const int lineNumber = localLineResolve(text, position, lineStart);
    const size_t column = position >= lineStart ? position - lineStart + 1 : 1;
    localDiag(u"синтаксическая ошибка в строке " + localNumberToWide(lineNumber) + u" позиция "
                  + localNumberToWide(double(column)),
              false, func, __FILE__, line);
    std::string rest = localNarrow(position < text.size() ? text.substr(position) : std::u16string());
    rest += '\n';
    std::cout << rest << std::flush;
    status = localErrorTypeJSONparse;
    return false;
}
#define JSON_TABLE_FAULT(status, text, position) tableFault((status), (text), (position), __func__, __LINE__)

bool tableMembers(localErrorType &status, const std::u16string &text, size_t &position, localValueTable &table)
{
    // Objects nest through here.
    const nestingGuard guard;
    if (!guard.allowed(status, "scanStringGetValueTableFromJson", localErrorTypeJSONparse))
        return false;
    table.columnAdd(u"key");
    table.columnAdd(u"value");
    const size_t keyColumn = table.columnsCount() - 1;
    const size_t valueColumn = table.columnsCount();
    localInterpretatorUTF8::scanStringSkipSpace(text, position);
    if (position >= text.size() || text[position] != u'{')
        return JSON_TABLE_FAULT(status, text, position);
    ++position;
    localInterpretatorUTF8::scanStringSkipSpace(text, position);
    if (position < text.size() && text[position] == u'}') {
        ++position;
        return true;
    }
    for (;;) {
        localInterpretatorUTF8::scanStringSkipSpace(text, position);
        if (position >= text.size() || text[position] != u'"')
            return JSON_TABLE_FAULT(status, text, position);
        ++position;
        localValueDescription key;
        key.setString(readString(text, position));
        if (position >= text.size())
            return JSON_TABLE_FAULT(status, text, position);
        ++position;
        localInterpretatorUTF8::scanStringSkipSpace(text, position);
        if (position >= text.size() || text[position] != u':')
            return JSON_TABLE_FAULT(status, text, position);
        ++position;
        localInterpretatorUTF8::scanStringSkipSpace(text, position);
        localValueDescription value;
        if (position < text.size() && text[position] == u'"') {
            ++position;
            value.setString(readString(text, position));
            if (position >= text.size())
                return JSON_TABLE_FAULT(status, text, position);
            ++position;
        } else if (position < text.size() && text[position] == u'{') {
            localValueTable *inner = localValueTable::newInCell(&value);
            if (!tableMembers(status, text, position, *inner))
                return false;
        } else {
            return JSON_TABLE_FAULT(status, text, position);
        }
        const size_t row = table.rowAdd(0);
        table.valueSet(status, row, keyColumn, &key);
        table.valueSet(status, row, valueColumn, &value);
        localInterpretatorUTF8::scanStringSkipSpace(text, position);
        if (position < text.size() && text[position] == u',') {
            ++position;
            continue;
        }
        break;
    }
    if (position >= text.size() || text[position] != u'}')
        return JSON_TABLE_FAULT(status, text, position);
    ++position;
    return true;
}

} // namespace

// ---------------------------------------------------------------------------

void jsonEscapeAppend(std::u16string &out, const std::u16string &text)
{
    out.reserve(out.size() + text.size());
    for (const char16_t c : text) {
        char16_t pair = 0;
        switch (c) {
        case u'\'': pair = u'\''; break;
        case u'"': pair = u'"'; break;
        case u'\\': pair = u'\\'; break;
        case u'/': pair = u'/'; break;
        case u'\t': pair = u't'; break;
        case u'\n': pair = u'n'; break;
        case u'\r': pair = u'r'; break;
        case u'\f': pair = u'f'; break;
        case u'\b': pair = u'b'; break;
        case u'[': pair = u'['; break;
        case u']': pair = u']'; break;
        case u'{': pair = u'{'; break;
        case u'}': pair = u'}'; break;
        default: break;
        }
        if (pair != 0) {
            out += u'\\';
            out += pair;
        } else {
            out += c;
        }
    }
}

std::u16string jsonEscape(const std::u16string &text)
{
    std::u16string out;
    jsonEscapeAppend(out, text);
    return out;
}

bool valueToJsonAppend(localErrorType &status, std::u16string &out, const localValueDescription &value)
{
    const int32_t type = value.getType();
    out += u"{\"t\": \"";
    out += typeTag(type);
    out += u'"';
    if (type == localValueTypeOBJ) {
        out += u",\"tN\": ";
        appendQuoted(out, value.localValueClass != nullptr ? value.localValueClass->className : std::u16string());
    }
    const std::u16string stringForm = value.toString();
    out += u",\"vP\": ";
    appendQuoted(out, stringForm);
    out += u",\"v\": ";
    switch (type) {
    case localValueTypeSTR:
    case localValueTypeNUM:
        appendQuoted(out, stringForm);
        break;
    case localValueTypeBOO:
        out += value.localValueNumber > 0.0 ? u"\"true\"" : u"\"false\"";
        break;
    case localValueTypeOBJ:
        if (!objectValueAppend(status, out, value, stringForm))
            return false;
        break;
    default:
        break;
    }
    out += u'}';
    return true;
}

std::u16string valueToJson(const localValueDescription &value)
{
    localErrorType status = localErrorTypeOK;
    std::u16string out;
    if (!valueToJsonAppend(status, out, value))
        out.clear();
    return out;
}

bool valueListToJson(localErrorType &status, const localValueList &list, std::u16string &out)
{
    // Lists nest through here; a list that holds itself nests without end.
    const nestingGuard guard;
    if (!guard.allowed(status, "valueListToJson", localErrorTypePARAMvalue))
        return false;
    out += u"[";
    bool first = true;
    for (const localValueListItem &item : list.items) {
        out += u'\n';
        if (!first)
            out += u',';
        first = false;
        out += u"{\"p\": \"";
        jsonEscapeAppend(out, item.presentation);
        out += u"\",\"v\": ";
        if (!valueToJsonAppend(status, out, item.value))
            return false;
        out += u'}';
    }
    out += u"\n]";
    return true;
}

std::u16string valueListToJson(const localValueList &list)
{
    localErrorType status = localErrorTypeOK;
    std::u16string out;
    if (!valueListToJson(status, list, out))
        out.clear();
    return out;
}

bool scanStringParseJson(localErrorType &status, const std::u16string &text, size_t &position,
                         localValueDescription **result)
{
    localResultMustBeNull(result, "localInterpretatorUTF8::scanStringParseJson()");
    localValueDescription *made = localValueNew();
    localValueList *list = localValueList::newInCell(made);
    if (!parseInto(status, text, position, *list)) {
        localValueRelease(made); // the partial list goes with it
        return false;
    }
    *result = made;
    return true;
}

bool fromJsonValueList(localErrorType &status, localContextUTF8 *context, const localValueList &list,
                       localValueDescription **result)
{
    localResultMustBeNull(result, "localValueDescription::fromJsonValueList()");
    *result = localValueNew();
    const localValueDescription *typeWord = list.valueByKey(u"t");
    const localValueDescription *content = list.valueByKey(u"v");
    if (typeWord == nullptr)
        return restoreFault(status);
    const std::u16string type = typeWord->toString();
    if (type == u"NUM") {
        if (content != nullptr)
            (*result)->setVal(content->getType() == localValueTypeSTR ? numberFromText(content->localValueString)
                                                                      : content->localValueNumber);
        return true;
    }
    if (type == u"STR") {
        (*result)->setString(content != nullptr ? content->toString() : std::u16string());
        return true;
    }
    if (type == u"BOO") {
        // The writer quotes the word, so a written boolean arrives as a string
        // whose number is 0: it comes back as the number 0.
        LOCAL_DIAG(u"Это булево!!!");
        (*result)->setVal(content != nullptr && content->localValueNumber > 0.0 ? 1.0 : 0.0);
        return true;
    }
    if (type == u"OBJ")
        return restoreObject(status, context, list, content, *result);
    LOCAL_DIAG(u"typeMnemo=" + type);
    return restoreFault(status);
}

bool valueFromJson(localErrorType &status, localContextUTF8 *context, const std::u16string &text,
                   localValueDescription **result)
{
    localResultMustBeNull(result, "localJson::valueFromJson()");
    size_t position = 0;
    localValueDescription *parsed = nullptr;
    if (!scanStringParseJson(status, text, position, &parsed))
        return false;
    const bool done = fromJsonValueList(status, context, *localValueList::fromValue(parsed), result);
    localValueRelease(parsed);
    if (!done)
        localValueRelease(*result);
    return done;
}

bool scanStringGetValueTableFromJson(localErrorType &status, const std::u16string &text, size_t &position,
                                     localValueDescription *result)
{
    localValueTable *table = localValueTable::fromValue(result);
    if (table == nullptr)
        return false;
    return tableMembers(status, text, position, *table);
}

bool scanStringGetValueTableFromJson(localErrorType &status, const std::u16string &text, size_t &position,
                                     localValueTable &table)
{
    return tableMembers(status, text, position, table);
}

double numberFromText(const std::u16string &text)
{
    const std::u16string trimmed = localString::trim(text);
    // Only ASCII can belong to a number; the rest ends it, as for atof.
    char buffer[64];
    size_t length = 0;
    while (length < trimmed.size() && length < sizeof buffer && trimmed[length] < 0x80) {
        buffer[length] = char(trimmed[length]);
        ++length;
    }
    const char *begin = buffer;
    const char *const end = buffer + length;
    bool negative = false;
    if (begin != end && (*begin == '+' || *begin == '-')) {
        negative = *begin == '-';
        ++begin;
    }
    // from_chars takes no sign of its own after ours.
    if (begin != end && (*begin == '+' || *begin == '-'))
        return 0.0;
    double value = 0.0;
    const std::from_chars_result read = std::from_chars(begin, end, value);
    if (read.ec == std::errc::invalid_argument)
        return 0.0;
    if (read.ec == std::errc::result_out_of_range) {
        // atof gives HUGE_VAL or a denormal / zero; sort the cases by the exponent's sign.
        const std::string digits(begin, read.ptr);
        value = digits.find("e-") != std::string::npos || digits.find("E-") != std::string::npos
                    ? 0.0
                    : HUGE_VAL;
    }
    return negative ? -value : value;
}

localValueList *valueListFromJsonFile(const std::u16string &fileName)
{
    localValueList *list = new localValueList;
    localErrorType status = localErrorTypeOK;
    std::u16string text;
    localValueDescription *parsed = nullptr;
    localValueDescription *restored = nullptr;
    size_t position = 0;
    bool done = localString::fileRead(status, fileName, text, localString::possibleCodePageUTF8)
                && scanStringParseJson(status, text, position, &parsed)
                && fromJsonValueList(status, localContextUTF8::globalContext, *localValueList::fromValue(parsed),
                                     &restored);
    localValueList *read = done ? localValueList::fromValue(restored) : nullptr;
    if (done && read == nullptr) {
        status = localErrorTypeJSONrestore;
        done = false;
    }
    if (done)
        list->items.swap(read->items);
    else
        LOCAL_DIAG(localErrorText(status));
    localValueRelease(parsed);
    localValueRelease(restored);
    return list;
}

} // namespace localJson
