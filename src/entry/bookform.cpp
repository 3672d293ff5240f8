#include "bookform.h"

#include "app/log.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
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
    m_image = image;
    m_coverScale = 1.0;
    Q_EMIT imageChanged();
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

void BookForm::readDatePickerStyle()
{
    Settings &defaults = app().userDefaults();
    m_datePickerStyle = Automatic;
    if (defaults.boolValue(SettingsKey::UseDateWheel))
        m_datePickerStyle = Wheels;
    if (defaults.boolValue(SettingsKey::UseDateCompact))
        m_datePickerStyle = Compact;
    if (defaults.boolValue(SettingsKey::UseDateInline))
        m_datePickerStyle = Inline;
    Q_EMIT pickerListsChanged();
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
    QFile file(url.isLocalFile() ? url.toLocalFile() : url.toString());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QImage image = QImage::fromData(file.readAll());
    if (image.isNull())
        return false;
    setImage(image);
    return true;
}

void BookForm::openViewControllerBasedOnIdentifier(const QString &identifier)
{
    Q_EMIT navigate(identifier);
}

bool BookForm::requiredFieldsEntered() const
{
    return !m_dateText.isEmpty() && !m_bookName.isEmpty() && !m_author.isEmpty();
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
    if (!text.isEmpty())
        attribute = text;
}

void setNumber(Int16 &attribute, QStringView text)
{
    if (text.isEmpty())
        return;
    if (auto n = parseInt16(text))
        attribute = *n;
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
    if (!m_dateText.isEmpty()) {
        book.dt = m_dateText;
        if (m_readDate.isValid()) {
            book.dateRead = m_readDate;
            const auto c = app().dateText().components(m_readDate);
            book.year = component(c.year);
            book.month = component(c.month);
            book.day = component(c.day);
        }
    }
    setTrimmed(book.series, m_series);
    if (!m_seriesNumber.isEmpty())
        setNumber(book.seriesNumber, withoutOuterLetters(m_seriesNumber));
    setTrimmed(book.name, m_bookName);
    setTrimmed(book.subTitle, m_subTitle);
    setTrimmed(book.author, m_author);
    setTrimmed(book.category, m_category);
    setTrimmed(book.bookPublisher, m_publisher);
    setTrimmed(book.isbn, m_isbn);
    setAsIs(book.bookFormat, m_bookFormat);
    setNumber(book.numberPages, m_numberOfPages);
    setAsIs(book.rating, m_rating);
    setNumber(book.publishDate, m_datePublished);
    setAsIs(book.notes, m_notes);
    if (!m_image.isNull())
        book.pictureImage = coverData(m_image);
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
