// A scriptable automation platform for tests. It records every creation,
// call, sub-object query and release, with the signature as the bytes that
// arrived (Windows-1251 for Russian names) and the arguments, and answers
// calls and queries from tables filled by the test.
#ifndef LOCALAUTOMATIONFAKE_H
#define LOCALAUTOMATIONFAKE_H

#include "localAutomation.h"

#include <QByteArray>
#include <QStringList>

#include <map>
#include <memory>
#include <set>
#include <vector>

class localAutomationFake : public localAutomationPlatform {
public:
    enum eventKind { eventCreate, eventCall, eventQuery, eventRelease };
    struct event {
        eventKind kind;
        int object; // from 1, in the order of creation and queries
        QByteArray signature;
        QVariantList arguments;
    };
    // Shared with the objects, which may outlive the platform's installation.
    struct state {
        std::vector<event> events;
        int objects = 0;
        // Keyed by the signature's bytes, or by those bytes, a line feed and
        // the first argument's text for an answer to that argument only.
        std::map<QByteArray, QVariant> answers;
        std::set<QByteArray> subObjects;
    };
    std::shared_ptr<state> journal = std::make_shared<state>();

    localAutomationObject *create(const QString &progId) override;

    // A call of `signature` (Unicode here, Windows-1251 bytes on the wire)
    // answers `value`; with `firstArgument`, only for that first argument.
    void answer(const QString &signature, const QVariant &value, const QString &firstArgument = QString());
    // A query of `signature` gives a new object; with `firstArgument`, only
    // for that first argument.
    void subObject(const QString &signature, const QString &firstArgument = QString());

    // The events as lines: "2 call ИмяМетода(/const QString&/) [arg|arg]",
    // "1 create V77.Application", "3 release"; objects as arguments read
    // "object N".
    QStringList lines() const;

    static QByteArray cp1251(const QString &text);
    static QString fromCp1251(const QByteArray &bytes);
    static QByteArray key(const QByteArray &signature, const QString &firstArgument);
};

#endif
