#include "bookshelfviewcontroller.h"

#include "app/appdelegate.h"
#include "app/log.h"

namespace tomewise {

QStringList bookListPresentations()
{
    return {QStringLiteral("cards"), QStringLiteral("az"), QStringLiteral("pictures"), QStringLiteral("grid")};
}

QString recordBookListPresentation(AppDelegate &app, const QString &presentation)
{
    const bool graphic = presentation == u"pictures" || presentation == u"grid";
    app.state().setListMode(graphic ? QStringLiteral("Graphic") : QStringLiteral("List"));
    if (bookListPresentations().contains(presentation)) {
        app.userDefaults().setValue(kBookListPresentationKey, presentation);
        app.userDefaults().synchronize();
    }
    return presentation == u"cards" || !bookListPresentations().contains(presentation) ? QStringLiteral("ListStyle")
                                                                                       : QStringLiteral("BookShelf");
}

QString lastBookListPresentation(AppDelegate &app)
{
    const QString last = app.userDefaults().stringValue(kBookListPresentationKey);
    return bookListPresentations().contains(last) ? last : QStringLiteral("cards");
}

Books currentBookCopy(const Books &b)
{
    Books current;
    current.pk = b.pk;
    current.name = b.name;
    current.subTitle = b.subTitle;
    current.author = b.author;
    current.bookPublisher = b.bookPublisher;
    current.isbn = b.isbn;
    current.category = b.category;
    current.rating = b.rating;
    current.series = b.series;
    current.seriesNumber = b.seriesNumber;
    current.publishDate = b.publishDate;
    current.numberPages = b.numberPages;
    current.notes = b.notes;
    current.dt = b.dt;
    return current;
}

BookShelfViewController::BookShelfViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Book List"));
    connect(&m_model, &BookWindowModel::countChanged, this, &BookShelfViewController::headerChanged);
}

BookListSource &BookShelfViewController::source()
{
    if (!m_source)
        m_source = std::make_unique<BookListSource>(context());
    return *m_source;
}

const TitleCollation &BookShelfViewController::collation()
{
    if (!m_collation)
        m_collation = std::make_unique<TitleCollation>(app().dateText().localeName());
    return *m_collation;
}

QStringList BookShelfViewController::alphabet() const
{
    return const_cast<BookShelfViewController *>(this)->collation().letters();
}

void BookShelfViewController::setMode(const QString &mode)
{
    if (mode == m_mode || mode == u"cards" || !bookListPresentations().contains(mode))
        return;
    const bool reorder = (mode == u"az") != (m_mode == u"az");
    m_mode = mode;
    if (m_loaded)
        recordBookListPresentation(app(), mode);
    Q_EMIT modeChanged();
    if (m_loaded && reorder)
        fetch();
}

QString BookShelfViewController::choosePresentation(const QString &presentation)
{
    const QString target = recordBookListPresentation(app(), presentation);
    if (target == u"BookShelf")
        setMode(presentation);
    return target;
}

QString BookShelfViewController::header() const
{
    const int n = m_model.rowCount();
    return QString::number(n) + (n == 1 ? QStringLiteral(" Book") : QStringLiteral(" Books"));
}

void BookShelfViewController::viewDidLoad()
{
    m_loaded = true;
    recordBookListPresentation(app(), m_mode);
}

void BookShelfViewController::viewWillAppear()
{
    if (m_searchText.isEmpty())
        fetch();
    else
        refilter();
}

void BookShelfViewController::unwindToList()
{
    // The edited book may have a new title, so its place and letter are read anew.
    fetch();
}

void BookShelfViewController::fetch()
{
    QString error;
    m_model.setStore(&context());
    if (m_mode == u"az") {
        auto sectioned = source().titleOrder(collation(), &error);
        if (!sectioned) {
            qCWarning(lcStore).noquote() << error;
            return;
        }
        m_model.setKeys(sectioned->keys, sectioned->sections);
    } else {
        // The pictures and the grid show the latest read first, as a shelf of recent reads.
        auto keys = source().keys({{QStringLiteral("dateRead"), false}}, &error);
        if (!keys) {
            qCWarning(lcStore).noquote() << error;
            return;
        }
        m_model.setKeys(*keys);
    }
    refilter();
}

void BookShelfViewController::refilter()
{
    if (m_searchText.isEmpty()) {
        m_model.showAll();
        return;
    }
    QString error;
    auto found = source().matching({QStringLiteral("name"), QStringLiteral("author")}, m_searchText,
                                   app().dateText(), &error);
    if (!found) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    m_model.showOnly(*found);
}

void BookShelfViewController::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    refilter();
}

int BookShelfViewController::rowOfLetter(const QString &letter) const
{
    return m_model.rowOfSection(letter, alphabet());
}

void BookShelfViewController::deleteRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    logIfFailed(context().deleteBook(m_model.key(row)));
    app().saveContext();
    m_model.removeShownRow(row);
}

void BookShelfViewController::selectRow(int row)
{
    if (row < 0 || row >= m_model.rowCount())
        return;
    const Books b = m_model.book(row);
    Books &current = app().state().currentBook;
    current = currentBookCopy(b);
    current.pictureImage = context().cover(b.pk);
    app().state().setCallingScreen(QStringLiteral("Master"));
    Q_EMIT navigate(QStringLiteral("Detail"));
}

} // namespace tomewise
