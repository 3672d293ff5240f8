#include "groupbreakdowntableviewcontroller.h"

#include "app/log.h"
#include "browse/pdflistbuilder.h"

#include <QFile>
#include <QSaveFile>
#include <QTimer>
#include <QUrl>

namespace tomewise {

GroupBreakdownTableViewController::GroupBreakdownTableViewController(GroupKind kind, AppDelegate *delegate,
                                                                     QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(groupKind(kind))
    , m_model(m_info)
{
    connect(&m_model, &GroupBreakdownModel::countChanged, this, &GroupBreakdownTableViewController::headerChanged);
}

GroupBreakdownTableViewController::~GroupBreakdownTableViewController() = default;

GroupCounts &GroupBreakdownTableViewController::counts()
{
    if (!m_counts)
        m_counts.emplace(context(), app().dateText());
    return *m_counts;
}

QStringList GroupBreakdownTableViewController::sortActions() const
{
    QStringList list;
    for (const auto &a : m_info.sortActions)
        list << QLatin1String(a.title);
    return list;
}

QStringList GroupBreakdownTableViewController::labelOutlets() const
{
    QStringList list;
    for (const auto &l : m_info.labels) {
        if (l.outlet)
            list << QLatin1String(l.outlet);
    }
    return list;
}

QString GroupBreakdownTableViewController::header() const
{
    const qint64 n = m_model.searching() ? m_model.rowCount() : m_bookCount;
    return QLatin1String(kBreakdownHeader) + QString::number(n);
}

void GroupBreakdownTableViewController::viewDidLoad()
{
    setTitle(QLatin1String(m_info.breakdownTitle));
    m_model.setDateText(&app().dateText());
    m_model.setCoverCheck([this](qint64 pk) { return counts().hasCover(pk); });
    m_sortAsc = false;
    fetch();
    m_justLoaded = true;
}

void GroupBreakdownTableViewController::viewWillAppear()
{
    // Shown right after loading: nothing can have changed and no sort is
    // chosen yet, so the fetch would bring the same rows; only the flip counts.
    if (m_justLoaded) {
        m_justLoaded = false;
        m_sortAsc = !*m_sortAsc;
        Q_EMIT sortChanged();
        return;
    }
    fetch();
}

void GroupBreakdownTableViewController::viewWillDisappear()
{
    if (!m_pdf)
        return;
    m_pdf.reset();
    Q_EMIT progressChanged();
}

std::optional<QList<Predicate>> GroupBreakdownTableViewController::predicates()
{
    const AppState &state = app().state();
    const Books &current = state.currentBook;
    QVariantList arguments;
    switch (m_info.slot) {
    case GroupValueSlot::CurrentBookText:
        arguments << attributeValue(current, groupAttribute(m_info.slotField));
        break;
    case GroupValueSlot::CurrentBookYear:
        arguments << QString::number(current.publishDate.value_or(0));
        break;
    case GroupValueSlot::SelectedFormat:
        arguments << state.selectedFormat();
        break;
    case GroupValueSlot::SelectedReadYear: {
        const auto range = counts().yearRange(state.selectedReadYear());
        if (!range)
            return std::nullopt;
        arguments << range->first << range->second;
        break;
    }
    }
    return groupPredicates(m_info.breakdownPredicate, arguments);
}

void GroupBreakdownTableViewController::fetch()
{
    if (!m_sortAsc)
        qFatal("The breakdown fetched before its view had loaded");
    m_justLoaded = false;
    m_sortAsc = !*m_sortAsc;
    Q_EMIT sortChanged();
    m_bookCount = 0;
    FetchRequest request;
    for (const auto &a : m_info.sortActions) {
        if (m_sortName == QLatin1String(a.sortName))
            request.sortDescriptors.append({QLatin1String(a.key), *m_sortAsc});
    }
    QString error;
    const auto where = predicates();
    std::optional<QList<Books>> books;
    if (where) {
        request.predicates = *where;
        books = context().fetchBooks(request, &error);
        if (!books)
            qCWarning(lcStore).noquote() << error;
    }
    m_bookCount = books ? books->size() : 0;
    m_model.setBookList(books ? std::move(*books) : QList<Books>());
    Q_EMIT headerChanged();
}

void GroupBreakdownTableViewController::selectSortOption(int option)
{
    if (option < 1 || option > int(m_info.sortActions.size()))
        return;
    qCInfo(lcBrowse).noquote() << QStringLiteral("Option %1 selected").arg(option);
    m_sortName = QLatin1String(m_info.sortActions[size_t(option - 1)].sortName);
    fetch();
}

void GroupBreakdownTableViewController::SortButtonTapped()
{
    if (m_searchText.isEmpty()) {
        fetch();
        return;
    }
    m_model.sortShownByName(sortAsc());
}

void GroupBreakdownTableViewController::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    m_model.setSearchText(text);
}

void GroupBreakdownTableViewController::selectRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    m_justLoaded = false;
    const Books &b = m_model.book(row);
    Books &current = app().state().currentBook;
    current.pk = b.pk;
    current.author = b.author;
    current.category = b.category;
    current.name = b.name;
    current.bookPublisher = b.bookPublisher;
    current.rating = b.rating;
    current.numberPages = b.numberPages;
    current.series = b.series;
    current.seriesNumber = b.seriesNumber;
    current.dt = b.dt;
    current.publishDate = b.publishDate;
    current.notes = b.notes;
    current.pictureImage = context().cover(b.pk);
    app().state().setCallingScreen(QLatin1String(m_info.callingScreen));
    Q_EMIT navigate(QStringLiteral("Detail"));
}

void GroupBreakdownTableViewController::deleteRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    m_justLoaded = false;
    const Books &book = m_model.book(row);
    const QString name = book.name.value_or(QString());
    const bool deleted = m_deleted.remove(context(), book);
    app().saveContext();
    if (!m_model.searching())
        --m_bookCount;
    m_model.removeShownRow(row);
    if (deleted)
        Q_EMIT rowDeleted(name);
}

void GroupBreakdownTableViewController::undoDelete()
{
    if (!m_deleted.restore(context()))
        return;
    app().saveContext();
    // Every fetch turns the order round; an undo keeps the order on screen.
    m_sortAsc = !sortAsc();
    fetch();
    // A search shows its own rows, which a fetch leaves alone; the book goes back among them.
    if (m_model.searching())
        m_model.setSearchText(m_searchText);
}

void GroupBreakdownTableViewController::PrintButtonTapped()
{
    if (!canShare())
        return;
    app().state().setCallingScreen(QLatin1String(m_info.callingScreen));
    Q_EMIT navigate(QStringLiteral("PrintReport"));
}

QString GroupBreakdownTableViewController::pdfFilePath() const
{
    return PdfListBuilder::filePath(m_info);
}

QList<Books> GroupBreakdownTableViewController::shownBooks() const
{
    QList<Books> books;
    books.reserve(m_model.rowCount());
    for (int row = 0; row < m_model.rowCount(); ++row)
        books.append(m_model.book(row));
    return books;
}

double GroupBreakdownTableViewController::progress() const
{
    return m_pdf ? m_pdf->progress() : 0;
}

QString GroupBreakdownTableViewController::progressText() const
{
    return m_pdf ? m_pdf->progressText() : QString();
}

void GroupBreakdownTableViewController::ShareButtonTapped()
{
    startPdf(AfterPdf::Share);
}

void GroupBreakdownTableViewController::TextMessageButtonTapped()
{
    if (canSendTextOrAlert())
        startPdf(AfterPdf::Message);
}

void GroupBreakdownTableViewController::MailButtonTapped()
{
    if (!offersMail())
        return;
    if (!app().platform().canSendMail()) {
        qCWarning(lcBrowse).noquote() << "Error sending mail: " + QStringLiteral("Mail services are not available.");
        return;
    }
    startPdf(AfterPdf::Mail);
}

void GroupBreakdownTableViewController::startPdf(AfterPdf after)
{
    if (m_pdf || !canShare())
        return;
    m_afterPdf = after;
    m_pdf = std::make_unique<PdfListBuilder>(m_info, shownBooks(), context());
    Q_EMIT progressChanged();
    buildNextPdfBatch();
}

void GroupBreakdownTableViewController::buildNextPdfBatch()
{
    if (!m_pdf)
        return; // abandoned when the screen was left
    QString error;
    const auto result = m_pdf->step(PdfListBuilder::kBatch, pdfFilePath(), &error);
    if (result == PdfListBuilder::Step::More) {
        Q_EMIT progressChanged();
        // Back to the event loop between pieces, so the screen stays live.
        QTimer::singleShot(0, this, [this] { buildNextPdfBatch(); });
        return;
    }
    finishPdf(result == PdfListBuilder::Step::Done, error);
}

void GroupBreakdownTableViewController::finishPdf(bool written, const QString &error)
{
    const QString path = pdfFilePath();
    m_pdf.reset();
    Q_EMIT progressChanged();
    if (written)
        qCInfo(lcBrowse).noquote() << "wrote PDF file with multiple pages to: " + path;
    else
        qCWarning(lcBrowse).noquote() << "Could not create PDF file:" + error;
    // The sheet is offered even after a failed write, with whatever file is there.
    const QUrl file = QUrl::fromLocalFile(path);
    PlatformServices &platform = app().platform();
    switch (m_afterPdf) {
    case AfterPdf::Share: {
        ShareItems items;
        items.files = {file};
        platform.share(items);
        break;
    }
    case AfterPdf::Message:
        platform.composeMessage(QString(), {file});
        break;
    case AfterPdf::Mail: {
        MailDraft draft;
        draft.subject = QStringLiteral("Selected List of Books");
        draft.attachments = {{path, QStringLiteral("application/pdf"), QLatin1String(m_info.pdfFileName)}};
        platform.composeMail(draft);
        break;
    }
    }
}

bool GroupBreakdownTableViewController::writePdfList(const QString &path)
{
    if (!canShare())
        return false;
    PdfListBuilder builder(m_info, shownBooks(), context());
    QString error;
    if (!builder.write(path, &error)) {
        qCWarning(lcBrowse).noquote() << "Could not create PDF file:" + error;
        return false;
    }
    qCInfo(lcBrowse).noquote() << "wrote PDF file with multiple pages to: " + path;
    return true;
}

bool GroupBreakdownTableViewController::saveCopy(const QUrl &file, const QUrl &destination)
{
    const QString target = destination.toLocalFile();
    QFile source(file.toLocalFile());
    QSaveFile copy(target);
    if (target.isEmpty() || !source.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly)
        || copy.write(source.readAll()) != source.size() || !copy.commit()) {
        qCWarning(lcBrowse).noquote() << "Could not create PDF file:" + (copy.errorString().isEmpty() ? source.errorString() : copy.errorString());
        return false;
    }
    return true;
}

void GroupBreakdownTableViewController::shareCompleted(const QString &activityType, bool completed)
{
    if (m_info.kind != GroupKind::YearRead)
        return;
    if (completed)
        qCInfo(lcBrowse).noquote() << "Activity completed: " + activityType;
    else
        qCInfo(lcBrowse).noquote() << "Activity canceled";
}

void GroupBreakdownTableViewController::mailComposeController(MailResult result, const QString &error)
{
    if (!error.isEmpty()) {
        qCWarning(lcBrowse).noquote() << "Error sending mail: " + error;
        return;
    }
    switch (result) {
    case MailResult::Cancelled: qCInfo(lcBrowse).noquote() << "Email was cancelled."; break;
    case MailResult::Saved: qCInfo(lcBrowse).noquote() << "Email was saved as draft."; break;
    case MailResult::Sent: qCInfo(lcBrowse).noquote() << "Email was sent successfully."; break;
    case MailResult::Failed: qCInfo(lcBrowse).noquote() << "Email sending failed."; break;
    }
}

} // namespace tomewise
