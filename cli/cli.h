#pragma once

#include "app/appdelegate.h"
#include "browse/groupkind.h"

#include <QStringList>
#include <QTextStream>

#include <functional>
#include <optional>

namespace tomewise {
class GroupBreakdownTableViewController;
class ScreenController;
}

namespace tomewise::cli {

struct Context
{
    AppDelegate *app = nullptr; // null for commands that need no store
    QStringList args;           // the words after the command name
    QTextStream &out;
    QTextStream &err;
};

struct Command
{
    QString name;
    QString usage;   // "genre list [--desc] [--search TEXT]"
    QString summary; // one line for --help; lines after it only for "COMMAND --help"
    bool needsApp = true;
    std::function<int(Context &)> run;
};

// Each command file registers its commands with a static Registration.
struct Registration
{
    explicit Registration(Command command);
};
const QList<Command> &commands();

// Prints a controller's alerts to stderr as "TITLE: MESSAGE" and remembers them.
class AlertLog
{
public:
    AlertLog(ScreenController &controller, QTextStream &err);
    int count() const { return int(m_alerts.size()); }
    const QList<std::pair<QString, QString>> &alerts() const { return m_alerts; }

private:
    QList<std::pair<QString, QString>> m_alerts;
};

// Takes "--name VALUE" out of args; returns the value, or nothing.
std::optional<QString> takeOption(QStringList &args, const QString &name);
bool takeFlag(QStringList &args, const QString &name);

// Runs the event loop until `done` says so or the time runs out.
bool waitUntil(const std::function<bool()> &done, int timeoutMs);

int usageError(Context &ctx, const QString &usage);

// Takes every "--sort N" (the sort menu's entries 1 to 4, in order); nothing
// when one is not such a number.
std::optional<QList<int>> takeSorts(QStringList &args);

// Taps the summary row of VALUE, so the value is kept where the app keeps it;
// false (with a message) when the summary has no such row.
bool selectGroupValue(Context &ctx, GroupKind kind, const QString &value);

// Shows a breakdown as the app does after a summary tap (loaded, then appearing),
// then chooses each sort option in order and searches, as a user would.
void driveBreakdown(GroupBreakdownTableViewController &screen, const QList<int> &sorts,
                    const std::optional<QString> &search);

// Text from a user's data as the terminal is to show it: control characters
// (a NUL from an import line, an escape sequence) print as \n, \t or \xNN
// instead of acting on the terminal. Multi-line text (notes, cards) may keep
// its line breaks and tabs.
enum class LineBreaks { Escape, Keep };
QString printable(const QString &text, LineBreaks lineBreaks = LineBreaks::Escape);

} // namespace tomewise::cli
