#pragma once

#include "app/screencontroller.h"
#include "model/books.h"

#include <QDateTime>
#include <QImage>
#include <QPointF>
#include <QStringList>

namespace tomewise {

class BookSearchManager;

// The book form's fields, pickers, date and cover, shared by the new-book form
// and its twin, the detail screen: what they show and how it becomes a record.
class BookForm : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString dateTextField READ dateTextField WRITE setDateTextField NOTIFY fieldsChanged)
    Q_PROPERTY(QString bookNameTextField MEMBER m_bookName NOTIFY fieldsChanged)
    Q_PROPERTY(QString SubTitleTextField MEMBER m_subTitle NOTIFY fieldsChanged)
    Q_PROPERTY(QString bookAuthorTextField MEMBER m_author NOTIFY fieldsChanged)
    Q_PROPERTY(QString publishersNameTextField MEMBER m_publisher NOTIFY fieldsChanged)
    Q_PROPERTY(QString datePublishedTextField MEMBER m_datePublished NOTIFY fieldsChanged)
    Q_PROPERTY(QString numberOfPagesTextField MEMBER m_numberOfPages NOTIFY fieldsChanged)
    Q_PROPERTY(QString ISBNTextField MEMBER m_isbn NOTIFY fieldsChanged)
    Q_PROPERTY(QString bookCategoryTextField MEMBER m_category NOTIFY fieldsChanged)
    Q_PROPERTY(QString RatingTextField MEMBER m_rating NOTIFY fieldsChanged)
    Q_PROPERTY(QString BookFormatTextField MEMBER m_bookFormat NOTIFY fieldsChanged)
    Q_PROPERTY(QString SeriesTextField MEMBER m_series NOTIFY fieldsChanged)
    Q_PROPERTY(QString SeriesNumberTextField MEMBER m_seriesNumber NOTIFY fieldsChanged)
    Q_PROPERTY(QString NotesTextView MEMBER m_notes NOTIFY fieldsChanged)
    Q_PROPERTY(QDateTime ReadDate READ readDate NOTIFY fieldsChanged)
    Q_PROPERTY(QImage imageView READ imageView NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(qreal coverScale READ coverScale NOTIFY imageChanged)
    Q_PROPERTY(QPointF coverOffset READ coverOffset NOTIFY imageChanged)
    Q_PROPERTY(bool cameraEnabled READ cameraEnabled NOTIFY pickerListsChanged)
    Q_PROPERTY(QStringList ListOfGenre READ listOfGenre NOTIFY pickerListsChanged)
    Q_PROPERTY(QStringList ListOfRating READ listOfRating NOTIFY pickerListsChanged)
    Q_PROPERTY(QStringList ListOfSeries READ listOfSeries NOTIFY pickerListsChanged)
    Q_PROPERTY(QStringList BookFormatList READ bookFormatList CONSTANT)
    Q_PROPERTY(int datePickerStyle READ datePickerStyle NOTIFY pickerListsChanged)
    Q_PROPERTY(int pickerYear READ pickerYear NOTIFY pickerDateChanged)
    Q_PROPERTY(int pickerMonth READ pickerMonth NOTIFY pickerDateChanged)
    Q_PROPERTY(int pickerDay READ pickerDay NOTIFY pickerDateChanged)

public:
    // The picker tags, as the form numbers its pickers.
    enum PickerTag { GenrePicker = 1, RatingPicker = 2, BookFormatPicker = 3, SeriesPicker = 4 };
    Q_ENUM(PickerTag)
    // The date picker's presentation, in the platform's numbering.
    enum DatePickerStyle { Automatic = 0, Wheels = 1, Compact = 2, Inline = 3 };
    Q_ENUM(DatePickerStyle)

    static const QStringList &bookFormats();
    static constexpr QSize kCoverSize{125, 180};
    static constexpr int kCoverQuality = 90;
    static constexpr int kNotFoundDelayMs = 1200;
    static constexpr int kScannerNotFoundDelayMs = 600;

    explicit BookForm(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    QString dateTextField() const { return m_dateText; }
    void setDateTextField(const QString &text);
    QDateTime readDate() const { return m_readDate; }
    QImage imageView() const { return m_image; }
    bool hasImage() const { return !m_image.isNull(); }
    qreal coverScale() const { return m_coverScale; }
    QPointF coverOffset() const { return m_coverOffset; }
    bool cameraEnabled() const { return m_cameraEnabled; }
    QStringList listOfGenre() const { return m_genres; }
    QStringList listOfRating() const { return m_ratings; }
    QStringList listOfSeries() const { return m_seriesList; }
    QStringList bookFormatList() const { return bookFormats(); }
    int datePickerStyle() const { return m_datePickerStyle; }
    int pickerYear() const { return m_pickerDate.year(); }
    int pickerMonth() const { return m_pickerDate.month(); }
    int pickerDay() const { return m_pickerDate.day(); }

    void setImage(const QImage &image);

    // The pickers (one component each; an unknown tag has no rows).
    Q_INVOKABLE QStringList pickerRows(int tag) const;
    Q_INVOKABLE int numberOfRowsInComponent(int tag) const { return int(pickerRows(tag).size()); }
    Q_INVOKABLE QString titleForRow(int tag, int row) const;
    Q_INVOKABLE void didSelectRow(int tag, int row);

    // The numeric fields take digits only: a change whose inserted characters
    // are not all decimal digits is refused; a deletion is always accepted.
    Q_INVOKABLE static bool shouldChangeCharacters(const QString &before, const QString &after);
    static bool isDigitsOnly(QStringView replacement);

    // The date toolbar and picker; the picker shows the day of ReadDate.
    Q_INVOKABLE void doneClick();
    Q_INVOKABLE void todayClick();
    Q_INVOKABLE void dateChanged(int year, int month, int day);

    Q_INVOKABLE void pinchedView(qreal scale);

    // The cover sources.
    Q_INVOKABLE void OpenCameraButtonTapped();
    Q_INVOKABLE void photoFromLobrary();
    Q_INVOKABLE void PasteFromClipboard();
    Q_INVOKABLE void RemoveButtonTapped();
    // What an image picker or the document picker hands back.
    Q_INVOKABLE void imagePicked(const QImage &image);
    Q_INVOKABLE bool documentPicked(const QUrl &url);

    Q_INVOKABLE void openViewControllerBasedOnIdentifier(const QString &identifier);
    // Every appearance: entries added in the reference lists show at once;
    // ratings wait for the next visit.
    Q_INVOKABLE void viewWillAppear();

    // The search by ISBN: starts the query for the typed ISBN and at once fills
    // from the answer held now, so the fresh answer fills on the next double tap.
    Q_INVOKABLE void ISBNDoubleTapped();
    // Back from barcode capture with AppState::scannedISBN (and maybe an answer).
    Q_INVOKABLE void unwindFromScanner();
    // Sends the query for the ISBN field's text; its answer becomes the held one.
    void startSearch();
    // Fills the fields from the held answer and clears it; with none held,
    // "Book Not Found" after 1.2 s.
    void fillFromHeldAnswer();
    // The query and cover downloads of this form (made on first use).
    BookSearchManager &searchManager();

    // True when date, title and author are all filled (blanks count).
    bool requiredFieldsEntered() const;
    // Writes the form's fields into a record, trimming and parsing as saving
    // does: an empty field leaves its attribute unset (absent); a number that
    // does not parse, or a date text that does not, leaves the attribute (all
    // five date attributes) as the record had it.
    // The cover is not written here: each screen stores it its own way.
    void writeFields(Books &book) const;
    // The cover as stored: stretched into 125 x 180 and JPEG-encoded.
    static QByteArray coverData(const QImage &image);

Q_SIGNALS:
    void fieldsChanged();
    // A short notice for the screen the user lands on ("Saved “Dune”").
    void notice(const QString &text);
    void imageChanged();
    void pickerListsChanged();
    void pickerDateChanged();
    void editingEnded();
    // The page shows the platform pickers for these.
    void cameraRequested();
    void documentPickerRequested();

protected:
    // False, with "Book Not Saved", when date, title or author is empty.
    bool requireFields();
    // Every field's text, to tell what the user has changed since a snapshot.
    QStringList fieldTexts() const;
    static QString savedNotice(const Books &book);
    // A new cover replaced the shown one (picked, pasted, removed or downloaded).
    virtual void coverReplaced() {}
    // Shows a record's fields, its date read in the medium style, and its cover.
    void showBook(const Books &book);
    // The three numeric fields as the record holds them.
    void showNumbers(const Books &book);
    void setCoverZoom(qreal scale, QPointF offset);
    // The form's opening date: "DefaultDate" when "UseDefaultDate" is on, else
    // today, in the medium style.
    void showOpeningDate();
    // The date picker's style and all three picker lists.
    void loadPickers();
    void loadGenres();
    void loadRatings();
    void loadSeries();

    // The fields as shown; the twin screens read them to save and share.
    QString m_dateText;
    QString m_bookName;
    QString m_subTitle;
    QString m_author;
    QString m_publisher;
    QString m_datePublished;
    QString m_numberOfPages;
    QString m_isbn;
    QString m_category;
    QString m_rating;
    QString m_bookFormat;
    QString m_series;
    QString m_seriesNumber;
    QString m_notes;

private:
    QStringList loadList(Entity entity);
    void showPickedDate(const QDateTime &date);
    void setReadDateFromText(DateText::Style style);
    void showCover(const QImage &image);

    QDateTime m_readDate;
    QDate m_pickerDate;
    QImage m_image;
    qreal m_coverScale = 1.0;
    QPointF m_coverOffset;
    BookSearchManager *m_search = nullptr;
    bool m_cameraEnabled = false;
    int m_datePickerStyle = Automatic;
    QStringList m_genres;
    QStringList m_ratings;
    QStringList m_seriesList;
};

} // namespace tomewise
