#include "localSxl.h"

#include "localColorTable.h"
#include "localContextUTF8.h"
#include "localGlobalFunctions.h"
#include "localServices.h"
#include "localString.h"
#include "localSxlPictures.h"
#include "localValueList.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

localSxlWindows localSxlWindows::handlers;

namespace {

// A number argument as the integer the document works with: rounded, and
// held within 32 bits so that no cast overflows.
bool integerArgument(localErrorType &status, const localValueVector &arguments, size_t index, int64_t &value)
{
    if (!localArgType(status, &arguments, index, localValueTypeNUM))
        return false;
    const double number = arguments[index]->localValueNumber;
    value = std::isnan(number) ? 0
                               : int64_t(std::clamp(std::round(number), double(std::numeric_limits<int32_t>::min()),
                                                    double(std::numeric_limits<int32_t>::max())));
    return true;
}

// A row or column: from 1, else status 7.
bool placeArgument(localErrorType &status, const localValueVector &arguments, size_t index, uint32_t &place)
{
    int64_t value = 0;
    if (!integerArgument(status, arguments, index, value))
        return false;
    if (value < 1) {
        status = localErrorTypeRANGE;
        return false;
    }
    place = uint32_t(value);
    return true;
}

bool cellArguments(localErrorType &status, const localValueVector &arguments, uint32_t &row, uint32_t &column)
{
    return placeArgument(status, arguments, 0, row) && placeArgument(status, arguments, 1, column);
}

// An optional number at `index`: -1 (keep) when absent.
bool optionalInteger(localErrorType &status, const localValueVector &arguments, size_t index, int64_t &value)
{
    value = -1;
    return index >= arguments.size() || integerArgument(status, arguments, index, value);
}

// A colour: a number 0xRRGGBB or a name of the colour table; a name the table
// lacks gives black, as an unknown colour name does everywhere else. -1 (keep)
// when absent.
bool colorArgument(localErrorType &status, const localValueVector &arguments, size_t index, int32_t &color)
{
    color = -1;
    if (index >= arguments.size())
        return true;
    if (arguments[index]->getType() == localValueTypeSTR) {
        const localColorName *row = localColorFind(arguments[index]->localValueString);
        color = row != nullptr ? int32_t(row->rgb) : 0;
        return true;
    }
    int64_t value = 0;
    if (!integerArgument(status, arguments, index, value))
        return false;
    color = int32_t(value);
    return true;
}

bool stringArgument(localErrorType &status, const localValueVector &arguments, size_t index)
{
    return localArgType(status, &arguments, index, localValueTypeSTR);
}

bool methodToString(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(localSxl::classDeclaration()->reserved1 + u" adr [" + localAddressText(&sxl) + u"] ");
    return true;
}

bool methodAlignmentSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                        localValueDescription *result)
{
    uint32_t row = 0, column = 0;
    int64_t horizontal = -1, vertical = -1;
    if (!localArgCountRange(status, &arguments, 2, 4) || !cellArguments(status, arguments, row, column)
        || !optionalInteger(status, arguments, 2, horizontal) || !optionalInteger(status, arguments, 3, vertical))
        return false;
    sxl.document.alignmentSet(row, column, int32_t(horizontal), int32_t(vertical));
    result->setVal(1);
    return true;
}

bool methodColorSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                    localValueDescription *result)
{
    uint32_t row = 0, column = 0;
    int32_t colors[4] = {-1, -1, -1, -1}; // text, background, border, pattern
    if (!localArgCountRange(status, &arguments, 3, 6) || !cellArguments(status, arguments, row, column))
        return false;
    for (size_t i = 0; i < std::size(colors); ++i)
        if (!colorArgument(status, arguments, i + 2, colors[i]))
            return false;
    sxl.document.colorSet(row, column, colors[0], colors[1], colors[2], colors[3]);
    result->setVal(1);
    return true;
}

bool methodFontSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                   localValueDescription *result)
{
    uint32_t row = 0, column = 0;
    int64_t size = -1, flags = -1;
    if (!localArgCountRange(status, &arguments, 3, 5) || !cellArguments(status, arguments, row, column)
        || !optionalInteger(status, arguments, 3, size) || !optionalInteger(status, arguments, 4, flags))
        return false;
    if (size < -1 || flags < -1) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    // A family of another type keeps the cell's family.
    const std::u16string family =
        arguments[2]->getType() == localValueTypeSTR ? arguments[2]->localValueString.str() : std::u16string();
    sxl.document.fontSet(row, column, family, int32_t(size), int32_t(flags));
    result->setVal(1);
    return true;
}

bool methodPixmapSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                     localValueDescription *result)
{
    uint32_t row = 0, column = 0;
    if (!localArgCount(status, &arguments, 3) || !cellArguments(status, arguments, row, column)
        || !stringArgument(status, arguments, 2))
        return false;
    sxl.document.pictureSet(row, column,
                            QByteArray::fromBase64(localToQString(arguments[2]->localValueString).toLatin1()));
    result->setVal(1);
    return true;
}

bool methodTextGet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                   localValueDescription *result)
{
    uint32_t row = 0, column = 0;
    if (!localArgCount(status, &arguments, 2) || !cellArguments(status, arguments, row, column))
        return false;
    result->setString(localFromQString(sxl.document.cellTextGet(row, column)));
    return true;
}

bool methodTextSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                   localValueDescription *result)
{
    uint32_t row = 0, column = 0;
    if (!localArgCount(status, &arguments, 3) || !cellArguments(status, arguments, row, column)
        || !stringArgument(status, arguments, 2))
        return false;
    sxl.document.textSet(row, column, localToQString(arguments[2]->localValueString));
    result->setVal(1);
    return true;
}

bool methodClear(localErrorType &status, localSxl &sxl, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    sxl.document.clear();
    result->setVal(1);
    return true;
}

bool methodColumnWidthGet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                          localValueDescription *result)
{
    uint32_t column = 0;
    if (!localArgCount(status, &arguments, 1) || !placeArgument(status, arguments, 0, column))
        return false;
    result->setVal(sxl.document.columnWidth(column));
    return true;
}

bool methodColumnWidthSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                          localValueDescription *result)
{
    uint32_t column = 0;
    int64_t width = 0;
    if (!localArgCount(status, &arguments, 2) || !placeArgument(status, arguments, 0, column)
        || !integerArgument(status, arguments, 1, width))
        return false;
    sxl.document.columnWidthSet(column, int32_t(width));
    result->setVal(1);
    return true;
}

bool methodRowHeightGet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                        localValueDescription *result)
{
    uint32_t row = 0;
    if (!localArgCount(status, &arguments, 1) || !placeArgument(status, arguments, 0, row))
        return false;
    result->setVal(sxl.document.rowHeight(row));
    return true;
}

// The row is checked and then not used: the height goes to the default cell,
// so every row without a record of its own changes. Programs rely on that.
bool methodRowHeightSet(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                        localValueDescription *result)
{
    uint32_t row = 0;
    int64_t height = 0;
    if (!localArgCount(status, &arguments, 2) || !placeArgument(status, arguments, 0, row)
        || !integerArgument(status, arguments, 1, height))
        return false;
    sxl.document.defaultHeightSet(int32_t(height));
    result->setVal(1);
    return true;
}

bool methodFromJson(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !stringArgument(status, arguments, 0))
        return false;
    result->setBool(sxl.document.fromJson(arguments[0]->localValueString));
    return true;
}

bool methodLoad(localErrorType &status, localSxl &sxl, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !stringArgument(status, arguments, 0))
        return false;
    result->setBool(sxl.document.load(arguments[0]->localValueString));
    return true;
}

bool methodSave(localErrorType &status, localSxl &sxl, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !stringArgument(status, arguments, 0))
        return false;
    result->setBool(sxl.save(arguments[0]->localValueString));
    return true;
}

bool methodShow(localErrorType &status, localSxl &sxl, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 0, 3))
        return false;
    for (size_t i = 0; i < arguments.size() && i < 2; ++i)
        if (!stringArgument(status, arguments, i))
            return false;
    if (localSxlWindows::handlers.show == nullptr || !localServices::instance().graphical()) {
        status = localErrorTypeMETHODgraphicOnly;
        return false;
    }
    const std::u16string first = arguments.size() > 0 ? arguments[0]->localValueString.str() : std::u16string();
    const std::u16string second = arguments.size() > 1 ? arguments[1]->localValueString.str() : std::u16string();
    const bool modal = arguments.size() > 2 && arguments[2]->localValueNumber > 0.0;
    localSxlWindows::handlers.show(sxl, localToQString(first + u" [" + second + u"]"), modal);
    result->setBool(true);
    return true;
}

bool methodToJson(localErrorType &status, localSxl &sxl, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(sxl.document.toJson());
    return true;
}

bool methodToValueList(localErrorType &status, localSxl &sxl, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    sxl.document.toValueList(result);
    return true;
}

const localSxl::member members[] = {
    {u"TOSTRING", u"СТРОКА", methodToString},
    {u"CELLALIGMENTSET", u"ЯЧЕЙКАВЫРАВНИВАНИЕУСТАНОВИТЬ", methodAlignmentSet},
    {u"CELLCOLORSET", u"ЯЧЕЙКАЦВЕТУСТАНОВИТЬ", methodColorSet},
    {u"CELLFONTSET", u"ЯЧЕЙКАШРИФТУСТАНОВИТЬ", methodFontSet},
    {u"CELLPIXMAPASBASE64SET", nullptr, methodPixmapSet},
    {u"CELLTEXTGET", u"ЯЧЕЙКАТЕКСТПОЛУЧИТЬ", methodTextGet},
    {u"CELLTEXTSET", u"ЯЧЕЙКАТЕКСТУСТАНОВИТЬ", methodTextSet},
    {u"CLEAR", u"ОЧИСТИТЬ", methodClear},
    {u"COLUMNWIDTHGET", u"КОЛОНКАШИРИНАПОЛУЧИТЬ", methodColumnWidthGet},
    {u"COLUMNWIDTHSET", u"КОЛОНКАШИРИНАУСТАНОВИТЬ", methodColumnWidthSet},
    {u"ROWHEIGHTGET", u"РЯДВЫСОТАПОЛУЧИТЬ", methodRowHeightGet},
    {u"ROWHEIGHTSET", u"РЯДВЫСОТАУСТАНОВИТЬ", methodRowHeightSet},
    {u"FROMJSON", nullptr, methodFromJson},
    {u"LOAD", u"ЗАГРУЗИТЬ", methodLoad},
    {u"SAVE", u"ЗАПИСАТЬ", methodSave},
    {u"SHOW", u"ПОКАЗАТЬ", methodShow},
    {u"TOJSON", nullptr, methodToJson},
    {u"TOVALUELIST", nullptr, methodToValueList},
};

bool tableDocumentRegister()
{
    return localContextUTF8::classRegister(localSxl::classDeclaration());
}

} // namespace

localSxl::localSxl(localContextUTF8 *owner) : context(owner)
{
    if (context == nullptr) {
        ownContext = std::make_unique<localContextUTF8>(localContextUTF8::globalContext);
        context = ownContext.get();
    }
}

localSxl::~localSxl() = default;

bool localSxl::save(const std::u16string &name)
{
    if (!localString::fileWrite(false, localString::possibleCodePageUTF8, document.toJson(), name))
        return false;
    fileName = name;
    return true;
}

bool localSxl::cellActivate(localErrorType &status, uint32_t row, uint32_t column)
{
    const localContextUTF8 *foundIn = nullptr;
    std::u16string name = u"СОБЫТИЕЯЧЕЙКААКТИВИРОВАТЬ";
    if (context->functionLookup(name, &foundIn) == nullptr) {
        name = u"EVENTCELLACTIVATE";
        if (context->functionLookup(name, &foundIn) == nullptr || foundIn != context)
            return true;
    }
    localValueVector arguments = {localValueNew(), localValueNew(), localValueNew()};
    putInCell(this, arguments[0]);
    arguments[1]->setVal(row);
    arguments[2]->setVal(column);
    localValueDescription *result = nullptr;
    const bool ran = context->funcExec(status, name, &arguments, &result);
    localValueRelease(result);
    localValueReleaseAll(arguments);
    return ran;
}

const localNativeClassShape<localSxl> &localSxl::classShape()
{
    static const localNativeClassShape<localSxl> shape = {u"TABLEDOCUMENT",
                                                          u"ТАБЛИЧНЫЙДОКУМЕНТ",
                                                          u"Табличный документ",
                                                          u"класс Табличный документ",
                                                          "localSxl::classImplementationMethodFunction()",
                                                          members,
                                                          std::size(members)};
    return shape;
}

bool localSxl::construct(localErrorType &, localContextUTF8 *context, localValueVector *, localValueDescription *result)
{
    putInCell(new localSxl(context), result);
    return true;
}

void localSxlInstall()
{
    localContextUTF8::startupClassAdd(localSxl::classDeclaration);
    localClassLoaderSet(u"TABLEDOCUMENT", tableDocumentRegister);
    localPictureFunctionsRegister();
}
