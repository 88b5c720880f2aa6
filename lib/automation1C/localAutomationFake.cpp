#include "localAutomationFake.h"

#include <QTextCodec>

namespace {

class fakeObject : public localAutomationObject {
public:
    fakeObject(std::shared_ptr<localAutomationFake::state> shared)
        : journal(std::move(shared)), number(++journal->objects)
    {
    }
    ~fakeObject() override { journal->events.push_back({localAutomationFake::eventRelease, number, {}, {}}); }

    QVariant dynamicCall(const char *signature, const QVariantList &arguments) override
    {
        journal->events.push_back({localAutomationFake::eventCall, number, signature, arguments});
        const QString first = arguments.isEmpty() ? QString() : arguments[0].toString();
        auto found = journal->answers.find(localAutomationFake::key(signature, first));
        if (found == journal->answers.end())
            found = journal->answers.find(signature);
        return found != journal->answers.end() ? found->second : QVariant();
    }
    localAutomationObject *querySubObject(const char *signature, const QVariantList &arguments) override
    {
        journal->events.push_back({localAutomationFake::eventQuery, number, signature, arguments});
        const QString first = arguments.isEmpty() ? QString() : arguments[0].toString();
        if (journal->subObjects.count(localAutomationFake::key(signature, first)) == 0
            && journal->subObjects.count(signature) == 0)
            return nullptr;
        return new fakeObject(journal);
    }
    QVariant asArgument() const override { return QStringLiteral("object %1").arg(number); }

private:
    std::shared_ptr<localAutomationFake::state> journal;
    const int number;
};

} // namespace

localAutomationObject *localAutomationFake::create(const QString &progId)
{
    fakeObject *made = new fakeObject(journal);
    journal->events.push_back({eventCreate, journal->objects, progId.toUtf8(), {}});
    return made;
}

void localAutomationFake::answer(const QString &signature, const QVariant &value, const QString &firstArgument)
{
    journal->answers[key(cp1251(signature), firstArgument)] = value;
}

void localAutomationFake::subObject(const QString &signature, const QString &firstArgument)
{
    journal->subObjects.insert(key(cp1251(signature), firstArgument));
}

QStringList localAutomationFake::lines() const
{
    static const char *const kinds[] = {"create", "call", "query", "release"};
    QStringList out;
    for (const event &happened : journal->events) {
        QString line = QStringLiteral("%1 %2").arg(happened.object).arg(kinds[happened.kind]);
        if (happened.kind == eventCreate)
            line += ' ' + QString::fromUtf8(happened.signature);
        if (happened.kind == eventCall || happened.kind == eventQuery) {
            QStringList arguments;
            for (const QVariant &argument : happened.arguments)
                arguments << argument.toString();
            line += ' ' + fromCp1251(happened.signature) + " [" + arguments.join('|') + ']';
        }
        out << line;
    }
    return out;
}

QByteArray localAutomationFake::cp1251(const QString &text)
{
    return QTextCodec::codecForName("Windows-1251")->fromUnicode(text);
}

QString localAutomationFake::fromCp1251(const QByteArray &bytes)
{
    return QTextCodec::codecForName("Windows-1251")->toUnicode(bytes);
}

QByteArray localAutomationFake::key(const QByteArray &signature, const QString &firstArgument)
{
    return firstArgument.isEmpty() ? signature : signature + '\n' + firstArgument.toUtf8();
}
