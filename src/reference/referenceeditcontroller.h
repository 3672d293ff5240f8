#pragma once

#include "app/screencontroller.h"
#include "reference/referencekind.h"

#include <QVariant>

namespace tomewise {

// The edit screen of one reference list: renames the first entry with the
// current name to the text as typed. Books keep the names they carry.
class ReferenceEditController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString textFieldName READ textFieldName CONSTANT)
    // The entry's name handed over by the list (genre and rating); undefined when absent.
    Q_PROPERTY(QVariant passedEntryName READ passedEntryName WRITE setPassedEntryName NOTIFY passedEntryChanged)

public:
    ReferenceEditController(ReferenceKind kind, AppDelegate *delegate, QObject *parent);

    const ReferenceKindInfo &info() const { return m_info; }
    QString text() const { return m_text; }
    void setText(const QString &text);
    QString textFieldName() const { return QLatin1String(m_info.textFieldName); }
    QVariant passedEntryName() const;
    void setPassedEntryName(const QVariant &name);
    void setPassedEntry(const Text &name);
    const Text &currentName() const { return m_currentName; }

    // Fills the text field with the current name.
    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void save();

Q_SIGNALS:
    void textChanged();
    void passedEntryChanged();

private:
    const ReferenceKindInfo &m_info;
    QString m_text;
    Text m_passedEntry;
    Text m_currentName;
};

} // namespace tomewise
