#pragma once

#include "entry/bookitem.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tomewise {

// A volumes answer; the form only ever uses the first item.
struct BookScan
{
    std::optional<QList<BookItem>> items;

    struct Decoded;
    // Strict: a missing required key or a value of the wrong JSON type fails
    // the whole answer, so no half-filled book ever reaches the form.
    static Decoded decode(const QByteArray &json);
};

struct BookScan::Decoded
{
    std::optional<BookScan> scan;
    QString error; // one sentence naming the key path; empty when decoded
};

} // namespace tomewise
