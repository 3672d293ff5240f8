#include "mainmenuviewcontroller.h"

#include "app/launchtasks.h"
#include "app/log.h"
#include "browse/booklistcontroller.h"

#include <QTimer>

namespace tomewise {

const QList<MainMenuViewController::MenuEntry> &MainMenuViewController::menuEntries()
{
    static const QList<MenuEntry> entries{
        {"ListStyleButton", "Book List", "view_agenda", "ListStyle"},
        {"ListByGroupButton", "List By Group", "category", "TabBarController"},
        {"AddBookButton", "Add Book", "add_circle", "NewBook"},
        {"PrintButton", "Print Report", "print", "PrintReport"},
        {"DefaultSettingsButton", "Default Settings", "settings", "DefaultSettings"},
        {"ReferenceListButton", "Reference Lists", "list", "ReferenceList"},
        {"ImportExportButton", "Import / Export", "import_export", "ImportExport"},
        {"RateShareButton", "Rate & Share", "star_rate", "RateShare"},
        {"OverviewButton", "Overview", "menu_book", "Overview"},
    };
    return entries;
}

MainMenuViewController::MainMenuViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_hidden(menuEntries().size(), true)
{
    setTitle(QStringLiteral("Tomewise"));
}

QVariantList MainMenuViewController::menuButtons() const
{
    QVariantList list;
    for (const auto &e : menuEntries()) {
        list.append(QVariantMap{{QStringLiteral("outlet"), QLatin1String(e.outlet)},
                                {QStringLiteral("title"), QLatin1String(e.title)},
                                {QStringLiteral("icon"), QLatin1String(e.icon)},
                                {QStringLiteral("target"), QLatin1String(e.target)}});
    }
    return list;
}

QVariantList MainMenuViewController::hiddenStateList() const
{
    QVariantList list;
    for (bool hidden : m_hidden)
        list.append(hidden);
    return list;
}

bool MainMenuViewController::menuOpen() const
{
    return !m_hidden.isEmpty() && !m_hidden.first();
}

void MainMenuViewController::viewDidLoad()
{
    loadSteps();
    runDateRepair();
}

void MainMenuViewController::viewDidLoadInSlices()
{
    loadSteps();
    m_repair = std::make_unique<LaunchTasks::DateRepair>(app());
    Q_EMIT repairChanged();
    repairSlice();
}

void MainMenuViewController::repairSlice()
{
    if (!m_repair)
        return;
    // One frame's worth, then the window's events get their turn.
    constexpr qint64 kFrameNs = 12'000'000;
    if (m_repair->runFor(kFrameNs)) {
        m_lastRepair = m_repair->counts();
        m_repair.reset();
    } else {
        QTimer::singleShot(0, this, &MainMenuViewController::repairSlice);
    }
    Q_EMIT repairChanged();
}

void MainMenuViewController::loadSteps()
{
    app().state().setCallingScreen(QStringLiteral("MainMenu"));
    app().state().setListMode(QString());

    Settings &defaults = app().userDefaults();
    if (defaults.boolValue(SettingsKey::AboutHasBeenLaunchedBefore)) {
        qCInfo(lcApp) << "Not First Launch";
    } else {
        defaults.setValue(SettingsKey::AboutHasBeenLaunchedBefore, true);
        defaults.synchronize();
        qCInfo(lcApp) << "First Launch";
        LaunchTasks::seedReferenceLists(app());
    }

    qCInfo(lcApp) << "Date Not Fixed Yet";
}

void MainMenuViewController::runDateRepair()
{
    m_lastRepair = LaunchTasks::repairDates(app());
}

void MainMenuViewController::viewWillAppear()
{
    m_hidden.fill(true);
    m_navigationBarHidden = false;
    Q_EMIT menuChanged();
    Q_EMIT navigationBarHiddenChanged();
}

void MainMenuViewController::HandleSelection()
{
    for (auto &hidden : m_hidden)
        hidden = !hidden;
    Q_EMIT menuChanged();
}

void MainMenuViewController::UpdateButtonClicked()
{
    if (m_repair)
        return; // the start-up's repair is still going
    runDateRepair();
}

void MainMenuViewController::prepareForSegue(const QString &identifier)
{
    if (identifier == QLatin1String("ListStyle") || identifier == QLatin1String("BookShelf"))
        recordBookListPresentation(app(), lastBookListPresentation(app()));
    // A breakdown or a list tap may have set it since the menu loaded; the
    // menu's report is always the complete list.
    if (identifier == QLatin1String("PrintReport"))
        app().state().setCallingScreen(QStringLiteral("MainMenu"));
    if (identifier == QLatin1String("TabBarController")) {
        m_navigationBarHidden = true;
        Q_EMIT navigationBarHiddenChanged();
    }
}

void MainMenuViewController::openEntry(int index)
{
    if (index < 0 || index >= menuEntries().size())
        return;
    QString target = QLatin1String(menuEntries()[index].target);
    // The book-list entry opens the presentation chosen last.
    if (target == QLatin1String("ListStyle"))
        target = recordBookListPresentation(app(), lastBookListPresentation(app()));
    prepareForSegue(target);
    Q_EMIT navigate(target);
}

} // namespace tomewise
