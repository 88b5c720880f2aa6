#include "localDbFieldDescription.h"

#include "localString.h"

#include <climits>
#include <cstdlib>
#include <unordered_map>

namespace {

struct typeWord {
    const char16_t *word;
    const char16_t *myType;
    int32_t defaultLength;
};

// The type words of a schema. The case of a word counts: "char" is unknown.
// INTEGER and VARCHAR do not survive normalising while NUMERIC does.
const typeWord typeWords[] = {
    {u"CHAR", u"CHAR", 255},    {u"VARCHAR", u"CHAR", 255},   {u"INT", u"INT", 24},
    {u"INTEGER", u"INT", 24},   {u"NUME", u"NUME", 24},       {u"NUMERIC", u"NUMERIC", 24},
};
constexpr int32_t unknownTypeLength = 255;

const typeWord *typeFind(const std::u16string &word)
{
    static const std::unordered_map<std::u16string, const typeWord *> byWord = [] {
        std::unordered_map<std::u16string, const typeWord *> map;
        for (const typeWord &row : typeWords)
            map.emplace(row.word, &row);
        return map;
    }();
    const auto found = byWord.find(word);
    return found == byWord.end() ? nullptr : found->second;
}

// The bracket's length: cut at the first character that is no digit and no
// blank, then read as atoi reads it. strtoll keeps an overlong number from
// being undefined; it is capped and so falls back to the default below.
int32_t bracketLength(const std::u16string &afterBracket)
{
    std::string digits;
    for (char16_t c : afterBracket) {
        if (c != u' ' && (c < u'0' || c > u'9'))
            break;
        digits += char(c);
    }
    const long long number = std::strtoll(digits.c_str(), nullptr, 10);
    return number > INT32_MAX ? INT32_MAX : int32_t(number);
}

} // namespace

const localDbFieldDescription &localDbFieldDescription::primaryKey()
{
    static const localDbFieldDescription key(PrimaryKeyName, PrimaryKeyType, 18, 0);
    return key;
}

localDbFieldDescription::localDbFieldDescription(const std::u16string &fieldName, const std::u16string &type,
                                                 int32_t length, int32_t decimals)
    : name(fieldName), myType(type), len(length), dec(decimals)
{
}

localDbFieldDescription::localDbFieldDescription(const std::u16string &columnName, const std::u16string &typeText)
    : value(localString::utf8FromWide(typeText)), name(columnName), sqlName(columnName)
{
    const size_t bracket = typeText.find(u'(');
    const bool hasBracket = bracket != std::u16string::npos && bracket > 0;
    const std::u16string base = hasBracket ? typeText.substr(0, bracket) : typeText;
    myType = typeNormalised(base);
    sqlType = base;
    if (hasBracket)
        len = bracketLength(typeText.substr(bracket + 1));
    const int32_t defaultLength = typeDefaultLength(base);
    if (len != 0 && defaultLength >= len) {
        sqlLen = len;
    } else {
        len = defaultLength;
        sqlLen = defaultLength;
    }
}

std::u16string localDbFieldDescription::typeNormalised(const std::u16string &word)
{
    const typeWord *row = typeFind(word);
    return row == nullptr ? std::u16string() : std::u16string(row->myType);
}

int32_t localDbFieldDescription::typeDefaultLength(const std::u16string &word)
{
    const typeWord *row = typeFind(word);
    return row == nullptr ? unknownTypeLength : row->defaultLength;
}
