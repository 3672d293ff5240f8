#pragma once

#include "app/screencontroller.h"
#include "browse/deletedbook.h"
#include "browse/groupbreakdownmodel.h"
#include "browse/groupcounts.h"
#include "browse/groupkind.h"

#include <QVariantList>

#include <memory>
#include <optional>

namespace tomewise {

class PdfListBuilder;

// A group breakdown: the books behind one summary row, re-ordered through the
// "Sort by" menu (every fetch flips the direction, which is how the user
// picks one), searched by name, deleted by a swipe, opened on the detail screen.
class GroupBreakdownTableViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString placeholder READ placeholder CONSTANT)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(QStringList sortActions READ sortActions CONSTANT)
    Q_PROPERTY(QStringList labelOutlets READ labelOutlets CONSTANT)
    Q_PROPERTY(QString unwindName READ unwindName CONSTANT)
    Q_PROPERTY(bool SortAsc READ sortAsc NOTIFY sortChanged)
    Q_PROPERTY(QString SortName READ sortName NOTIFY sortChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString header READ header NOTIFY headerChanged)
    Q_PROPERTY(tomewise::GroupBreakdownModel *model READ model CONSTANT)
    Q_PROPERTY(bool canShare READ canShare NOTIFY headerChanged)
    Q_PROPERTY(bool offersMail READ offersMail CONSTANT)
    Q_PROPERTY(bool busy READ busy NOTIFY progressChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)

public:
    // What the mail composer reports back.
    enum class MailResult { Cancelled, Saved, Sent, Failed };
    Q_ENUM(MailResult)

    GroupBreakdownTableViewController(GroupKind kind, AppDelegate *delegate, QObject *parent);

    const GroupKindInfo &info() const { return m_info; }
    QString placeholder() const { return QLatin1String(m_info.breakdownPlaceholder); }
    int rowHeight() const { return m_info.rowHeight; }
    QStringList sortActions() const;
    QStringList labelOutlets() const;
    QString unwindName() const { return QLatin1String(m_info.unwindName); }
    bool sortAsc() const { return m_sortAsc.value_or(false); }
    QString sortName() const { return m_sortName.value_or(QString()); }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    QString header() const;
    GroupBreakdownModel *model() { return &m_model; }
    qint64 bookCount() const { return m_bookCount; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void viewWillAppear();
    // Leaving the screen abandons a PDF list still being made; the last
    // finished file stays as it was.
    Q_INVOKABLE void viewWillDisappear();
    // Action 1 to 4 of the "Sort by" menu.
    Q_INVOKABLE void selectSortOption(int option);
    // The sort button (and the "Menu" button of older systems).
    Q_INVOKABLE void SortButtonTapped();
    Q_INVOKABLE void selectRow(int row);
    // The trailing swipe's "delete".
    Q_INVOKABLE void deleteRow(int row);
    ~GroupBreakdownTableViewController() override;

    // The shown list can be printed or shared only while it has books.
    bool canShare() const { return m_model.rowCount() > 0; }
    bool offersMail() const { return m_info.kind == GroupKind::YearRead; }
    bool busy() const { return bool(m_pdf); }
    double progress() const;
    QString progressText() const;
    QString pdfFilePath() const;

    // The printed report of this group.
    Q_INVOKABLE void PrintButtonTapped();
    // The PDF list of the shown books, written and then shared, messaged or mailed.
    Q_INVOKABLE void ShareButtonTapped();
    Q_INVOKABLE void TextMessageButtonTapped();
    Q_INVOKABLE void MailButtonTapped();
    // The share sheet closed: with the activity the user chose, or cancelled.
    Q_INVOKABLE void shareCompleted(const QString &activityType, bool completed);
    Q_INVOKABLE void mailComposeController(tomewise::GroupBreakdownTableViewController::MailResult result,
                                           const QString &error = QString());
    // The desktop's "Save As": a copy of the written list where the user chose.
    Q_INVOKABLE bool saveCopy(const QUrl &file, const QUrl &destination);
    // Builds and writes the PDF list at once (the command line); false when
    // the file could not be written.
    bool writePdfList(const QString &path);
    // Puts the book deleted last back in the store, cover and all.
    Q_INVOKABLE void undoDelete();

Q_SIGNALS:
    void sortChanged();
    void searchTextChanged();
    void headerChanged();
    void progressChanged();
    // A book left the list; the page offers to undo it.
    void rowDeleted(const QString &name);

private:
    enum class AfterPdf { Share, Message, Mail };
    QList<Books> shownBooks() const;
    void startPdf(AfterPdf after);
    void buildNextPdfBatch();
    void finishPdf(bool written, const QString &error);

    void fetch();
    std::optional<QList<Predicate>> predicates();
    GroupCounts &counts();

    const GroupKindInfo &m_info;
    std::optional<GroupCounts> m_counts; // made once the delegate is known
    GroupBreakdownModel m_model;
    std::optional<bool> m_sortAsc;
    std::optional<QString> m_sortName;
    QString m_searchText;
    qint64 m_bookCount = 0;
    bool m_justLoaded = false;
    std::unique_ptr<PdfListBuilder> m_pdf;
    AfterPdf m_afterPdf = AfterPdf::Share;
    DeletedBook m_deleted;
};

} // namespace tomewise
