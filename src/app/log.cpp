#include "log.h"

Q_LOGGING_CATEGORY(lcApp, "tomewise.app")
Q_LOGGING_CATEGORY(lcStore, "tomewise.store")
Q_LOGGING_CATEGORY(lcEntry, "tomewise.entry")
Q_LOGGING_CATEGORY(lcReference, "tomewise.reference")
Q_LOGGING_CATEGORY(lcBrowse, "tomewise.browse")
Q_LOGGING_CATEGORY(lcExchange, "tomewise.exchange")
Q_LOGGING_CATEGORY(lcFeedback, "tomewise.feedback")
