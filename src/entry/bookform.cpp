#include "bookform.h"

#include "app/log.h"
#include "entry/bookfill.h"
#include "entry/booksearchmanager.h"
#include "model/coverimage.h"

#include <QBuffer>
#include <QPointer>
#include <QFileInfo>
#include <QImageWriter>
#include <QPainter>
#include <QUrl>

namespace tomewise {

const QStringList &BookForm::bookFormats()
{
    static const QStringList list{QStringLiteral("Hard Cover"), QStringLiteral("Paperback"),
                                  QStringLiteral("Leatherback"), QStringLiteral("Digital")};
    return list;
}

BookForm::BookForm(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
}

void BookForm::setDateTextField(const QString &text)
{
    if (m_dateText == text)
        return;
    // Typed or filled text: ReadDate follows it in whichever date style it is.
    m_dateText = text;
    m_readDate = QDateTime();
    setReadDateFromText(DateText::Style::Medium);
    if (!m_readDate.isValid())
        setReadDateFromText(DateText::Style::Long);
    Q_EMIT fieldsChanged();
}

void BookForm::setImage(const QImage &image)
{
    showCover(image);
    coverReplaced();
}

void BookForm::showCover(const QImage &image)
{
    m_image = image;
    m_coverScale = 1.0;
    m_coverOffset = QPointF();
    Q_EMIT imageChanged();
}

void BookForm::setCoverZoom(qreal scale, QPointF offset)
{
    m_coverScale = scale;
    m_coverOffset = offset;
    Q_EMIT imageChanged();
}

void BookForm::showBook(const Books &book)
{
    // The date read comes back in the medium style whichever style it was saved in.
    m_dateText = book.dt.value_or(QString());
    m_readDate = QDateTime();
    setReadDateFromText(DateText::Style::Medium);
    if (!m_readDate.isValid())
        setReadDateFromText(DateText::Style::Long);
    if (m_readDate.isValid())
        m_dateText = app().dateText().format(m_readDate, DateText::Style::Medium);
    m_bookName = book.name.value_or(QString());
    m_subTitle = book.subTitle.value_or(QString());
    m_author = book.author.value_or(QString());
    m_publisher = book.bookPublisher.value_or(QString());
    showNumbers(book);
    m_isbn = book.isbn.value_or(QString());
    m_category = book.category.value_or(QString());
    m_rating = book.rating.value_or(QString());
    m_bookFormat = book.bookFormat.value_or(QString());
    m_series = book.series.value_or(QString());
    m_notes = book.notes.value_or(QString());
    Q_EMIT fieldsChanged();
    // Stored bytes that are no safe picture stay in the store and are not drawn.
    showCover(book.pictureImage ? CoverImage::decode(*book.pictureImage).image : QImage());
}

void BookForm::showNumbers(const Books &book)
{
    const auto number = [](const Int16 &v) { return v ? QString::number(*v) : QString(); };
    m_datePublished = number(book.publishDate);
    m_numberOfPages = number(book.numberPages);
    m_seriesNumber = number(book.seriesNumber);
}

void BookForm::showOpeningDate()
{
    Settings &defaults = app().userDefaults();
    if (defaults.boolValue(SettingsKey::UseDefaultDate))
        m_dateText = defaults.stringValue(SettingsKey::DefaultDate);
    else
        m_dateText = app().dateText().format(app().now(), DateText::Style::Medium);
    setReadDateFromText(DateText::Style::Medium);
    m_cameraEnabled = app().platform().cameraAvailable();
    Q_EMIT fieldsChanged();
}

void BookForm::loadPickers()
{
    Settings &defaults = app().userDefaults();
    m_datePickerStyle = Automatic;
    if (defaults.boolValue(SettingsKey::UseDateWheel))
        m_datePickerStyle = Wheels;
    if (defaults.boolValue(SettingsKey::UseDateCompact))
        m_datePickerStyle = Compact;
    if (defaults.boolValue(SettingsKey::UseDateInline))
        m_datePickerStyle = Inline;
    loadGenres();
    loadRatings();
    loadSeries();
}

void BookForm::viewWillAppear()
{
    loadGenres();
    loadSeries();
}

void BookForm::setReadDateFromText(DateText::Style style)
{
    if (auto parsed = app().dateText().parse(m_dateText, style))
        m_readDate = *parsed;
    const QDateTime shown = m_readDate.isValid() ? m_readDate : app().now();
    const auto c = app().dateText().components(shown);
    m_pickerDate = QDate(c.year, c.month, c.day);
    Q_EMIT pickerDateChanged();
}

QStringList BookForm::loadList(Entity entity)
{
    FetchRequest request;
    request.entity = entity;
    request.sortDescriptors = {{BookStore::referenceAttribute(entity), true}};
    QString error;
    const auto entries = context().fetchEntries(request, &error);
    QStringList list;
    if (!entries) {
        qCWarning(lcStore).noquote() << error;
        return list;
    }
    for (const auto &e : *entries) {
        if (!e.value)
            qFatal("%s entry without a value", qPrintable(entityName(entity)));
        list << *e.value;
    }
    return list;
}

void BookForm::loadGenres()
{
    m_genres = loadList(Entity::GenreList);
    Q_EMIT pickerListsChanged();
}

void BookForm::loadRatings()
{
    m_ratings = loadList(Entity::RatingList);
    Q_EMIT pickerListsChanged();
}

void BookForm::loadSeries()
{
    m_seriesList = loadList(Entity::SeriesList);
    Q_EMIT pickerListsChanged();
}

QStringList BookForm::pickerRows(int tag) const
{
    switch (tag) {
    case GenrePicker: return m_genres;
    case RatingPicker: return m_ratings;
    case BookFormatPicker: return bookFormats();
    case SeriesPicker: return m_seriesList;
    default: return {};
    }
}

QString BookForm::titleForRow(int tag, int row) const
{
    return pickerRows(tag).value(row);
}

void BookForm::didSelectRow(int tag, int row)
{
    const QStringList rows = pickerRows(tag);
    if (row < 0 || row >= rows.size())
        return;
    QString *target = nullptr;
    switch (tag) {
    case GenrePicker: target = &m_category; break;
    case RatingPicker: target = &m_rating; break;
    case BookFormatPicker: target = &m_bookFormat; break;
    case SeriesPicker: target = &m_series; break;
    default: return;
    }
    *target = rows.at(row);
    Q_EMIT fieldsChanged();
}

bool BookForm::isDigitsOnly(QStringView replacement)
{
    for (QChar c : replacement) {
        if (!c.isDigit())
            return false;
    }
    return true;
}

bool BookForm::shouldChangeCharacters(const QString &before, const QString &after)
{
    // The replacement is what lies between the common head and tail.
    qsizetype head = 0;
    const qsizetype shortest = std::min(before.size(), after.size());
    while (head < shortest && before[head] == after[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shortest - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    return isDigitsOnly(QStringView(after).mid(head, after.size() - head - tail));
}

void BookForm::showPickedDate(const QDateTime &date)
{
    m_dateText = app().dateText().format(date, DateText::Style::Long);
    setReadDateFromText(DateText::Style::Long);
    Q_EMIT fieldsChanged();
}

void BookForm::doneClick()
{
    if (auto day = app().dateText().startOfDay(m_pickerDate.year(), m_pickerDate.month(), m_pickerDate.day()))
        showPickedDate(*day);
    Q_EMIT editingEnded();
}

void BookForm::todayClick()
{
    showPickedDate(app().now());
    Q_EMIT editingEnded();
}

void BookForm::dateChanged(int year, int month, int day)
{
    if (auto start = app().dateText().startOfDay(year, month, day))
        showPickedDate(*start);
}

void BookForm::pinchedView(qreal scale)
{
    if (scale <= 0)
        return;
    m_coverScale *= scale;
    Q_EMIT imageChanged();
}

void BookForm::OpenCameraButtonTapped()
{
    if (app().platform().cameraAvailable())
        Q_EMIT cameraRequested();
    else
        showAlert(QStringLiteral("Camera"), QStringLiteral("There is no camera available"));
}

void BookForm::photoFromLobrary()
{
    Q_EMIT documentPickerRequested();
}

void BookForm::PasteFromClipboard()
{
    if (auto image = app().platform().clipboardImage(); image && !image->isNull())
        setImage(*image);
    else
        showAlert(QStringLiteral("Clipboard"), QStringLiteral("There is no image in the Clipboard"));
}

void BookForm::RemoveButtonTapped()
{
    showAlert(QStringLiteral("Remove Cover Image"), QStringLiteral("Do You Want to Remove This Image?"),
              {{QStringLiteral("Yes"), AlertAction::Style::Default, [this] { setImage(QImage()); }},
               {QStringLiteral("No"), AlertAction::Style::Cancel, {}}});
}

void BookForm::imagePicked(const QImage &image)
{
    if (!image.isNull())
        setImage(image);
}

bool BookForm::documentPicked(const QUrl &url)
{
    const QString path = url.isLocalFile() ? url.toLocalFile() : url.toString();
    const CoverImage::Decoded cover = CoverImage::decodeFile(path);
    if (!cover) {
        // The cover stays as it was; the user learns why nothing changed.
        showAlert(QStringLiteral("Cover Not Changed"),
                  QStringLiteral("\u201C%1\u201D: %2").arg(QFileInfo(path).fileName(), cover.error));
        return false;
    }
    setImage(cover.image);
    return true;
}

void BookForm::openViewControllerBasedOnIdentifier(const QString &identifier)
{
    Q_EMIT navigate(identifier);
}

BookSearchManager &BookForm::searchManager()
{
    if (!m_search)
        m_search = new BookSearchManager(&app().userDefaults(), this);
    return *m_search;
}

void BookForm::ISBNDoubleTapped()
{
    if (m_isbn.isEmpty()) {
        showAlert(QStringLiteral("ISBN Field Empty"), QStringLiteral("There is no isbn number entered"));
        return;
    }
    Q_EMIT editingEnded();
    startSearch();
    fillFromHeldAnswer();
}

void BookForm::startSearch()
{
    QPointer<AppState> state(&app().state());
    searchManager().search(m_isbn, [state](const std::optional<QList<BookItem>> &items) {
        if (state)
            state->setScannedBookItems(items);
    });
}

void BookForm::unwindFromScanner()
{
    m_isbn = app().state().scannedISBN();
    Q_EMIT fieldsChanged();
    const auto &held = app().state().scannedBookItems();
    if (held && !held->isEmpty()) {
        fillFromHeldAnswer();
        return;
    }
    // A title already typed means the user has moved on: no alert over it.
    if (!m_bookName.isEmpty())
        return;
    after(kScannerNotFoundDelayMs, [this, isbn = m_isbn] {
        showAlert(QStringLiteral("Book Not Found"), QStringLiteral("The Scanned Barcode returned no Results for: ") + isbn);
    });
}

void BookForm::fillFromHeldAnswer()
{
    AppState &state = app().state();
    const auto fill = BookFill::from(state.scannedBookItems(),
                                     app().dateText().format(app().now(), DateText::Style::Medium));
    if (!fill) {
        after(kNotFoundDelayMs, [this] {
            showAlert(QStringLiteral("Book Not Found"), QStringLiteral("The Scanned Barcode returned no Results"));
        });
        return;
    }
    // ReadDate stays as it was: the saved dt and dateRead may name different days.
    m_dateText = fill->dateTextField;
    m_bookName = fill->bookNameTextField;
    m_subTitle = fill->SubTitleTextField.value_or(m_subTitle);
    m_datePublished = fill->datePublishedTextField;
    m_numberOfPages = fill->numberOfPagesTextField;
    m_author = fill->bookAuthorTextField;
    m_publisher = fill->publishersNameTextField.value_or(m_publisher);
    m_category = fill->bookCategoryTextField.value_or(m_category);
    m_notes = fill->NotesTextView.value_or(m_notes);
    Q_EMIT fieldsChanged();
    if (fill->coverURL) {
        searchManager().downloadCover(*fill->coverURL, [this](const QImage &image) {
            // Bytes that are no picture leave the cover as it was.
            if (!image.isNull())
                setImage(image);
        });
    }
    state.setScannedBookItems(std::nullopt);
}

bool BookForm::requiredFieldsEntered() const
{
    return !m_dateText.isEmpty() && !m_bookName.isEmpty() && !m_author.isEmpty();
}

bool BookForm::requireFields()
{
    if (requiredFieldsEntered())
        return true;
    showAlert(QStringLiteral("Book Not Saved"), QStringLiteral("Required Fields Labeled in RED Not Entered"));
    return false;
}

QStringList BookForm::fieldTexts() const
{
    return {m_dateText, m_bookName,  m_subTitle, m_author, m_publisher, m_datePublished, m_numberOfPages,
            m_isbn,     m_category,  m_rating,   m_bookFormat, m_series, m_seriesNumber,  m_notes};
}

QString BookForm::savedNotice(const Books &book)
{
    return QStringLiteral("Saved \u201C%1\u201D").arg(book.name.value_or(QString()));
}

namespace {

// Letters stripped from both ends, as "3a" is read as 3.
QStringView withoutOuterLetters(QStringView text)
{
    while (!text.isEmpty() && text.front().isLetter())
        text = text.mid(1);
    while (!text.isEmpty() && text.back().isLetter())
        text.chop(1);
    return text;
}

// Blanks are spaces and tabs; line breaks stay.
bool isBlank(QChar c)
{
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

void setTrimmed(Text &attribute, const QString &text)
{
    attribute.reset();
    if (text.isEmpty())
        return;
    QStringView v(text);
    while (!v.isEmpty() && isBlank(v.front()))
        v = v.mid(1);
    while (!v.isEmpty() && isBlank(v.back()))
        v.chop(1);
    attribute = v.toString();
}

void setAsIs(Text &attribute, const QString &text)
{
    attribute.reset();
    if (!text.isEmpty())
        attribute = text;
}

// An emptied field clears its number; text that is no 16-bit number (99999
// pages) leaves the number as it was rather than erasing it.
void setNumber(Int16 &attribute, const QString &field, QStringView digits)
{
    if (field.isEmpty())
        attribute.reset();
    else if (const auto number = parseInt16(digits))
        attribute = number;
}

qint16 component(int value)
{
    const auto v = toInt16(value);
    if (!v)
        qFatal("Date component %d is outside the 16-bit range", value);
    return *v;
}

} // namespace

void BookForm::writeFields(Books &book) const
{
    // The five date attributes name one day: all are written, or none.
    if (!m_dateText.isEmpty() && m_readDate.isValid()) {
        book.dt = m_dateText;
        book.dateRead = m_readDate;
        const auto c = app().dateText().components(m_readDate);
        book.year = component(c.year);
        book.month = component(c.month);
        book.day = component(c.day);
    }
    setTrimmed(book.series, m_series);
    setNumber(book.seriesNumber, m_seriesNumber, withoutOuterLetters(m_seriesNumber));
    setTrimmed(book.name, m_bookName);
    setTrimmed(book.subTitle, m_subTitle);
    setTrimmed(book.author, m_author);
    setTrimmed(book.category, m_category);
    setTrimmed(book.bookPublisher, m_publisher);
    setTrimmed(book.isbn, m_isbn);
    setAsIs(book.bookFormat, m_bookFormat);
    setNumber(book.numberPages, m_numberOfPages, m_numberOfPages);
    setAsIs(book.rating, m_rating);
    setNumber(book.publishDate, m_datePublished, m_datePublished);
    setAsIs(book.notes, m_notes);
}

QByteArray BookForm::coverData(const QImage &image)
{
    QImage bitmap(kCoverSize, QImage::Format_ARGB32_Premultiplied);
    bitmap.fill(Qt::transparent);
    {
        QPainter painter(&bitmap);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRect(QPoint(0, 0), kCoverSize), image);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(kCoverQuality);
    if (!writer.write(bitmap))
        qCWarning(lcEntry).noquote() << writer.errorString();
    return bytes;
}

} // namespace tomewise
