// The picture functions that only compute (PIXMAPASBASE64FROMFILEGET, WIDTH,
// HEIGHT, PARTGET): they work on images, which need no screen, so programs use
// them headless too. Pictures travel as Base64 of PNG.
#ifndef LOCALSXLPICTURES_H
#define LOCALSXLPICTURES_H

#include <QImage>

#include <string>

// A null image when the text is no picture.
QImage localPictureFromBase64(const std::u16string &base64);
std::u16string localPictureToBase64(const QImage &image);

// Answers the four functions from now on.
void localPictureFunctionsRegister();

#endif
