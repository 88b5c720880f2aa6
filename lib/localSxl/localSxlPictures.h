// The picture functions that only compute: PIXMAPASBASE64FROMFILEGET,
// PIXMAPASBASE64WIDTH, PIXMAPASBASE64HEIGHT, PIXMAPASBASE64PARTGET. They work
// headless; pictures travel as Base64 of PNG.
#ifndef LOCALSXLPICTURES_H
#define LOCALSXLPICTURES_H

struct localPictureCodec;

// Answers the four functions from now on, with `codec` when given, else with
// the module korvelPictures loaded on first use.
void localPictureFunctionsRegister(const localPictureCodec *codec = nullptr);

#endif
