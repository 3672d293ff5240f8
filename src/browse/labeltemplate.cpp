#include "labeltemplate.h"

namespace tomewise {

QString fillLabel(const char *pattern, const Books &book, const std::function<QString()> &dateRead)
{
    const QString p = QLatin1String(pattern);
    QString out;
    qsizetype i = 0;
    while (i < p.size()) {
        const qsizetype open = p.indexOf(u'{', i);
        if (open < 0) {
            out += QStringView(p).mid(i);
            break;
        }
        out += QStringView(p).mid(i, open - i);
        const qsizetype close = p.indexOf(u'}', open);
        const QStringView token = QStringView(p).mid(open + 1, close - open - 1);
        const qsizetype bar = token.indexOf(u'|');
        const QStringView name = bar < 0 ? token : token.left(bar);
        if (name == u"dateRead") {
            out += dateRead();
        } else if (const BooksAttribute *a = booksAttribute(name)) {
            const QVariant v = attributeValue(book, *a);
            if (!v.isValid() && bar >= 0)
                out += token.mid(bar + 1);
            else if (a->type() == AttributeType::Integer)
                out += QString::number(v.toInt());
            else
                out += v.toString();
        }
        i = close + 1;
    }
    return out;
}

} // namespace tomewise
