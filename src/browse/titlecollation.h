#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace tomewise {

// Titles as the locale's alphabet orders and files them: an ICU sort key for
// ordering, and the index letter a title is filed under ("Émile" under "E",
// digits and symbols under "#").
class TitleCollation
{
public:
    explicit TitleCollation(const QString &locale);
    ~TitleCollation();
    TitleCollation(const TitleCollation &) = delete;
    TitleCollation &operator=(const TitleCollation &) = delete;

    QByteArray sortKey(const QString &title) const;
    QString section(const QString &title) const;
    // The section's place in the index ("#" last) followed by the sort key:
    // ordering by it keeps each section's titles together.
    // `rank` is the section's place; sectionLabel() names it.
    QByteArray orderKey(const QString &title, int *rank) const;
    QString sectionLabel(int rank) const;
    // The index letters of the locale's alphabet, "#" last.
    QStringList letters() const;
    QString locale() const { return m_locale; }

private:
    static constexpr int kOtherRank = 0xffff; // "#", after every letter
    struct Icu;
    std::unique_ptr<Icu> m_icu;
    QString m_locale;
};

} // namespace tomewise
