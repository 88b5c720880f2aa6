// A browse widget over a table of a temporary database, driven by keys, and
// the checks that hold after every key: the buffer is a run of the table in
// index order, at most its capacity long, and the cursor stands on a row.
#ifndef LOCALBROWSETESTSUPPORT_H
#define LOCALBROWSETESTSUPPORT_H

#include "localRefBrowseWidget200123.h"

#include "../localDb/localDbTestSupport.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSqlError>

#include <map>
#include <memory>

namespace localBrowseTest {

inline void key(QWidget *widget, int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                const QString &text = QString())
{
    QKeyEvent event(QEvent::KeyPress, code, modifiers, text);
    QApplication::sendEvent(widget, &event);
}

typedef std::vector<std::u16string> keyRow;

// The key values of every row of the table (or of one folder), as a plain
// ordered statement gives them, and the place of each.
struct ordered {
    std::vector<keyRow> rows;
    std::map<keyRow, size_t> place;
    size_t size() const { return rows.size(); }
    const keyRow &operator[](size_t i) const { return rows[i]; }
    const keyRow &back() const { return rows.back(); }
};

inline ordered orderedKeys(const QString &sql)
{
    QSqlQuery query(QSqlDatabase::database("dbMain", false));
    if (!query.exec(sql))
        qFatal("%s: %s", qPrintable(sql), qPrintable(query.lastError().text()));
    ordered keys;
    while (query.next()) {
        keyRow row;
        for (int i = 0; i < query.record().count(); ++i)
            row.push_back(localTest::w(query.value(i).toString()));
        keys.place.emplace(row, keys.rows.size());
        keys.rows.push_back(row);
    }
    return keys;
}

// A data source over table `table` (alias t) with the index `index`, and
// a browse widget of `lines` screen lines over it.
struct browse {
    std::unique_ptr<localDbDataSource200123> source;
    std::unique_ptr<localDbtBrowseWidget200123> widget;

    browse(const std::u16string &table, const std::u16string &index, int lines, bool reference = false,
           std::vector<localDbGridColumn> columns = {})
    {
        source.reset(new localDbDataSource200123(u"dbMain", {{u"t", table, u""}},
                                                 {{u"t.id", u"ID"}, {u"t.name", u"NAME"}}, {}, index, {}));
        if (reference)
            widget.reset(new localRefBrowseWidget200123(*source, columns));
        else
            widget.reset(new localDbtBrowseWidget200123(*source, columns));
        widget->resize(400, lines * 21 - 1);
    }
    const localDbDataSource200123::row *cursorRow() const
    {
        const auto &buffer = source->dataBufer;
        return widget->mCurRec() < buffer.size() ? &buffer[widget->mCurRec()] : nullptr;
    }
    QString cursorId() const { return cursorRow() != nullptr ? cursorRow()->at(source->keyFields().size()) : "-"; }
};

// Where the buffer stands in `all`: the place of its first row, after
// checking that it is a run of `all` and that the cursor is on one of its
// rows. -1 for an empty buffer; a failure is reported and gives -2.
inline int64_t bufferPlace(const browse &b, const ordered &all)
{
    const auto &buffer = b.source->dataBufer;
    if (buffer.size() > size_t(b.source->capacity)) {
        qWarning("buffer of %d rows", int(buffer.size()));
        return -2;
    }
    if (buffer.empty())
        return b.widget->currentLine == b.widget->headLines ? -1 : -2;
    const auto first = all.place.find(b.source->bufferRowKeyValues(0));
    if (first == all.place.end()) {
        qWarning("the buffer's first row is not in the table");
        return -2;
    }
    for (size_t r = 0; r < buffer.size(); ++r) {
        if (first->second + r >= all.size() || b.source->bufferRowKeyValues(r) != all[first->second + r]) {
            qWarning("buffer row %d is not the table's row %d", int(r), int(first->second + r));
            return -2;
        }
    }
    if (b.widget->mCurRec() >= buffer.size() || b.widget->currentLine < b.widget->headLines) {
        qWarning("cursor off the buffer: row %u, line %d", b.widget->mCurRec(), b.widget->currentLine);
        return -2;
    }
    return int64_t(first->second);
}

} // namespace localBrowseTest

#endif
