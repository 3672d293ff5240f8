#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

namespace tomewise {

// The settings keys, spelled as the system names them.
namespace SettingsKey {
inline constexpr auto AboutHasBeenLaunchedBefore = "AboutHasBeenLaunchedBeforeFlag";
inline constexpr auto DateHasBeenFixedBefore = "DateHasBeenFixedBeforeFlag"; // declared, never used
inline constexpr auto UseDefaultDate = "UseDefaultDate";
inline constexpr auto DefaultDate = "DefaultDate";
inline constexpr auto UseDateWheel = "UseDateWheel";
inline constexpr auto UseDateCompact = "UseDateCompact";
inline constexpr auto UseDateInline = "UseDateInline";
inline constexpr auto ReviewLastRequest = "ReviewService.lastRequest";
inline constexpr auto GoogleBooksApiKey = "GoogleBooksApiKey";
} // namespace SettingsKey

// The user defaults: one ini file beside the store. A missing key reads as
// absent (invalid) or false.
class Settings
{
public:
    explicit Settings(const QString &iniPath);

    QVariant object(const char *key) const;
    bool contains(const char *key) const;
    bool boolValue(const char *key) const;
    QString stringValue(const char *key) const;
    void setValue(const char *key, const QVariant &value);
    void remove(const char *key);
    void synchronize();
    QString fileName() const { return m_settings.fileName(); }

private:
    QSettings m_settings;
};

} // namespace tomewise
