// The text layer: the language's wide string, hand-made code-page
// conversions for Russian text, trimming and upper-casing, whole-file read and
// write, file and path tests, and the number formatter behind FORMAT.
//
// The conversions are deliberately simple mapping rules, not general ones:
// the UTF-8 reader decodes only the D0/D1 pairs, and the writers put out
// characters below 0x100 as one raw byte and anything they cannot map as 0xFF.
#ifndef LOCALSTRING_H
#define LOCALSTRING_H

#include "localErrorType.h"

#include <string>

class QString;

namespace localString {

enum possibleCodePage : int32_t {
    possibleCodePageNONE = 0, // writing treats the text as UTF-8
    possibleCodePageBASE64 = 1,
    possibleCodePageCP1251 = 2,
    possibleCodePageCP866 = 3,
    possibleCodePageUTF8 = 4
};

// A code-page word ("cp866", " Utf8 ", "") to its code page; unknown words are UTF-8.
possibleCodePage codePageFromWord(const std::u16string &word);

std::string utf8FromWide(const std::u16string &text);
std::u16string wideFromUtf8(const std::string &bytes);
std::string cp1251FromWide(const std::u16string &text);
std::u16string wideFromCp1251(const std::string &bytes);
std::string cp866FromWide(const std::u16string &text);
std::u16string wideFromCp866(const std::string &bytes);

std::u16string toUpper(const std::u16string &text);
// Both trims remove only tab, line feed and blank.
std::u16string trimLeft(const std::u16string &text);
std::u16string trimRight(const std::u16string &text);
std::u16string trim(const std::u16string &text);

// Appends the file's text to `text`. Status 23 and false when it cannot be opened.
bool fileRead(localErrorType &status, const std::u16string &fileName, std::u16string &text, possibleCodePage page);
bool fileRead(localErrorType &status, const std::u16string &fileName, std::u16string &text,
              const std::u16string &codePageWord);
// False for an empty name or a failed open (after the critical box) or close.
bool fileWrite(bool append, possibleCodePage page, const std::u16string &text, const std::u16string &fileName);

bool fileExist(const std::u16string &name);
bool fileDelete(const std::u16string &name);
bool pathExist(const std::u16string &name);
bool cwdSet(const std::u16string &name);
std::u16string cwdGet();
std::u16string binaryPath();
// The directory (no trailing separator) holding `fileName`: the working
// directory first, then the program's directory; empty when neither has it.
std::u16string pathSearch(const std::u16string &fileName);

// FORMAT of numbers: "N10.2", "N(0)3", "Ч25.0.,"; "#FORMAT ERROR" when the format is bad.
std::u16string formatNumber(double value, const std::u16string &format);

// The language's usual string form of a number: 20 significant digits at
// most, no trailing zeros (1/3 gives 0.33333333333333331483).
std::u16string numberToWide(double value);

// The narrow file-system name of a wide name (UTF-8 on this platform).
std::string nameForFileSystem(const std::u16string &name);

} // namespace localString

// The one conversion pair between the language's strings and QString.
QString localToQString(const std::u16string &text);
std::u16string localFromQString(const QString &text);

// An object's address as listings and TOSTRING forms show it ("%p").
std::u16string localAddressText(const void *address);

// Short spelling used throughout the core.
inline std::u16string localNumberToWide(double value)
{
    return localString::numberToWide(value);
}

#endif
