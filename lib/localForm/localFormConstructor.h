// The window in which a form is edited as a whole: its layout on the
// designer's surface, its module in the program editor, and a table page.
// It is the one writer of the complete form file, module included.
#ifndef LOCALFORMCONSTRUCTOR_H
#define LOCALFORMCONSTRUCTOR_H

#include <QMdiSubWindow>
#include <QTabWidget>

#include <string>

class QScrollArea;
class localFormLayoutDesigner;
class localFormMetadata;
class localVclWidgetEditor;

class localFormConstructor : public QTabWidget {
    Q_OBJECT
public:
    // The movable, resizable frame around the surface.
    class fonFormSubWindow_t : public QMdiSubWindow {
    public:
        // The size the surface is to have inside the frame.
        QSize surfaceSize;

        explicit fonFormSubWindow_t(QWidget *parent = nullptr);
        void fit();

    protected:
        void showEvent(QShowEvent *event) override;

    private:
        bool fitted = false;
    };

    std::u16string fileName;
    QScrollArea *scrollArea;
    fonFormSubWindow_t *fonFormSubWindow = nullptr;
    localFormLayoutDesigner *layoutDesigner = nullptr;
    localVclWidgetEditor *moduleEditor;
    QWidget *tableWidget;

    explicit localFormConstructor(QWidget *parent = nullptr);

    // A name of no existing file asks for one; false when nothing was loaded.
    bool load(const std::u16string &name);
    bool save();
    bool saveAs(const std::u16string &folder);
    // A new surface with the metadata's elements, and its module as text.
    void metadataApply(const localFormMetadata &metadata);
    // The surface's size, the frame fitted round it.
    void surfaceSizeSet(const QSize &size);
    // The file's text: Form and Module.
    std::u16string xml() const;

    // <program dir>/prgTest/forms, where new forms go.
    static std::u16string formsFolder();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void titleUpdate();
};

// The empty constructor the console opens.
QWidget *localFormConstructorShow();

#endif
