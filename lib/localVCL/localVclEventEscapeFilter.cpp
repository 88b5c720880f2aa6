#include "localVclEventEscapeFilter.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace {

// Consumes every event and remembers whether one was Esc.
bool escapeWatch(localVclEventEscapeFilter *filter, QObject *, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
        filter->escapeSeen = true;
    return true;
}

} // namespace

localVclEventEscapeFilter::localVclEventEscapeFilter()
{
    QCoreApplication::instance()->installEventFilter(this);
}

localVclEventEscapeFilter::~localVclEventEscapeFilter()
{
    for (const auto &pair : postponed)
        delete pair.second;
}

localVclEventEscapeFilter &localVclEventEscapeFilter::instance()
{
    // Parented to the application, which deletes it on the way out.
    static localVclEventEscapeFilter *filter = [] {
        localVclEventEscapeFilter *made = new localVclEventEscapeFilter();
        made->setParent(QCoreApplication::instance());
        return made;
    }();
    return *filter;
}

bool localVclEventEscapeFilter::eventFilter(QObject *object, QEvent *event)
{
    return function != nullptr && function(this, object, event);
}

void localVclEventEscapeFilter::postpone(QObject *receiver, QEvent *event)
{
    postponed.emplace_back(receiver, event);
}

bool localVclEventEscapeFilter::poll()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    function = escapeWatch;
    QCoreApplication::processEvents();
    function = nullptr;
    std::vector<std::pair<QObject *, QEvent *>> again;
    again.swap(postponed);
    for (const auto &pair : again)
        QCoreApplication::postEvent(pair.first, pair.second);
    const bool seen = escapeSeen;
    escapeSeen = false;
    return seen;
}
