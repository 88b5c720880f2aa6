// Services the widget code shares: showing a widget as a window (inside the
// MDI area when there is one), messages, the colour table, file names and
// pictures kept as Base64 text.
#ifndef LOCALVCL_H
#define LOCALVCL_H

#include <QColor>
#include <QPixmap>
#include <QString>

#include <cstdint>
#include <string>

class QMdiArea;
class QWidget;
class localContextUTF8;

// How a widget is shown: the items "title", "modal", "iconAsBase64", "x", "y".
struct localVclShowParameters {
    QString title;
    bool modal = false;
    QString iconAsBase64;
    bool hasX = false;
    bool hasY = false;
    int x = 0;
    int y = 0;
};

class localVCL {
public:
    // The named widgets of the console window; null when the program runs
    // without it, and every caller must allow that.
    static QMdiArea *mdiArea();
    static QWidget *messagePanel();

    // Wraps `widget` in a frame (a sub-window of the MDI area, else a
    // localMainWindow), shows it and answers the frame. The widget is
    // deleted when its window closes.
    static QWidget *applicationShowWidget(QWidget *widget, const localVclShowParameters &parameters);
    static QWidget *applicationShowWidget(QWidget *widget, const QString &title, bool modal);

    // The default database file; asks the user when it does not exist.
    static QString applicationGetDataFullFileName();

    // An information box; with seconds above 0 it closes itself.
    static int applicationMessage(const QString &text, const QString &details, int seconds);

    // Asks for a name and writes `text` in `codePage`; the name, or empty on a failure.
    static std::u16string saveAs(int32_t codePage, const std::u16string &text, const QString &title,
                                 const QString &filter, const QString &folder);

    // A colour of the system's table (localColorTable.h) by its English or
    // Russian name; false when neither matches.
    static bool colorFind(const std::u16string &name, QColor &color);

    // A null pixmap when the text is not a picture.
    static QPixmap pixmapFromBase64(const std::u16string &base64);
    static std::u16string pixmapToBase64(const QPixmap &pixmap);

    // The global context kept in the application property "localGlobalContext";
    // made (and stored) when the property is absent.
    static localContextUTF8 *globalContext();
};

#endif
