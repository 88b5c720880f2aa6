#include "localSxlPictures.h"

#include "localClassDeclaration.h"
#include "localGlobalFunctions.h"
#include "localString.h"

#include <QBuffer>
#include <QByteArray>

#include <algorithm>

namespace {

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
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const std::u16string &fileName = arguments[0]->localValueString;
    if (!localString::fileExist(fileName)) {
        status = localErrorTypeFILEnotFound;
        return false;
    }
    QImage image;
    if (!image.load(localToQString(fileName))) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    result->setString(localPictureToBase64(image));
    return true;
}

bool pictureSize(localErrorType &status, localValueVector &arguments, localValueDescription *result, bool width)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const QImage image = localPictureFromBase64(arguments[0]->localValueString);
    result->setVal(width ? image.width() : image.height());
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
        || !numbersFrom(status, arguments, 1))
        return false;
    const QImage image = localPictureFromBase64(arguments[0]->localValueString);
    const int x = localTruncate32(arguments[1]->localValueNumber);
    const int y = localTruncate32(arguments[2]->localValueNumber);
    int width = arguments.size() > 3 ? localTruncate32(arguments[3]->localValueNumber) : image.width() - x;
    int height = arguments.size() > 4 ? localTruncate32(arguments[4]->localValueNumber) : image.height() - y;
    if (x < 0 || y < 0 || width < 0 || height < 0 || x >= image.width() || y >= image.height()) {
        status = localErrorTypePARAMvalue;
        return false;
    }
    width = std::min(width, image.width() - x);
    height = std::min(height, image.height() - y);
    result->setString(localPictureToBase64(image.copy(x, y, width, height)));
    return true;
}

} // namespace

QImage localPictureFromBase64(const std::u16string &base64)
{
    return QImage::fromData(QByteArray::fromBase64(localToQString(base64).toLatin1()));
}

std::u16string localPictureToBase64(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return localFromQString(QString::fromLatin1(bytes.toBase64()));
}

void localPictureFunctionsRegister()
{
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64FROMFILEGET", pictureFromFileGet);
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64WIDTH", pictureWidth);
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64HEIGHT", pictureHeight);
    localGlobalFunctionGraphicalSet(u"PIXMAPASBASE64PARTGET", picturePartGet);
}
