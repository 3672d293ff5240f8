#pragma once

#include "app/screencontroller.h"

#include <QUrl>

namespace tomewise {

// Shows the bundled user guide.
class OverviewViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QUrl documentUrl READ documentUrl CONSTANT)

public:
    static constexpr auto kResource = ":/resources/Overview.pdf";

    explicit OverviewViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);
    QUrl documentUrl() const;

    // A build without the guide is broken; it stops here rather than show nothing.
    Q_INVOKABLE void viewDidLoad();
};

} // namespace tomewise
