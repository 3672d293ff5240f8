#pragma once

#include "model/books.h"

#include <QString>

#include <functional>

namespace tomewise {

// Fills a row label such as "Name: {name}": "{attribute}" is the attribute's
// text (integers in decimal, 0 when unset), "{attribute|None}" falls back to
// "None" when the attribute is absent, and "{dateRead}" is what `dateRead`
// gives, asked only when the label shows a date.
QString fillLabel(const char *pattern, const Books &book, const std::function<QString()> &dateRead);

} // namespace tomewise
