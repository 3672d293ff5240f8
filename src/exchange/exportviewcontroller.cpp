#include "exportviewcontroller.h"

#include "app/log.h"
#include "exchange/exportfilewriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryDir>
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

namespace {

// The user's runtime folder when there is one (private by definition), else
// the cache; the staging folder itself is made 0700 either way.
QString stagingRoot()
{
    for (auto location : {QStandardPaths::RuntimeLocation, QStandardPaths::CacheLocation}) {
        const QString dir = QStandardPaths::writableLocation(location);
        if (!dir.isEmpty() && QDir().mkpath(dir))
            return dir;
    }
    return QDir::tempPath();
}

} // namespace

QString ExportViewController::dataFilePath() const
{
    return m_staging ? m_staging->filePath(QLatin1String(ExportFileWriter::kFileName)) : QString();
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
    m_staging = std::make_unique<QTemporaryDir>(QDir(stagingRoot()).filePath(QStringLiteral("tomewise-export-XXXXXX")));
    if (!m_staging->isValid()) {
        fail(m_staging->errorString());
        return;
    }
    m_file = std::make_unique<QFile>(dataFilePath());
    if (!m_file->open(QIODevice::WriteOnly)) {
        fail(m_file->errorString());
        return;
    }
    m_writer = std::make_unique<ExportFileWriter>(context(), app().dateText(), m_file.get());
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
    m_display = m_writer->displayText();
    m_writer.reset();
    if (!m_file->flush()) {
        fail(m_file->errorString());
        return;
    }
    m_file->close();
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
    m_file.reset();
    m_staging.reset();
    Q_EMIT progressChanged();
    const QString message = QStringLiteral("Export failed with error: ") + error;
    qCWarning(lcExchange).noquote() << message;
    setButtons(false, false, false);
    showAlert(QStringLiteral("Data Export Error"), message);
    Q_EMIT built(false);
}

bool ExportViewController::writeDataFile(QIODevice &out, QString *error) const
{
    QFile in(dataFilePath());
    if (!in.open(QIODevice::ReadOnly)) {
        if (error)
            *error = in.errorString();
        return false;
    }
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(1 << 20);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError) {
            if (error)
                *error = in.errorString();
            return false;
        }
        if (out.write(chunk) != chunk.size()) {
            if (error)
                *error = out.errorString();
            return false;
        }
    }
    return true;
}

bool ExportViewController::writeDataFile(const QString &path, QString *error) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    if (!writeDataFile(file, error))
        return false;
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

void ExportViewController::SaveToFiles()
{
    const QString path = dataFilePath();
    qCInfo(lcExchange).noquote() << path;
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        qCWarning(lcExchange).noquote() << QStringLiteral("Export failed with error: The file is no longer there.");
        return;
    }
    ShareItems items;
    items.files = {QUrl::fromLocalFile(path)};
    items.excludedActivities = excludedActivities();
    app().platform().share(items);
}

void ExportViewController::saveCopy(const QUrl &destination, bool replace)
{
    const QString target = destination.toLocalFile();
    if (!target.isEmpty() && !replace && QFileInfo::exists(target)) {
        showAlert(QStringLiteral("Save To Files"),
                  QStringLiteral("“%1” already exists. Replace it?").arg(QFileInfo(target).fileName()),
                  {{QStringLiteral("Yes"), AlertAction::Style::Default, [this, target] { copyTo(target); }},
                   {QStringLiteral("No"), AlertAction::Style::Cancel, {}}});
        return;
    }
    copyTo(target);
}

void ExportViewController::copyTo(const QString &path)
{
    QString error = QStringLiteral("No file was chosen.");
    if (!path.isEmpty() && writeDataFile(path, &error)) {
        qCInfo(lcExchange).noquote() << path;
        showAlert(QStringLiteral("Save To Files"), QStringLiteral("The export file was saved to %1").arg(path));
        return;
    }
    const QString message = QStringLiteral("Export failed with error: ") + error;
    qCWarning(lcExchange).noquote() << message;
    showAlert(QStringLiteral("Data Export Error"), message);
}

void ExportViewController::WriteTextFile()
{
    const QString path = dataFilePath();
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        QString shown = QString::fromUtf8(file.read(kShownChars));
        if (!file.atEnd())
            shown += QStringLiteral("\n…");
        setExportText(shown);
    } else {
        qCWarning(lcExchange).noquote() << "Export failed with error: " + file.errorString();
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
