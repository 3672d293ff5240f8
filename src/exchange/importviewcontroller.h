#pragma once

#include "app/screencontroller.h"
#include "exchange/importfilereader.h"

#include <QUrl>

class QFile;

#include <memory>
#include <optional>

namespace tomewise {


// Loads a chosen export file, shows its beginning, and imports it in batches
// with progress straight from the file, then reports and returns to the menu.
class ImportViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString HelpTextView READ helpText CONSTANT)
    Q_PROPERTY(QString ImportTextView READ importText NOTIFY documentChanged)
    Q_PROPERTY(bool LoadFileButtonEnabled READ loadFileButtonEnabled NOTIFY buttonsChanged)
    Q_PROPERTY(bool ImportButtonEnabled READ importButtonEnabled NOTIFY buttonsChanged)
    Q_PROPERTY(QString filename READ filename NOTIFY documentChanged)
    Q_PROPERTY(int wrongFile READ wrongFile NOTIFY wrongFileChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY progressChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

public:
    explicit ImportViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);
    ~ImportViewController() override;

    // The text view shows at most this many characters of the file.
    static constexpr int kShownChars = 256 * 1024;

    static QString helpText();
    QString importText() const { return m_shownText; }
    // The chosen file, once it has been read as text; empty before.
    QString documentPath() const { return m_documentPath; }
    bool loadFileButtonEnabled() const { return m_loadEnabled; }
    bool importButtonEnabled() const { return m_importEnabled; }
    QString filename() const { return m_filename; }
    int wrongFile() const { return m_wrongFile; }
    bool busy() const { return bool(m_reader); }
    double progress() const { return m_progress; }
    int resultCount() const { return m_resultCount; }
    // Records of the last import that did not reach the store: refused by
    // it, or without a title or an author.
    int failedCount() const { return m_failed; }
    int namelessCount() const { return m_nameless; }
    const QList<ImportFileReader::NotSaved> &notSaved() const { return m_notSaved; }


    Q_INVOKABLE void viewDidLoad();
    // The picker is the page's: this asks for it.
    Q_INVOKABLE void LoadFile();
    Q_INVOKABLE void documentPicker(const QUrl &url);
    Q_INVOKABLE void documentPickerWasCancelled() {}
    Q_INVOKABLE void ImportTextFile();

Q_SIGNALS:
    void documentChanged();
    void buttonsChanged();
    void wrongFileChanged();
    void progressChanged();
    void presentDocumentPicker();
    // The import has run and its closing alert is up.
    void imported();

private:
    void importNextBatch();
    void report();
    void setButtons(bool loadEnabled, bool importEnabled);

    std::unique_ptr<ImportFileReader> m_reader;
    std::unique_ptr<QFile> m_file;
    QString m_documentPath;
    QString m_shownText;
    QList<ImportFileReader::NotSaved> m_notSaved;
    int m_failed = 0;
    int m_nameless = 0;

    QString m_filename;
    int m_wrongFile = 2;
    int m_resultCount = 0;
    bool m_loadEnabled = true;
    bool m_importEnabled = false;
    double m_progress = 0;
};

} // namespace tomewise
