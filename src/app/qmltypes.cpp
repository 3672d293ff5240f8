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
#include "exchange/exportviewcontroller.h"
#include "exchange/importviewcontroller.h"
#include "browse/coverimageprovider.h"
#include "browse/bookshelfviewcontroller.h"
#include "browse/liststyletableviewcontroller.h"
#include "entry/coverview.h"
#include "entry/detailviewcontroller.h"
#include "entry/newbookviewcontroller.h"

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
    qmlRegisterUncreatableType<BookForm>(uri, 1, 0, "BookForm", QStringLiteral("Base of the book forms"));
    qmlRegisterType<NewBookViewController>(uri, 1, 0, "NewBookViewController");
    qmlRegisterType<DetailViewController>(uri, 1, 0, "DetailViewController");
    qmlRegisterType<ListStyleTableViewController>(uri, 1, 0, "ListStyleTableViewController");
    qmlRegisterUncreatableType<ListStyleModel>(uri, 1, 0, "ListStyleModel", QStringLiteral("Owned by its list"));
    qmlRegisterType<BookShelfViewController>(uri, 1, 0, "BookShelfViewController");
    qmlRegisterUncreatableType<BookWindowModel>(uri, 1, 0, "BookWindowModel", QStringLiteral("Owned by its list"));
    qmlRegisterType<CoverView>(uri, 1, 0, "CoverView");
}

void installImageProviders(QQmlEngine &engine, AppDelegate &delegate)
{
    engine.addImageProvider(QStringLiteral("cover"), new CoverImageProvider(&delegate));
}

} // namespace tomewise
