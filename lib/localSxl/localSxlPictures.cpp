#include "localSxlPictures.h"

#include "localPictureCodec.h"

#include "localClassDeclaration.h"
#include "localGlobalFunctions.h"
#include "localString.h"

#include <QCoreApplication>
#include <QLibrary>

#include <algorithm>

namespace {

const localPictureCodec *given = nullptr;

// The codec, loading the module the first time; null when it is missing.
const localPictureCodec *codec()
{
    static const localPictureCodec *const loaded = [] {
        if (given != nullptr)
            return given;
        QLibrary module(QCoreApplication::applicationDirPath() + QStringLiteral("/korvelPictures"));
        typedef const localPictureCodec *(*entry)();
        const entry find = reinterpret_cast<entry>(module.resolve("korvelPictureCodec"));
        return find != nullptr ? find() : nullptr;
    }();
    return loaded;
}

bool codecReady(localErrorType &status)
{
    if (codec() != nullptr)
        return true;
    status = localErrorTypeMETHODgraphicOnly;
    return false;
}

QByteArray bytesOf(const std::u16string &base64)
{
    return QByteArray::fromBase64(localToQString(base64).toLatin1());
}

std::u16string base64Of(const QByteArray &bytes)
{
    return localFromQString(QString::fromLatin1(bytes.toBase64()));
}

bool numbersFrom(localErrorType &status, localValueVector &arguments, size_t from)
{
    for (size_t i = from; i < arguments.size(); ++i)
        if (!localArgType(status, &arguments, i, localValueTypeNUM))
            return false;
    return true;
}

bool pictureFromFileGet(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR)
        || !codecReady(status))
        return false;
    const std::u16string &fileName = arguments[0]->localValueString;
    if (!localString::fileExist(fileName)) {
        status = localErrorTypeFILEnotFound;
        return false;
    }
    const QByteArray picture = codec()->fromFile(localToQString(fileName));
    if (picture.isEmpty()) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    result->setString(base64Of(picture));
    return true;
}

bool pictureSize(localErrorType &status, localValueVector &arguments, localValueDescription *result, bool width)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR)
        || !codecReady(status))
        return false;
    int w = 0, h = 0;
    codec()->size(bytesOf(arguments[0]->localValueString), w, h);
    result->setVal(width ? w : h);
    return true;
}

bool pictureWidth(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                  localValueDescription *result)
{
    return pictureSize(status, arguments, result, true);
}

bool pictureHeight(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                   localValueDescription *result)
{
    return pictureSize(status, arguments, result, false);
}

// (picture, x, y, [width, [height]]): the part from (x, y), cut to the picture.
bool picturePartGet(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 3, 5) || !localArgType(status, &arguments, 0, localValueTypeSTR)
        || !numbersFrom(status, arguments, 1) || !codecReady(status))
        return false;
    const QByteArray picture = bytesOf(arguments[0]->localValueString);
    int pictureWidth = 0, pictureHeight = 0;
    codec()->size(picture, pictureWidth, pictureHeight);
    const int x = localTruncate32(arguments[1]->localValueNumber);
    const int y = localTruncate32(arguments[2]->localValueNumber);
    int width = arguments.size() > 3 ? localTruncate32(arguments[3]->localValueNumber) : pictureWidth - x;
    int height = arguments.size() > 4 ? localTruncate32(arguments[4]->localValueNumber) : pictureHeight - y;
    if (x < 0 || y < 0 || width < 0 || height < 0 || x >= pictureWidth || y >= pictureHeight) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    width = std::min(width, pictureWidth - x);
    height = std::min(height, pictureHeight - y);
    result->setString(base64Of(codec()->part(picture, x, y, width, height)));
    return true;
}

} // namespace

void localPictureFunctionsRegister(const localPictureCodec *builtIn)
{
    given = builtIn;
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64FROMFILEGET", pictureFromFileGet);
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64WIDTH", pictureWidth);
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64HEIGHT", pictureHeight);
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64PARTGET", picturePartGet);
}
