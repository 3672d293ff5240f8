#include "feedbackconfig.h"

#include "app/log.h"
#include "app/settings.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace tomewise {

FeedbackConfig FeedbackConfig::load(const Settings &settings)
{
    QJsonObject built;
    QFile file(QStringLiteral(":/feedback/addresses.json"));
    if (file.open(QIODevice::ReadOnly))
        built = QJsonDocument::fromJson(file.readAll()).object();
    if (built.isEmpty())
        qCWarning(lcFeedback) << "The built-in feedback addresses are missing";

    const auto value = [&](const char *name) {
        const QByteArray key = QByteArrayLiteral("Feedback.") + name;
        if (settings.contains(key.constData()))
            return settings.stringValue(key.constData());
        return built.value(QLatin1String(name)).toString();
    };
    return {value("productURL"), value("website"), value("webPage"), value("supportMail")};
}

} // namespace tomewise
