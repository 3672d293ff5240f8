#include "bookscan.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <cmath>

namespace tomewise {

namespace {

// The first failure wins; every later read is skipped so the message names
// the key that actually broke the answer.
class Reader
{
public:
    bool failed() const { return !m_error.isEmpty(); }
    QString error() const { return m_error; }

    QJsonObject object(const QJsonValue &v, const QString &path)
    {
        if (!expect(v, QJsonValue::Object, "an object", path))
            return {};
        return v.toObject();
    }

    QString string(const QJsonObject &o, const char *key, const QString &path)
    {
        const QJsonValue v = required(o, key, path);
        return expect(v, QJsonValue::String, "a string", join(path, key)) ? v.toString() : QString();
    }

    std::optional<QString> optionalString(const QJsonObject &o, const char *key, const QString &path)
    {
        const auto v = optional(o, key);
        if (!v || !expect(*v, QJsonValue::String, "a string", join(path, key)))
            return std::nullopt;
        return v->toString();
    }

    qint64 integer(const QJsonObject &o, const char *key, const QString &path)
    {
        const QJsonValue v = required(o, key, path);
        if (!expect(v, QJsonValue::Double, "an integer", join(path, key)))
            return 0;
        // JSON has one number type; only whole numbers that fit 64 bits are integers.
        const double d = v.toDouble();
        if (std::trunc(d) != d || std::fabs(d) > 9007199254740992.0) {
            fail(QStringLiteral("expected an integer, found the number %1").arg(d), join(path, key));
            return 0;
        }
        return qint64(d);
    }

    QStringList strings(const QJsonObject &o, const char *key, const QString &path)
    {
        return stringArray(required(o, key, path), join(path, key));
    }

    std::optional<QStringList> optionalStrings(const QJsonObject &o, const char *key, const QString &path)
    {
        const auto v = optional(o, key);
        if (!v)
            return std::nullopt;
        QStringList list = stringArray(*v, join(path, key));
        return failed() ? std::nullopt : std::optional(list);
    }

    QJsonValue required(const QJsonObject &o, const char *key, const QString &path)
    {
        if (failed())
            return {};
        const auto it = o.constFind(QLatin1String(key));
        if (it == o.constEnd()) {
            m_error = QStringLiteral("The answer could not be read because a required key is missing. (key: %1)")
                          .arg(join(path, key));
            return {};
        }
        return *it;
    }

    // An absent key and a null value both mean "not given".
    std::optional<QJsonValue> optional(const QJsonObject &o, const char *key)
    {
        if (failed())
            return std::nullopt;
        const QJsonValue v = o.value(QLatin1String(key));
        if (v.isUndefined() || v.isNull())
            return std::nullopt;
        return v;
    }

    bool expect(const QJsonValue &v, QJsonValue::Type type, const char *what, const QString &path)
    {
        if (failed())
            return false;
        if (v.type() == type)
            return true;
        fail(QStringLiteral("expected %1, found %2").arg(QLatin1String(what), typeName(v)), path);
        return false;
    }

    void fail(const QString &what, const QString &path)
    {
        if (!failed())
            m_error = QStringLiteral("The answer could not be read because a value has the wrong type: %1. (key: %2)")
                          .arg(what, path);
    }

    static QString join(const QString &path, const char *key)
    {
        return path.isEmpty() ? QLatin1String(key) : path + QLatin1Char('.') + QLatin1String(key);
    }

    static QString index(const QString &path, qsizetype i)
    {
        return QStringLiteral("%1[%2]").arg(path).arg(i);
    }

private:
    QStringList stringArray(const QJsonValue &v, const QString &path)
    {
        if (!expect(v, QJsonValue::Array, "an array of strings", path))
            return {};
        QStringList list;
        const QJsonArray array = v.toArray();
        for (qsizetype i = 0; i < array.size(); ++i) {
            if (!expect(array.at(i), QJsonValue::String, "a string", index(path, i)))
                return {};
            list << array.at(i).toString();
        }
        return list;
    }

    static QString typeName(const QJsonValue &v)
    {
        switch (v.type()) {
        case QJsonValue::Null: return QStringLiteral("null");
        case QJsonValue::Bool: return QStringLiteral("a boolean");
        case QJsonValue::Double: return QStringLiteral("a number");
        case QJsonValue::String: return QStringLiteral("a string");
        case QJsonValue::Array: return QStringLiteral("an array");
        case QJsonValue::Object: return QStringLiteral("an object");
        case QJsonValue::Undefined: break;
        }
        return QStringLiteral("nothing");
    }

    QString m_error;
};

ImageURL readImageURL(Reader &r, const QJsonObject &o, const QString &path)
{
    ImageURL links;
    links.smallThumbnail = r.optionalString(o, "smallThumbnail", path);
    links.thumbnail = r.optionalString(o, "thumbnail", path);
    return links;
}

VolumeInfo readVolumeInfo(Reader &r, const QJsonObject &o, const QString &path)
{
    VolumeInfo info;
    info.title = r.string(o, "title", path);
    info.subtitle = r.optionalString(o, "subtitle", path);
    info.authors = r.strings(o, "authors", path);
    info.publishedDate = r.string(o, "publishedDate", path);
    info.pageCount = r.integer(o, "pageCount", path);
    info.language = r.optionalString(o, "language", path);
    info.publisher = r.optionalString(o, "publisher", path);
    info.description = r.optionalString(o, "description", path);
    info.categories = r.optionalStrings(o, "categories", path);
    if (const auto links = r.optional(o, "imageLinks")) {
        const QString linksPath = Reader::join(path, "imageLinks");
        const QJsonObject lo = r.object(*links, linksPath);
        if (!r.failed())
            info.imageLinks = readImageURL(r, lo, linksPath);
    }
    return info;
}

BookItem readBookItem(Reader &r, const QJsonObject &o, const QString &path)
{
    BookItem item;
    item.id = r.string(o, "id", path);
    const QString infoPath = Reader::join(path, "volumeInfo");
    const QJsonObject info = r.object(r.required(o, "volumeInfo", path), infoPath);
    if (!r.failed())
        item.volumeInfo = readVolumeInfo(r, info, infoPath);
    return item;
}

} // namespace

BookScan::Decoded BookScan::decode(const QByteArray &json)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        return {std::nullopt,
                QStringLiteral("The answer could not be read because it is not valid JSON: %1 at offset %2.")
                    .arg(parseError.errorString())
                    .arg(parseError.offset)};
    }

    Reader r;
    // A bare scalar is no document for QJsonDocument; treat it like any other non-object.
    const QJsonValue root = document.isObject() ? QJsonValue(document.object())
                                                : document.isArray() ? QJsonValue(document.array())
                                                                     : QJsonValue();
    const QJsonObject top = r.object(root, QStringLiteral("(top level)"));
    BookScan scan;
    if (const auto items = r.optional(top, "items")) {
        if (r.expect(*items, QJsonValue::Array, "an array", QStringLiteral("items"))) {
            QList<BookItem> list;
            const QJsonArray array = items->toArray();
            for (qsizetype i = 0; i < array.size() && !r.failed(); ++i) {
                const QString path = Reader::index(QStringLiteral("items"), i);
                const QJsonObject o = r.object(array.at(i), path);
                if (!r.failed())
                    list << readBookItem(r, o, path);
            }
            scan.items = list;
        }
    }
    if (r.failed())
        return {std::nullopt, r.error()};
    return {scan, QString()};
}

} // namespace tomewise
