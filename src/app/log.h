#pragma once

#include <QLoggingCategory>

// The diagnostic log. Lines are the system's own texts; tests assert on them.
Q_DECLARE_LOGGING_CATEGORY(lcApp)      // start-up, menu, settings
Q_DECLARE_LOGGING_CATEGORY(lcStore)    // store failures
Q_DECLARE_LOGGING_CATEGORY(lcEntry)    // book form, search, detail, capture
Q_DECLARE_LOGGING_CATEGORY(lcReference)
Q_DECLARE_LOGGING_CATEGORY(lcBrowse)
Q_DECLARE_LOGGING_CATEGORY(lcExchange)
Q_DECLARE_LOGGING_CATEGORY(lcFeedback)

namespace tomewise {
// Keeps Qt's warning about a session without a runtime folder from the user,
// who can do nothing about it; every other message passes on as before.
void filterRuntimeFolderWarning();
} // namespace tomewise
