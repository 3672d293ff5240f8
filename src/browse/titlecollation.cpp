#include "titlecollation.h"

#include <QStringList>

#include <unicode/alphaindex.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace tomewise {

namespace {
icu::UnicodeString toIcu(const QString &s)
{
    return icu::UnicodeString(reinterpret_cast<const UChar *>(s.utf16()), int32_t(s.size()));
}
} // namespace

struct TitleCollation::Icu
{
    std::unique_ptr<icu::Collator> collator;
    std::unique_ptr<icu::AlphabeticIndex::ImmutableIndex> index;
};

TitleCollation::TitleCollation(const QString &locale)
    : m_icu(std::make_unique<Icu>())
    , m_locale(locale)
{
    const icu::Locale loc(locale.isEmpty() || locale == u"C" ? "en_US" : locale.toLatin1().constData());
    UErrorCode status = U_ZERO_ERROR;
    m_icu->collator.reset(icu::Collator::createInstance(loc, status));
    if (U_FAILURE(status) || !m_icu->collator) {
        status = U_ZERO_ERROR;
        m_icu->collator.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
    }
    status = U_ZERO_ERROR;
    icu::AlphabeticIndex alphabet(loc, status);
    if (U_SUCCESS(status))
        m_icu->index.reset(alphabet.buildImmutableIndex(status));
    if (U_FAILURE(status))
        m_icu->index.reset();
}

TitleCollation::~TitleCollation() = default;

QByteArray TitleCollation::sortKey(const QString &title) const
{
    if (!m_icu->collator)
        return title.toUtf8();
    const icu::UnicodeString s = toIcu(title);
    QByteArray key(64, Qt::Uninitialized);
    int32_t n = m_icu->collator->getSortKey(s, reinterpret_cast<uint8_t *>(key.data()), int32_t(key.size()));
    if (n > key.size()) {
        key.resize(n);
        n = m_icu->collator->getSortKey(s, reinterpret_cast<uint8_t *>(key.data()), int32_t(key.size()));
    }
    key.resize(qMax(0, n - 1)); // without the terminating zero
    return key;
}

QString TitleCollation::section(const QString &title) const
{
    int rank = 0;
    orderKey(title, &rank);
    return sectionLabel(rank);
}

QByteArray TitleCollation::orderKey(const QString &title, int *rank) const
{
    int r = kOtherRank;
    if (m_icu->index) {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t bucket = m_icu->index->getBucketIndex(toIcu(title), status);
        const icu::AlphabeticIndex::Bucket *b = U_SUCCESS(status) ? m_icu->index->getBucket(bucket) : nullptr;
        // Underflow (digits, symbols), overflow (other scripts) and inflow all go under "#".
        if (b && b->getLabelType() == U_ALPHAINDEX_NORMAL)
            r = bucket;
    }
    if (rank)
        *rank = r;
    QByteArray key;
    key.append(char(r >> 8)).append(char(r & 0xff));
    return key + sortKey(title);
}

QString TitleCollation::sectionLabel(int rank) const
{
    const icu::AlphabeticIndex::Bucket *b = m_icu->index && rank != kOtherRank ? m_icu->index->getBucket(rank) : nullptr;
    if (!b)
        return QStringLiteral("#");
    const icu::UnicodeString &label = b->getLabel();
    return QString(reinterpret_cast<const QChar *>(label.getBuffer()), label.length());
}

QStringList TitleCollation::letters() const
{
    QStringList out;
    if (m_icu->index) {
        for (int32_t i = 0; i < m_icu->index->getBucketCount(); ++i) {
            const auto *b = m_icu->index->getBucket(i);
            if (b && b->getLabelType() == U_ALPHAINDEX_NORMAL) {
                const icu::UnicodeString &label = b->getLabel();
                out << QString(reinterpret_cast<const QChar *>(label.getBuffer()), label.length());
            }
        }
    }
    out << QStringLiteral("#");
    return out;
}

} // namespace tomewise
