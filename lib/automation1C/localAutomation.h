// The four operations of the platform's automation (COM) that the 1C client
// is written against: create an object by ProgID, call a method or read a
// property by signature, query a sub-object, release. On Windows they are
// ActiveQt's; elsewhere no object is ever created; tests install a fake.
#ifndef LOCALAUTOMATION_H
#define LOCALAUTOMATION_H

#include <QString>
#include <QVariant>
#include <QVariantList>

// One automation object; deleting it releases the object on the platform.
class localAutomationObject {
public:
    virtual ~localAutomationObject();
    // `signature` is the 8-bit name and parameter list the platform's
    // dispatcher matches; failures come back as an invalid QVariant.
    virtual QVariant dynamicCall(const char *signature, const QVariantList &arguments) = 0;
    // As dynamicCall, for a result that is itself an object; null for none.
    virtual localAutomationObject *querySubObject(const char *signature, const QVariantList &arguments) = 0;
    // The object as an argument of another call (an IDispatch on Windows).
    virtual QVariant asArgument() const = 0;
};

class localAutomationPlatform {
public:
    virtual ~localAutomationPlatform();
    // The object of that ProgID, or null when it cannot be created.
    virtual localAutomationObject *create(const QString &progId) = 0;

    static localAutomationPlatform &instance();
    // Takes ownership; null restores the platform's own implementation.
    static void install(localAutomationPlatform *platform);
};

#endif
