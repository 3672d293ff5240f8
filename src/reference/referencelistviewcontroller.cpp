#include "referencelistviewcontroller.h"

#include "reference/referencekind.h"

namespace tomewise {

const QList<ReferenceListViewController::Button> &ReferenceListViewController::buttonList()
{
    static const QList<Button> list{
        {"GenreButton", "Genre", "category", referenceKind(ReferenceKind::Genre).listTarget},
        {"RatingButton", "Rating", "star_rate", referenceKind(ReferenceKind::Rating).listTarget},
        {"SeriesButton", "Series", "collections_bookmark", referenceKind(ReferenceKind::Series).listTarget},
    };
    return list;
}

ReferenceListViewController::ReferenceListViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Reference List"));
}

QVariantList ReferenceListViewController::buttons() const
{
    QVariantList list;
    for (const auto &b : buttonList()) {
        list.append(QVariantMap{{QStringLiteral("outlet"), QLatin1String(b.outlet)},
                                {QStringLiteral("title"), QLatin1String(b.title)},
                                {QStringLiteral("icon"), QLatin1String(b.icon)},
                                {QStringLiteral("target"), QLatin1String(b.target)}});
    }
    return list;
}

void ReferenceListViewController::openList(int index)
{
    if (index < 0 || index >= buttonList().size())
        return;
    Q_EMIT navigate(QLatin1String(buttonList()[index].target));
}

} // namespace tomewise
