#include "localFormElement.h"

#include "localForm.h"
#include "localFormMetadata.h"

#include "localContextUTF8.h"
#include "localServices.h"
#include "localErrorType.h"
#include "localInterpretatorUTF8.h"
#include "localString.h"
#include "localVCL.h"

#include <QBuffer>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSizeGrip>

#include <iostream>

namespace {

// The blanks, tabs and line feeds that formulas are cut of at both ends.
std::u16string formulaCut(const std::u16string &formula)
{
    return localString::trim(formula);
}

// The value of `formula` in `context` as text; false (text untouched) when
// the evaluation fails, whose details the evaluator has already given.
bool formulaValue(const std::u16string &formula, localContextUTF8 *context, std::u16string &text)
{
    const std::u16string expression = formulaCut(formula);
    if (expression.empty() || context == nullptr)
        return false;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *value = nullptr;
    const bool done = localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, expression, position, &value,
                                                                                 context, false);
    if (done && value != nullptr)
        text = value->toString();
    localValueRelease(value);
    return done;
}

// A frame with its caption in a label at the top left.
QWidget *panelMake(QWidget *parent)
{
    QFrame *panel = new QFrame(parent);
    panel->setFrameStyle(QFrame::Box | QFrame::Sunken);
    QLabel *caption = new QLabel(panel);
    caption->move(4, 0);
    return panel;
}

} // namespace

localVclImage::localVclImage(QWidget *parent) : QWidget(parent)
{
    imageAsBase64Set(defaultImage());
}

void localVclImage::imageAsBase64Set(const std::u16string &text)
{
    if (text == base64)
        return;
    base64 = text;
    picture = localVCL::pixmapFromBase64(base64);
    update();
}

const std::u16string &localVclImage::defaultImage()
{
    // A grey picture frame, so that an image without a formula is seen.
    static const std::u16string picture = [] {
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(QColor(0xd0, 0xd0, 0xd0));
        QPainter painter(&image);
        painter.setPen(QColor(0x70, 0x70, 0x70));
        painter.drawRect(0, 0, 15, 15);
        painter.drawLine(2, 13, 7, 6);
        painter.drawLine(7, 6, 13, 13);
        painter.end();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        return localFromQString(QString::fromLatin1(bytes.toBase64()));
    }();
    return picture;
}

void localVclImage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    if (!picture.isNull())
        painter.drawPixmap(rect(), picture);
}

localFormLayoutDesignerElementWidget::localFormLayoutDesignerElementWidget(int32_t widgetKind, int32_t elementMode,
                                                                           const QRect &content, QWidget *parent)
    : QWidget(parent), mode(elementMode), kind(widgetKind)
{
    context = formContextOf(parent);
    setWindowFlags(Qt::SubWindow);
    if (parent != nullptr)
        installEventFilter(parent);
    setGeometry(content.adjusted(-frameWidth, -frameWidth, frameWidth, frameWidth));
    contentWidget = contentMake();
    QGridLayout *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (int outer : {0, 2}) {
        layout->setRowMinimumHeight(outer, frameWidth);
        layout->setColumnMinimumWidth(outer, frameWidth);
    }
    layout->setRowStretch(1, 1);
    layout->setColumnStretch(1, 1);
    layout->addWidget(contentWidget, 1, 1);
    if (mode == modeDesigner)
        gripsMake(layout);
    if (kind == localFormWidgetFrame)
        lower();
}

void localFormLayoutDesignerElementWidget::gripsMake(QGridLayout *layout)
{
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            if (row == 1 && column == 1)
                continue;
            QSizeGrip *grip = new QSizeGrip(this);
            grip->setObjectName(QStringLiteral("::QSizeGrip.") + QString::number(row) + QString::number(column));
            grip->setAutoFillBackground(true);
            grip->setFixedSize(frameWidth, frameWidth);
            layout->addWidget(grip, row, column);
        }
    selectedSet(false);
}

void localFormLayoutDesignerElementWidget::selectedSet(bool selected)
{
    selectedFlag = selected;
    const QColor color = selected ? QColor(Qt::black) : QColor(Qt::transparent);
    for (QSizeGrip *grip : findChildren<QSizeGrip *>(QString(), Qt::FindDirectChildrenOnly)) {
        QPalette palette = grip->palette();
        for (QPalette::ColorRole role : {QPalette::Dark, QPalette::Light, QPalette::Window})
            palette.setBrush(role, QBrush(color));
        grip->setPalette(palette);
        grip->setEnabled(selected);
        // Styles paint a grip's dots in colours of their own: unselected, it is not shown at all.
        grip->setVisible(selected);
        if (selected)
            grip->raise();
    }
    repaint();
}

QWidget *localFormLayoutDesignerElementWidget::contentMake()
{
    switch (kind) {
    case localFormWidgetButton: {
        QPushButton *button = new QPushButton(QStringLiteral("Button"), this);
        connect(button, &QPushButton::clicked, this, &localFormLayoutDesignerElementWidget::userButtonClickedSlot);
        return button;
    }
    case localFormWidgetEdit:
        return new QLineEdit(QStringLiteral("Edit"), this);
    case localFormWidgetFrame:
        return panelMake(this);
    case localFormWidgetImage:
        return new localVclImage(this);
    case localFormWidgetLabel: {
        QLabel *label = new QLabel(QStringLiteral("Label"), this);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setObjectName(QStringLiteral("localFormLayoutDesignerElementWidget::QLabel"));
        return label;
    }
    case localFormWidgetTable:
        return tableMake();
    default:
        return new QLabel(QStringLiteral("unnknown"), this);
    }
}

void localFormLayoutDesignerElementWidget::captionSet(const std::u16string &text)
{
    switch (kind) {
    case localFormWidgetButton:
        static_cast<QPushButton *>(contentWidget)->setText(localToQString(text));
        break;
    case localFormWidgetFrame:
        if (QLabel *label = contentWidget->findChild<QLabel *>()) {
            label->setText(localToQString(text));
            label->adjustSize();
        }
        break;
    case localFormWidgetLabel:
        if (mode == modeDesigner)
            caption = text;
        else
            static_cast<QLabel *>(contentWidget)->setText(localToQString(text));
        break;
    default:
        break;
    }
}

std::u16string localFormLayoutDesignerElementWidget::captionGet() const
{
    switch (kind) {
    case localFormWidgetLabel:
        return caption;
    case localFormWidgetButton:
        return localFromQString(static_cast<QPushButton *>(contentWidget)->text());
    case localFormWidgetFrame:
        if (const QLabel *label = contentWidget->findChild<QLabel *>())
            return localFromQString(label->text());
        return std::u16string();
    default:
        return std::u16string();
    }
}

void localFormLayoutDesignerElementWidget::pixmapSet(const QPixmap &picture)
{
    pixmap = picture;
    if (kind == localFormWidgetButton)
        static_cast<QPushButton *>(contentWidget)->setIcon(QIcon(pixmap));
}

void localFormLayoutDesignerElementWidget::fontSet(const QFont &font, const QColor &color)
{
    contentWidget->setFont(font);
    QPalette palette = contentWidget->palette();
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setBrush(group, QPalette::WindowText, QBrush(color));
        palette.setBrush(group, QPalette::ButtonText, QBrush(color));
        palette.setBrush(group, QPalette::Text, QBrush(color));
    }
    contentWidget->setPalette(palette);
}

QRect localFormLayoutDesignerElementWidget::contentGeometry() const
{
    return geometry().adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth);
}

localContextUTF8 *localFormLayoutDesignerElementWidget::formContextOf(QWidget *widget)
{
    for (QWidget *above = widget; above != nullptr; above = above->parentWidget())
        if (localForm *form = qobject_cast<localForm *>(above))
            return form->context;
    return nullptr;
}

void localFormLayoutDesignerElementWidget::userButtonClickedSlot()
{
    if (mode != modeRun)
        return;
    const std::u16string statement = formulaCut(formula);
    if (!statement.empty() && context != nullptr) {
        localWaitCursor wait;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        const bool done =
            localInterpretatorUTF8::scanStringGetOperatorAndExec(status, statement, position, context, false);
        if (!done || position < statement.size())
            std::cout << "Error!!!!!!  " << LOCAL_DIAG_TAIL;
    }
    emit varValueChanged();
}

void localFormLayoutDesignerElementWidget::emitVarValueChangedSlot()
{
    emit varValueChanged();
}

void localFormLayoutDesignerElementWidget::formulaShow()
{
    if (kind == localFormWidgetLabel && mode == modeDesigner) {
        std::u16string text = caption;
        if (text.empty() && !identifier.empty())
            text = u"<" + identifier + u">";
        else if (text.empty() && !formula.empty())
            text = u"<<" + formula + u">>";
        static_cast<QLabel *>(contentWidget)->setText(localToQString(text));
        return;
    }
    if (mode != modeRun || formula.empty())
        return;
    std::u16string text;
    if (kind == localFormWidgetLabel) {
        if (formulaValue(formula, context, text))
            static_cast<QLabel *>(contentWidget)->setText(localToQString(text));
    } else if (kind == localFormWidgetImage) {
        if (formulaValue(formula, context, text))
            static_cast<localVclImage *>(contentWidget)->imageAsBase64Set(text);
    }
}

void localFormLayoutDesignerElementWidget::paintEvent(QPaintEvent *event)
{
    formulaShow();
    QWidget::paintEvent(event);
}

void localFormLayoutDesignerElementWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (contentWidget != nullptr)
        contentWidget->setGeometry(QRect(QPoint(frameWidth, frameWidth), QPoint(width() - frameWidth, height() - frameWidth)));
}

localVclTestWidgetValueTable200617::localVclTestWidgetValueTable200617(QWidget *parent, localContextUTF8 *formContext)
    : localVclGrid200123localValueTable(parent, formContext)
{
}

void localVclTestWidgetValueTable200617::cellValueSet(int32_t row, int32_t column, const QString &value)
{
    localVclGrid200123localValueTable::cellValueSet(row, column, value);
    emit dataSousceIdChanged();
}

QWidget *localFormLayoutDesignerElementWidget::tableMake()
{
    localVclTestWidgetValueTable200617 *grid = new localVclTestWidgetValueTable200617(this, context);
    localVclGrid200123column column;
    column.caption = column.id = u"Column1";
    column.width = 100;
    grid->columnAdd(column);
    connect(grid, &localVclTestWidgetValueTable200617::dataSousceIdChanged, this,
            &localFormLayoutDesignerElementWidget::emitVarValueChangedSlot);
    return grid;
}

std::u16string localFormLayoutDesignerElementWidget::tableDetails() const
{
    return kind == localFormWidgetTable ? static_cast<localVclGrid200123 *>(contentWidget)->layoutAsJsonTest()
                                        : std::u16string();
}

void localFormLayoutDesignerElementWidget::tableDetailsSet(const std::u16string &json)
{
    if (kind == localFormWidgetTable)
        static_cast<localVclGrid200123 *>(contentWidget)->layoutReconfigureByJson(json);
}
