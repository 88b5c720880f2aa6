#include "localString.h"

#include "localServices.h"
#include "localStd.h"

#include <QByteArray>
#include <QString>

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>

namespace localString {

namespace {

const char16_t capitalYo = 0x0401;
const char16_t smallYo = 0x0451;

bool isBlankForTrim(char16_t c)
{
    return c == 9 || c == 10 || c == 32;
}

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// ---- single characters, by code page ----

char16_t fromCp1251(unsigned char byte)
{
    if (byte < 0x80)
        return byte;
    if (byte == 0xA8)
        return capitalYo;
    if (byte == 0xB8)
        return smallYo;
    return char16_t(byte + 0x350);
}

char16_t fromCp866(unsigned char byte)
{
    if (byte == 0xF0)
        return capitalYo;
    if (byte == 0xF1)
        return smallYo;
    if (byte >= 0x80 && byte <= 0xAF)
        return char16_t(byte + 0x390);
    if (byte >= 0xE0 && byte <= 0xEF)
        return char16_t(byte + 0x360);
    return byte;
}

char toCp1251(char16_t c)
{
    if (c < 0x100)
        return char(c);
    if (c == capitalYo)
        return char(0xA8);
    if (c == smallYo)
        return char(0xB8);
    if (c >= 0x410 && c <= 0x44F)
        return char(c - 0x350); // 0xC0..0xFF
    return char(0xFF);
}

char toCp866(char16_t c)
{
    if (c < 0x100)
        return char(c);
    if (c == capitalYo)
        return char(0xF0);
    if (c == smallYo)
        return char(0xF1);
    if (c >= 0x410 && c <= 0x43F)
        return char(c - 0x390); // 0x80..0xAF
    if (c >= 0x440 && c <= 0x44F)
        return char(c - 0x360); // 0xE0..0xEF
    return char(0xFF);
}

void appendUtf8(std::string &out, char16_t c)
{
    if (c < 0x100) {
        out += char(c);
    } else if (c == capitalYo) {
        out += "\xD0\x81";
    } else if (c == smallYo) {
        out += "\xD1\x91";
    } else if (c >= 0x410 && c <= 0x43F) {
        out += '\xD0';
        out += char(c - 0x380); // 0x90..0xBF
    } else if (c >= 0x440 && c <= 0x44F) {
        out += '\xD1';
        out += char(c - 0x3C0); // 0x80..0x8F
    } else {
        out += '\xFF';
    }
}

// ---- byte ranges to wide text (appending) ----

using byteReader = void (*)(std::u16string &, const char *, const char *);

template <char16_t (*map)(unsigned char)>
void appendSingleBytes(std::u16string &out, const char *begin, const char *end)
{
    for (; begin != end; ++begin)
        out += map(static_cast<unsigned char>(*begin));
}

// Only the D0/D1 pairs of Cyrillic are decoded; every other byte is one unit.
// A NUL byte ends the text. A lead byte with nothing behind it stands alone.
void appendFromUtf8(std::u16string &out, const char *begin, const char *end)
{
    while (begin != end && *begin != '\0') {
        const unsigned char lead = static_cast<unsigned char>(*begin++);
        if ((lead == 0xD0 || lead == 0xD1) && begin != end && *begin != '\0') {
            const int base = lead == 0xD0 ? 1152 : 1216;
            out += char16_t(base + static_cast<signed char>(*begin++));
        } else {
            out += char16_t(lead);
        }
    }
}

std::u16string wideFromBytes(const std::string &bytes, byteReader read)
{
    std::u16string out;
    out.reserve(bytes.size());
    read(out, bytes.data(), bytes.data() + bytes.size());
    return out;
}

// The reader of a line-by-line code page; null for pages that read nothing.
byteReader readerForPage(possibleCodePage page)
{
    switch (page) {
    case possibleCodePageCP1251:
        return appendSingleBytes<fromCp1251>;
    case possibleCodePageCP866:
        return appendSingleBytes<fromCp866>;
    case possibleCodePageUTF8:
        return appendFromUtf8;
    default:
        return nullptr;
    }
}

// Each line converted by itself, a line feed between lines; a line feed at
// the very end closes the last line and adds nothing.
void appendLines(std::u16string &text, const std::string &bytes, byteReader read)
{
    const char *line = bytes.data();
    const char *const end = line + bytes.size();
    bool first = true;
    while (line != end) {
        const char *lineEnd = std::find(line, end, '\n');
        if (!first)
            text += u'\n';
        first = false;
        read(text, line, lineEnd);
        line = lineEnd == end ? end : lineEnd + 1;
    }
}

void appendBase64(std::u16string &text, const std::string &bytes)
{
    const QByteArray encoded = QByteArray::fromRawData(bytes.data(), int(bytes.size())).toBase64();
    text.append(encoded.constData(), encoded.constData() + encoded.size());
}

void readWholeFile(std::ifstream &file, std::string &bytes)
{
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size <= 0)
        return;
    file.seekg(0, std::ios::beg);
    bytes.resize(size_t(size));
    file.read(&bytes[0], size);
    bytes.resize(size_t(file.gcount()));
}

// The bytes that fileWrite puts out for a page; false for pages it does not know.
bool bytesForPage(possibleCodePage page, const std::u16string &text, std::string &bytes)
{
    switch (page) {
    case possibleCodePageNONE:
    case possibleCodePageUTF8:
        bytes = utf8FromWide(text);
        return true;
    case possibleCodePageCP1251:
        bytes = cp1251FromWide(text);
        return true;
    case possibleCodePageCP866:
        bytes = cp866FromWide(text);
        return true;
    case possibleCodePageBASE64:
        bytes = QByteArray::fromBase64(localToQString(text).toLatin1()).toStdString();
        return true;
    }
    return false;
}

std::u16string wideFromFileSystem(const std::string &name)
{
    return localFromQString(QString::fromUtf8(name.data(), int(name.size())));
}

bool directoryHolds(const std::u16string &directory, const std::u16string &fileName)
{
    return !directory.empty() && fileExist(directory + localStd::separatorWide + fileName);
}

// ---- FORMAT ----

const char16_t *const formatError = u"#FORMAT ERROR";

struct numberFormat {
    bool zeros = false;
    size_t width = 0;
    size_t decimals = 0;
    char16_t decimalSeparator = u'.';
    char16_t groupSeparator = u' '; // a blank means no grouping
};

// A width or decimal count beyond this makes no field that a screen or a page
// shows, only a text of a million blanks or zeros: such a format is bad.
constexpr size_t formatFieldLimit = 100000;

// Past the limit the number stops growing at one more than the limit.
size_t readNumber(const std::u16string &format, size_t &pos)
{
    size_t number = 0;
    for (; pos < format.size() && isDigit(format[pos]); ++pos)
        number = std::min(formatFieldLimit + 1, number * 10 + size_t(format[pos] - u'0'));
    return number;
}

// "N" or "Ч", "(0)" for zeros, width, "." and decimals, decimal and group separators.
bool parseFormat(const std::u16string &format, numberFormat &parsed)
{
    if (format.empty() || (format[0] != u'N' && format[0] != u'\u0427'))
        return false;
    size_t pos = 1;
    if (pos < format.size() && format[pos] == u'(') {
        if (format.compare(pos, 3, u"(0)") != 0)
            return false;
        parsed.zeros = true;
        pos += 3;
    }
    if (pos == format.size())
        return false;
    parsed.width = readNumber(format, pos);
    if (pos < format.size() && format[pos] == u'.') {
        ++pos;
        parsed.decimals = readNumber(format, pos);
    }
    if (pos < format.size()) {
        if (format[pos] != u' ' && !isDigit(format[pos]))
            parsed.decimalSeparator = format[pos];
        ++pos;
    }
    if (pos < format.size())
        parsed.groupSeparator = format[pos++];
    return pos == format.size() && parsed.width <= formatFieldLimit && parsed.decimals <= formatFieldLimit;
}

// Rounds half away from zero at `decimals`; a scale that overflows leaves the
// value as it is (a double that large has no digits there to round).
double roundTo(double value, size_t decimals)
{
    const double scale = std::pow(10.0, double(decimals));
    const double scaled = value * scale;
    if (!std::isfinite(scaled))
        return value;
    return std::round(scaled) / scale;
}

std::u16string formatFixed(double value, const numberFormat &parsed)
{
    // The shortest possible result is a digit, the separator and the decimals.
    if (parsed.decimals > 0 && parsed.decimals + 2 > parsed.width)
        return formatError;
    const double rounded = roundTo(std::fabs(value), parsed.decimals);
    const bool negative = value < 0 && rounded != 0;

    // Fixed notation, independent of the C locale: at most 309 integer
    // digits, the point and the decimals.
    char buffer[400];
    std::string spill;
    char *digits = buffer;
    const size_t capacity = 311 + parsed.decimals;
    if (capacity > sizeof buffer) {
        spill.resize(capacity);
        digits = &spill[0];
    }
    const std::to_chars_result written
        = std::to_chars(digits, digits + capacity, rounded, std::chars_format::fixed, int(parsed.decimals));
    if (written.ec != std::errc())
        return formatError;
    const char *const point = std::find(digits, written.ptr, '.');
    const size_t integerLength = size_t(point - digits);
    const size_t fractionLength = point == written.ptr ? 0 : size_t(written.ptr - point - 1);

    const bool grouping = parsed.groupSeparator != u' ';
    const size_t groups = grouping && integerLength > 0 ? (integerLength - 1) / 3 : 0;
    const size_t unsignedLength = integerLength + groups + (fractionLength > 0 ? fractionLength + 1 : 0);
    if (unsignedLength + (negative ? 1 : 0) > parsed.width)
        return formatError;

    std::u16string out(parsed.width, parsed.zeros ? u'0' : u' ');
    size_t at = parsed.width - unsignedLength;
    if (negative)
        out[parsed.zeros ? 0 : at - 1] = u'-';
    for (size_t i = 0; i < integerLength; ++i) {
        if (grouping && i > 0 && (integerLength - i) % 3 == 0)
            out[at++] = parsed.groupSeparator;
        out[at++] = char16_t(digits[i]);
    }
    if (fractionLength > 0) {
        out[at++] = parsed.decimalSeparator;
        for (const char *digit = point + 1; digit != written.ptr; ++digit)
            out[at++] = char16_t(*digit);
    }
    return out;
}

} // namespace

possibleCodePage codePageFromWord(const std::u16string &word)
{
    const std::u16string upper = toUpper(trim(word));
    if (upper.compare(0, 5, u"CP866") == 0)
        return possibleCodePageCP866;
    if (upper.compare(0, 6, u"CP1251") == 0)
        return possibleCodePageCP1251;
    return possibleCodePageUTF8;
}

std::string utf8FromWide(const std::u16string &text)
{
    std::string out;
    out.reserve(text.size() * 2);
    for (char16_t c : text)
        appendUtf8(out, c);
    return out;
}

std::u16string wideFromUtf8(const std::string &bytes)
{
    return wideFromBytes(bytes, appendFromUtf8);
}

std::string cp1251FromWide(const std::u16string &text)
{
    std::string out(text.size(), '\0');
    std::transform(text.begin(), text.end(), out.begin(), toCp1251);
    return out;
}

std::u16string wideFromCp1251(const std::string &bytes)
{
    return wideFromBytes(bytes, appendSingleBytes<fromCp1251>);
}

std::string cp866FromWide(const std::u16string &text)
{
    std::string out(text.size(), '\0');
    std::transform(text.begin(), text.end(), out.begin(), toCp866);
    return out;
}

std::u16string wideFromCp866(const std::string &bytes)
{
    return wideFromBytes(bytes, appendSingleBytes<fromCp866>);
}

std::u16string toUpper(const std::u16string &text)
{
    std::u16string out(text);
    for (char16_t &c : out) {
        if ((c >= u'a' && c <= u'z') || (c >= 0x430 && c <= 0x44F))
            c -= 32;
        else if (c == smallYo)
            c = capitalYo;
    }
    return out;
}

std::u16string trimLeft(const std::u16string &text)
{
    size_t first = 0;
    while (first < text.size() && isBlankForTrim(text[first]))
        ++first;
    return text.substr(first);
}

std::u16string trimRight(const std::u16string &text)
{
    size_t end = text.size();
    while (end > 0 && isBlankForTrim(text[end - 1]))
        --end;
    return text.substr(0, end);
}

std::u16string trim(const std::u16string &text)
{
    size_t first = 0;
    while (first < text.size() && isBlankForTrim(text[first]))
        ++first;
    size_t end = text.size();
    while (end > first && isBlankForTrim(text[end - 1]))
        --end;
    return text.substr(first, end - first);
}

// Pages 2, 3 and 4 read line by line, page 1 reads the bytes as base64; any
// other page opens the file and appends nothing.
bool fileRead(localErrorType &status, const std::u16string &fileName, std::u16string &text, possibleCodePage page)
{
    const bool base64 = page == possibleCodePageBASE64;
    std::ifstream file(nameForFileSystem(fileName), base64 ? std::ios::in | std::ios::binary : std::ios::in);
    if (!file.is_open()) {
        status = localErrorTypeFILEnotFound;
        return false;
    }
    const byteReader read = readerForPage(page);
    if (!base64 && read == nullptr)
        return true;
    std::string bytes;
    readWholeFile(file, bytes);
    if (base64)
        appendBase64(text, bytes);
    else
        appendLines(text, bytes, read);
    return true;
}

bool fileRead(
    localErrorType &status, const std::u16string &fileName, std::u16string &text, const std::u16string &codePageWord)
{
    return fileRead(status, fileName, text, codePageFromWord(codePageWord));
}

bool fileWrite(bool append, possibleCodePage page, const std::u16string &text, const std::u16string &fileName)
{
    if (fileName.empty())
        return false;
    std::ios::openmode mode = std::ios::out | (append ? std::ios::app : std::ios::trunc);
    if (page == possibleCodePageBASE64)
        mode |= std::ios::binary;
    std::ofstream file(nameForFileSystem(fileName), mode);
    if (!file.is_open()) {
        std::string tail = localDiagTail(__func__, __FILE__, __LINE__);
        tail.pop_back(); // the box has no use for the line end
        localServices::instance().criticalBox(
            u"save", u"Ошибка записи файла [" + fileName + u"]" + wideFromFileSystem(tail));
        return false;
    }
    std::string bytes;
    if (bytesForPage(page, text, bytes))
        file.write(bytes.data(), std::streamsize(bytes.size()));
    file.close();
    return !file.fail();
}

bool fileExist(const std::u16string &name)
{
    std::FILE *file = std::fopen(nameForFileSystem(name).c_str(), "r");
    if (file == nullptr)
        return false;
    std::fclose(file);
    return true;
}

bool fileDelete(const std::u16string &name)
{
    return std::remove(nameForFileSystem(name).c_str()) == 0;
}

bool pathExist(const std::u16string &name)
{
    return access(nameForFileSystem(name).c_str(), F_OK) == 0;
}

bool cwdSet(const std::u16string &name)
{
    return chdir(nameForFileSystem(name).c_str()) == 0;
}

std::u16string cwdGet()
{
    return wideFromFileSystem(localStd::cwdNarrow());
}

std::u16string binaryPath()
{
    return wideFromFileSystem(localStd::argv0Directory());
}

std::u16string pathSearch(const std::u16string &fileName)
{
    std::u16string directory = cwdGet();
    if (directoryHolds(directory, fileName))
        return directory;
    directory = binaryPath();
    if (directoryHolds(directory, fileName))
        return directory;
    return std::u16string();
}

std::u16string formatNumber(double value, const std::u16string &format)
{
    if (format.empty())
        return numberToWide(value);
    numberFormat parsed;
    if (!parseFormat(format, parsed))
        return formatError;
    return formatFixed(value, parsed);
}

std::u16string numberToWide(double value)
{
    // The stream's precision-20 default float format ("%.20g"), written
    // without a stream and without the C locale's decimal comma.
    char buffer[40];
    const std::to_chars_result written =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 20);
    return std::u16string(buffer, written.ptr);
}

std::string nameForFileSystem(const std::u16string &name)
{
    return localToQString(name).toUtf8().toStdString();
}

} // namespace localString

QString localToQString(const std::u16string &text)
{
    return QString::fromStdU16String(text);
}

std::u16string localFromQString(const QString &text)
{
    return text.toStdU16String();
}

std::u16string localAddressText(const void *address)
{
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%p", address);
    return std::u16string(buffer, buffer + length);
}
