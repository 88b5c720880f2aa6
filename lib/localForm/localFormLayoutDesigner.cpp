#include "localFormLayoutDesigner.h"

#include "localForm.h"
#include "localFormElement.h"
#include "localFormMetadata.h"

#include "localColorTable.h"
#include "localErrorType.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"
#include "localSxl.h"
#include "localVCL.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QDomDocument>
#include <QFile>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextStream>
#include <QVBoxLayout>

#include <algorithm>
#include <iostream>

namespace {

QString iconsFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/lib/icons/");
}

QIcon icon(const char *file)
{
    return QIcon(iconsFolder() + QLatin1String(file));
}

QAction *entry(QMenu *menu, const QString &text, const QString &name, const QString &tip, bool needsSelection,
               bool anySelected)
{
    QAction *action = menu->addAction(text);
    action->setObjectName(name);
    action->setStatusTip(tip);
    action->setEnabled(!needsSelection || anySelected);
    return action;
}

QSize defaultSize(int32_t kind)
{
    switch (kind) {
    case localFormWidgetEdit:
        return QSize(100, 25);
    case localFormWidgetTable:
        return QSize(250, 150);
    default:
        return QSize(100, 20);
    }
}

std::u16string tableDocumentClass()
{
    return localSxl::classDeclaration()->className;
}

} // namespace

localFormLayoutDesigner::localFormLayoutDesigner(QWidget *parent) : QWidget(parent)
{
    resize(200, 200);
    setAutoFillBackground(true);
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setFocusPolicy(Qt::WheelFocus);
    connect(this, &QWidget::customContextMenuRequested, this, &localFormLayoutDesigner::contextMenuPrepare);
}

QSize localFormLayoutDesigner::sizeHint() const
{
    return size();
}

void localFormLayoutDesigner::selectionAdd(localFormLayoutDesignerElementWidget *element)
{
    if (std::find(selected.begin(), selected.end(), element) != selected.end())
        return;
    element->selectedSet(true);
    selected.push_back(element);
}

void localFormLayoutDesigner::selectionRemove(localFormLayoutDesignerElementWidget *element)
{
    const auto found = std::find(selected.begin(), selected.end(), element);
    if (found == selected.end())
        return;
    element->selectedSet(false);
    selected.erase(found);
}

void localFormLayoutDesigner::selectionClear()
{
    while (!selected.empty())
        selectionRemove(selected.back());
}

void localFormLayoutDesigner::align(int32_t code)
{
    if (selected.empty())
        return;
    const QRect reference = selected.front()->geometry();
    for (size_t i = 1; i < selected.size(); ++i) {
        localFormLayoutDesignerElementWidget *element = selected[i];
        QPoint to = element->pos();
        switch (code) {
        case 1:
            to.setX(reference.x());
            break;
        case 2:
            to.setX(reference.right() + 1 - element->width());
            break;
        case 32:
            to.setY(reference.y());
            break;
        case 64:
            to.setY(reference.bottom() + 1 - element->height());
            break;
        default:
            break;
        }
        element->move(to);
    }
    repaint();
}

void localFormLayoutDesigner::sizeMatch(char16_t how)
{
    if (selected.empty())
        return;
    const QSize reference = selected.front()->size();
    for (size_t i = 1; i < selected.size(); ++i) {
        localFormLayoutDesignerElementWidget *element = selected[i];
        QSize size = element->size();
        if (how == u'W' || how == u'S')
            size.setWidth(reference.width());
        if (how == u'H' || how == u'S')
            size.setHeight(reference.height());
        element->resize(size);
    }
    repaint();
}

void localFormLayoutDesigner::moveSelected(int32_t dx, int32_t dy)
{
    for (localFormLayoutDesignerElementWidget *element : selected)
        element->move(element->x() + dx, element->y() + dy);
}

int32_t localFormLayoutDesigner::getDelta_afterShapCorrection_dY(int32_t dY)
{
    if (!gridEnabled || selected.empty() || gridStepY <= 0)
        return dY;
    const localFormLayoutDesignerElementWidget *topLeftWidget = selected.front();
    for (const localFormLayoutDesignerElementWidget *element : selected)
        if (element->y() < topLeftWidget->y() || (element->y() == topLeftWidget->y() && element->x() < topLeftWidget->x()))
            topLeftWidget = element;
    const int32_t y = topLeftWidget->y();
    std::cout << "topLeftWidget= " << topLeftWidget << "\n";
    std::cout << "topLeftWidget->y()= " << y << "\n";
    int32_t newY = y + dY;
    std::cout << "newY= " << newY << "\n";
    // Floor division, so that a position above the surface snaps upwards too.
    const int32_t minY = (newY >= 0 ? newY / gridStepY : -((-newY + gridStepY - 1) / gridStepY)) * gridStepY;
    int32_t maxY = minY;
    if (minY != newY)
        maxY = dY > 0 ? minY + gridStepY : minY - gridStepY;
    std::cout << "minY= " << minY << "\n";
    std::cout << "maxY= " << maxY << "\n";
    // Of the two lines around the new position, the nearer one that still lies
    // in the direction of the move: otherwise a step of 1 would fall back.
    const auto ahead = [&](int32_t line) { return dY > 0 ? line > y : line < y; };
    if (ahead(minY) && ahead(maxY))
        newY = std::abs(minY - y) <= std::abs(maxY - y) ? minY : maxY;
    else if (ahead(minY))
        newY = minY;
    else if (ahead(maxY))
        newY = maxY;
    std::cout << "NEW newY= " << newY << "\n";
    return newY - y;
}

localFormLayoutDesignerElementWidget *localFormLayoutDesigner::elementNew(int32_t kind, const QPoint &position)
{
    localFormLayoutDesignerElementWidget *element = new localFormLayoutDesignerElementWidget(
        kind, localFormLayoutDesignerElementWidget::modeDesigner, QRect(position, defaultSize(kind)), this);
    if (kind == localFormWidgetLabel)
        element->captionSet(u"Это LABEL " + localFromQString(QString::number(++labelCounter)));
    else if (kind == localFormWidgetFrame)
        element->captionSet(u"Это FRAME NEW FRAME");
    else if (kind == localFormWidgetEdit)
        element->type = u"Неопределённый";
    else if (kind == localFormWidgetTable)
        element->tableDetailsSet(std::u16string()); // as it will read back from the file
    elementAdopt(element);
    element->show();
    return element;
}

void localFormLayoutDesigner::elementAdopt(localFormLayoutDesignerElementWidget *element)
{
    element->removeEventFilter(this);
    element->installEventFilter(this);
    for (QWidget *inner : element->findChildren<QWidget *>()) {
        inner->removeEventFilter(this);
        inner->installEventFilter(this);
    }
}

localFormLayoutDesignerElementWidget *localFormLayoutDesigner::elementOf(QObject *object) const
{
    for (QObject *above = object; above != nullptr; above = above->parent())
        if (above->parent() == this)
            return qobject_cast<localFormLayoutDesignerElementWidget *>(above);
    return nullptr;
}

void localFormLayoutDesigner::elementPress(localFormLayoutDesignerElementWidget *element,
                                           Qt::KeyboardModifiers modifiers)
{
    if (!(modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
        selectionClear();
    if (element != nullptr)
        selectionAdd(element);
}

bool localFormLayoutDesigner::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        localFormLayoutDesignerElementWidget *element = elementOf(watched);
        if (element == nullptr)
            return false;
        const QMouseEvent *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::RightButton) {
            if (!element->isSelected())
                elementPress(element, mouse->modifiers());
            contextMenuPrepare(mapFromGlobal(mouse->globalPos()));
        } else {
            elementPress(element, mouse->modifiers());
        }
        return true;
    }
    case QEvent::KeyPress: {
        const QKeyEvent *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            selectionClear();
            return false;
        }
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    case QEvent::FocusIn:
        if (localFormLayoutDesignerElementWidget *element = elementOf(watched))
            selectionAdd(element);
        return false;
    default:
        return false;
    }
}

void localFormLayoutDesigner::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    switch (event->key()) {
    case Qt::Key_Escape:
        if (modifiers == Qt::NoModifier)
            close();
        return;
    case Qt::Key_Left:
        moveSelected(-1, 0);
        return;
    case Qt::Key_Right:
        moveSelected(1, 0);
        return;
    case Qt::Key_Up:
        moveSelected(0, -1);
        return;
    case Qt::Key_Down: {
        std::cout << "1 dY= " << 1 << "\n";
        const int32_t dY = getDelta_afterShapCorrection_dY(1);
        std::cout << "2 dY= " << dY << "\n";
        moveSelected(0, dY);
        return;
    }
    case Qt::Key_Delete:
        actDeleteProc();
        return;
    case Qt::Key_S:
        if (modifiers == Qt::ControlModifier && saveHandler)
            saveHandler();
        else if (modifiers == Qt::ControlModifier)
            formSave();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void localFormLayoutDesigner::mousePressEvent(QMouseEvent *event)
{
    setFocus();
    elementPress(nullptr, event->modifiers());
}

void localFormLayoutDesigner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setBrush(palette().color(QPalette::Base));
    painter.setPen(Qt::NoPen);
    painter.drawRect(rect());
    if (gridStepX <= 0 || gridStepY <= 0)
        return;
    painter.setPen(palette().color(QPalette::WindowText));
    for (int x = 0; x < width(); x += gridStepX)
        for (int y = 0; y < height(); y += gridStepY)
            painter.drawPoint(x, y);
}

QMenu *localFormLayoutDesigner::contextMenuMake(const QPoint &)
{
    const bool any = !selected.empty();
    QMenu *menu = new QMenu(this);
    QMenu *news = menu->addMenu(QStringLiteral("Новый"));
    entry(news, QStringLiteral("Label"), QStringLiteral("NewLabel"), QStringLiteral("actNewLabel"), false, any);
    entry(news, QStringLiteral("Button"), QStringLiteral("NewButton"), QStringLiteral("actNewButton"), false, any);
    entry(news, QStringLiteral("Frame"), QStringLiteral("NewFrame"), QStringLiteral("actNewFrame"), false, any);
    entry(news, QStringLiteral("Table"), QStringLiteral("NewTable"), QStringLiteral("actNewTable"), false, any);
    entry(news, QStringLiteral("Image"), QStringLiteral("NewImage"), QStringLiteral("actNewImage"), false, any);
    entry(menu, QStringLiteral("Новый реквизит"), QStringLiteral("NewEdit"), QStringLiteral("new sth"), false, any)
        ->setIcon(icon("1186.bmp"));
    QAction *describe = menu->addAction(QStringLiteral("Редактировать описание"));
    connect(describe, &QAction::triggered, this, &localFormLayoutDesigner::newDev);
    entry(menu, QStringLiteral("Удалить"), QStringLiteral("Delete"), QString(), true, any);
    QMenu *alignment = menu->addMenu(icon("146.bmp"), QStringLiteral("Выровнять"));
    alignment->setEnabled(any);
    entry(alignment, QStringLiteral("По левому краю"), QStringLiteral("AlignLeft"), QStringLiteral("actAlignLeft"), true, any);
    entry(alignment, QStringLiteral("По правому краю"), QStringLiteral("AlignRight"), QStringLiteral("actAlignRight"), true,
          any);
    entry(alignment, QStringLiteral("По верхнему краю"), QStringLiteral("AlignTop"), QStringLiteral("actAlignTop"), true,
          any);
    entry(alignment, QStringLiteral("По нижнему краю"), QStringLiteral("AlignBottom"), QStringLiteral("actAlignBottom"),
          true, any);
    QMenu *sizes = menu->addMenu(QStringLiteral("ОдинаковыйРазмер"));
    sizes->setEnabled(any);
    entry(sizes, QStringLiteral("По ширине"), QStringLiteral("SizeEqualWidth"), QStringLiteral("actSizeEqualWidth"), true,
          any);
    entry(sizes, QStringLiteral("По высоте"), QStringLiteral("SizeEqualHeight"), QStringLiteral("actSizeEqualHeight"), true,
          any);
    entry(sizes, QStringLiteral("Один размер"), QStringLiteral("SizeEqualSize"), QStringLiteral("actSizeEqualSize"), true,
          any);
    menu->addAction(QStringLiteral("Переместить вверх"));
    menu->addAction(QStringLiteral("Переместить вниз"));
    menu->addAction(icon("1264.png"), QStringLiteral("Упорядочить"));
    menu->addAction(QStringLiteral("Поиск ссылок на объект"));
    entry(menu, QStringLiteral("Свойства"), QStringLiteral("Properties"), QString(), true, any);
    return menu;
}

void localFormLayoutDesigner::contextMenuPrepare(const QPoint &position)
{
    QMenu *menu = contextMenuMake(position);
    QAction *chosen = menu->exec(mapToGlobal(position));
    menuDispatch(chosen, position);
    delete menu;
}

void localFormLayoutDesigner::menuDispatch(QAction *chosen, const QPoint &position)
{
    if (chosen == nullptr)
        return;
    static const std::pair<const char *, int32_t> kinds[] = {
        {"NewLabel", localFormWidgetLabel}, {"NewButton", localFormWidgetButton}, {"NewFrame", localFormWidgetFrame},
        {"NewTable", localFormWidgetTable}, {"NewImage", localFormWidgetImage},   {"NewEdit", localFormWidgetEdit}};
    static const std::pair<const char *, int32_t> alignments[] = {
        {"AlignLeft", 1}, {"AlignRight", 2}, {"AlignTop", 32}, {"AlignBottom", 64}};
    static const std::pair<const char *, char16_t> sizes[] = {
        {"SizeEqualWidth", u'W'}, {"SizeEqualHeight", u'H'}, {"SizeEqualSize", u'S'}};
    const QString name = chosen->objectName();
    for (const auto &kind : kinds)
        if (name == QLatin1String(kind.first)) {
            elementNew(kind.second, position);
            return;
        }
    for (const auto &code : alignments)
        if (name == QLatin1String(code.first)) {
            align(code.second);
            return;
        }
    for (const auto &how : sizes)
        if (name == QLatin1String(how.first)) {
            sizeMatch(how.second);
            return;
        }
    if (name == QLatin1String("Delete"))
        actDeleteProc();
    else if (name == QLatin1String("Properties"))
        actPropertiesProc();
}

// "Редактировать описание" is listed in the menu but has no function yet.
void localFormLayoutDesigner::newDev()
{
}

void localFormLayoutDesigner::actDeleteProc()
{
    for (localFormLayoutDesignerElementWidget *element : selected) {
        logWrite(localFromQString(QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"))) +
                 u" localFormLayoutDesigner::actDeleteProc() " + element->identifier);
        delete element;
    }
    selected.clear();
}

void localFormLayoutDesigner::actPropertiesProc()
{
    if (selected.empty())
        return;
    localFormLayoutDesignerElementWidget *element = selected.front();
    if (element->kind == localFormWidgetTable) {
        std::cout << "localVclDesignerForm::actPropertiesProc SAYS это localVclTestWidgetValueTable200617 !!!\n";
        std::u16string json = element->tableDetails();
        if (localVclGrid200123::layoutDialog != nullptr && localVclGrid200123::layoutDialog(this, json))
            element->tableDetailsSet(json);
        return;
    }
    localFormLayoutDesignerElementWidgetPropertiesDialog dialog(element, this);
    connect(&dialog, &localFormLayoutDesignerElementWidgetPropertiesDialog::applied, &dialog,
            [&dialog, element] { dialog.apply(element); });
    const int answer = dialog.exec();
    if (answer == QDialog::Accepted)
        dialog.apply(element);
    else if (answer != QDialog::Rejected)
        std::cout << "Unexpected\n";
}

bool localFormLayoutDesigner::formSave()
{
    std::u16string name = formFileName;
    if (name.empty())
        name = localServices::instance().saveFileName(u"Save form as ...", std::u16string(), u"*.xml");
    if (name.empty())
        return false;
    QFile file(localToQString(name));
    if (!file.open(QIODevice::WriteOnly)) {
        localServices::instance().criticalBox(u"formSave", u"Не удалось открыть файл " + name);
        return false;
    }
    QTextStream stream(&file);
    stream << localFormXmlWithoutModule(this);
    formFileName = name;
    return true;
}

QWidget *localFormLayoutDesigner::preview()
{
    QDomDocument document;
    if (!document.setContent(QString::fromLatin1(localFormXmlWithoutModule(this))))
        return nullptr;
    return localVCL::applicationShowWidget(new localForm(document, nullptr), QStringLiteral("preview"), false);
}

localFormLayoutDesignerElementWidgetPropertiesDialog::localFormLayoutDesignerElementWidgetPropertiesDialog(
    localFormLayoutDesignerElementWidget *element, QWidget *parent)
    : QDialog(parent)
{
    QTabWidget *tabs = new QTabWidget(this);
    tabs->addTab(generalPage(), QStringLiteral("Общие"));
    formulaEdit = new QPlainTextEdit;
    QWidget *more = new QWidget;
    QFormLayout *moreLayout = new QFormLayout(more);
    moreLayout->addRow(QStringLiteral("Формула:"), formulaEdit);
    tabs->addTab(more, QStringLiteral("Дополнительно"));
    tabs->addTab(fontPage(), QStringLiteral("Шрифт"));
    descriptionEdit = new QPlainTextEdit;
    tabs->addTab(descriptionEdit, QStringLiteral("Описание"));
    image = new localVclImage;
    image->installEventFilter(this);
    tabs->addTab(image, QStringLiteral("Карнтинка"));

    QDialogButtonBox *buttons = new QDialogButtonBox(this);
    connect(buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole), &QPushButton::clicked, this,
            &QDialog::accept);
    connect(buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(buttons->addButton(QStringLiteral("Обновить"), QDialogButtonBox::ApplyRole), &QPushButton::clicked, this,
            &localFormLayoutDesignerElementWidgetPropertiesDialog::applied);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
    setWindowTitle(QStringLiteral("Свойства"));
    read(element);
}

QWidget *localFormLayoutDesignerElementWidgetPropertiesDialog::generalPage()
{
    QWidget *page = new QWidget;
    QFormLayout *layout = new QFormLayout(page);
    captionEdit = new QLineEdit;
    identifierEdit = new QLineEdit;
    layout->addRow(QStringLiteral("Заголовок:"), captionEdit);
    layout->addRow(QStringLiteral("Идентификатор:"), identifierEdit);
    QGroupBox *typeGroup = new QGroupBox(QStringLiteral("Тип"));
    QFormLayout *typeLayout = new QFormLayout(typeGroup);
    typeCombo = new QComboBox;
    typeCombo->addItems({QStringLiteral("Неопределённый"), QStringLiteral("Строка"), QStringLiteral("Число"),
                         localToQString(tableDocumentClass())});
    lenSpin = new QSpinBox;
    lenSpin->setRange(0, 1000000);
    decSpin = new QSpinBox;
    decSpin->setRange(0, 100);
    unlimitedCheck = new QCheckBox(QStringLiteral("Неограниченная длина"));
    multilineCheck = new QCheckBox(QStringLiteral("Многострочный"));
    typeLayout->addRow(QStringLiteral("Тип:"), typeCombo);
    typeLayout->addRow(QStringLiteral("Длина:"), lenSpin);
    typeLayout->addRow(QStringLiteral("Точность:"), decSpin);
    typeLayout->addRow(unlimitedCheck);
    typeLayout->addRow(multilineCheck);
    layout->addRow(typeGroup);
    connect(typeCombo, &QComboBox::currentTextChanged, this,
            &localFormLayoutDesignerElementWidgetPropertiesDialog::tabPanelTypeChangedEvent);
    return page;
}

QWidget *localFormLayoutDesignerElementWidgetPropertiesDialog::fontPage()
{
    QGroupBox *group = new QGroupBox(QStringLiteral("Шрифт"));
    QFormLayout *layout = new QFormLayout(group);
    fontFamilyCombo = new QComboBox;
    fontFamilyCombo->setEditable(true);
    fontFamilyCombo->addItems(
        {QStringLiteral("Arial [Cyrillic]"), QStringLiteral("Courier [Cyrillic]"), QStringLiteral("MS Sans Serif [Cyrillic]")});
    fontSizeSpin = new QSpinBox;
    fontSizeSpin->setRange(1, 200);
    boldCheck = new QCheckBox(QStringLiteral("Bold"));
    italicCheck = new QCheckBox(QStringLiteral("Italic"));
    colorCombo = new QComboBox;
    size_t count = 0;
    const localColorName *colors = localColorTable(count);
    for (size_t i = 0; i < count; ++i)
        colorCombo->addItem(QString::fromUtf16(colors[i].english));
    sample = new QLineEdit(QStringLiteral("Sample"));
    sample->setObjectName(QStringLiteral("Sample"));
    layout->addRow(QStringLiteral("Font:"), fontFamilyCombo);
    layout->addRow(QStringLiteral("Size:"), fontSizeSpin);
    layout->addRow(boldCheck);
    layout->addRow(italicCheck);
    layout->addRow(QStringLiteral("Color:"), colorCombo);
    layout->addRow(sample);
    for (QCheckBox *box : {boldCheck, italicCheck})
        connect(box, &QCheckBox::toggled, this, &localFormLayoutDesignerElementWidgetPropertiesDialog::sampleUpdate);
    connect(fontFamilyCombo, &QComboBox::currentTextChanged, this,
            &localFormLayoutDesignerElementWidgetPropertiesDialog::sampleUpdate);
    connect(fontSizeSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &localFormLayoutDesignerElementWidgetPropertiesDialog::sampleUpdate);
    return group;
}

void localFormLayoutDesignerElementWidgetPropertiesDialog::read(const localFormLayoutDesignerElementWidget *element)
{
    captionEdit->setText(localToQString(element->captionGet()));
    identifierEdit->setText(localToQString(element->identifier));
    const int typeIndex = typeCombo->findText(localToQString(element->type));
    typeCombo->setCurrentIndex(typeIndex >= 0 ? typeIndex : 0);
    lenSpin->setValue(element->len);
    decSpin->setValue(element->dec);
    unlimitedCheck->setChecked(element->unlimited);
    multilineCheck->setChecked(element->multiline);
    formulaEdit->setPlainText(localToQString(element->formula));
    const QFont font = element->contentWidget->font();
    fontFamilyCombo->setCurrentText(font.family());
    fontSizeSpin->setValue(std::max(1, font.pointSize()));
    boldCheck->setChecked(font.weight() >= 51);
    italicCheck->setChecked(font.italic());
    QColor color = element->contentWidget->palette().color(QPalette::WindowText);
    for (int i = 0; i < colorCombo->count(); ++i) {
        QColor named;
        if (localVCL::colorFind(localFromQString(colorCombo->itemText(i)), named) && named == color) {
            colorCombo->setCurrentIndex(i);
            break;
        }
    }
    image->imageAsBase64Set(localVCL::pixmapToBase64(element->pixmap));
    tabPanelTypeChangedEvent();
}

void localFormLayoutDesignerElementWidgetPropertiesDialog::apply(localFormLayoutDesignerElementWidget *element) const
{
    element->identifier = localFromQString(identifierEdit->text());
    element->captionSet(localFromQString(captionEdit->text()));
    element->formula = localFromQString(formulaEdit->toPlainText());
    element->type = localFromQString(typeCombo->currentText());
    element->len = lenSpin->value();
    element->dec = decSpin->value();
    element->unlimited = unlimitedCheck->isChecked();
    element->multiline = multilineCheck->isChecked();
    if (localFormPropertyMaskOf(element->kind) & localFormPropertyFont) {
        QColor color = element->contentWidget->palette().color(QPalette::WindowText);
        localVCL::colorFind(localFromQString(colorCombo->currentText()), color);
        element->fontSet(sample->font(), color);
    }
    if (element->kind == localFormWidgetButton)
        element->pixmapSet(localVCL::pixmapFromBase64(image->imageAsBase64()));
    if (element->kind == localFormWidgetEdit)
        if (QLineEdit *line = qobject_cast<QLineEdit *>(element->contentWidget))
            line->setText(identifierEdit->text());
    element->update();
}

void localFormLayoutDesignerElementWidgetPropertiesDialog::sampleUpdate()
{
    QFont font(fontFamilyCombo->currentText());
    font.setPointSize(fontSizeSpin->value());
    font.setWeight(boldCheck->isChecked() ? 75 : 50);
    font.setItalic(italicCheck->isChecked());
    sample->setFont(font);
}

void localFormLayoutDesignerElementWidgetPropertiesDialog::tabPanelTypeChangedEvent()
{
    const QString type = typeCombo->currentText();
    const bool isString = type == QStringLiteral("Строка");
    const bool isNumber = type == QStringLiteral("Число");
    lenSpin->setEnabled(isString || isNumber);
    decSpin->setEnabled(isNumber);
    unlimitedCheck->setEnabled(isString);
    multilineCheck->setEnabled(isString);
    if (!isString && !isNumber)
        lenSpin->setValue(0);
    if (!isNumber)
        decSpin->setValue(0);
    if (!isString) {
        unlimitedCheck->setChecked(false);
        multilineCheck->setChecked(false);
    }
}

void localFormLayoutDesignerElementWidgetPropertiesDialog::tabPanelImageImageClicked()
{
    const std::u16string name = localServices::instance().openFileName(
        u"Open file:", u"*.jpg", u"Файлы изображений (*.jpg *.png *.ico *.bmp);;Все файлы (*.*)");
    if (name.empty())
        return;
    const QPixmap picture(localToQString(name));
    if (!picture.isNull())
        image->imageAsBase64Set(localVCL::pixmapToBase64(picture));
}

bool localFormLayoutDesignerElementWidgetPropertiesDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == image && event->type() == QEvent::MouseButtonPress) {
        tabPanelImageImageClicked();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
