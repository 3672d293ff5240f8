#pragma once

#include "app/appdelegate.h"
#include "platform/recordingplatform.h"

#include <QList>
#include <QString>

#include <memory>

namespace tomewise::benchlib {

// The library sizes named on the command line, or 10,000 and 100,000.
inline QList<int> librarySizes(int argc, char *argv[])
{
    QList<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes << QString::fromLatin1(argv[i]).toInt();
    return sizes.isEmpty() ? QList<int>{10000, 100000} : sizes;
}

// The app over the library in `directory`, in New York as the sqlite3
// shell's localtime is (TZ set by the caller).
inline std::unique_ptr<AppDelegate> benchApp(const QString &directory, double delayScale = 1.0)
{
    AppDelegate::Options options;
    options.dataDirectory = directory;
    options.locale = QStringLiteral("en_US");
    options.timeZone = "America/New_York";
    options.platform = std::make_unique<RecordingPlatform>();
    options.delayScale = delayScale;
    return std::make_unique<AppDelegate>(std::move(options));
}

} // namespace tomewise::benchlib
