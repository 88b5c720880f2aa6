// One widget of a form, at run time and in the designer alike: a frame of
// 5 pixels around the real content widget, which the kind decides.
#ifndef LOCALFORMELEMENT_H
#define LOCALFORMELEMENT_H

#include "localVclGrid200123localValueTable.h"

#include <QPixmap>
#include <QWidget>

#include <cstdint>
#include <string>

class localContextUTF8;

// A picture kept as Base64 text, painted stretched over the whole widget.
class localVclImage : public QWidget {
    Q_OBJECT
public:
    explicit localVclImage(QWidget *parent = nullptr);

    const std::u16string &imageAsBase64() const { return base64; }
    // Decodes once per change; text that is no picture paints the background only.
    void imageAsBase64Set(const std::u16string &text);
    // The picture a new image starts with.
    static const std::u16string &defaultImage();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::u16string base64;
    QPixmap picture;
};

// The grid of a form's Table field: a value table from the form's variables,
// which tells the form when the user has edited a cell.
class localVclTestWidgetValueTable200617 : public localVclGrid200123localValueTable {
    Q_OBJECT
public:
    explicit localVclTestWidgetValueTable200617(QWidget *parent, localContextUTF8 *formContext);

signals:
    void dataSousceIdChanged();

protected:
    void cellValueSet(int32_t row, int32_t column, const QString &value) override;
};

class localFormLayoutDesignerElementWidget : public QWidget {
    Q_OBJECT
public:
    static constexpr int frameWidth = 5;
    enum elementMode : int32_t { modeDesigner = 0, modeRun = 1 };

    localContextUTF8 *context = nullptr;
    QWidget *contentWidget = nullptr;
    int32_t mode;
    int32_t kind;
    std::u16string formula;
    std::u16string caption; // Label only
    bool constructed = true;
    std::u16string identifier;
    QPixmap pixmap;
    std::u16string type;
    int32_t len = 10;
    int32_t dec = 0;
    bool unlimited = false;
    bool multiline = false;

    // `content` is the geometry of the content in the parent's coordinates;
    // the element stands 5 pixels further out on every side.
    localFormLayoutDesignerElementWidget(int32_t widgetKind, int32_t elementMode, const QRect &content,
                                         QWidget *parent);

    void captionSet(const std::u16string &text);
    std::u16string captionGet() const;
    // The Button's picture, shown as its icon.
    void pixmapSet(const QPixmap &picture);
    // The font, and the colour for every colour group of the content's palette.
    void fontSet(const QFont &font, const QColor &color);
    // The content's geometry in the parent's coordinates, as the file keeps it.
    QRect contentGeometry() const;
    // The Table's grid layout as JSON text; empty for other kinds.
    std::u16string tableDetails() const;
    void tableDetailsSet(const std::u16string &json);

    // Design mode only: the grips show black and take the mouse while the
    // element is selected, and stay invisible to the eye otherwise.
    void selectedSet(bool selected);
    bool isSelected() const { return selectedFlag; }

    // The context of the nearest form above `widget`, or null.
    static localContextUTF8 *formContextOf(QWidget *widget);

signals:
    void varValueChanged();

public slots:
    void userButtonClickedSlot();
    void emitVarValueChangedSlot();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    bool selectedFlag = false;

    QWidget *contentMake();
    void gripsMake(class QGridLayout *layout);
    QWidget *tableMake();
    void formulaShow();
};

#endif
