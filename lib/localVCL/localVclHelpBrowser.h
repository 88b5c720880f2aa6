// The hypertext help windows: a browser over a ready list of pages, opened by
// the language's ___TEST__TEXTBROWSER, and a browser whose pages are built from
// a help file in JSON (the manual that MANUAL opens).
#ifndef LOCALVCLHELPBROWSER_H
#define LOCALVCLHELPBROWSER_H

#include "localContextUTF8.h"

#include <QTextBrowser>

#include <string>
#include <unordered_map>
#include <vector>

class localValueTable;

// Pages by upper-cased key; a key that is no page is read as a CP1251 file.
class localVclTextBrowser : public QTextBrowser {
    Q_OBJECT
public:
    struct page {
        std::u16string key;
        std::u16string html;
    };
    std::vector<page> pages;
    std::vector<std::u16string> history;
    int32_t historyPosition = 0;

    explicit localVclTextBrowser(QWidget *parent = nullptr);
    // Adds a page under the upper case of `key`.
    void pageAdd(const std::u16string &key, const std::u16string &html);
    // The page of a link: upper case, a leading '#' dropped; then the file of
    // that name; else the text "Ошибка чтения файла!". Answers whether a page
    // or a file was found.
    bool pageLoad(const std::u16string &link);

public slots:
    void onAnchorClicked(const QUrl &url);
    // Every link the base follows comes here instead of the base's loader.
    void setSource(const QUrl &name) override;
    void backward() override;
    void forward() override;

private:
    std::unordered_map<std::u16string, size_t> pageIndex;
};

// Pages in a table (KEY, HTML, NAMEEN, NAMERU) built by parseHelpFromJson.
class localConsoleHelpBrowser : public QTextBrowser {
    Q_OBJECT
public:
    std::vector<std::u16string> history;
    int32_t historyPosition = 0;
    localValueTable *pages = nullptr;

    // `mainText` is the body of "#main" until the help file gives its own.
    explicit localConsoleHelpBrowser(const std::u16string &mainText, QWidget *parent = nullptr);
    ~localConsoleHelpBrowser() override;

    // Adds the pages of a help file. A broken file keeps the pages read
    // before the fault, prints the status text and answers false.
    bool parseHelpFromJson(const std::u16string &text);
    // Shows a page (or "#allPages", else "#404") and records it in the history.
    bool setPage(const std::u16string &key);
    // The HTML of a page, empty when there is none (the key's case does not matter).
    std::u16string pageFind(const std::u16string &key) const;

public slots:
    void onAnchorClicked(const QUrl &url);
    void backward() override;
    void forward() override;

private:
    std::unordered_map<std::u16string, size_t> pageIndex;
    // Adds a row, or replaces the HTML of the page of that key.
    void pageAdd(const std::u16string &key, const std::u16string &html, const std::u16string &nameEn,
                 const std::u16string &nameRu);
    bool pageShow(const std::u16string &key, bool record);
    std::u16string allPagesHtml() const;
    void classPagesAdd(const std::u16string &className, localValueTable &description);
};

// The language's ___TEST__TEXTBROWSER(list): the list's items are pages
// (presentation the key, value the HTML); an item "help.json" holds a help
// file in JSON, and then the window is the JSON-fed browser.
bool localVclTextBrowserOpen(localErrorType &status, localContextUTF8 *context, localValueVector &arguments,
                             localValueDescription *result);

#endif
