#include "referenceaddcontroller.h"

#include "app/log.h"

namespace tomewise {

ReferenceAddController::ReferenceAddController(ReferenceKind kind, AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(referenceKind(kind))
{
    setTitle(QLatin1String(m_info.addTitle));
}

void ReferenceAddController::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
}

void ReferenceAddController::viewDidLoad()
{
    FetchRequest request;
    request.entity = m_info.entity;
    QString error;
    const auto entries = context().fetchEntries(request, &error);
    if (!entries) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    m_names.clear();
    for (const auto &entry : *entries) {
        if (entry.value)
            m_names.append(*entry.value);
    }
}

QString ReferenceAddController::trimmedBlanks(const QString &text)
{
    auto blank = [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; };
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && blank(text.at(begin)))
        ++begin;
    while (end > begin && blank(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

void ReferenceAddController::save()
{
    const QString notSaved = QStringLiteral("Record not Saved!");
    if (m_text.isEmpty()) {
        showAlert(notSaved, QLatin1String(m_info.notEnteredMessage));
        return;
    }
    if (m_names.contains(m_text)) {
        showAlert(notSaved, QStringLiteral("Duplicates not allowed"));
        return;
    }
    ReferenceEntry entry;
    entry.value = trimmedBlanks(m_text);
    logIfFailed(context().insertEntry(m_info.entity, entry));
    Q_EMIT unwind(QLatin1String(m_info.unwindName));
}

} // namespace tomewise
