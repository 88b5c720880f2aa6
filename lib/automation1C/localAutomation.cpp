#include "localAutomation.h"

#include <memory>

#ifdef Q_OS_WIN
localAutomationPlatform *localAutomationActiveQt(); // localAutomationActiveQt.cpp
#endif

namespace {

// Without COM no automation object exists: every creation fails, so the
// client's calls answer empty and CONNECT fails its probe.
class localAutomationNone : public localAutomationPlatform {
public:
    localAutomationObject *create(const QString &) override { return nullptr; }
};

localAutomationPlatform *platformOwn()
{
#ifdef Q_OS_WIN
    return localAutomationActiveQt();
#else
    return new localAutomationNone;
#endif
}

std::unique_ptr<localAutomationPlatform> &installed()
{
    static std::unique_ptr<localAutomationPlatform> platform(platformOwn());
    return platform;
}

} // namespace

localAutomationObject::~localAutomationObject() = default;
localAutomationPlatform::~localAutomationPlatform() = default;

localAutomationPlatform &localAutomationPlatform::instance()
{
    return *installed();
}

void localAutomationPlatform::install(localAutomationPlatform *platform)
{
    installed().reset(platform != nullptr ? platform : platformOwn());
}
