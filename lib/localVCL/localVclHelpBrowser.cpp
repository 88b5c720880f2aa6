#include "localVclHelpBrowser.h"

#include "localMainWindow.h"
#include "localVCL.h"

#include "localClassDeclaration.h"
#include "localInterpretatorUTF8.h"
#include "localJson.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>

#include <iostream>

namespace {

const char16_t *const mainLink = u"<a href=\"#main\">Главная</a><BR/>\n";

// The browser ignores what it does not know, so the rules stay as written.
const char16_t *const styleBlock =
    u"<style type=\"text/css\">\n"
    u"body {font-family: \"Arial Cyr\" ; font: 12pt ; font-weight:NONE; text-align:justyfy; margin-left: 0px; "
    u"margin-top: 0px; margin-right: 0px; margin-bottom: 0px; color:None; background-color:None; }\n"
    u"functionName {font-family: \"Courier\"; font: 12pt bold; display:none; font-weight:bold; color:NONE; }\n"
    u"i{font-family: \"Times New Roman\" ; font-weight:NONE; font-style: italic; text-align:justyfy; "
    u"margin-left: 0px; margin-top: 0px; margin-right: 0px; margin-bottom: 0px; color:blue; "
    u"background-color:None; }\n"
    u"a{color:green; display:inline;}\n"
    u"</style>\n";

std::u16string upper(const std::u16string &text)
{
    return localInterpretatorUTF8::nameToUpper(text);
}

// A string as it stands; any other kind by its name.
std::u16string cellText(const localValueDescription *cell)
{
    if (cell == nullptr)
        return std::u16string();
    switch (cell->getType()) {
    case localValueTypeSTR: return cell->localValueString;
    case localValueTypeNUM: return u"ЧИСЛО";
    case localValueTypeBOO: return u"БУЛЕВО";
    case localValueTypeOBJ: return u"ОБЪЕКТ";
    default: return u"неизвестный тип";
    }
}

// The help file's tables have the key in column 1 and the value in column 2.
std::u16string keyAt(const localValueTable &table, size_t row)
{
    return cellText(table.cell(row, 1));
}

const localValueDescription *valueAt(const localValueTable &table, size_t row)
{
    return table.cell(row, 2);
}

localValueTable *tableAt(const localValueTable &table, size_t row)
{
    return localValueTable::fromValue(valueAt(table, row));
}

// The value of `key` among the members of a description, null if absent.
const localValueDescription *member(const localValueTable &table, const std::u16string &key)
{
    for (size_t row = 1; row <= table.rowsCount(); ++row)
        if (keyAt(table, row) == key)
            return valueAt(table, row);
    return nullptr;
}

bool present(const localValueDescription *value)
{
    return value != nullptr && !(value->getType() == localValueTypeSTR && value->localValueString.empty());
}

void parametersHtml(std::u16string &html, const localValueDescription *value)
{
    const localValueTable *parameters = localValueTable::fromValue(value);
    if (parameters == nullptr) {
        html += cellText(value) + u"<BR/>\n";
        return;
    }
    for (size_t row = 1; row <= parameters->rowsCount(); ++row)
        html += u"&lt;" + keyAt(*parameters, row) + u"&gt; - " + cellText(valueAt(*parameters, row)) + u"<BR/>\n";
}

void link(std::u16string &html, const std::u16string &key, const std::u16string &text)
{
    html += u"<a href=\"" + key + u"\">" + text + u"</a><BR/>\n";
}

// An object maps page keys to link texts; a string lists page keys between commas.
void seeAlsoHtml(std::u16string &html, const localValueDescription *value)
{
    if (const localValueTable *references = localValueTable::fromValue(value)) {
        for (size_t row = 1; row <= references->rowsCount(); ++row)
            link(html, keyAt(*references, row), cellText(valueAt(*references, row)));
        return;
    }
    const std::u16string text = cellText(value);
    size_t from = 0;
    while (from <= text.size()) {
        size_t comma = text.find(u',', from);
        if (comma == std::u16string::npos)
            comma = text.size();
        const std::u16string key = localString::trim(text.substr(from, comma - from));
        if (!key.empty())
            link(html, key, key);
        from = comma + 1;
    }
}

std::u16string methodHtml(const std::u16string &className, const localValueTable &method)
{
    std::u16string html = styleBlock;
    html += u"<body>\n";
    html += mainLink;
    html += u"<a href=\"#class:" + className + u"\" >класс " + className + u"</a>\n<BR/>\n";
    html += u"<i>метод</i> <functionName>" + cellText(member(method, u"nameEn"))
            + u"</functionName> <i>или</i> <functionName>" + cellText(member(method, u"nameRu"))
            + u"</functionName> <BR/><BR/>\n";
    const localValueDescription *value = member(method, u"syntax");
    if (present(value))
        html += u"<i><B>Синтаксис:</B></i> <BR/><BR/>\n<pre>" + cellText(value) + u"</pre><BR/>\n";
    value = member(method, u"parameter");
    if (present(value)) {
        html += u"<i><B>Параметры:</B></i> <BR/>\n";
        parametersHtml(html, value);
    }
    value = member(method, u"returnValue");
    if (present(value))
        html += u"<i><B>Возвращаемое значение:</B></i><BR/>\n" + cellText(value) + u"<BR>\n";
    value = member(method, u"description");
    if (present(value))
        html += u"<i><B>Описание:</B></i><BR/>\n" + cellText(value) + u"<BR>\n";
    value = member(method, u"example");
    if (present(value))
        html += u"<i><B>Пример:</B></i><BR>\n<pre>" + cellText(value) + u"</pre>";
    value = member(method, u"seeAlso");
    if (present(value)) {
        html += u"<i><B>Ссылки:</B></i><BR>\n";
        seeAlsoHtml(html, value);
    }
    html += u"</body>\n";
    return html;
}

std::u16string bodyHtml(const std::u16string &text)
{
    return u"<body>\n" + text + u"</body>\n";
}

// Three quarters of the screen's width, centred, from the top to nearly the bottom.
QRect helpGeometry()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect available = screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 800, 600);
    const int width = available.width() * 3 / 4;
    return QRect(available.x() + (available.width() - width) / 2, available.y() + available.height() / 100, width,
                 available.height() * 95 / 100);
}

void helpShow(QWidget *browser)
{
    const QRect geometry = helpGeometry();
    browser->resize(geometry.size());
    localVclShowParameters parameters;
    parameters.title = QStringLiteral("Корвел ");
    const QIcon icon = QApplication::windowIcon();
    if (!icon.isNull())
        parameters.iconAsBase64 = localToQString(localVCL::pixmapToBase64(icon.pixmap(32, 32)));
    parameters.hasX = parameters.hasY = true;
    parameters.x = geometry.x();
    parameters.y = geometry.y();
    localVCL::applicationShowWidget(browser, parameters);
}

// A visit after the current one drops the pages ahead; an empty current
// entry takes the key, and the page shown already is not recorded twice.
void historyRecord(std::vector<std::u16string> &history, int32_t &position, const std::u16string &key)
{
    if (history.empty())
        history.emplace_back();
    std::u16string &current = history[size_t(position)];
    if (current.empty() || current == key) {
        current = key;
        return;
    }
    history.resize(size_t(position) + 1);
    history.push_back(key);
    position = int32_t(history.size()) - 1;
}

} // namespace

// --- localVclTextBrowser -----------------------------------------------------

localVclTextBrowser::localVclTextBrowser(QWidget *parent) : QTextBrowser(parent)
{
    setOpenLinks(true);
    setOpenExternalLinks(false);
    setWindowIcon(QIcon(localMainWindow::iconDirectory() + QStringLiteral("/logoKV_3232.png")));
}

void localVclTextBrowser::pageAdd(const std::u16string &key, const std::u16string &html)
{
    const std::u16string upperKey = upper(key);
    pageIndex.emplace(upperKey, pages.size());
    pages.push_back({upperKey, html});
}

bool localVclTextBrowser::pageLoad(const std::u16string &link)
{
    std::u16string key = upper(link);
    if (!key.empty() && key.front() == u'#')
        key.erase(0, 1);
    const auto found = pageIndex.find(key);
    if (found != pageIndex.end()) {
        setHtml(localToQString(pages[found->second].html));
        return true;
    }
    localErrorType status = localErrorTypeOK;
    std::u16string text;
    if (localString::fileRead(status, link, text, localString::possibleCodePageCP1251)) {
        setHtml(localToQString(text));
        return true;
    }
    setHtml(QStringLiteral("Ошибка чтения файла!"));
    return false;
}

void localVclTextBrowser::onAnchorClicked(const QUrl &url)
{
    const std::u16string key = localFromQString(url.toString());
    pageLoad(key);
    historyRecord(history, historyPosition, key);
}

void localVclTextBrowser::setSource(const QUrl &name)
{
    onAnchorClicked(name);
}

void localVclTextBrowser::backward()
{
    if (historyPosition > 0)
        pageLoad(history[size_t(--historyPosition)]);
}

void localVclTextBrowser::forward()
{
    if (size_t(historyPosition) + 1 < history.size())
        pageLoad(history[size_t(++historyPosition)]);
}

// --- localConsoleHelpBrowser -------------------------------------------------

localConsoleHelpBrowser::localConsoleHelpBrowser(const std::u16string &mainText, QWidget *parent)
    : QTextBrowser(parent), pages(new localValueTable)
{
    for (const char16_t *column : {u"Key", u"HTML", u"nameEn", u"nameRu"})
        pages->columnAdd(column);
    pageAdd(u"#main", bodyHtml(mainText), u"main page", u"главная страница");
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &localConsoleHelpBrowser::onAnchorClicked);
    resize(helpGeometry().size());
    setPage(u"#main");
    raise();
    activateWindow();
}

localConsoleHelpBrowser::~localConsoleHelpBrowser()
{
    delete pages;
}

void localConsoleHelpBrowser::pageAdd(const std::u16string &key, const std::u16string &html,
                                      const std::u16string &nameEn, const std::u16string &nameRu)
{
    const auto found = pageIndex.find(upper(key));
    size_t row = 0;
    if (found != pageIndex.end()) {
        row = found->second;
    } else {
        row = pages->rowAdd(0);
        pageIndex.emplace(upper(key), row);
    }
    localErrorType status = localErrorTypeOK;
    const std::u16string texts[] = {key, html, nameEn, nameRu};
    for (size_t column = 1; column <= 4; ++column) {
        localValueDescription cell;
        cell.setString(texts[column - 1]);
        pages->valueSet(status, row, column, &cell);
    }
}

std::u16string localConsoleHelpBrowser::pageFind(const std::u16string &key) const
{
    const auto found = pageIndex.find(upper(key));
    return found == pageIndex.end() ? std::u16string() : cellText(pages->cell(found->second, 2));
}

void localConsoleHelpBrowser::classPagesAdd(const std::u16string &className, localValueTable &description)
{
    const localValueTable *methods = localValueTable::fromValue(member(description, u"method"));
    const std::u16string classKey = u"#class:" + className;
    std::u16string html = u"<body>\n";
    html += mainLink;
    html += u"<BR/>\nЭто класс " + className + u"<BR/>\n<BR/>\n" + cellText(member(description, u"text"))
            + u"<BR/>\n<BR/>\nДоступные методы:<BR/>\n";
    for (size_t row = 1; methods != nullptr && row <= methods->rowsCount(); ++row) {
        const std::u16string method = keyAt(*methods, row);
        html += u"&nbsp;&nbsp;&nbsp;&nbsp;<a href=\"" + classKey + u":method:" + method + u"\" > " + method
                + u"()</a><BR/>\n";
    }
    html += u"</body>\n";
    pageAdd(classKey, html, className, className);
    for (size_t row = 1; methods != nullptr && row <= methods->rowsCount(); ++row) {
        const localValueTable *method = tableAt(*methods, row);
        if (method == nullptr)
            continue;
        pageAdd(classKey + u":method:" + keyAt(*methods, row), methodHtml(className, *method),
                cellText(member(*method, u"nameEn")), cellText(member(*method, u"nameRu")));
    }
}

bool localConsoleHelpBrowser::parseHelpFromJson(const std::u16string &text)
{
    localValueTable top;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    const bool parsed = localJson::scanStringGetValueTableFromJson(status, text, position, top);
    if (!parsed)
        LOCAL_DIAG(localErrorText(status));
    // What was read before a fault still makes its pages.
    for (size_t row = 1; row <= top.rowsCount(); ++row) {
        const std::u16string key = keyAt(top, row);
        if (key == u"main") {
            pageAdd(u"#main", bodyHtml(cellText(valueAt(top, row))), u"main page", u"главная страница");
        } else if (key == u"console" || key == u"remarks") {
            pageAdd(u"#" + key, bodyHtml(cellText(valueAt(top, row))), key + u" lkjhlkj", key + u" страница");
        } else if (key == u"class") {
            localValueTable *classes = tableAt(top, row);
            for (size_t one = 1; classes != nullptr && one <= classes->rowsCount(); ++one)
                if (localValueTable *description = tableAt(*classes, one))
                    classPagesAdd(keyAt(*classes, one), *description);
        } else if (key == u"method") {
            if (const localValueTable *methods = tableAt(top, row))
                for (size_t one = 1; one <= methods->rowsCount(); ++one)
                    std::cout << localNarrow(u"method " + keyAt(*methods, one)) << '\n';
        }
    }
    std::cout << std::flush;
    return parsed;
}

std::u16string localConsoleHelpBrowser::allPagesHtml() const
{
    std::u16string list = styleBlock;
    list += u"<body>\n";
    list += mainLink;
    list += u"<BR/>\nЭто полный список страниц. <BR/>\n<BR/>\nДоступные страницы:<BR/>\n";
    for (size_t row = 1; row <= pages->rowsCount(); ++row) {
        const std::u16string pageKey = cellText(pages->cell(row, 1));
        std::u16string name = cellText(pages->cell(row, 3));
        const std::u16string nameRu = cellText(pages->cell(row, 4));
        if (!nameRu.empty() && nameRu != name)
            name += u" / " + nameRu;
        // Methods of one name in several classes are told apart by the class.
        const size_t method = pageKey.find(u":method:");
        if (method != std::u16string::npos && pageKey.rfind(u"#class:", 0) == 0)
            name += u" (" + pageKey.substr(7, method - 7) + u")";
        list += u"<a href=\"" + pageKey + u"\">" + name + u"</a><BR/>\n";
    }
    list += u"<BR/>\n<BR/>\n<BR/>\n</body>\n";
    return list;
}

bool localConsoleHelpBrowser::pageShow(const std::u16string &key, bool record)
{
    bool found = true;
    const std::u16string html = pageFind(key);
    if (!html.empty()) {
        setHtml(localToQString(html));
    } else if (upper(key) == u"#ALLPAGES") {
        setHtml(localToQString(allPagesHtml()));
    } else {
        found = false;
        setHtml(localToQString(std::u16string(styleBlock) + u"<body>\n" + mainLink
                               + u"<BR/>\nСтраница не найдена!<BR/>\n</body>\n"));
    }
    if (record)
        historyRecord(history, historyPosition, found ? key : u"#404");
    return found;
}

bool localConsoleHelpBrowser::setPage(const std::u16string &key)
{
    return pageShow(key, true);
}

void localConsoleHelpBrowser::onAnchorClicked(const QUrl &url)
{
    setPage(localFromQString(url.toString()));
}

void localConsoleHelpBrowser::backward()
{
    if (historyPosition > 0)
        pageShow(history[size_t(--historyPosition)], false);
}

void localConsoleHelpBrowser::forward()
{
    if (size_t(historyPosition) + 1 < history.size())
        pageShow(history[size_t(++historyPosition)], false);
}

// --- the language function ---------------------------------------------------

bool localVclTextBrowserOpen(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                             localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1))
        return false;
    const localValueList *list = localArgValueList(status, arguments, 0);
    if (list == nullptr)
        return false;
    if (list->size() == 0)
        std::cout << localNarrow(u" Ошибка! Пустой список значений") << std::endl;
    QWidget *window = nullptr;
    const size_t json = list->indexOfPresentation(u"help.json");
    if (json != 0) {
        const localValueDescription *main = list->valueByKey(u"main.htm");
        localConsoleHelpBrowser *browser = new localConsoleHelpBrowser(main != nullptr ? main->toString() : u"");
        browser->parseHelpFromJson(list->valueByIndex(json)->toString());
        browser->setPage(u"#main");
        window = browser;
    } else {
        localVclTextBrowser *browser = new localVclTextBrowser();
        for (size_t n = 1; n <= list->size(); ++n)
            browser->pageAdd(*list->presentationByIndex(n), list->valueByIndex(n)->toString());
        browser->pageLoad(u"main.htm");
        browser->history = {u"main.htm"};
        browser->historyPosition = 0;
        window = browser;
    }
    helpShow(window);
    result->setVal(1.0);
    return true;
}
