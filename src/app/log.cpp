#include "log.h"

Q_LOGGING_CATEGORY(lcApp, "tomewise.app")
Q_LOGGING_CATEGORY(lcStore, "tomewise.store")
Q_LOGGING_CATEGORY(lcEntry, "tomewise.entry")
Q_LOGGING_CATEGORY(lcReference, "tomewise.reference")
Q_LOGGING_CATEGORY(lcBrowse, "tomewise.browse")
Q_LOGGING_CATEGORY(lcExchange, "tomewise.exchange")
Q_LOGGING_CATEGORY(lcFeedback, "tomewise.feedback")

#include <cstdio>

namespace tomewise {

namespace {
QtMessageHandler g_previousHandler = nullptr;

void filterMessages(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    if (g_previousHandler)
        g_previousHandler(type, context, message);
    else
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}
} // namespace

void filterRuntimeFolderWarning()
{
    g_previousHandler = qInstallMessageHandler(filterMessages);
}

} // namespace tomewise
