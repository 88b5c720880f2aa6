// The class V77 of the language: a client of a 1C:Enterprise 7.7 base through
// automation (ProgID "V77.Application"). A program connects to a base, makes
// objects of it, calls their methods and reads their attributes. Names of
// 1C's own methods are Russian: signatures are built as wide text and handed
// to the platform as their Windows-1251 bytes.
#ifndef LOCALCLASSV77_H
#define LOCALCLASSV77_H

#include "localNativeClass.h"

#include <QVariant>
#include <QVariantList>

#include <memory>
#include <string>

class localAutomationObject;

class localClassV77 : public localNativeClass<localClassV77> {
public:
    // The application object of this connection, kept as its identity only: a
    // QUIT on the application releases it while sub-objects still hold it.
    const localAutomationObject *root;
    // Null when it was never created or QUIT released it; every call then
    // answers empty.
    std::unique_ptr<localAutomationObject> object;
    bool connected = false;

    // The application object, created by ProgID.
    localClassV77();
    // A sub-object of the connection of `rootObject`; without a root the
    // program is broken and stops.
    localClassV77(localAutomationObject *subObject, const localAutomationObject *rootObject);
    ~localClassV77() override;

    // The platform's call by a wide signature; an invalid QVariant without an object.
    QVariant call(const std::u16string &signature, const QVariantList &arguments = QVariantList());
    // The platform's sub-object query; null without an object or when none comes.
    localAutomationObject *subObjectQuery(const std::u16string &signature, const QVariantList &arguments);

    static const localNativeClassShape<localClassV77> &classShape();
    static bool attributeGet(localErrorType &status, localContextUTF8 *context, void **object,
                             const std::u16string &name, localValueDescription **result);
};

// Makes V77 known to CLASSLOAD; both executables call it once at start-up.
void localAutomation1CInstall();

#endif
