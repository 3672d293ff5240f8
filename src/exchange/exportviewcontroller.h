#pragma once

#include "app/screencontroller.h"

#include <QUrl>

#include <memory>

class QFile;
class QTemporaryDir;

namespace tomewise {

class ExportFileWriter;

// Builds the export file once per visit into a private staging folder, shows
// its display text, and hands the file to the share sheet, a save dialog or
// the mail composer.
class ExportViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString HelpTextView READ helpText CONSTANT)
    Q_PROPERTY(QString ExportTextView READ exportText NOTIFY exportTextChanged)
    Q_PROPERTY(bool ExportButtonEnabled READ exportButtonEnabled NOTIFY buttonsChanged)
    Q_PROPERTY(bool SaveButtonEnabled READ saveButtonEnabled NOTIFY buttonsChanged)
    Q_PROPERTY(bool EmailButtonEnabled READ emailButtonEnabled NOTIFY buttonsChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY progressChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

public:
    static constexpr int kAlertDelayMs = 3000;
    // The text view shows at most this many characters of the file read back.
    static constexpr int kShownChars = 256 * 1024;
    static const QStringList &excludedActivities();

    explicit ExportViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);
    ~ExportViewController() override;

    static QString helpText();
    QString exportText() const { return m_exportText; }
    bool exportButtonEnabled() const { return m_exportEnabled; }
    bool saveButtonEnabled() const { return m_saveEnabled; }
    bool emailButtonEnabled() const { return m_emailEnabled; }
    bool busy() const { return bool(m_writer); }
    double progress() const { return m_progress; }

    // The built file, staged as "Tomewise.csv" in a folder only this user
    // can enter; empty before a build.
    QString dataFilePath() const;
    QString DataDisplayString() const { return m_display; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void CreateUpdateFile();
    Q_INVOKABLE void SaveToFiles();
    Q_INVOKABLE void WriteTextFile();
    Q_INVOKABLE void mailComposeController() {}
    // The desktop's save dialog: a copy of the file where the user chose,
    // after asking whether to replace a file that is there unless
    // `replace`; the alert says where it went or why it did not.
    Q_INVOKABLE void saveCopy(const QUrl &destination, bool replace = false);
    // Copies the built file atomically; false with the description on failure.
    bool writeDataFile(const QString &path, QString *error) const;
    bool writeDataFile(QIODevice &out, QString *error) const;

Q_SIGNALS:
    void exportTextChanged();
    void buttonsChanged();
    void progressChanged();
    // The build has ended (with the file, or with the error alert).
    void built(bool ok);

private:
    void buildNextBatch();
    void copyTo(const QString &path);
    void fail(const QString &error);
    void setExportText(const QString &text);
    void setButtons(bool exportEnabled, bool saveEnabled, bool emailEnabled);

    std::unique_ptr<QTemporaryDir> m_staging;
    std::unique_ptr<QFile> m_file;
    std::unique_ptr<ExportFileWriter> m_writer;
    QString m_display;
    QString m_exportText;
    bool m_exportEnabled = true;
    bool m_saveEnabled = false;
    bool m_emailEnabled = false;
    double m_progress = 0;
};

} // namespace tomewise
