// Drives a real browse widget offscreen over the benchmark's table and times
// each key that refilled the buffer next to the same statements run bare
// through QtSql in the same process; then prints the peak resident memory.
//
//     browseBench FILE [PAGES]
#include "localDbtBrowseWidget200123.h"

#include "localDb.h"
#include "localString.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QSqlRecord>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

struct timings {
    std::vector<double> fill;
    std::vector<double> bare;
    int keys = 0;
};

std::vector<std::u16string> statements;
std::vector<std::pair<std::string, timings>> actions;

double bareRun(const std::u16string &sql)
{
    QSqlQuery query(QSqlDatabase::database("dbMain", false));
    query.setForwardOnly(true);
    QElapsedTimer timer;
    timer.start();
    query.exec(localToQString(sql));
    const int columns = query.record().count();
    while (query.next())
        for (int i = 0; i < columns; ++i)
            query.value(i);
    return double(timer.nsecsElapsed()) / 1e6;
}

timings &action(const std::string &name)
{
    for (auto &entry : actions)
        if (entry.first == name)
            return entry.second;
    actions.emplace_back(name, timings());
    return actions.back().second;
}

// Times `work`; when it ran statements, it was a fill.
template <class Work>
void measure(const std::string &name, Work work)
{
    statements.clear();
    QElapsedTimer timer;
    timer.start();
    work();
    const double elapsed = double(timer.nsecsElapsed()) / 1e6;
    timings &t = action(name);
    ++t.keys;
    if (statements.empty())
        return;
    double bare = 0;
    for (const std::u16string &sql : std::vector<std::u16string>(statements))
        bare += bareRun(sql);
    t.fill.push_back(elapsed);
    t.bare.push_back(bare);
}

void key(QWidget *widget, int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = {})
{
    QKeyEvent event(QEvent::KeyPress, code, modifiers, text);
    QApplication::sendEvent(widget, &event);
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double worst(const std::vector<double> &values)
{
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

long peakKilobytes()
{
    QFile status("/proc/self/status");
    status.open(QIODevice::ReadOnly);
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').front().toLong();
    return -1;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: browseBench FILE [PAGES]\n");
        return 2;
    }
    const int pages = argc > 2 ? std::atoi(argv[2]) : 1000;
    if (!localDb::testDbSqliteInit(localFromQString(QString::fromLocal8Bit(argv[1]))))
        return 1;
    localDbDataSource200123 source(u"dbMain", {{u"g", u"G", u""}, {u"r", u"R", u"g.ref=r.id"}},
                                   {{u"g.id", u"ID"}, {u"g.name", u"NAME"}, {u"g.a", u"A"}, {u"g.b", u"B"},
                                    {u"g.c", u"C"}, {u"r.descr", u"DESCR"}},
                                   {}, u"G_ABC", {});
    source.statementLog = &statements;
    std::vector<localDbGridColumn> columns(4);
    const char16_t *names[] = {u"NAME", u"C", u"A", u"DESCR"};
    const char16_t *indexes[] = {u"G_NAME", u"G_ABC", u"", u""};
    for (size_t i = 0; i < columns.size(); ++i) {
        columns[i].caption = columns[i].dataBuferColumn = names[i];
        columns[i].idxName = indexes[i];
        columns[i].width = 120;
    }
    // The first widgets pay for the style and the fonts, once per process.
    for (int i = 0; i < 2; ++i)
        localDbtBrowseWidget200123(source, columns).resize(600, 400);
    std::unique_ptr<localDbtBrowseWidget200123> widget;
    measure("open at the top", [&] { widget.reset(new localDbtBrowseWidget200123(source, columns)); });
    widget->resize(600, 30 * 21 - 1);
    for (int i = 0; i < pages; ++i)
        measure("PageDown", [&] { key(widget.get(), Qt::Key_PageDown); });
    measure("Ctrl+End", [&] { key(widget.get(), Qt::Key_End, Qt::ControlModifier); });
    widget->currentColumn = widget->fixedColumns; // the name column
    for (const QChar letter : QStringLiteral("N5000"))
        measure("typing search", [&] { key(widget.get(), Qt::Key_A, Qt::NoModifier, letter); });
    measure("Ctrl+2 index change", [&] { key(widget.get(), Qt::Key_2, Qt::ControlModifier); });
    for (int i = 0; i < pages; ++i)
        measure("PageUp", [&] { key(widget.get(), Qt::Key_PageUp); });

    std::printf("| action | keys | fills | fill median ms | fill worst ms | bare median ms | bare worst ms |"
                " fill/bare median | fill/bare worst |\n|---|---|---|---|---|---|---|---|---|\n");
    for (const auto &entry : actions) {
        const timings &t = entry.second;
        std::vector<double> ratios;
        for (size_t i = 0; i < t.fill.size(); ++i)
            ratios.push_back(t.fill[i] / std::max(t.bare[i], 1e-3));
        std::printf("| %s | %d | %zu | %.2f | %.2f | %.2f | %.2f | %.2f | %.2f |\n", entry.first.c_str(), t.keys,
                    t.fill.size(), median(t.fill), worst(t.fill), median(t.bare), worst(t.bare), median(ratios),
                    worst(ratios));
    }
    std::printf("\ncursor on id %lld; peak resident memory %ld kB\n",
                static_cast<long long>(widget->getId(widget->mCurRec())), peakKilobytes());
    return 0;
}
