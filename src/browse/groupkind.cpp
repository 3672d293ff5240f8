#include "groupkind.h"

#include "model/books.h"

#include <QRegularExpression>

namespace tomewise {

const BooksAttribute &groupAttribute(const char *name)
{
    const BooksAttribute *a = booksAttribute(QString::fromLatin1(name));
    Q_ASSERT_X(a, "groupAttribute", name);
    return *a;
}

std::optional<GroupKind> groupKindNamed(QStringView name)
{
    for (const auto &k : kGroupKinds) {
        if (name == QLatin1String(k.name))
            return k.kind;
    }
    return std::nullopt;
}

std::optional<GroupKind> groupKindOfTarget(QStringView target)
{
    for (const auto &k : kGroupKinds) {
        if (target == QLatin1String(k.summaryTarget) || target == QLatin1String(k.breakdownTarget))
            return k.kind;
    }
    return std::nullopt;
}

static bool singular(Singular rule, qsizetype count, qsizetype values)
{
    switch (rule) {
    case Singular::Never: return false;
    case Singular::WhenZero: return count == 0;
    case Singular::WhenOne: return count == 1;
    case Singular::WhenOneOrNoValues: return count == 1 || values == 0;
    }
    return false;
}

QString groupHeader(const GroupHeaderRule &rule, qsizetype values, qsizetype shown, bool searching)
{
    const qsizetype count = searching && rule.searchShowsShown ? shown : values;
    const bool one = singular(searching ? rule.searching : rule.idle, count, values);
    return QLatin1String(rule.prefix) + QString::number(count)
        + QLatin1String(one ? rule.singular : rule.plural);
}

QList<Predicate> groupPredicates(const char *format, const QVariantList &arguments)
{
    static const QRegularExpression comparison(QStringLiteral("^(\\w+) (==|=|>=|<=|>|<) %@$"));
    QList<Predicate> list;
    if (!format)
        return list;
    int next = 0;
    const QString text = QLatin1String(format);
    for (const auto &part : text.split(QStringLiteral(" AND "))) {
        const auto m = comparison.match(part);
        Q_ASSERT_X(m.hasMatch(), "groupPredicates", format);
        const QString op = m.captured(2);
        Predicate p;
        p.attribute = m.captured(1);
        p.op = op.startsWith(u'=')               ? Predicate::Op::Equal
            : op == QLatin1String(">=")          ? Predicate::Op::GreaterOrEqual
            : op == QLatin1String("<=")          ? Predicate::Op::LessOrEqual
            : op == QLatin1String(">")           ? Predicate::Op::Greater
                                                 : Predicate::Op::Less;
        p.value = arguments.value(next++);
        const BooksAttribute *a = booksAttribute(p.attribute);
        if (a && a->type() == AttributeType::Integer && p.value.typeId() == QMetaType::QString) {
            bool ok = false;
            const qlonglong n = p.value.toString().toLongLong(&ok);
            // A text that is no number matches nothing, as comparing it with a number does.
            p.value = ok ? QVariant(n) : QVariant();
        }
        list << p;
    }
    return list;
}

} // namespace tomewise
