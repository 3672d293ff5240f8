#pragma once

#include "model/bookstore.h"

#include <QJsonArray>

namespace tomewise {

// Every record of an entity in store order as JSON objects keyed by attribute
// name; absent attributes are left out, dateRead is ISO 8601 in UTC and the
// cover is Base64.
std::optional<QJsonArray> dumpEntity(BookStore &store, Entity entity, QString *error = nullptr);

} // namespace tomewise
