#pragma once

#include <QSizeF>
#include <QString>

class QTextDocument;

namespace tomewise {

// A4 in points, the page of every list and report.
inline constexpr QSizeF kA4Points(595.2, 841.8);

// Lays a text document out on pages of the given size in points (no page
// margins: the document's own margin gives the white border) and writes it as a PDF.
bool writeTextDocumentPdf(QTextDocument &document, const QString &path, const QString &title,
                          QString *error = nullptr, QSizeF pagePoints = kA4Points);

// The user guide: Markdown in, styled PDF out, on pages the shape of a phone
// screen so that fitting a page to the width leaves the text at reading size.
bool writeUserGuidePdf(const QString &markdownPath, const QString &pdfPath, QString *error = nullptr);

} // namespace tomewise
