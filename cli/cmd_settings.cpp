// The settings, read and written directly or through the settings screen.
#include "cli.h"

#include "app/defaultsviewcontroller.h"

namespace tomewise::cli {
namespace {

const QString kUsage = QStringLiteral("settings get KEY | set KEY VALUE | default-date YYYY-MM-DD|off | "
                                      "date-style wheel|compact|inline");

// The keys this command knows, and whether each holds a boolean.
const QList<std::pair<const char *, bool>> &knownKeys()
{
    static const QList<std::pair<const char *, bool>> keys{
        {SettingsKey::AboutHasBeenLaunchedBefore, true},
        {SettingsKey::UseDefaultDate, true},
        {SettingsKey::DefaultDate, false},
        {SettingsKey::UseDateWheel, true},
        {SettingsKey::UseDateCompact, true},
        {SettingsKey::UseDateInline, true},
        {SettingsKey::ReviewLastRequest, false},
        {SettingsKey::GoogleBooksApiKey, false},
    };
    return keys;
}

const std::pair<const char *, bool> *keyNamed(const QString &name)
{
    for (const auto &key : knownKeys()) {
        if (name == QLatin1String(key.first))
            return &key;
    }
    return nullptr;
}

int get(Context &ctx)
{
    const auto *key = ctx.args.size() == 1 ? keyNamed(ctx.args[0]) : nullptr;
    if (!key)
        return usageError(ctx, kUsage);
    Settings &defaults = ctx.app->userDefaults();
    if (!defaults.contains(key->first)) {
        ctx.err << key->first << " is not set" << Qt::endl;
        return 1;
    }
    if (key->second)
        ctx.out << (defaults.boolValue(key->first) ? "true" : "false") << '\n';
    else
        ctx.out << printable(defaults.stringValue(key->first)) << '\n';
    return 0;
}

int set(Context &ctx)
{
    const auto *key = ctx.args.size() == 2 ? keyNamed(ctx.args[0]) : nullptr;
    if (!key)
        return usageError(ctx, kUsage);
    const QString value = ctx.args[1];
    if (key->second && value != QLatin1String("true") && value != QLatin1String("false"))
        return usageError(ctx, QStringLiteral("settings set %1 true|false").arg(QLatin1String(key->first)));
    Settings &defaults = ctx.app->userDefaults();
    defaults.setValue(key->first, key->second ? QVariant(value == QLatin1String("true")) : QVariant(value));
    defaults.synchronize();
    return 0;
}

int defaultDate(Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, kUsage);
    DefaultsViewController screen(ctx.app);
    screen.viewDidLoad();
    if (ctx.args[0] == QLatin1String("off")) {
        screen.SwitchChanged(false);
        return 0;
    }
    const QDate date = QDate::fromString(ctx.args[0], Qt::ISODate);
    if (!date.isValid())
        return usageError(ctx, kUsage);
    if (!screen.defaultDateSwitch())
        screen.SwitchChanged(true);
    screen.dateChanged(date.year(), date.month(), date.day());
    ctx.out << screen.defaultDateText() << '\n';
    return 0;
}

int dateStyle(Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, kUsage);
    DefaultsViewController screen(ctx.app);
    screen.viewDidLoad();
    const QString style = ctx.args[0];
    if (style == QLatin1String("wheel"))
        screen.DateWheelSwitch(true);
    else if (style == QLatin1String("compact"))
        screen.DateCompactSwitch(true);
    else if (style == QLatin1String("inline"))
        screen.DateInlineSwitch(true);
    else
        return usageError(ctx, kUsage);
    return 0;
}

int run(Context &ctx)
{
    if (ctx.args.isEmpty())
        return usageError(ctx, kUsage);
    const QString action = ctx.args.takeFirst();
    if (action == QLatin1String("get"))
        return get(ctx);
    if (action == QLatin1String("set"))
        return set(ctx);
    if (action == QLatin1String("default-date"))
        return defaultDate(ctx);
    if (action == QLatin1String("date-style"))
        return dateStyle(ctx);
    return usageError(ctx, kUsage);
}

const Registration r({QStringLiteral("settings"), QStringLiteral("settings get|set|default-date|date-style ..."),
                      QStringLiteral("Read or write the settings; the default date and date style as the settings screen does."),
                      true, run});

} // namespace
} // namespace tomewise::cli
