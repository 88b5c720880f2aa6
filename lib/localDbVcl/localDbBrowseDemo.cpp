#include "localDbBrowseDemo.h"

#include "localRefBrowseWidget200123.h"

#include "localDb.h"
#include "localString.h"
#include "localVCL.h"

#include <iostream>

namespace {

localDbGridColumn gridColumn(const char16_t *caption, const char16_t *bufferColumn, int32_t width,
                             const char16_t *idxName)
{
    localDbGridColumn column;
    column.caption = caption;
    column.dataBuferColumn = bufferColumn;
    column.width = width;
    column.idxName = idxName;
    return column;
}

localDbBrowseDescription goods(const char16_t *defaultIdxName)
{
    localDbBrowseDescription description;
    description.complete = true;
    description.aliases = {{u"tov", u"Ref03", u""}};
    description.selectColumns = {{u"tov.id", u"Ref03_ID"},
                                 {u"tov.code", u"Ref03_CODE"},
                                 {u"tov.descr", u"Ref03_DESCR"},
                                 {u"tov.parentid", u"Ref03_PARENTID"},
                                 {u"tov.isfolder", u"Ref03_ISFOLDER"}};
    description.defaultIdxName = defaultIdxName;
    description.gridColumns = {gridColumn(u"Код", u"Ref03_CODE", 110, u"Ref03_CODE"),
                               gridColumn(u"Наименование", u"Ref03_DESCR", 330, u"Ref03_DESCR"),
                               gridColumn(u"Код в папке", u"Ref03_CODE", 110, u"Ref03_PCODE"),
                               gridColumn(u"Наименование в папке", u"Ref03_DESCR", 330, u"Ref03_PDESCR")};
    return description;
}

localDbBrowseDescription priceList()
{
    localDbBrowseDescription description;
    description.complete = true;
    description.aliases = {{u"priceEl", u"Ref01", u""}, {u"tov", u"Ref03", u"priceEl.Owner=tov.id"}};
    description.selectColumns = {{u"priceEl.id", u"Ref01_ID"},
                                 {u"priceEl.code", u"Ref01_CODE"},
                                 {u"priceEl.descr", u"Ref01_DESCR"},
                                 {u"priceEl.price", u"Ref01_PRICE"},
                                 {u"priceEl.unit", u"Ref01_UNIT"},
                                 {u"tov.code", u"Ref03_CODE"},
                                 {u"tov.descr", u"Ref03_DESCR"}};
    description.defaultIdxName = u"Ref01_DESCR";
    description.gridColumns = {gridColumn(u"Код", u"Ref01_CODE", 110, u"Ref01_CODE"),
                               gridColumn(u"Наименование поставщика", u"Ref01_DESCR", 280, u"Ref01_DESCR"),
                               gridColumn(u"Цена", u"Ref01_PRICE", 80, u""),
                               gridColumn(u"Ед.", u"Ref01_UNIT", 50, u""),
                               gridColumn(u"Товар", u"Ref03_DESCR", 280, u"Ref01_OWNER")};
    return description;
}

} // namespace

localDbBrowseDescription localDbBrowseDemoDescription(int number)
{
    switch (number) {
    case 1:
        return goods(u"Ref03_CODE");
    case 3:
        return priceList();
    default:
        return goods(u"Ref03_PDESCR");
    }
}

QWidget *localDbBrowseDemoShow(int number)
{
    if (!localDb::testDbSqliteInit(localServices::applicationGetDataFullFileName()))
        return nullptr;
    const localDbBrowseDescription description = localDbBrowseDemoDescription(number);
    std::unique_ptr<localDbDataSource200123> source = description.dataSourceMake();
    if (!source || !source->valid())
        return nullptr;
    localDbtBrowseWidget200123 *widget;
    QString title;
    if (number == 1 || number == 3) {
        widget = new localDbtBrowseWidget200123(*source, description.gridColumns);
        title = number == 1 ? QStringLiteral("Товары") : QStringLiteral("Прайс-лист поставщика");
    } else {
        localRefBrowseWidget200123 *reference =
            new localRefBrowseWidget200123(*source, description.gridColumns, number == 4);
        widget = reference;
        title = number == 2 ? QStringLiteral("Товары по папкам (Ctrl+H, Ctrl+Down, Ctrl+Up)")
                            : QStringLiteral("Выбор товара (Enter)");
        reference->resize(760, 520);
        reference->setHierarchical(true);
        QObject::connect(widget, &localDbtBrowseWidget200123::idSelectedSignal, [](qint64 id) {
            std::cout << localNarrow(u"Выбран товар id=" + localDb::number(id)) << std::endl;
        });
    }
    widget->dataSourceOwn(std::move(source));
    widget->resize(760, 520);
    localVCL::applicationShowWidget(widget, title, false);
    return widget;
}
