#include "importviewcontroller.h"

#include "app/log.h"
#include "exchange/importfilereader.h"

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
    QFile file(path);
    QString error;
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        if (file.error() == QFileDevice::NoError) {
            QStringDecoder utf8(QStringDecoder::Utf8);
            QString text = utf8(bytes);
            if (!utf8.hasError()) {
                m_document = std::move(text);
                setButtons(false, true);
            } else {
                error = QStringLiteral("The file “%1” couldn’t be opened because the text encoding of its "
                                       "contents can’t be determined.").arg(m_filename);
            }
        } else {
            error = file.errorString();
        }
    } else {
        error = file.errorString();
    }
    if (!error.isEmpty())
        qCWarning(lcExchange).noquote() << error;
    Q_EMIT documentChanged();
    showAlert(QStringLiteral("Data Import"), QStringLiteral("File Loaded and Ready to Import"));
}

void ImportViewController::ImportTextFile()
{
    if (!m_document || m_reader)
        return;
    setButtons(false, false);
    m_reader = std::make_unique<ImportFileReader>(context(), app().dateText());
    m_reader->begin(*m_document);
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
    m_reader.reset();
    Q_EMIT progressChanged();
    report();
}

void ImportViewController::report()
{
    const QString message = m_wrongFile == ImportFileReader::No
        ? QStringLiteral("Data Import Completed")
        : m_filename + QStringLiteral(" Is The Incorrect Import File");
    showAlert(QStringLiteral("Data Import"), message,
              {{QStringLiteral("OK"), AlertAction::Style::Default,
                [this] { Q_EMIT unwind(QStringLiteral("unwindToMenu")); }}});
    Q_EMIT imported();
}

} // namespace tomewise
