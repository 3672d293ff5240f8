#pragma once

#include "app/screencontroller.h"

#include <functional>
#include <memory>

class QPrinter;
class QTextDocument;

namespace tomewise {

class ReportBuilder;

// The printed report: on load it picks the books by callingScreen (the whole
// log from the menu, one group from a breakdown); the create button builds the
// report into the text view, which the print button prints and the share
// button offers as plain text.
class PrintGroupByBooksViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString FileTextView READ fileTextView NOTIFY fileTextViewChanged) // its plain text
    // The report as it grows, a batch of books at a time.
    Q_PROPERTY(QTextDocument *document READ document NOTIFY documentChanged)
    Q_PROPERTY(bool CreateFileButtonHidden READ createFileButtonHidden NOTIFY builtChanged)
    Q_PROPERTY(bool built READ isBuilt NOTIFY builtChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY progressChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)

public:
    // Shows the print dialog for the printer; false when the user cancels.
    using PrintDialog = std::function<bool(QPrinter &)>;

    explicit PrintGroupByBooksViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);
    ~PrintGroupByBooksViewController() override;

    QString fileTextView() const { return plainText(); }
    bool createFileButtonHidden() const { return m_built; }
    bool isBuilt() const { return m_built; }
    bool busy() const { return m_busy; }
    double progress() const;
    QString progressText() const;

    QTextDocument *document() const;
    qsizetype bookCount() const;
    QString plainText() const;
    void setPrintDialog(PrintDialog dialog) { m_printDialog = std::move(dialog); }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void CreateFileButtonTapped();
    Q_INVOKABLE void PrintButtonTapped();
    Q_INVOKABLE void ShareButtonTapped();
    // Builds without returning to the event loop (the command line).
    void buildNow();
    // Lays the report out on the printer's pages and prints it.
    bool printTo(QPrinter &printer);

Q_SIGNALS:
    void fileTextViewChanged();
    void documentChanged();
    void builtChanged();
    void progressChanged();

private:
    bool startBuild();
    void buildNextBatch();
    void finishBuild();

    std::unique_ptr<ReportBuilder> m_builder;
    PrintDialog m_printDialog;
    bool m_built = false;
    bool m_busy = false;
};

} // namespace tomewise
