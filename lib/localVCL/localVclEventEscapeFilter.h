// The Esc interrupt of a running program. A loop asks `poll()` each round:
// pending non-input events are dispatched, then the input waiting in the
// queue is swallowed, watching only for Esc, so that typing cannot reach the
// widgets while a program runs.
#ifndef LOCALVCLEVENTESCAPEFILTER_H
#define LOCALVCLEVENTESCAPEFILTER_H

#include <QObject>

#include <utility>
#include <vector>

class QEvent;

class localVclEventEscapeFilter : public QObject {
    Q_OBJECT
public:
    typedef bool (*filterFunction)(localVclEventEscapeFilter *filter, QObject *object, QEvent *event);

    // The one filter, installed on the application object when first asked for.
    static localVclEventEscapeFilter &instance();

    // True when Esc was pressed since the last poll.
    bool poll();

    // Keeps an event to be posted again by the next poll; takes ownership.
    void postpone(QObject *receiver, QEvent *event);

    filterFunction function = nullptr;
    std::vector<std::pair<QObject *, QEvent *>> postponed;
    bool escapeSeen = false;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    localVclEventEscapeFilter();
    ~localVclEventEscapeFilter() override;
};

#endif
