#include "settings.h"

namespace tomewise {

Settings::Settings(const QString &iniPath)
    : m_settings(iniPath, QSettings::IniFormat)
{
}

QVariant Settings::object(const char *key) const
{
    return m_settings.value(QLatin1String(key));
}

bool Settings::contains(const char *key) const
{
    return m_settings.contains(QLatin1String(key));
}

bool Settings::boolValue(const char *key) const
{
    // The ini file keeps booleans as "true"/"false"; anything else is false.
    const QVariant v = object(key);
    if (v.typeId() == QMetaType::Bool)
        return v.toBool();
    return v.toString() == QLatin1String("true");
}

QString Settings::stringValue(const char *key) const
{
    return object(key).toString();
}

void Settings::setValue(const char *key, const QVariant &value)
{
    m_settings.setValue(QLatin1String(key), value);
}

void Settings::remove(const char *key)
{
    m_settings.remove(QLatin1String(key));
}

void Settings::synchronize()
{
    m_settings.sync();
}

} // namespace tomewise
