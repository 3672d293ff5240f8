#include "pagedirectory.h"

namespace tomewise {

const QList<PageDirectory::Page> &PageDirectory::pages()
{
    static const QList<Page> list{
        {"MainMenu", "MainMenuPage.qml", "Tomewise"},
        {"Overview", "OverviewPage.qml", "My Tomewise Overview"},
        {"ListStyle", "ListStylePage.qml", "Book List"},
        {"BookShelf", "BookShelfPage.qml", "Book List"},
        {"TabBarController", "GroupTabsPage.qml", "List By Group"},
        {"AuthorBreakdown", "GroupBreakdownPage.qml", "Author"},
        {"FormatBreakdown", "GroupBreakdownPage.qml", "Format"},
        {"GenreBreakdown", "GroupBreakdownPage.qml", "Genre"},
        {"RatingBreakdown", "GroupBreakdownPage.qml", "Ratings"},
        {"SeriesBreakdown", "GroupBreakdownPage.qml", "Series"},
        {"YearBreakdown", "GroupBreakdownPage.qml", "Years Published"},
        {"DateReadBreakdown", "GroupBreakdownPage.qml", "Date Read"},
        {"NewBook", "NewBookPage.qml", "Add Book"},
        {"Detail", "DetailPage.qml", "Book Detail"},
        {"BarCode", "CameraPage.qml", "Scan Barcode"},
        {"NewCapture", "CameraPage.qml", "Scan Barcode"},
        {"Capture", "ScanAreaPage.qml", "Scan Area"},
        {"CaptureIOS16", "PhotoScanPage.qml", "Scan a Photo"},
        {"PrintReport", "PrintReportPage.qml", "Print Report"},
        {"DefaultSettings", "DefaultsPage.qml", "Default Settings"},
        {"ReferenceList", "ReferenceListPage.qml", "Reference List"},
        {"GenreReferenceList", "ReferenceTablePage.qml", "Genre List"},
        {"RatingReferenceList", "ReferenceTablePage.qml", "Rating List"},
        {"SeriesReferenceList", "ReferenceTablePage.qml", "Series List"},
        {"AddGenre", "ReferenceNamePage.qml", "Add Genre"},
        {"AddRating", "ReferenceNamePage.qml", "Add Rating"},
        {"AddNewSeries", "ReferenceNamePage.qml", "Add Series"},
        {"EditGenre", "ReferenceNamePage.qml", "Edit Genre"},
        {"EditRating", "ReferenceNamePage.qml", "Edit Rating"},
        {"EditNewSeries", "ReferenceNamePage.qml", "Edit Series"},
        {"ImportExport", "ImportExportPage.qml", "Import / Export"},
        {"Export", "ExportPage.qml", "Export"},
        {"Import", "ImportPage.qml", "Import"},
        {"RateShare", "RateSharePage.qml", "Rate & Share"},
    };
    return list;
}

static const PageDirectory::Page *find(const QString &target)
{
    for (const auto &p : PageDirectory::pages()) {
        if (target == QLatin1String(p.target))
            return &p;
    }
    return nullptr;
}

QUrl PageDirectory::url(const QString &target) const
{
    const Page *p = find(target);
    const char *file = p && p->qmlFile ? p->qmlFile : "ComingSoonPage.qml";
    return QUrl(QStringLiteral("qrc:/qml/pages/") + QLatin1String(file));
}

QString PageDirectory::title(const QString &target) const
{
    const Page *p = find(target);
    return p ? QString::fromUtf8(p->title) : target;
}

bool PageDirectory::isBuilt(const QString &target) const
{
    const Page *p = find(target);
    return p && p->qmlFile;
}

QStringList PageDirectory::targets() const
{
    QStringList list;
    for (const auto &p : pages())
        list << QLatin1String(p.target);
    return list;
}

} // namespace tomewise
