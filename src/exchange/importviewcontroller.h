#pragma once

#include "app/screencontroller.h"
#include "exchange/importfilereader.h"
#include "exchange/serviceimport.h"

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
    // Set for a Goodreads or StoryGraph export ("Goodreads library export").
    Q_PROPERTY(QString fileKind READ fileKind NOTIFY documentChanged)
    Q_PROPERTY(bool includeUnread READ includeUnread WRITE setIncludeUnread NOTIFY documentChanged)
    // The rows of the last service import that were not imported or lack a date.
    Q_PROPERTY(QString notesText READ notesText NOTIFY documentChanged)

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
    bool busy() const { return m_reader || m_serviceRunning; }
    double progress() const { return m_progress; }
    int resultCount() const { return m_resultCount; }
    // Records of the last import that did not reach the store: refused by
    // it, or without a title or an author.
    int failedCount() const { return m_failed; }
    int namelessCount() const { return m_nameless; }
    const QList<ImportFileReader::NotSaved> &notSaved() const { return m_notSaved; }
    QString fileKind() const;
    bool includeUnread() const { return m_includeUnread; }
    void setIncludeUnread(bool include);
    QString notesText() const { return m_notesText; }
    // The import of another service's file, once it is chosen.
    const ServiceImport *serviceImport() const { return m_service.get(); }


    Q_INVOKABLE void viewDidLoad();
    // The picker is the page's: this asks for it.
    Q_INVOKABLE void LoadFile();
    Q_INVOKABLE void documentPicker(const QUrl &url);
    Q_INVOKABLE void documentPickerWasCancelled() {}
    Q_INVOKABLE void ImportTextFile();
    // Saves the list of rows not imported as a text file; asks before
    // replacing one unless told to.
    Q_INVOKABLE bool saveNotes(const QUrl &url, bool replace = false);

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
    void previewService();
    void importNextServiceBatch();

    std::unique_ptr<ImportFileReader> m_reader;
    std::unique_ptr<QFile> m_file;
    QString m_documentPath;
    QString m_shownText;
    QList<ImportFileReader::NotSaved> m_notSaved;
    int m_failed = 0;
    int m_nameless = 0;

    std::unique_ptr<ServiceImport> m_service;
    bool m_includeUnread = false;
    bool m_serviceRunning = false;
    QString m_notesText;

    QString m_filename;
    int m_wrongFile = 2;
    int m_resultCount = 0;
    bool m_loadEnabled = true;
    bool m_importEnabled = false;
    double m_progress = 0;
};

} // namespace tomewise
