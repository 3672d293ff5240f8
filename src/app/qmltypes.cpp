#include "qmltypes.h"

#include "app/appdelegate.h"
#include "app/mainmenuviewcontroller.h"
#include "app/overviewviewcontroller.h"
#include "app/pagedirectory.h"
#include "exchange/exportviewcontroller.h"
#include "exchange/importviewcontroller.h"
#include "browse/coverimageprovider.h"
#include "browse/liststyletableviewcontroller.h"
#include "entry/coverview.h"
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
    qmlRegisterType<ExportViewController>(uri, 1, 0, "ExportViewController");
    qmlRegisterType<ImportViewController>(uri, 1, 0, "ImportViewController");
    qmlRegisterUncreatableType<BookForm>(uri, 1, 0, "BookForm", QStringLiteral("Base of the book forms"));
    qmlRegisterType<NewBookViewController>(uri, 1, 0, "NewBookViewController");
    qmlRegisterType<ListStyleTableViewController>(uri, 1, 0, "ListStyleTableViewController");
    qmlRegisterUncreatableType<ListStyleModel>(uri, 1, 0, "ListStyleModel", QStringLiteral("Owned by its list"));
    qmlRegisterType<CoverView>(uri, 1, 0, "CoverView");
}

void installImageProviders(QQmlEngine &engine, AppDelegate &delegate)
{
    engine.addImageProvider(QStringLiteral("cover"), new CoverImageProvider(&delegate));
}

} // namespace tomewise
