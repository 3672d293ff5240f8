#pragma once

#include "app/screencontroller.h"
#include "app/launchtasks.h"
#include "model/books.h"

#include <QVariantList>

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

    const QList<Books> &bookList() const { return m_bookList; }
    // What the last date repair did.
    LaunchTasks::RepairCounts lastRepair() const { return m_lastRepair; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void viewWillAppear();
    Q_INVOKABLE void HandleSelection();
    Q_INVOKABLE void UpdateButtonClicked();
    Q_INVOKABLE void prepareForSegue(const QString &identifier);
    // A tap on a menu entry: the segue to its page.
    Q_INVOKABLE void openEntry(int index);

Q_SIGNALS:
    void menuChanged();
    void navigationBarHiddenChanged();

private:
    void loadBookList();
    void runDateRepair();

    QList<Books> m_bookList;
    QList<bool> m_hidden;
    LaunchTasks::RepairCounts m_lastRepair;
    bool m_navigationBarHidden = false;
};

} // namespace tomewise
