// Pictures as bytes of their files: the few operations that need an image
// decoder. The decoder lives in QtGui, which korvel-cli does not link, so the
// codec is a table of functions: the window library hands in its own, and
// without one the module korvelPictures beside the executable is loaded the
// first time a picture function runs.
#ifndef LOCALPICTURECODEC_H
#define LOCALPICTURECODEC_H

#include <QByteArray>
#include <QString>

struct localPictureCodec {
    // False when the bytes are no picture.
    bool (*size)(const QByteArray &picture, int &width, int &height);
    // The part as PNG bytes; the rectangle lies within the picture.
    QByteArray (*part)(const QByteArray &picture, int x, int y, int width, int height);
    // The picture of a file as PNG bytes; empty when the file is no picture.
    QByteArray (*fromFile)(const QString &fileName);
};

// The codec built into this binary (links QtGui).
const localPictureCodec &localPictureCodecBuiltIn();

#endif
