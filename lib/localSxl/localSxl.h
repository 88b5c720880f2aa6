// The language class TABLEDOCUMENT / ТАБЛИЧНЫЙДОКУМЕНТ: a table document
// that a program fills, saves, loads and shows. The object holds the model and
// the state its window shows (cursor, first shown row and column); the window
// itself comes from the widget library through localSxlWindows, so that a
// program without a screen still uses the document as data.
#ifndef LOCALSXL_H
#define LOCALSXL_H

#include "localNativeClass.h"
#include "localSxlDocument.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>

class localSxl;

// The window of a document, registered by the widget library; while it is
// missing, or without a screen, SHOW answers status 26.
struct localSxlWindows {
    // Shows the document in a window with that title, modally when asked.
    void (*show)(localSxl &document, const QString &title, bool modal) = nullptr;

    static localSxlWindows handlers;
};

class localSxl : public localNativeClass<localSxl> {
public:
    localSxlDocument document;
    // The context whose functions answer the document's events.
    localContextUTF8 *context;
    // The file name of the last successful SAVE.
    std::u16string fileName;
    // The cursor in window rows and columns, and the first shown row and
    // column of the document, all from 1.
    uint32_t cursorRow = 1;
    uint32_t cursorColumn = 1;
    uint32_t firstRow = 1;
    uint32_t firstColumn = 1;

    // Without a context the document makes an empty one of its own.
    explicit localSxl(localContextUTF8 *owner);
    ~localSxl() override;

    // Writes toJson in UTF-8; remembers the name on success.
    bool save(const std::u16string &name);
    // Calls the document's cell event with (the document, row, column):
    // СОБЫТИЕЯЧЕЙКААКТИВИРОВАТЬ from the context or one above it, else
    // EVENTCELLACTIVATE from the context itself. No such function: nothing.
    bool cellActivate(localErrorType &status, uint32_t row, uint32_t column);

    static const localNativeClassShape<localSxl> &classShape();
    static bool construct(localErrorType &status, localContextUTF8 *context, localValueVector *arguments,
                          localValueDescription *result);

private:
    std::unique_ptr<localContextUTF8> ownContext;
};

// Makes TABLEDOCUMENT a class of every global context made from now on and
// known to CLASSLOAD, and answers the picture functions that only compute.
// Both executables call it once at start-up, after the widget library.
void localSxlInstall();

#endif
