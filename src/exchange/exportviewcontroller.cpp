#include "exportviewcontroller.h"

#include "app/log.h"
#include "exchange/exportfilewriter.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTimer>

namespace tomewise {

ExportViewController::ExportViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Export"));
}

ExportViewController::~ExportViewController() = default;

const QStringList &ExportViewController::excludedActivities()
{
    static const QStringList list{
        QStringLiteral("UIActivityTypeAirDrop"),         QStringLiteral("UIActivityTypeAddToReadingList"),
        QStringLiteral("UIActivityTypeMail"),            QStringLiteral("UIActivityTypeMessage"),
        QStringLiteral("UIActivityTypePostToFacebook"),  QStringLiteral("UIActivityTypePostToTwitter"),
        QStringLiteral("UIActivityTypeMarkupAsPDF"),     QStringLiteral("UIActivityTypeCopyToPasteboard"),
        QStringLiteral("UIActivityTypePrint")};
    return list;
}

QString ExportViewController::helpText()
{
    QString text = QStringLiteral("Step 1: Create the Export File\n");
    text += QStringLiteral("Step 2: Option 1: Click 'Save To Files' button\n");
    text += QStringLiteral("             Option 2: Click the Email File button to email the file to yourself and "
                           "then from your email save the file to your iCloud Drive. There are size limits to "
                           "email attachments for most carriers.");
    return text;
}

QString ExportViewController::temporaryFilePath()
{
    return QDir(QDir::tempPath()).filePath(QLatin1String(ExportFileWriter::kFileName));
}

void ExportViewController::viewDidLoad()
{
    setButtons(true, false, false);
}

void ExportViewController::setExportText(const QString &text)
{
    if (m_exportText == text)
        return;
    m_exportText = text;
    Q_EMIT exportTextChanged();
}

void ExportViewController::setButtons(bool exportEnabled, bool saveEnabled, bool emailEnabled)
{
    m_exportEnabled = exportEnabled;
    m_saveEnabled = saveEnabled;
    m_emailEnabled = emailEnabled;
    Q_EMIT buttonsChanged();
}

void ExportViewController::CreateUpdateFile()
{
    if (m_writer || !m_exportEnabled)
        return;
    setButtons(false, m_saveEnabled, m_emailEnabled);
    setExportText(QString());
    m_writer = std::make_unique<ExportFileWriter>(context(), app().dateText());
    QString error;
    if (!m_writer->begin(&error)) {
        fail(error);
        return;
    }
    m_progress = 0;
    Q_EMIT progressChanged();
    buildNextBatch();
}

void ExportViewController::buildNextBatch()
{
    QString error;
    const auto result = m_writer->step(ExportFileWriter::kBatch, &error);
    if (result == ExportFileWriter::Step::Failed) {
        fail(error);
        return;
    }
    m_progress = m_writer->progress();
    if (result == ExportFileWriter::Step::More) {
        Q_EMIT progressChanged();
        // Back to the event loop between batches, so the screen stays live.
        QTimer::singleShot(0, this, [this] { buildNextBatch(); });
        return;
    }
    m_data = m_writer->data();
    m_display = m_writer->displayText();
    m_writer.reset();
    Q_EMIT progressChanged();
    setButtons(false, true, true);
    after(kAlertDelayMs, [this] {
        showAlert(QStringLiteral("Data Export"),
                  QStringLiteral("Process Complete - File Ready to Save To Files or Email"));
        setExportText(m_display);
    });
    qCInfo(lcExchange).noquote() << "Export successful!";
    Q_EMIT built(true);
}

void ExportViewController::fail(const QString &error)
{
    m_writer.reset();
    Q_EMIT progressChanged();
    const QString message = QStringLiteral("Export failed with error: ") + error;
    qCWarning(lcExchange).noquote() << message;
    setButtons(false, false, false);
    showAlert(QStringLiteral("Data Export Error"), message);
    Q_EMIT built(false);
}

bool ExportViewController::writeDataFile(const QString &path, QString *error) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_data) != m_data.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

void ExportViewController::SaveToFiles()
{
    const QString path = temporaryFilePath();
    qCInfo(lcExchange).noquote() << path;
    QString error;
    if (!writeDataFile(path, &error)) {
        qCWarning(lcExchange).noquote() << "Export failed with error: " + error;
        return;
    }
    ShareItems items;
    items.files = {QUrl::fromLocalFile(path)};
    items.excludedActivities = excludedActivities();
    app().platform().share(items);
}

bool ExportViewController::saveCopy(const QUrl &destination)
{
    const QString target = destination.toLocalFile();
    QString error;
    if (target.isEmpty() || !writeDataFile(target, &error)) {
        qCWarning(lcExchange).noquote() << "Export failed with error: " + error;
        return false;
    }
    return true;
}

void ExportViewController::WriteTextFile()
{
    const QString path = temporaryFilePath();
    QString error;
    if (!writeDataFile(path, &error)) {
        qCWarning(lcExchange).noquote() << "Export failed with error: " + error;
    } else {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            setExportText(QString::fromUtf8(file.readAll()));
    }
    PlatformServices &platform = app().platform();
    if (!platform.canSendMail()) {
        showAlert(QStringLiteral("Sending Email"), QStringLiteral("Email not Setup or Unavailable"));
        return;
    }
    MailDraft draft;
    draft.subject = QStringLiteral("Tomewise Update Text File");
    draft.body = QStringLiteral("Attachment: Tomewise Text File");
    draft.attachments = {{path, QStringLiteral("csv"), QLatin1String(ExportFileWriter::kFileName)}};
    platform.composeMail(draft);
}

} // namespace tomewise
