#pragma once

#include "entry/bookitem.h"
#include "model/books.h"

#include <QObject>
#include <QString>
#include <QThread>

#include <optional>

namespace tomewise {

// The process-wide values one screen writes and the next reads.
class AppState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString callingScreen MEMBER m_callingScreen NOTIFY changed)
    Q_PROPERTY(QString listMode MEMBER m_listMode NOTIFY changed)
    Q_PROPERTY(QString selectedFormat MEMBER m_selectedFormat NOTIFY changed)
    Q_PROPERTY(int selectedReadYear READ selectedReadYear NOTIFY changed)
    Q_PROPERTY(bool groupSortAscending MEMBER m_groupSortAscending NOTIFY changed)
    Q_PROPERTY(QString scannedISBN MEMBER m_scannedISBN NOTIFY changed)
    Q_PROPERTY(QString selectedGenreName MEMBER m_selectedGenreName NOTIFY changed)
    Q_PROPERTY(QString selectedSeriesName MEMBER m_selectedSeriesName NOTIFY changed)

public:
    explicit AppState(QObject *parent = nullptr) : QObject(parent) {}

    QString callingScreen() const { return m_callingScreen; }
    void setCallingScreen(const QString &v) { m_callingScreen = v; Q_EMIT changed(); }
    QString listMode() const { return m_listMode; }
    void setListMode(const QString &v) { m_listMode = v; Q_EMIT changed(); }
    QString selectedFormat() const { return m_selectedFormat; }
    void setSelectedFormat(const QString &v) { m_selectedFormat = v; Q_EMIT changed(); }
    qint16 selectedReadYear() const { return m_selectedReadYear; }
    void setSelectedReadYear(qint16 v) { m_selectedReadYear = v; Q_EMIT changed(); }
    bool groupSortAscending() const { return m_groupSortAscending; }
    void setGroupSortAscending(bool v) { m_groupSortAscending = v; Q_EMIT changed(); }
    QString scannedISBN() const { return m_scannedISBN; }
    void setScannedISBN(const QString &v) { m_scannedISBN = v; Q_EMIT changed(); }
    QString selectedGenreName() const { return m_selectedGenreName; }
    void setSelectedGenreName(const QString &v) { m_selectedGenreName = v; Q_EMIT changed(); }
    QString selectedSeriesName() const { return m_selectedSeriesName; }
    void setSelectedSeriesName(const QString &v) { m_selectedSeriesName = v; Q_EMIT changed(); }

    // The held answer of the book search: the items of the last decoded
    // answer, cleared once the form has been filled from it. The search hands
    // it over on the user-interface thread, the only one that may write it.
    const std::optional<QList<BookItem>> &scannedBookItems() const { return m_scannedBookItems; }
    void setScannedBookItems(std::optional<QList<BookItem>> items)
    {
        Q_ASSERT(QThread::currentThread() == thread());
        m_scannedBookItems = std::move(items);
        Q_EMIT changed();
    }

    // The selected book's fields (a tap in a list copies them all; a group
    // summary writes only its own field).
    Books currentBook;

Q_SIGNALS:
    void changed();

private:
    QString m_callingScreen;
    QString m_listMode;
    QString m_selectedFormat;
    qint16 m_selectedReadYear = 0;
    bool m_groupSortAscending = true;
    QString m_scannedISBN;
    std::optional<QList<BookItem>> m_scannedBookItems;
    QString m_selectedGenreName;
    QString m_selectedSeriesName;
};

} // namespace tomewise
