// The console's window settings: size and place kept in localConsole.ini, a
// JSON value list of "width", "height", "x" and "y", found through the
// working directory of the moment.
#include "localConsole.h"

#include "localVCL.h"

#include "localJson.h"
#include "localString.h"
#include "localValueList.h"

#include <memory>

namespace {

// A stored number truncated to an integer, or `otherwise` when the key is
// absent or holds no number.
int settingGet(const localValueList &settings, const char16_t *key, int otherwise)
{
    const localValueDescription *value = settings.valueByKey(key);
    if (value == nullptr || value->getType() != localValueTypeNUM)
        return otherwise;
    return int(value->localValueNumber);
}

std::unique_ptr<localValueList> settingsLoad(const std::u16string &fileName)
{
    return std::unique_ptr<localValueList>(localJson::valueListFromJsonFile(fileName));
}

} // namespace

void localConsole::sizeApply(const localValueList &settings)
{
    const int storedWidth = settingGet(settings, u"width", width());
    const int storedHeight = settingGet(settings, u"height", height());
    // A window of no size could never be found again.
    resize(storedWidth > 0 ? storedWidth : width(), storedHeight > 0 ? storedHeight : height());
}

void localConsole::iniLoad()
{
    sizeApply(*settingsLoad(iniFileName));
}

void localConsole::windowShow()
{
    const std::unique_ptr<localValueList> settings = settingsLoad(iniFileName);
    // The constructor read the settings of the start's directory; the
    // console may have moved into prgTest since, whose settings rule.
    sizeApply(*settings);
    QWidget *top = window();
    localVclShowParameters parameters;
    parameters.title = QStringLiteral("Корвел ");
    parameters.hasX = parameters.hasY = true;
    parameters.x = settingGet(*settings, u"x", top->x());
    parameters.y = settingGet(*settings, u"y", top->y());
    top->move(parameters.x, parameters.y);
    localVCL::applicationShowWidget(this, parameters);
}

void localConsole::focusOutEvent(QFocusEvent *)
{
    localValueDescription *cell = localValueNew();
    localValueList *settings = localValueList::newInCell(cell);
    settings->valueSetByPresentation(double(width()), u"width");
    settings->valueSetByPresentation(double(height()), u"height");
    settings->valueSetByPresentation(double(window()->x()), u"x");
    settings->valueSetByPresentation(double(window()->y()), u"y");
    const std::u16string json = localJson::valueToJson(*cell);
    localValueRelease(cell);
    if (!localString::fileWrite(false, localString::possibleCodePageUTF8, json, iniFileName))
        LOCAL_DIAG(u"Error!!! Не удалось записать файл настроек!");
}
