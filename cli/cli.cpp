#include "cli.h"

#include "app/screencontroller.h"
#include "browse/groupbreakdowntableviewcontroller.h"
#include "browse/grouptableviewcontroller.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace tomewise::cli {

namespace {
QList<Command> &registry()
{
    static QList<Command> list;
    return list;
}
} // namespace

Registration::Registration(Command command)
{
    registry().append(std::move(command));
}

const QList<Command> &commands()
{
    return registry();
}

AlertLog::AlertLog(ScreenController &controller, QTextStream &err)
{
    QObject::connect(&controller, &ScreenController::alert, &controller,
                     [this, &err](const QString &title, const QString &message) {
                         m_alerts.append({title, message});
                         err << printable(title) << ": " << printable(message, LineBreaks::Keep) << Qt::endl;
                     });
}

std::optional<QString> takeOption(QStringList &args, const QString &name)
{
    const int i = int(args.indexOf(name));
    if (i < 0 || i + 1 >= args.size())
        return std::nullopt;
    const QString value = args.at(i + 1);
    args.remove(i, 2);
    return value;
}

bool takeFlag(QStringList &args, const QString &name)
{
    return args.removeAll(name) > 0;
}

bool waitUntil(const std::function<bool()> &done, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
    }
    return true;
}

int usageError(Context &ctx, const QString &usage)
{
    ctx.err << "usage: tomewise-cli " << usage << Qt::endl;
    return 2;
}

std::optional<QList<int>> takeSorts(QStringList &args)
{
    QList<int> sorts;
    while (const auto sort = takeOption(args, QStringLiteral("--sort"))) {
        bool ok = false;
        const int n = sort->toInt(&ok);
        if (!ok || n < 1 || n > 4)
            return std::nullopt;
        sorts << n;
    }
    return sorts;
}

bool selectGroupValue(Context &ctx, GroupKind kind, const QString &value)
{
    GroupTableViewController summary(kind, ctx.app, nullptr);
    summary.viewDidLoad();
    if (!summary.valueList().contains(value)) {
        ctx.err << "No " << groupKind(kind).tabTitle << " row " << printable(value) << Qt::endl;
        return false;
    }
    summary.selectValue(value);
    return true;
}

void driveBreakdown(GroupBreakdownTableViewController &screen, const QList<int> &sorts,
                    const std::optional<QString> &search)
{
    screen.viewDidLoad();
    screen.viewWillAppear();
    for (int n : sorts)
        screen.selectSortOption(n);
    if (search)
        screen.setSearchText(*search);
}

QString printable(const QString &text, LineBreaks lineBreaks)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar c : text) {
        if (c.category() != QChar::Other_Control) {
            shown += c;
        } else if (c == u'\n') {
            shown += lineBreaks == LineBreaks::Keep ? QStringLiteral("\n") : QStringLiteral("\\n");
        } else if (c == u'\t') {
            shown += lineBreaks == LineBreaks::Keep ? QStringLiteral("\t") : QStringLiteral("\\t");
        } else {
            shown += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        }
    }
    return shown;
}

} // namespace tomewise::cli
