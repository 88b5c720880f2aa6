// The in-memory image of a form file: the form's size, one record a widget
// and the module's program text. Both the run-time form and the constructor
// are fed from here; files are written from a live surface of element widgets,
// so reader and writer are not each other's mirror (see the writers).
#ifndef LOCALFORMMETADATA_H
#define LOCALFORMMETADATA_H

#include <QColor>
#include <QFont>
#include <QSize>
#include <QString>

#include <cstdint>
#include <string>
#include <vector>

class QDomDocument;
class QWidget;

enum localFormWidgetKind : int32_t {
    localFormWidgetButton = 0,
    localFormWidgetEdit = 1,
    localFormWidgetFrame = 2,
    localFormWidgetImage = 3,
    localFormWidgetLabel = 4,
    localFormWidgetTable = 5
};

// Which attributes a kind carries; kinds from Table on have no mask.
enum localFormPropertyBit : int32_t {
    localFormPropertyAny = 0x001,
    localFormPropertyCaption = 0x002,
    localFormPropertyFormula = 0x020,
    localFormPropertyFont = 0x100,
    localFormPropertyImage = 0x400
};
extern const int32_t localFormPropertyMask[5];
// The mask of a kind, 0 for Table and anything outside the table.
int32_t localFormPropertyMaskOf(int32_t kind);
// The kind's word in the file ("Button"...), empty for an unknown kind.
QString localFormWidgetTypeWord(int32_t kind);

class localFormMetadataWidget {
public:
    int32_t x = 0;
    int32_t y = 0;
    int32_t w = 0;
    int32_t h = 10;
    int32_t kind = localFormWidgetLabel;
    std::u16string identifier;
    std::u16string caption;
    std::u16string formula;
    QFont font;
    QColor fontColor;
    // Deliberately no picture: a record whose file gave none decodes to an
    // empty pixmap.
    std::u16string imageAsBase64 = u"Mirtel";
    std::u16string details;
    std::u16string type;
    int32_t len = 10;
    int32_t dec = 0;
    bool unlimited = false;
    bool multiline = false;

    virtual ~localFormMetadataWidget() = default;
};

class localFormMetadata {
public:
    std::u16string reserved1;
    std::u16string reserved2;
    int32_t width = 100;
    int32_t height = 100;
    std::vector<localFormMetadataWidget *> widgets;
    std::u16string module;

    localFormMetadata() = default;
    // An unreadable or malformed file leaves the empty 100 x 100 form.
    explicit localFormMetadata(const std::u16string &fileName);
    explicit localFormMetadata(const QDomDocument &document);
    localFormMetadata(const localFormMetadata &) = delete;
    localFormMetadata &operator=(const localFormMetadata &) = delete;
    virtual ~localFormMetadata();

    void clear();
    void read(const QDomDocument &document);
    // The stored size; a size of no area gives half the available desktop.
    QSize size() const;
};

// The writers take a surface and write one Widget for each element widget
// found below it. The constructor's file: Form and Module, as wide text to be
// saved in UTF-8.
std::u16string localFormXmlWithModule(QWidget *surface, const std::u16string &module);
// The designer's file: Form only, through Latin-1, which loses what it cannot hold.
QByteArray localFormXmlWithoutModule(QWidget *surface);

#endif
