#pragma once

#include <QList>
#include <QMap>
#include <QSize>
#include <QString>

namespace tomewise::test {

// Reads a real PDF back through poppler's command-line tools.
QString pdfText(const QString &path);                 // pdftotext -layout
QMap<QString, QString> pdfInfo(const QString &path);  // pdfinfo, "Pages" -> "3"
QList<QSize> pdfImages(const QString &path);          // pdfimages -list, one per drawn image

} // namespace tomewise::test
