#include "localPictureCodec.h"

#include <QBuffer>
#include <QImage>

namespace {

QByteArray png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

bool size(const QByteArray &picture, int &width, int &height)
{
    const QImage image = QImage::fromData(picture);
    width = image.width();
    height = image.height();
    return !image.isNull();
}

QByteArray part(const QByteArray &picture, int x, int y, int width, int height)
{
    return png(QImage::fromData(picture).copy(x, y, width, height));
}

QByteArray fromFile(const QString &fileName)
{
    QImage image;
    return image.load(fileName) ? png(image) : QByteArray();
}

const localPictureCodec codec = {size, part, fromFile};

} // namespace

const localPictureCodec &localPictureCodecBuiltIn()
{
    return codec;
}

// The entry of the module korvelPictures.
extern "C" Q_DECL_EXPORT const localPictureCodec *korvelPictureCodec()
{
    return &codec;
}
