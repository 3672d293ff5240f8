#pragma once

#include "browse/bookwindowmodel.h"
#include "browse/liststylesortoption.h"

namespace tomewise {

class DateText;

// The list-style list's rows: the cards of the books in the current sort
// option, each card's label texts worked out as its row is fetched. Covers
// are not held; a row names its cover's image address.
class ListStyleModel : public BookWindowModel
{
    Q_OBJECT

public:
    enum Role {
        LabelRole = FirstOwnRole,     // TopLabel .. NotesLabel follow
        AttributeRole = LabelRole + 6, // the Books attributes follow, in model order
    };

    explicit ListStyleModel(QObject *parent = nullptr);

    // The option and date texts the cards are written with.
    void setOption(const ListStyleSortOption &option, const DateText &dates);
    const ListStyleSortOption &option() const { return *m_option; }

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    QString label(int row, int slot) const;
    QStringList labels(int row) const;

private:
    QString fill(const char *pattern, const Books &book) const;
    QString dateMedium(const Books &book) const;

    const ListStyleSortOption *m_option = &kListStyleSortOptions[0];
    const DateText *m_dates = nullptr;
    mutable QHash<qint64, QString> m_dayTexts; // medium date of each dateRead seen
};

} // namespace tomewise
