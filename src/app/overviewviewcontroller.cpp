#include "overviewviewcontroller.h"

#include <QFile>

namespace tomewise {

OverviewViewController::OverviewViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("My Tomewise Overview"));
}

QUrl OverviewViewController::documentUrl() const
{
    return QUrl(QStringLiteral("qrc") + QLatin1String(kResource));
}

void OverviewViewController::viewDidLoad()
{
    if (!QFile::exists(QLatin1String(kResource)))
        qFatal("The user guide resource Overview.pdf is missing");
}

} // namespace tomewise
