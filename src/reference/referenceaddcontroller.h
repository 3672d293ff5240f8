#pragma once

#include "app/screencontroller.h"
#include "reference/referencekind.h"

namespace tomewise {

// The add screen of one reference list: the empty and duplicate tests look at
// the text as typed; only the stored name is trimmed.
class ReferenceAddController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString textFieldName READ textFieldName CONSTANT)

public:
    ReferenceAddController(ReferenceKind kind, AppDelegate *delegate, QObject *parent);

    const ReferenceKindInfo &info() const { return m_info; }
    QString text() const { return m_text; }
    void setText(const QString &text);
    QString textFieldName() const { return QLatin1String(m_info.textFieldName); }
    // The existing names, for the duplicate test.
    const QStringList &existingNames() const { return m_names; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void save();

    // Leading and trailing blanks and tabs, not line breaks.
    static QString trimmedBlanks(const QString &text);

Q_SIGNALS:
    void textChanged();

private:
    const ReferenceKindInfo &m_info;
    QString m_text;
    QStringList m_names;
};

} // namespace tomewise
