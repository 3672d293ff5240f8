#include "logcapture.h"

#include <QMutex>

namespace tomewise::test {

namespace {
QMutex g_mutex;
QList<std::pair<QString, QString>> g_lines;
QtMessageHandler g_previous = nullptr;

void handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const QString category = QString::fromLatin1(context.category ? context.category : "");
    if (category.startsWith(QLatin1String("tomewise"))) {
        QMutexLocker lock(&g_mutex);
        g_lines.append({category, message});
        return;
    }
    if (g_previous)
        g_previous(type, context, message);
}
} // namespace

LogCapture::LogCapture()
{
    clear();
    g_previous = qInstallMessageHandler(handler);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(g_previous);
}

QStringList LogCapture::lines(const char *category) const
{
    QMutexLocker lock(&g_mutex);
    QStringList out;
    for (const auto &[c, m] : g_lines) {
        if (!category || c == QLatin1String(category))
            out << m;
    }
    return out;
}

void LogCapture::clear()
{
    QMutexLocker lock(&g_mutex);
    g_lines.clear();
}

} // namespace tomewise::test
