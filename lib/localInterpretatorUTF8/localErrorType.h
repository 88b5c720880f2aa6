// Status codes of the language, their texts, positions in program text,
// the narrow form of wide text for std::cout, and the fatal stop.
#ifndef LOCALERRORTYPE_H
#define LOCALERRORTYPE_H

#include <cstdint>
#include <string>

// One enumeration is at once the list of faults, the value for success (54,
// not 0), the signal of BREAK / CONTINUE / RETURN in running code, and the
// compiler's report of which closing word ended a block. The numbers are
// shown to users and must not change. 6 and 25 are unused.
enum localErrorType : int32_t {
    localErrorTypeELSE = 0,
    localErrorTypeELSEIF = 1,
    localErrorTypeENDDO = 2,
    localErrorTypeENDFUNCTION = 3,
    localErrorTypeENDIF = 4,
    localErrorTypeQUIT = 5,
    localErrorTypeRANGE = 7,
    localErrorTypeATTRIBUTEnoGET = 8,
    localErrorTypeATTRIBUTEnoSET = 9,
    localErrorTypeATTRIBUTEunknown = 10,
    localErrorTypeCONSTRUCTORunknown = 11,
    localErrorTypeSTATICMETHODunknown = 12,
    localErrorTypeSTATICATTRIBUTEunknown = 13,
    localErrorTypeCLASSunknown = 14,
    localErrorTypeRETURNnoValue = 15,
    localErrorTypeINTERNAL = 16,
    localErrorTypeCOMMANDunknown = 17,
    localErrorTypeCONTEXTnull = 18,
    localErrorTypeBREAKoutside = 19,
    localErrorTypeCONTINUEoutside = 20,
    localErrorTypeDIVISIONbyZERO = 21,
    localErrorTypeDATABASEconnect = 22,
    localErrorTypeFILEnotFound = 23,
    localErrorTypeFUNCTIONunknown = 24,
    localErrorTypeMETHODgraphicOnly = 26,
    localErrorTypeMETHODunknown = 27,
    localErrorTypeOBJECTcreate = 28,
    localErrorTypeMETHODnotDeclared = 29,
    localErrorTypeOBJECTclassUnknown = 30,
    localErrorTypePARAMcount = 31,
    localErrorTypePARAMvalue = 32,
    localErrorTypePARAMtype = 33,
    localErrorTypeJSONparse = 34,
    localErrorTypeJSONrestore = 35,
    localErrorTypePRECISION = 36,
    localErrorTypeSYNTAX = 37,
    localErrorTypeSYNTAXcolon = 38,
    localErrorTypeSYNTAXequal = 39,
    localErrorTypeSYNTAXopenBracket = 40,
    localErrorTypeSYNTAXcloseBracket = 41,
    localErrorTypeSYNTAXsemicolon = 42,
    localErrorTypeSYNTAXdo = 43,
    localErrorTypeSYNTAXenddo = 44,
    localErrorTypeSYNTAXendif = 45,
    localErrorTypeSYNTAXendfunction = 46,
    localErrorTypeSYNTAXthen = 47,
    localErrorTypeSYNTAXto = 48,
    localErrorTypeTYPEunknown = 49,
    localErrorTypeOPERANDtype = 50,
    localErrorTypeNOTobject = 51,
    localErrorTypeVARIABLEunknown = 52,
    localErrorTypeVARIABLEredeclared = 53,
    localErrorTypeOK = 54,
    localErrorTypeINTERRUPTED = 55,
    localErrorTypeBREAK = 56,
    localErrorTypeCONTINUE = 57,
    localErrorTypeRETURN = 58,
    localErrorTypeRESULTnotOne = 59
};

// The user-facing text of a status; numbers without a text of their own give
// the "unknown status" line with the number.
std::u16string localErrorText(int32_t status);

// Line resolving: line number (from 1) of `position`, and where that line starts.
int localLineResolve(const std::u16string &text, size_t position, size_t &lineStart);

// "pos :4( line:2, pos: 1)" or the "Unabel resolve pos " form past the end.
std::u16string localPositionDescription(const std::u16string &text, size_t position);

// The text from `position` up to the next line feed.
std::u16string localRestOfLine(const std::u16string &text, size_t position);

// The narrow form used for everything written to std::cout: codes up to 255 as
// bytes, Cyrillic letters as their two UTF-8 bytes, anything else as '1'.
std::string localNarrow(const std::u16string &text);
void localNarrowAppend(std::string &out, const std::u16string &text);

// A 7-bit literal as a wide string (for building messages from ASCII pieces).
std::u16string localAscii(const char *text);

// The diagnostic tail " func: F file: S line: N" with its line end.
std::string localDiagTail(const char *func, const char *file, int line);
#define LOCAL_DIAG_TAIL localDiagTail(__func__, __FILE__, __LINE__)

// Writes message + tail to std::cout; `error` puts "ERROR!!! " in front.
void localDiag(const std::u16string &message, bool error, const char *func, const char *file, int line);
#define LOCAL_DIAG(message) localDiag((message), false, __func__, __FILE__, __LINE__)
#define LOCAL_DIAG_ERROR(message) localDiag((message), true, __func__, __FILE__, __LINE__)

// The fatal stop, for broken invariants of the program itself only.
[[noreturn]] void exit_FAILURE(const std::u16string &message);
[[noreturn]] void exit_FAILURE(const char *message);
[[noreturn]] void exit_FAILURE(const std::string &message); // UTF-8

#endif
