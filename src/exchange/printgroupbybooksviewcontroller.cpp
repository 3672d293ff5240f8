#include "printgroupbybooksviewcontroller.h"

#include "app/log.h"
#include "exchange/reportbuilder.h"

#include <QApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>

namespace tomewise {

// The desktop's print dialog needs the widgets application; elsewhere (tests,
// the command line) nothing can be shown and the print is cancelled.
static bool showPrintDialog(QPrinter &printer)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return false;
    QPrintDialog dialog(&printer);
    dialog.setWindowTitle(QStringLiteral("Print Report"));
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange
                      | QAbstractPrintDialog::PrintCollateCopies | QAbstractPrintDialog::PrintShowPageSize);
    return dialog.exec() == QDialog::Accepted;
}

PrintGroupByBooksViewController::PrintGroupByBooksViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_printDialog(showPrintDialog)
{
    setTitle(QStringLiteral("Print Report"));
}

PrintGroupByBooksViewController::~PrintGroupByBooksViewController() = default;

void PrintGroupByBooksViewController::viewDidLoad()
{
    m_builder = std::make_unique<ReportBuilder>(context());
    QString error;
    if (!m_builder->fetch(app().state().callingScreen(), app().state(), &error))
        qCWarning(lcExchange).noquote() << error;
    Q_EMIT documentChanged();
}

QTextDocument *PrintGroupByBooksViewController::document() const
{
    return m_builder ? &m_builder->document() : nullptr;
}

qsizetype PrintGroupByBooksViewController::bookCount() const
{
    return m_builder ? m_builder->bookList().size() : 0;
}

QString PrintGroupByBooksViewController::plainText() const
{
    return m_builder && m_built ? m_builder->plainText() : QString();
}

double PrintGroupByBooksViewController::progress() const
{
    const qsizetype n = bookCount();
    return n ? double(std::max<qsizetype>(0, m_builder->booksDone())) / double(n) : 0;
}

QString PrintGroupByBooksViewController::progressText() const
{
    return QStringLiteral("%1 of %2 books").arg(m_builder ? std::max<qsizetype>(0, m_builder->booksDone()) : 0)
        .arg(bookCount());
}

bool PrintGroupByBooksViewController::startBuild()
{
    if (m_built || m_busy || !m_builder)
        return false;
    if (m_builder->bookList().isEmpty()) {
        showAlert(QStringLiteral("Empty Data Set!"), QStringLiteral("No Books to Print!"));
        return false;
    }
    return true;
}

void PrintGroupByBooksViewController::CreateFileButtonTapped()
{
    if (!startBuild())
        return;
    m_busy = true;
    Q_EMIT progressChanged();
    buildNextBatch();
}

void PrintGroupByBooksViewController::buildNextBatch()
{
    const bool more = m_builder->step(ReportBuilder::kBatch);
    if (more) {
        Q_EMIT progressChanged();
        // Back to the event loop between batches, so the screen stays live.
        QTimer::singleShot(0, this, [this] { buildNextBatch(); });
        return;
    }
    finishBuild();
}

void PrintGroupByBooksViewController::buildNow()
{
    if (!startBuild())
        return;
    m_builder->buildAll();
    finishBuild();
}

void PrintGroupByBooksViewController::finishBuild()
{
    m_busy = false;
    m_built = true;
    Q_EMIT progressChanged();
    Q_EMIT fileTextViewChanged();
    Q_EMIT builtChanged();
}

bool PrintGroupByBooksViewController::printTo(QPrinter &printer)
{
    if (!m_builder)
        return false;
    CoverDocument &document = m_builder->document();
    document.setDocumentMargin(0);
    // The printer's margins frame the page; the report fills what is inside.
    document.setPageSize(printer.pageLayout().paintRect(QPageLayout::Point).size());
    if (!document.print(printer)) {
        qCWarning(lcExchange).noquote() << "The printer could not start";
        return false;
    }
    qCInfo(lcExchange).noquote() << "Image is Printed";
    return true;
}

void PrintGroupByBooksViewController::PrintButtonTapped()
{
    if (!m_built)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QStringLiteral("Tomewise Report"));
    printer.setColorMode(QPrinter::Color);
    if (m_printDialog && m_printDialog(printer))
        printTo(printer);
}

void PrintGroupByBooksViewController::ShareButtonTapped()
{
    if (!canSendTextOrAlert())
        return;
    ShareItems items;
    items.text = plainText();
    app().platform().share(items);
}

} // namespace tomewise
