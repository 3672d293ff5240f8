#include "qmltypes.h"

#include "app/appdelegate.h"
#include "app/defaultsviewcontroller.h"
#include "app/mainmenuviewcontroller.h"
#include "app/overviewviewcontroller.h"
#include "app/pagedirectory.h"
#include "reference/addgenreviewcontroller.h"
#include "reference/addnewseriesviewcontroller.h"
#include "reference/addratingviewcontroller.h"
#include "reference/editgenreviewcontroller.h"
#include "reference/editnewseriesviewcontroller.h"
#include "reference/editratingviewcontroller.h"
#include "reference/genrereferencelisttableviewcontroller.h"
#include "reference/ratingreferencelisttableviewcontroller.h"
#include "reference/referencelistviewcontroller.h"
#include "reference/seriesreferencelisttableviewcontroller.h"
#include "exchange/documentview.h"
#include "exchange/exportviewcontroller.h"
#include "exchange/importviewcontroller.h"
#include "exchange/printgroupbybooksviewcontroller.h"
#include "browse/coverimageprovider.h"
#include "browse/bookshelfviewcontroller.h"
#include "browse/authorgrouptableviewcontroller.h"
#include "browse/formatgrouptableviewcontroller.h"
#include "browse/genregrouptableviewcontroller.h"
#include "browse/ratinggrouptableviewcontroller.h"
#include "browse/seriesgrouptableviewcontroller.h"
#include "browse/yeargrouptableviewcontroller.h"
#include "browse/datereadtableviewcontroller.h"
#include "browse/authorbreakdowntableviewcontroller.h"
#include "browse/formatbreakdowntableviewcontroller.h"
#include "browse/genrebreakdowntableviewcontroller.h"
#include "browse/ratingbreakdowntableviewcontroller.h"
#include "browse/seriesbreakdowntableviewcontroller.h"
#include "browse/yearbreakdowntableviewcontroller.h"
#include "browse/datereadgrouptableviewcontroller.h"
#include "browse/liststyletableviewcontroller.h"
#include "entry/barcodeviewcontroller.h"
#include "entry/captureviewcontroller.h"
#include "entry/captureviewcontrollerios16.h"
#include "entry/coverview.h"
#include "entry/detailviewcontroller.h"
#include "entry/newbookviewcontroller.h"
#include "feedback/ratesharetableviewcontroller.h"
#include "entry/newcaptureviewcontroller.h"

#include <QQmlEngine>

namespace tomewise {

void registerQmlTypes()
{
    constexpr auto uri = "Tomewise";
    qmlRegisterUncreatableType<AppDelegate>(uri, 1, 0, "AppDelegate", QStringLiteral("Owned by the application"));
    qmlRegisterUncreatableType<AppState>(uri, 1, 0, "AppState", QStringLiteral("Owned by the application"));
    qmlRegisterUncreatableType<PlatformServices>(uri, 1, 0, "PlatformServices", QStringLiteral("Owned by the application"));
    qmlRegisterUncreatableType<ScreenController>(uri, 1, 0, "ScreenController", QStringLiteral("Base of the screens"));
    qmlRegisterSingletonType<PageDirectory>(uri, 1, 0, "Pages", [](QQmlEngine *, QJSEngine *) -> QObject * {
        return new PageDirectory;
    });

    qmlRegisterType<MainMenuViewController>(uri, 1, 0, "MainMenuViewController");
    qmlRegisterType<OverviewViewController>(uri, 1, 0, "OverviewViewController");
    qmlRegisterType<DefaultsViewController>(uri, 1, 0, "DefaultsViewController");

    qmlRegisterUncreatableType<ReferenceTableController>(uri, 1, 0, "ReferenceTableController", QStringLiteral("Base of the list screens"));
    qmlRegisterUncreatableType<ReferenceAddController>(uri, 1, 0, "ReferenceAddController", QStringLiteral("Base of the add screens"));
    qmlRegisterUncreatableType<ReferenceEditController>(uri, 1, 0, "ReferenceEditController", QStringLiteral("Base of the edit screens"));
    qmlRegisterType<ReferenceListViewController>(uri, 1, 0, "ReferenceListViewController");
    qmlRegisterType<GenreReferenceListTableViewController>(uri, 1, 0, "GenreReferenceListTableViewController");
    qmlRegisterType<RatingReferenceListTableViewController>(uri, 1, 0, "RatingReferenceListTableViewController");
    qmlRegisterType<SeriesReferenceListTableViewController>(uri, 1, 0, "SeriesReferenceListTableViewController");
    qmlRegisterType<AddGenreViewController>(uri, 1, 0, "AddGenreViewController");
    qmlRegisterType<AddRatingViewController>(uri, 1, 0, "AddRatingViewController");
    qmlRegisterType<AddNewSeriesViewController>(uri, 1, 0, "AddNewSeriesViewController");
    qmlRegisterType<EditGenreViewController>(uri, 1, 0, "EditGenreViewController");
    qmlRegisterType<EditRatingViewController>(uri, 1, 0, "EditRatingViewController");
    qmlRegisterType<EditNewSeriesViewController>(uri, 1, 0, "EditNewSeriesViewController");
    qmlRegisterType<ExportViewController>(uri, 1, 0, "ExportViewController");
    qmlRegisterType<ImportViewController>(uri, 1, 0, "ImportViewController");
    qmlRegisterType<PrintGroupByBooksViewController>(uri, 1, 0, "PrintGroupByBooksViewController");
    qmlRegisterType<DocumentView>(uri, 1, 0, "DocumentView");
    qmlRegisterUncreatableType<BookForm>(uri, 1, 0, "BookForm", QStringLiteral("Base of the book forms"));
    qmlRegisterType<NewBookViewController>(uri, 1, 0, "NewBookViewController");
    qmlRegisterType<DetailViewController>(uri, 1, 0, "DetailViewController");
    qmlRegisterType<ListStyleTableViewController>(uri, 1, 0, "ListStyleTableViewController");
    qmlRegisterUncreatableType<ListStyleModel>(uri, 1, 0, "ListStyleModel", QStringLiteral("Owned by its list"));
    qmlRegisterType<BookShelfViewController>(uri, 1, 0, "BookShelfViewController");
    qmlRegisterUncreatableType<BookWindowModel>(uri, 1, 0, "BookWindowModel", QStringLiteral("Owned by its list"));
    qmlRegisterType<CoverView>(uri, 1, 0, "CoverView");
    qmlRegisterType<RateShareTableViewController>(uri, 1, 0, "RateShareTableViewController");
    qmlRegisterUncreatableType<GroupTableViewController>(uri, 1, 0, "GroupTableViewController", QStringLiteral("Base of the summaries"));
    qmlRegisterUncreatableType<GroupBreakdownTableViewController>(uri, 1, 0, "GroupBreakdownTableViewController", QStringLiteral("Base of the breakdowns"));
    qmlRegisterUncreatableType<GroupSummaryModel>(uri, 1, 0, "GroupSummaryModel", QStringLiteral("Owned by its summary"));
    qmlRegisterUncreatableType<GroupBreakdownModel>(uri, 1, 0, "GroupBreakdownModel", QStringLiteral("Owned by its breakdown"));
    qmlRegisterType<AuthorGroupTableViewController>(uri, 1, 0, "AuthorGroupTableViewController");
    qmlRegisterType<FormatGroupTableViewController>(uri, 1, 0, "FormatGroupTableViewController");
    qmlRegisterType<GenreGroupTableViewController>(uri, 1, 0, "GenreGroupTableViewController");
    qmlRegisterType<RatingGroupTableViewController>(uri, 1, 0, "RatingGroupTableViewController");
    qmlRegisterType<SeriesGroupTableViewController>(uri, 1, 0, "SeriesGroupTableViewController");
    qmlRegisterType<YearGroupTableViewController>(uri, 1, 0, "YearGroupTableViewController");
    qmlRegisterType<DateReadTableViewController>(uri, 1, 0, "DateReadTableViewController");
    qmlRegisterType<AuthorBreakdownTableViewController>(uri, 1, 0, "AuthorBreakdownTableViewController");
    qmlRegisterType<FormatBreakdownTableViewController>(uri, 1, 0, "FormatBreakdownTableViewController");
    qmlRegisterType<GenreBreakdownTableViewController>(uri, 1, 0, "GenreBreakdownTableViewController");
    qmlRegisterType<RatingBreakdownTableViewController>(uri, 1, 0, "RatingBreakdownTableViewController");
    qmlRegisterType<SeriesBreakdownTableViewController>(uri, 1, 0, "SeriesBreakdownTableViewController");
    qmlRegisterType<YearBreakdownTableViewController>(uri, 1, 0, "YearBreakdownTableViewController");
    qmlRegisterType<DateReadGroupTableViewController>(uri, 1, 0, "DateReadGroupTableViewController");
    qmlRegisterUncreatableType<CaptureSessionController>(uri, 1, 0, "CaptureSessionController", QStringLiteral("Base of the camera screens"));
    qmlRegisterType<BarCodeViewController>(uri, 1, 0, "BarCodeViewController");
    qmlRegisterType<NewCaptureViewController>(uri, 1, 0, "NewCaptureViewController");
    qmlRegisterType<CaptureViewController>(uri, 1, 0, "CaptureViewController");
    qmlRegisterType<CaptureViewControllerIOS16>(uri, 1, 0, "CaptureViewControllerIOS16");
}

void installImageProviders(QQmlEngine &engine, AppDelegate &delegate)
{
    engine.addImageProvider(QStringLiteral("cover"), new CoverImageProvider(&delegate));
}

} // namespace tomewise
