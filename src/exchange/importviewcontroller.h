#pragma once

#include "app/screencontroller.h"

#include <QUrl>

#include <memory>
#include <optional>

namespace tomewise {

class ImportFileReader;

// Loads a chosen export file, shows it, and imports it in batches with
// progress, then reports and returns to the menu.
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

    static QString helpText();
    QString importText() const { return m_document.value_or(QString()); }
    std::optional<QString> document() const { return m_document; }
    bool loadFileButtonEnabled() const { return m_loadEnabled; }
    bool importButtonEnabled() const { return m_importEnabled; }
    QString filename() const { return m_filename; }
    int wrongFile() const { return m_wrongFile; }
    bool busy() const { return bool(m_reader); }
    double progress() const { return m_progress; }
    int resultCount() const { return m_resultCount; }

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
    std::optional<QString> m_document;
    QString m_filename;
    int m_wrongFile = 2;
    int m_resultCount = 0;
    bool m_loadEnabled = true;
    bool m_importEnabled = false;
    double m_progress = 0;
};

} // namespace tomewise
