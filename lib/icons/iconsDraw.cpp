// Draws the project's pictures into the folder given as the only argument:
//   logoKV_3232.png   the window icon, the letters K and V on a console-black tile
//   204.bmp           a strip of two 16 x 16 tool icons of a form: read
//                     settings (an arrow into a tray) at x 0, save them (a
//                     disk) at x 16
//   IMAGECOL.png      the marks of a browse's rows: at (0, 464), (16, 464) and
//                     (32, 464) a folder, an open folder and an item, 16 x 16
//   1186.bmp, 146.bmp, 1264.png   the layout designer's menu: a new field,
//                     alignment, ordering
// Lines only, no fonts, so the pictures come out the same on every machine.
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QString>

#include <cstdio>

namespace {

const QColor tile(0x10, 0x14, 0x10);
const QColor rim(0x2e, 0x8b, 0x2e);
const QColor letters(0x3c, 0xff, 0x3c);

QImage logo(int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = size / 32.0;
    painter.scale(unit, unit);

    painter.setPen(QPen(rim, 1.5));
    painter.setBrush(tile);
    painter.drawRoundedRect(QRectF(1, 1, 30, 30), 6, 6);

    QPen stroke(letters, 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(stroke);
    painter.setBrush(Qt::NoBrush);
    QPainterPath k;
    k.moveTo(7, 8);
    k.lineTo(7, 24);
    k.moveTo(15, 8);
    k.lineTo(8, 16);
    k.lineTo(15, 24);
    painter.drawPath(k);
    QPainterPath v;
    v.moveTo(18, 8);
    v.lineTo(21.5, 24);
    v.lineTo(25, 8);
    painter.drawPath(v);
    return image;
}

QImage formActions()
{
    QImage image(32, 16, QImage::Format_RGB32);
    image.fill(QColor(0xf0, 0xf0, 0xf0));
    QPainter painter(&image);
    painter.setPen(QPen(rim, 1.0));
    // Read: a tray with an arrow coming down into it.
    painter.drawLine(2, 10, 2, 14);
    painter.drawLine(2, 14, 13, 14);
    painter.drawLine(13, 14, 13, 10);
    painter.drawLine(7, 1, 7, 11);
    painter.drawLine(4, 8, 7, 11);
    painter.drawLine(10, 8, 7, 11);
    // Save: a disk with its label and shutter.
    painter.setBrush(tile);
    painter.drawRect(17, 1, 13, 13);
    painter.setBrush(QColor(0xf0, 0xf0, 0xf0));
    painter.drawRect(20, 2, 7, 4);
    painter.drawRect(19, 9, 9, 5);
    return image;
}

const QColor folderBody(0xe8, 0xb8, 0x3a);
const QColor folderEdge(0x8a, 0x62, 0x10);
const QColor itemBody(0xf4, 0xf4, 0xf0);
const QColor itemEdge(0x50, 0x60, 0x78);

void folderDraw(QPainter &painter, bool open)
{
    painter.setPen(QPen(folderEdge, 1));
    painter.setBrush(folderBody.darker(110));
    painter.drawPolygon(QPolygonF({{1.5, 3.5}, {6.5, 3.5}, {8, 5}, {14.5, 5}, {14.5, 13.5}, {1.5, 13.5}}));
    painter.setBrush(folderBody);
    if (open)
        painter.drawPolygon(QPolygonF({{3.5, 7.5}, {15.5, 7.5}, {13.5, 13.5}, {1.5, 13.5}}));
    else
        painter.drawRect(QRectF(1.5, 6.5, 13, 7));
}

void itemDraw(QPainter &painter)
{
    painter.setPen(QPen(itemEdge, 1));
    painter.setBrush(itemBody);
    painter.drawPolygon(QPolygonF({{3.5, 1.5}, {10, 1.5}, {12.5, 4}, {12.5, 14.5}, {3.5, 14.5}}));
    for (double y : {5.5, 8.5, 11.5})
        painter.drawLine(QPointF(5.5, y), QPointF(10.5, y));
}

QImage rowMarks()
{
    QImage image(48, 480, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, 464);
    folderDraw(painter, false);
    painter.translate(16, 0);
    folderDraw(painter, true);
    painter.translate(16, 0);
    itemDraw(painter);
    return image;
}

QImage blank()
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(QColor(0xf0, 0xf0, 0xf0));
    return image;
}

// A new field: an input box with a plus over its corner.
QImage newField()
{
    QImage image = blank();
    QPainter painter(&image);
    painter.setPen(QPen(rim, 1.0));
    painter.setBrush(Qt::white);
    painter.drawRect(1, 6, 12, 7);
    painter.drawLine(3, 8, 3, 11);
    painter.setPen(QPen(tile, 2.0));
    painter.drawLine(12, 1, 12, 7);
    painter.drawLine(9, 4, 15, 4);
    return image;
}

// Alignment: bars of different lengths flush against one edge.
QImage alignLeft()
{
    QImage image = blank();
    QPainter painter(&image);
    painter.setPen(QPen(tile, 1.0));
    painter.drawLine(1, 0, 1, 15);
    painter.fillRect(3, 2, 11, 3, rim);
    painter.fillRect(3, 7, 6, 3, rim);
    painter.fillRect(3, 12, 9, 3, rim);
    return image;
}

// Ordering: three cards stacked with an arrow down their side.
QImage arrange()
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setPen(QPen(tile, 1.0));
    for (int step = 0; step < 3; ++step) {
        painter.setBrush(step == 2 ? letters : QColor(Qt::white));
        painter.drawRect(1 + 2 * step, 1 + 4 * step, 8, 5);
    }
    painter.setPen(QPen(rim, 1.0));
    painter.drawLine(13, 2, 13, 13);
    painter.drawLine(11, 11, 13, 13);
    painter.drawLine(15, 11, 13, 13);
    return image;
}

bool save(const QImage &image, const QString &folder, const char *name, const char *format)
{
    if (image.save(folder + QLatin1Char('/') + QLatin1String(name), format))
        return true;
    std::fprintf(stderr, "iconsDraw: cannot write %s\n", name);
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: iconsDraw folder\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const bool done = save(logo(32), folder, "logoKV_3232.png", "PNG") && save(rowMarks(), folder, "IMAGECOL.png", "PNG")
                      && save(formActions(), folder, "204.bmp", "BMP") && save(newField(), folder, "1186.bmp", "BMP")
                      && save(alignLeft(), folder, "146.bmp", "BMP") && save(arrange(), folder, "1264.png", "PNG");
    return done ? 0 : 1;
}
