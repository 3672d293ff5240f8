#pragma once

#include "entry/bookform.h"

#include <optional>

namespace tomewise {

// The book detail screen: the book form over one stored book, which it saves
// in place, shares as text and returns from to the list that opened it.
class DetailViewController : public BookForm
{
    Q_OBJECT
    Q_PROPERTY(QString shareText READ shareText NOTIFY fieldsChanged)
    Q_PROPERTY(bool zoomed READ zoomed NOTIFY imageChanged)
    Q_PROPERTY(bool hasPendingChanges READ hasPendingChanges NOTIFY fieldsChanged)

public:
    static constexpr int kReviewDelayMs = 5000;
    static constexpr qreal kZoomedScale = 2.5;

    explicit DetailViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    // The callingScreen values of the lists that take the book back by "unwindToList".
    static const QStringList &listCallers();

    // Keeps AppState::currentBook's name, author and dt as the keys and shows
    // the stored book they find (currentBook itself when none).
    Q_INVOKABLE void viewDidLoad();
    // Writes the fields into the book the keys find, then takes its new values
    // as the keys; false when nothing was saved: "Book Not Saved" refused an
    // empty date, title or author, no book matched, or the store failed.
    Q_INVOKABLE bool UpdateBook();
    Q_INVOKABLE void ShareButtonTapped();
    // True when it unwinds to a list; otherwise the page simply goes back.
    Q_INVOKABLE bool BackButtonTapped();
    // Leaving by the back arrow or a key: with edits not saved it first asks
    // "Discard changes?"; then BackButtonTapped, or back() when no list takes it.
    Q_INVOKABLE void leaveScreen();
    // The cover's gestures beyond the form's pinch.
    Q_INVOKABLE void pannedView(qreal dx, qreal dy);
    Q_INVOKABLE void coverDoubleTapped() { toggleZoom(); }
    Q_INVOKABLE void ZoomButtonTapped() { toggleZoom(); }

    // The eleven labelled lines the share sheet is given.
    QString shareText() const;
    bool zoomed() const { return coverScale() != 1.0; }
    // Fields edited since the screen showed the book or last saved it; the
    // cover is saved at once and so is never pending.
    bool hasPendingChanges() const;

Q_SIGNALS:
    void back();

protected:
    void coverReplaced() override;

private:
    // The book the three keys match; with several, the one the list handed
    // over (same key), else the first in store order.
    std::optional<Books> matchingBook(bool withCover = false);
    void takeKeys(const Books &book);
    void toggleZoom();

    Text m_keyName;
    Text m_keyAuthor;
    Text m_keyDt;
    QStringList m_savedFields;
    bool m_loaded = false;
};

} // namespace tomewise
