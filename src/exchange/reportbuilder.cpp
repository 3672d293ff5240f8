#include "reportbuilder.h"

#include "app/appstate.h"
#include "model/bookstore.h"

#include <QScopeGuard>
#include <QTextBlockFormat>
#include <QTextCharFormat>

namespace tomewise {

static QString text(const Text &value)
{
    return value.value_or(QString());
}

static QString number(const Int16 &value)
{
    return QString::number(value.value_or(0));
}

ReportBuilder::ReportBuilder(BookStore &store, double textViewWidth)
    : m_store(store)
    , m_textViewWidth(textViewWidth)
    , m_document(store)
    , m_cursor(&m_document)
{
    m_document.setDefaultFont(QFont(QStringLiteral("Arial"), 17));
    // No cover is drawn wider than the text; the names stay plain for the
    // view, which shows the same covers.
    m_document.setMaxPixelWidth(int(textViewWidth * CoverDocument::kPixelsPerPoint));
}

std::optional<GroupKind> ReportBuilder::kindOfCallingScreen(const QString &callingScreen)
{
    // Year read shares "YearBreakdown" with year published, which comes first.
    for (const auto &k : kGroupKinds) {
        if (callingScreen == QLatin1String(k.callingScreen))
            return k.kind;
    }
    return std::nullopt;
}

bool ReportBuilder::fetch(const QString &callingScreen, AppState &state, QString *error)
{
    m_books.clear();
    m_kind = kindOfCallingScreen(callingScreen);
    FetchRequest request;
    const bool ascending = state.groupSortAscending();
    if (!m_kind) {
        request.sortDescriptors = {{QStringLiteral("name"), ascending}};
    } else {
        const GroupKindInfo &info = groupKind(*m_kind);
        const Books &current = state.currentBook;
        QVariant value;
        switch (info.slot) {
        case GroupValueSlot::CurrentBookText:
            value = attributeValue(current, groupAttribute(info.slotField));
            break;
        case GroupValueSlot::CurrentBookYear:
            value = QString::number(current.publishDate.value_or(0));
            break;
        case GroupValueSlot::SelectedFormat:
            value = state.selectedFormat();
            break;
        case GroupValueSlot::SelectedReadYear:
            break; // no report is chosen by the year read
        }
        request.predicates = groupPredicates(info.reportPredicate, {value});
        for (const char *key : info.reportSortKeys) {
            if (key)
                request.sortDescriptors.append({QLatin1String(key), ascending});
        }
    }
    auto books = m_store.fetchBooks(request, error);
    if (!books)
        return false;
    m_books = std::move(*books);
    return true;
}

QStringList ReportBuilder::bookLines(std::optional<GroupKind> kind, const Books &book)
{
    const QString name = text(book.name);
    const QString author = QStringLiteral("Author: ") + text(book.author);
    const QString seriesNumber = QStringLiteral("Series #: ") + number(book.seriesNumber);
    const QString series = QStringLiteral("Series: ") + text(book.series) + QStringLiteral("  ") + seriesNumber;
    const QString genre = QStringLiteral("Genre: ") + text(book.category);
    const QString rating = QStringLiteral("Rating: ") + text(book.rating);
    const QString year = QStringLiteral("Year Published: ") + number(book.publishDate);
    // The title names the group, so its own line is left out, except the
    // format's, which the format report always carried.
    if (!kind)
        return {name, author, series, genre, rating, year};
    switch (*kind) {
    case GroupKind::Author: return {name, series, genre, rating, year};
    case GroupKind::Genre: return {name, author, series, rating, year};
    case GroupKind::Rating: return {name, author, series, genre, year};
    case GroupKind::Series: return {name, seriesNumber, author, genre, rating, year};
    case GroupKind::YearPublished:
    case GroupKind::YearRead: return {name, author, series, genre, rating};
    case GroupKind::Format:
        return {name, author, series, genre, rating, year, QStringLiteral("Book Format: ") + text(book.bookFormat)};
    }
    return {};
}

void ReportBuilder::appendLine(const QString &line)
{
    // Each line opens its block, so the text never ends in an empty block
    // that could spill onto a page of its own. The formats go with every
    // line, so any piece of the report carries them on its own.
    if (!m_plain.isEmpty())
        m_cursor.insertBlock(m_blockFormat, m_charFormat);
    m_cursor.insertText(line, m_charFormat);
    m_plain += line + u'\n';
}

bool ReportBuilder::step(int count)
{
    // One edit per batch, which the document stores far more compactly.
    m_cursor.beginEditBlock();
    const auto edited = qScopeGuard([this] { m_cursor.endEditBlock(); });
    if (m_next < 0) {
        m_charFormat.setForeground(Qt::black);
        m_charFormat.setFont(QFont(QStringLiteral("Arial")));
        m_charFormat.setFontPointSize(17);
        m_blockFormat.setBottomMargin(6);
        m_cursor.setBlockFormat(m_blockFormat);
        m_cursor.setBlockCharFormat(m_charFormat);
        QString title = QStringLiteral("Complete List of Books");
        if (m_kind && !m_books.isEmpty()) {
            const GroupKindInfo &info = groupKind(*m_kind);
            title = QLatin1String(info.reportTitle) + groupValueText(info, m_books.first());
        }
        appendLine(title);
        appendLine(QString());
        m_next = 0;
    }
    for (int i = 0; i < count && m_next < m_books.size(); ++i) {
        const Books &book = m_books[m_next++];
        for (const QString &line : bookLines(m_kind, book))
            appendLine(line);
        const QSize size = m_document.coverSize(book.pk);
        if (size.isValid()) {
            const double width = std::min<double>(size.width(), m_textViewWidth);
            m_cursor.insertBlock(m_blockFormat, m_charFormat);
            CoverDocument::insertImage(m_cursor, CoverDocument::coverName(book.pk), size, width);
        }
        appendLine(QString());
    }
    return m_next < m_books.size();
}

void ReportBuilder::buildAll()
{
    while (step(kBatch)) {
    }
}

} // namespace tomewise
