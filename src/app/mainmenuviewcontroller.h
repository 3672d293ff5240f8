#pragma once

#include "app/screencontroller.h"
#include "app/launchtasks.h"
#include "model/books.h"

#include <QVariantList>

#include <memory>

namespace tomewise {

// The first screen: start-up work, then the nine-entry menu that opens and
// closes as one toggle.
class MainMenuViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QVariantList MenuButtons READ menuButtons CONSTANT)
    Q_PROPERTY(QVariantList hiddenStates READ hiddenStateList NOTIFY menuChanged)
    Q_PROPERTY(bool menuOpen READ menuOpen NOTIFY menuChanged)
    Q_PROPERTY(bool navigationBarHidden READ navigationBarHidden NOTIFY navigationBarHiddenChanged)
    Q_PROPERTY(bool repairing READ repairing NOTIFY repairChanged)
    Q_PROPERTY(double repairProgress READ repairProgress NOTIFY repairChanged)

public:
    struct MenuEntry
    {
        const char *outlet;  // the button's name
        const char *title;   // what it says
        const char *icon;    // Material icon name
        const char *target;  // the page it opens
    };
    static const QList<MenuEntry> &menuEntries();

    explicit MainMenuViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    QVariantList menuButtons() const;
    bool menuOpen() const;
    QList<bool> hiddenStates() const { return m_hidden; }
    QVariantList hiddenStateList() const;
    bool navigationBarHidden() const { return m_navigationBarHidden; }

    // What the last date repair did.
    LaunchTasks::RepairCounts lastRepair() const { return m_lastRepair; }

    Q_INVOKABLE void viewDidLoad();
    // The same start-up for a window: the repair runs in slices of one frame
    // between the window's events, the menu usable and showing the progress.
    Q_INVOKABLE void viewDidLoadInSlices();
    bool repairing() const { return m_repair != nullptr; }
    double repairProgress() const { return m_repair ? m_repair->progress() : 1.0; }
    Q_INVOKABLE void viewWillAppear();
    Q_INVOKABLE void HandleSelection();
    Q_INVOKABLE void UpdateButtonClicked();
    Q_INVOKABLE void prepareForSegue(const QString &identifier);
    // A tap on a menu entry: the segue to its page.
    Q_INVOKABLE void openEntry(int index);

Q_SIGNALS:
    void menuChanged();
    void navigationBarHiddenChanged();
    void repairChanged();

private:
    void runDateRepair();
    void loadSteps();
    void repairSlice();

    QList<bool> m_hidden;
    LaunchTasks::RepairCounts m_lastRepair;
    std::unique_ptr<LaunchTasks::DateRepair> m_repair;
    bool m_navigationBarHidden = false;
};

} // namespace tomewise
