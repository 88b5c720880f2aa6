// The surface on which a form is laid out: element widgets in design mode on
// a grid of points, selected in order (the first is the reference of
// alignment and size matching), moved with the keyboard, edited through a
// properties dialog and written as the designer's form file.
#ifndef LOCALFORMLAYOUTDESIGNER_H
#define LOCALFORMLAYOUTDESIGNER_H

#include <QDialog>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QSpinBox;
class localFormLayoutDesignerElementWidget;
class localVclImage;

class localFormLayoutDesigner : public QWidget {
    Q_OBJECT
public:
    std::vector<localFormLayoutDesignerElementWidget *> selected;
    bool gridEnabled = true;
    int32_t gridStepX = 25;
    int32_t gridStepY = 25;
    // Where Ctrl+S writes; empty asks for a name.
    std::u16string formFileName;
    // Set by a window that saves the whole form (module included): Ctrl+S
    // then goes there instead of writing the designer's file.
    std::function<void()> saveHandler;

    explicit localFormLayoutDesigner(QWidget *parent = nullptr);
    // The surface keeps the size it was given: a frame fits itself round it.
    QSize sizeHint() const override;

    void selectionAdd(localFormLayoutDesignerElementWidget *element);
    void selectionRemove(localFormLayoutDesignerElementWidget *element);
    void selectionClear();

    // Codes 1 left, 2 right, 32 top, 64 bottom; the first selected stays.
    void align(int32_t code);
    // 'W' width, 'H' height, 'S' both, taken from the first selected.
    void sizeMatch(char16_t how);
    void moveSelected(int32_t dx, int32_t dy);
    // The step that brings the top-left selected element onto a grid line.
    int32_t getDelta_afterShapCorrection_dY(int32_t dY);

    // A new element of `kind` (localFormWidgetKind) with its content's top
    // left at `position`, in the default size and caption of the kind.
    localFormLayoutDesignerElementWidget *elementNew(int32_t kind, const QPoint &position);
    // Takes an element made elsewhere (the constructor's load) under the
    // surface's event filter.
    void elementAdopt(localFormLayoutDesignerElementWidget *element);

    // The context menu as shown at `position`; the caller owns it.
    QMenu *contextMenuMake(const QPoint &position);
    // The designer's file: Form without Module, through Latin-1.
    bool formSave();
    // Runs the laid-out form as a form window.
    QWidget *preview();

public slots:
    void contextMenuPrepare(const QPoint &position);
    void actDeleteProc();
    void actPropertiesProc();
    void newDev();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int32_t labelCounter = 0;

    localFormLayoutDesignerElementWidget *elementOf(QObject *object) const;
    void elementPress(localFormLayoutDesignerElementWidget *element, Qt::KeyboardModifiers modifiers);
    void menuDispatch(QAction *chosen, const QPoint &position);
};

// The properties of one element on five pages; the element is read on
// construction and written by `apply`.
class localFormLayoutDesignerElementWidgetPropertiesDialog : public QDialog {
    Q_OBJECT
public:
    QLineEdit *captionEdit;
    QLineEdit *identifierEdit;
    QComboBox *typeCombo;
    QSpinBox *lenSpin;
    QSpinBox *decSpin;
    QCheckBox *unlimitedCheck;
    QCheckBox *multilineCheck;
    QPlainTextEdit *formulaEdit;
    QComboBox *fontFamilyCombo;
    QSpinBox *fontSizeSpin;
    QCheckBox *boldCheck;
    QCheckBox *italicCheck;
    QComboBox *colorCombo;
    QLineEdit *sample;
    QPlainTextEdit *descriptionEdit;
    localVclImage *image;

    localFormLayoutDesignerElementWidgetPropertiesDialog(localFormLayoutDesignerElementWidget *element,
                                                         QWidget *parent = nullptr);
    void apply(localFormLayoutDesignerElementWidget *element) const;

signals:
    void applied();

public slots:
    void tabPanelTypeChangedEvent();
    void tabPanelImageImageClicked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *generalPage();
    QWidget *fontPage();
    void read(const localFormLayoutDesignerElementWidget *element);
    void sampleUpdate();
};

#endif
