// Logging of the events the application delivers: a debugging aid that is
// installed on the application object and never consumes an event.
#ifndef LOCALVCLEVENTLOG_H
#define LOCALVCLEVENTLOG_H

#include <QObject>
#include <QString>

// "QEvent::ActivationChange (A widget's top-level window activation state has
// changed)", or "unknown (N)" for a type without a name.
QString localVclEventName(int type);

class eventFilterForLog : public QObject {
    Q_OBJECT
public:
    explicit eventFilterForLog(QObject *parent = nullptr);
    // The events logged so far.
    qint64 count = 0;

    // The line logged for an event, or empty when the type is not logged.
    static QString logLine(const QObject *object, const QEvent *event);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};

#endif
