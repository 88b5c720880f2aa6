// The automation operations through ActiveQt (Windows only).
#include "localAutomation.h"

#include <QAxObject>

#include <memory>

namespace {

class activeQtObject : public localAutomationObject {
public:
    explicit activeQtObject(QAxObject *made) : object(made) { }

    QVariant dynamicCall(const char *signature, const QVariantList &arguments) override
    {
        QList<QVariant> values = arguments;
        return object->dynamicCall(signature, values);
    }
    localAutomationObject *querySubObject(const char *signature, const QVariantList &arguments) override
    {
        QList<QVariant> values = arguments;
        QAxObject *sub = object->querySubObject(signature, values);
        return sub != nullptr ? new activeQtObject(sub) : nullptr;
    }
    QVariant asArgument() const override { return object->asVariant(); }

private:
    std::unique_ptr<QAxObject> object;
};

class activeQtPlatform : public localAutomationPlatform {
public:
    localAutomationObject *create(const QString &progId) override
    {
        std::unique_ptr<QAxObject> made(new QAxObject(progId));
        if (made->isNull())
            return nullptr;
        return new activeQtObject(made.release());
    }
};

} // namespace

localAutomationPlatform *localAutomationActiveQt()
{
    return new activeQtPlatform;
}
