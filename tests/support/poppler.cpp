#include "poppler.h"

#include <QProcess>
#include <QRegularExpression>

namespace tomewise::test {

static QString run(const QString &tool, const QStringList &args)
{
    QProcess p;
    p.start(tool, args);
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

QString pdfText(const QString &path)
{
    return run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
}

QMap<QString, QString> pdfInfo(const QString &path)
{
    QMap<QString, QString> info;
    for (const QString &line : run(QStringLiteral("pdfinfo"), {path}).split(u'\n')) {
        const qsizetype colon = line.indexOf(u':');
        if (colon > 0)
            info.insert(line.left(colon), line.mid(colon + 1).trimmed());
    }
    return info;
}

QList<QSize> pdfImages(const QString &path)
{
    QList<QSize> sizes;
    // page num type width height ...; the first two lines are the header.
    const QStringList lines = run(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path}).split(u'\n');
    for (const QString &line : lines.mid(2)) {
        const QStringList f = line.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
        if (f.size() > 4 && f[2] == QLatin1String("image"))
            sizes << QSize(f[3].toInt(), f[4].toInt());
    }
    return sizes;
}

} // namespace tomewise::test
