#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

namespace tomewise {

// Which page each navigation target opens. A target whose screen is not built
// yet opens the "coming" page under its title.
class PageDirectory : public QObject
{
    Q_OBJECT
public:
    struct Page
    {
        const char *target;
        const char *qmlFile; // under qrc:/qml/pages/, or nullptr while the screen is coming
        const char *title;
    };
    static const QList<Page> &pages();

    using QObject::QObject;

    Q_INVOKABLE QUrl url(const QString &target) const;
    Q_INVOKABLE QString title(const QString &target) const;
    Q_INVOKABLE bool isBuilt(const QString &target) const;
    // Every page file, for the self-test.
    Q_INVOKABLE QStringList targets() const;
};

} // namespace tomewise
