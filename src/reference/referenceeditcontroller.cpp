#include "referenceeditcontroller.h"

#include "app/log.h"

namespace tomewise {

ReferenceEditController::ReferenceEditController(ReferenceKind kind, AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
    , m_info(referenceKind(kind))
{
    setTitle(QLatin1String(m_info.editTitle));
}

void ReferenceEditController::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
}

QVariant ReferenceEditController::passedEntryName() const
{
    return m_passedEntry ? QVariant(*m_passedEntry) : QVariant();
}

void ReferenceEditController::setPassedEntryName(const QVariant &name)
{
    setPassedEntry(name.isValid() && !name.isNull() ? Text(name.toString()) : Text());
}

void ReferenceEditController::setPassedEntry(const Text &name)
{
    if (m_passedEntry == name)
        return;
    m_passedEntry = name;
    Q_EMIT passedEntryChanged();
}

void ReferenceEditController::viewDidLoad()
{
    if (m_info.editGetsEntry)
        m_currentName = m_passedEntry;
    else
        m_currentName = app().state().selectedSeriesName();
    setText(m_currentName.value_or(QString()));
}

void ReferenceEditController::save()
{
    FetchRequest request;
    request.entity = m_info.entity;
    request.predicates = {Predicate::equal(QLatin1String(m_info.attribute),
                                           m_currentName ? QVariant(*m_currentName) : QVariant())};
    QString error;
    const auto entries = context().fetchEntries(request, &error);
    if (!entries) {
        qCWarning(lcStore).noquote() << error;
    } else if (!entries->isEmpty()) {
        ReferenceEntry entry = entries->first();
        entry.value = m_text;
        logIfFailed(context().updateEntry(m_info.entity, entry));
    }
    Q_EMIT unwind(QLatin1String(m_info.unwindName));
}

} // namespace tomewise
