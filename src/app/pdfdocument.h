#pragma once

#include <QString>

class QTextDocument;

namespace tomewise {

// Lays a text document out on A4 pages (595.2 x 841.8 points, no page margins:
// the document's own margin gives the white border) and writes it as a PDF.
bool writeTextDocumentPdf(QTextDocument &document, const QString &path, const QString &title,
                          QString *error = nullptr);

// The user guide: Markdown in, styled PDF out.
bool writeUserGuidePdf(const QString &markdownPath, const QString &pdfPath, QString *error = nullptr);

} // namespace tomewise
