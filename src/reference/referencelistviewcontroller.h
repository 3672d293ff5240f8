#pragma once

#include "app/screencontroller.h"

#include <QVariantList>

namespace tomewise {

// The "Reference List" hub: one button per reference list.
class ReferenceListViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QVariantList Buttons READ buttons CONSTANT)

public:
    struct Button
    {
        const char *outlet;
        const char *title;
        const char *icon;   // Material icon name
        const char *target; // the list it opens
    };
    static const QList<Button> &buttonList();

    explicit ReferenceListViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    QVariantList buttons() const;
    Q_INVOKABLE void openList(int index);
};

} // namespace tomewise
