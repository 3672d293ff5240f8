#include "bookshelfviewcontroller.h"

#include "app/appdelegate.h"
#include "app/log.h"

namespace tomewise {

namespace {
const QStringList &searchedAttributes()
{
    static const QStringList attributes{QStringLiteral("name"), QStringLiteral("author")};
    return attributes;
}
} // namespace

BookShelfViewController::BookShelfViewController(AppDelegate *delegate, QObject *parent)
    : BookListController(delegate, parent)
{
    setTitle(QStringLiteral("Book List"));
    connect(&m_model, &BookWindowModel::countChanged, this, &BookShelfViewController::headerChanged);
}

const TitleCollation &BookShelfViewController::collation()
{
    if (!m_collation)
        m_collation = std::make_unique<TitleCollation>(app().dateText().localeName());
    return *m_collation;
}

QStringList BookShelfViewController::alphabet() const
{
    // The page may ask before it has handed over the delegate.
    if (!appDelegate())
        return {};
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
        m_model.setKeys(sectioned->keys, sectioned->sections, sectioned->names);
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
    search(m_model, m_searchText, searchedAttributes());
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

} // namespace tomewise
