// The code-page layer and the number formatter of FORMAT.
//
// The input's bytes are read in every code page, as bytes and as a file.
// Readers and writers must agree on the text they are made for: ASCII and
// the Russian letters written in CP1251, CP866 or UTF-8 read back as they
// were, and a file read as base64 decodes to its bytes. The formatter takes
// a double from the first eight bytes and the rest, as UTF-8, as its format.
#include "localFuzzSupport.h"

#include "localString.h"

#include <QByteArray>
#include <QString>

#include <cstring>
#include <fstream>

namespace ls = localString;

namespace {

// The characters every code page of the layer carries both ways.
bool carried(char16_t c)
{
    return (c > 0 && c < 0x80) || (c >= 0x410 && c <= 0x44F) || c == 0x401 || c == 0x451;
}

void requireRoundTrips(const std::u16string &text)
{
    std::u16string russian;
    for (const char16_t c : text)
        if (carried(c))
            russian += c;
    localFuzz::require(ls::wideFromCp1251(ls::cp1251FromWide(russian)) == russian, "CP1251 does not read back");
    localFuzz::require(ls::wideFromCp866(ls::cp866FromWide(russian)) == russian, "CP866 does not read back");
    localFuzz::require(ls::wideFromUtf8(ls::utf8FromWide(russian)) == russian, "UTF-8 does not read back");
}

void readAsFile(const std::string &bytes)
{
    const std::string path = localFuzz::scratchPath("input.txt");
    const std::u16string name = localFromQString(QString::fromStdString(path));
    {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), std::streamsize(bytes.size()));
    }
    for (const ls::possibleCodePage page : {ls::possibleCodePageNONE, ls::possibleCodePageCP1251,
                                            ls::possibleCodePageCP866, ls::possibleCodePageUTF8}) {
        localErrorType status = localErrorTypeOK;
        std::u16string text;
        localFuzz::require(ls::fileRead(status, name, text, page), "a file that is there does not read");
    }
    localErrorType status = localErrorTypeOK;
    std::u16string base64;
    localFuzz::require(ls::fileRead(status, name, base64, ls::possibleCodePageBASE64), "base64 does not read");
    QByteArray encoded;
    for (const char16_t c : base64)
        encoded.append(char(c));
    const QByteArray decoded = QByteArray::fromBase64(encoded);
    localFuzz::require(decoded.toStdString() == bytes, "base64 does not decode to the file's bytes");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    localFuzz::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    requireRoundTrips(ls::wideFromUtf8(bytes));
    requireRoundTrips(ls::wideFromCp1251(bytes));
    requireRoundTrips(ls::wideFromCp866(bytes));
    readAsFile(bytes);

    if (size >= sizeof(double)) {
        double value = 0.0;
        std::memcpy(&value, data, sizeof value);
        const std::u16string format = localFuzz::textOf(data + sizeof value, size - sizeof value);
        ls::formatNumber(value, format);
    }
    return 0;
}
