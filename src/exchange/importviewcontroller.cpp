#include "importviewcontroller.h"

#include "app/log.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QTimer>

namespace tomewise {

ImportViewController::ImportViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Import"));
}

ImportViewController::~ImportViewController() = default;

QString ImportViewController::helpText()
{
    QString text = QStringLiteral("YOU CAN ONLY IMPORT THE FILE CREATED BY THIS APP.\n");
    text += QStringLiteral("1: Select the file you saved to your iCloud drive\n");
    text += QStringLiteral("2: Import the file into your device");
    return text;
}

void ImportViewController::viewDidLoad()
{
    m_wrongFile = ImportFileReader::No;
    Q_EMIT wrongFileChanged();
    setButtons(true, false);
}

void ImportViewController::setButtons(bool loadEnabled, bool importEnabled)
{
    m_loadEnabled = loadEnabled;
    m_importEnabled = importEnabled;
    Q_EMIT buttonsChanged();
}

void ImportViewController::LoadFile()
{
    Q_EMIT presentDocumentPicker();
}

void ImportViewController::documentPicker(const QUrl &url)
{
    const QString path = url.isLocalFile() ? url.toLocalFile() : url.toString();
    m_filename = QFileInfo(path).fileName();
    // Read once in pieces to know it is text and to show its beginning; the
    // import reads it again from the file.
    QFile file(path);
    QString error;
    QString shown;
    if (file.open(QIODevice::ReadOnly)) {
        QStringDecoder utf8(QStringDecoder::Utf8);
        while (!file.atEnd() && !utf8.hasError()) {
            const QByteArray chunk = file.read(1 << 20);
            if (chunk.isEmpty())
                break;
            const QString text = utf8(chunk);
            if (shown.size() < kShownChars)
                shown += QStringView(text).left(kShownChars - shown.size());
        }
        if (file.error() != QFileDevice::NoError)
            error = file.errorString();
        else if (utf8.hasError())
            error = QStringLiteral("The file “%1” couldn’t be opened because the text encoding of its "
                                   "contents can’t be determined.").arg(m_filename);
    } else {
        error = file.errorString();
    }
    m_service.reset();
    m_notesText.clear();
    if (error.isEmpty() && ServiceFile::recognise(path) != ServiceFile::Kind::OwnExport) {
        m_documentPath = path;
        previewService();
    } else if (error.isEmpty()) {
        if (file.size() > shown.size() && shown.size() >= kShownChars)
            shown += QStringLiteral("\n…");
        m_documentPath = path;
        m_shownText = shown;
        setButtons(false, true);
    } else {
        qCWarning(lcExchange).noquote() << error;
    }
    Q_EMIT documentChanged();
    showAlert(QStringLiteral("Data Import"), QStringLiteral("File Loaded and Ready to Import"));
}

QString ImportViewController::fileKind() const
{
    return m_service ? ServiceFile::kindName(m_service->kind()) : QString();
}

void ImportViewController::setIncludeUnread(bool include)
{
    if (m_includeUnread == include)
        return;
    m_includeUnread = include;
    // The counts change with it: preview again unless the import has begun.
    if (m_service && m_importEnabled)
        previewService();
    Q_EMIT documentChanged();
}

void ImportViewController::previewService()
{
    // Nothing is written until the user has seen what will happen.
    QString error;
    m_service = ServiceImport::open(app(), m_documentPath, m_includeUnread, &error);
    if (!m_service) {
        qCWarning(lcExchange).noquote() << error;
        m_shownText = QStringLiteral("%1 cannot be read: %2").arg(m_filename, error);
        setButtons(true, false);
        return;
    }
    m_service->preview();
    m_shownText = m_service->previewText();
    if (const QString notes = m_service->notesText(); !notes.isEmpty())
        m_shownText += QStringLiteral("\nRows that will not be imported, and books without a date:\n") + notes;
    setButtons(false, true);
    Q_EMIT documentChanged();
}

void ImportViewController::importNextServiceBatch()
{
    const bool done = m_service->step(ImportFileReader::kBatch);
    m_progress = m_service->progress();
    if (!done) {
        Q_EMIT progressChanged();
        QTimer::singleShot(0, this, [this] { importNextServiceBatch(); });
        return;
    }
    m_serviceRunning = false;
    m_resultCount = m_service->added() + m_service->updated();
    m_failed = m_service->failed();
    m_notesText = m_service->notesText();
    m_shownText = m_service->summaryText();
    if (!m_notesText.isEmpty())
        m_shownText += QStringLiteral("\n\nRows not imported, and books imported without a date:\n") + m_notesText;
    Q_EMIT progressChanged();
    Q_EMIT documentChanged();
    // The page stays, so that the list of rows left out can be read and saved.
    showAlert(QStringLiteral("Data Import"),
              (m_failed > 0 ? QStringLiteral("Data Import Not Completed\n")
                            : QStringLiteral("Data Import Completed\n"))
                  + m_service->summaryText());
    Q_EMIT imported();
}

bool ImportViewController::saveNotes(const QUrl &url, bool replace)
{
    const QString path = url.isLocalFile() ? url.toLocalFile() : url.toString();
    if (!replace && QFileInfo::exists(path)) {
        showAlert(QStringLiteral("Replace File?"),
                  QStringLiteral("%1 already exists. Do you want to replace it?").arg(QFileInfo(path).fileName()),
                  {{QStringLiteral("Yes"), AlertAction::Style::Default, [this, url] { saveNotes(url, true); }},
                   {QStringLiteral("No"), AlertAction::Style::Cancel, {}}});
        return false;
    }
    QFile file(path);
    const QByteArray bytes = m_notesText.toUtf8();
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size() && file.flush()) {
        file.close();
        if (file.error() == QFileDevice::NoError) {
            showAlert(QStringLiteral("List Saved"), QStringLiteral("Saved to %1").arg(path));
            return true;
        }
    }
    qCWarning(lcExchange).noquote() << file.errorString();
    showAlert(QStringLiteral("List Not Saved"), file.errorString());
    return false;
}

void ImportViewController::ImportTextFile()
{
    if (m_documentPath.isEmpty() || m_reader || m_serviceRunning)
        return;
    if (m_service) {
        setButtons(false, false);
        m_serviceRunning = true;
        m_progress = 0;
        Q_EMIT progressChanged();
        importNextServiceBatch();
        return;
    }
    setButtons(false, false);
    m_failed = m_nameless = 0;
    m_notSaved.clear();
    m_file = std::make_unique<QFile>(m_documentPath);
    if (!m_file->open(QIODevice::ReadOnly))
        qCWarning(lcExchange).noquote() << m_file->errorString();
    m_reader = std::make_unique<ImportFileReader>(context(), app().dateText());
    m_reader->begin(m_file.get());
    m_wrongFile = m_reader->wrongFile();
    Q_EMIT wrongFileChanged();
    m_progress = 0;
    Q_EMIT progressChanged();
    importNextBatch();
}

void ImportViewController::importNextBatch()
{
    const bool done = m_reader->step(ImportFileReader::kBatch);
    m_progress = m_reader->progress();
    if (!done) {
        Q_EMIT progressChanged();
        // Back to the event loop between batches, so the screen stays live.
        QTimer::singleShot(0, this, [this] { importNextBatch(); });
        return;
    }
    m_resultCount = m_reader->inserted() + m_reader->updated();
    m_failed = m_reader->failed();
    m_nameless = m_reader->nameless();
    m_notSaved = m_reader->notSaved();
    m_reader.reset();
    m_file.reset();
    Q_EMIT progressChanged();
    report();
}

void ImportViewController::report()
{
    QString message = m_wrongFile == ImportFileReader::No
        ? QStringLiteral("Data Import Completed")
        : m_filename + QStringLiteral(" Is The Incorrect Import File");
    // Never a plain "Completed" when something did not arrive.
    if (m_failed > 0)
        message += m_failed == 1 ? QStringLiteral("\n1 record could not be saved.")
                                 : QStringLiteral("\n%1 records could not be saved.").arg(m_failed);
    if (m_nameless > 0)
        message += m_nameless == 1
            ? QStringLiteral("\n1 record without a title or an author was left out.")
            : QStringLiteral("\n%1 records without a title or an author were left out.").arg(m_nameless);
    showAlert(QStringLiteral("Data Import"), message,
              {{QStringLiteral("OK"), AlertAction::Style::Default,
                [this] { Q_EMIT unwind(QStringLiteral("unwindToMenu")); }}});
    Q_EMIT imported();
}

} // namespace tomewise
