#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QFile>
#include <QSqlQuery>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

class TestBookStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyAttributeRoundTrips()
    {
        TestApp t;
        Books b;
        for (const auto &a : booksAttributes()) {
            switch (a.type()) {
            case AttributeType::String: setAttributeValue(b, a, QStringLiteral("é ^ \n %1").arg(QLatin1String(a.name))); break;
            case AttributeType::Integer: setAttributeValue(b, a, QVariant::fromValue<qint16>(-32768)); break;
            case AttributeType::Date:
                setAttributeValue(b, a, QDateTime(QDate(1969, 7, 20), QTime(20, 17, 40), Qt::UTC));
                break;
            case AttributeType::Binary: setAttributeValue(b, a, QByteArray("\0\1\2", 3)); break;
            }
        }
        t.insert(b);
        // Absent and empty stay apart, also for a text that is present but null.
        Books sparse = book(QStringLiteral("Title"), QString(QLatin1String("")));
        sparse.notes = QString();
        sparse.pictureImage = QByteArray();
        t.insert(sparse);
        sparse.notes = QString(QLatin1String(""));
        for (Books *x : {&b, &sparse})
            x->pk = 0;
        QList<Books> back = t.allBooks();
        for (Books &x : back)
            x.pk = 0;
        QCOMPARE(back, (QList<Books>{b, sparse}));
    }

    void parseInt16_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected"); // -1: none
        QTest::newRow("plain") << "1998" << 1998;
        QTest::newRow("largest") << "32767" << 32767;
        QTest::newRow("one too large") << "32768" << -1;
        QTest::newRow("smallest") << "-32768" << -32768;
        QTest::newRow("trailing letter") << "3a" << -1;
        QTest::newRow("leading blank") << " 12" << -1;
        QTest::newRow("empty") << "" << -1;
        QTest::newRow("huge") << "99999999999999999999" << -1;
        QTest::newRow("full date") << "2004-05-01" << -1;
    }

    void parseInt16()
    {
        QFETCH(QString, text);
        QFETCH(int, expected);
        const auto v = tomewise::parseInt16(text);
        QCOMPARE(v ? int(*v) : -1, expected);
    }

    void fetchFiltersAndSorts_data()
    {
        QTest::addColumn<QList<Predicate>>("predicates");
        QTest::addColumn<QList<SortDescriptor>>("sort");
        QTest::addColumn<QStringList>("expected");

        const QList<Predicate> none;
        QTest::newRow("store order") << none << QList<SortDescriptor>{} << QStringList{"b", "B", "a", "c", "nil"};
        // Code-point order: upper case before lower case; an absent value first.
        QTest::newRow("by name asc") << none << QList<SortDescriptor>{{"name", true}}
                                     << QStringList{"nil", "B", "a", "b", "c"};
        QTest::newRow("by name desc") << none << QList<SortDescriptor>{{"name", false}}
                                      << QStringList{"c", "b", "a", "B", "nil"};
        QTest::newRow("author then name") << none << QList<SortDescriptor>{{"author", true}, {"name", false}}
                                          << QStringList{"b", "a", "c", "nil", "B"};
        QTest::newRow("equal text") << QList<Predicate>{Predicate::equal("author", "X")} << QList<SortDescriptor>{}
                                    << QStringList{"b", "a"};
        QTest::newRow("equal is case-sensitive") << QList<Predicate>{Predicate::equal("name", "b")}
                                                 << QList<SortDescriptor>{} << QStringList{"b"};
        QTest::newRow("and") << QList<Predicate>{Predicate::equal("author", "X"), Predicate::equal("year", 2020)}
                             << QList<SortDescriptor>{} << QStringList{"a"};
        QTest::newRow("range") << QList<Predicate>{{"year", Predicate::Op::GreaterOrEqual, 2021}}
                               << QList<SortDescriptor>{{"year", true}} << QStringList{"c", "B"};
        QTest::newRow("absent") << QList<Predicate>{{"name", Predicate::Op::IsAbsent, {}}} << QList<SortDescriptor>{}
                                << QStringList{"nil"};
    }

    void fetchFiltersAndSorts()
    {
        QFETCH(QList<Predicate>, predicates);
        QFETCH(QList<SortDescriptor>, sort);
        QFETCH(QStringList, expected);

        TestApp t;
        struct Row { const char *name; const char *author; int year; };
        for (const Row &r : {Row{"b", "X", 2019}, Row{"B", "Z", 2022}, Row{"a", "X", 2020}, Row{"c", "Y", 2021},
                             Row{nullptr, "Y", 2018}}) {
            Books b;
            if (r.name)
                b.name = QLatin1String(r.name);
            b.author = QLatin1String(r.author);
            b.year = qint16(r.year);
            t.insert(b);
        }
        FetchRequest request;
        request.predicates = predicates;
        request.sortDescriptors = sort;
        QString error;
        const auto books = t.store().fetchBooks(request, &error);
        QVERIFY2(books, qPrintable(error));
        QStringList names;
        for (const auto &b : *books)
            names << b.name.value_or(QStringLiteral("nil"));
        QCOMPARE(names, expected);
        QCOMPARE(*t.store().count(request), expected.size());
    }

    void coversLoadOnlyWhenAsked()
    {
        TestApp t;
        Books with = book(QStringLiteral("With"), QStringLiteral("A"));
        with.pictureImage = encode(coverImage(), "jpeg", 90);
        with = t.insert(with);
        Books emptyCover = book(QStringLiteral("Empty"), QStringLiteral("A"));
        emptyCover.pictureImage = QByteArray();
        emptyCover = t.insert(emptyCover);
        t.insert(book(QStringLiteral("Without"), QStringLiteral("A")));

        for (const auto &b : t.allBooks(false))
            QVERIFY(!b.pictureImage);
        const auto loaded = t.allBooks(true);
        QCOMPARE(*loaded[0].pictureImage, *with.pictureImage);
        QVERIFY(loaded[1].pictureImage.has_value());
        QVERIFY(loaded[1].pictureImage->isEmpty());
        QVERIFY(!loaded[2].pictureImage);
        QCOMPARE(*t.store().cover(with.pk), *with.pictureImage);

        // Updating the other attributes keeps the cover; removing it is its own step.
        Books changed = loaded[0];
        changed.pictureImage.reset();
        changed.notes = QStringLiteral("read twice");
        QVERIFY(t.store().updateBook(changed));
        QVERIFY(t.store().cover(with.pk));
        QVERIFY(t.store().cover(emptyCover.pk));
        QVERIFY(t.store().setCover(emptyCover.pk, std::nullopt));
        QVERIFY(!t.store().cover(emptyCover.pk));

        // Deleting a book takes its cover with it.
        QVERIFY(t.store().deleteBook(with.pk));
        QCOMPARE(t.allBooks().size(), 2);
        QSqlQuery q(t.store().database());
        QVERIFY(q.exec(QStringLiteral("SELECT COUNT(*) FROM BooksPictureImage")) && q.next());
        QCOMPARE(q.value(0).toInt(), 0);
    }

    void referenceEntries()
    {
        TestApp t;
        for (const char *name : {"Crime", "crime", "Crime", ""}) {
            ReferenceEntry e{0, QString::fromUtf8(name)};
            QVERIFY(t.store().insertEntry(Entity::GenreList, e));
        }
        ReferenceEntry absent;
        QVERIFY(t.store().insertEntry(Entity::GenreList, absent));
        QCOMPARE(t.entryNames(Entity::GenreList), (QStringList{"Crime", "crime", "Crime", "", "<absent>"}));

        FetchRequest byName;
        byName.entity = Entity::GenreList;
        byName.predicates = {Predicate::equal(QStringLiteral("genre"), QStringLiteral("Crime"))};
        auto matches = *t.store().fetchEntries(byName);
        QCOMPARE(matches.size(), 2);
        matches[0].value = QStringLiteral("Noir");
        QVERIFY(t.store().updateEntry(Entity::GenreList, matches[0]));
        QVERIFY(t.store().deleteEntry(Entity::GenreList, matches[1].pk));
        QCOMPARE(t.entryNames(Entity::GenreList), (QStringList{"Noir", "crime", "", "<absent>"}));
        QVERIFY(t.entryNames(Entity::RatingList).isEmpty());
    }

    void transactionRollsBack()
    {
        TestApp t;
        {
            BookStore::Transaction outer(t.store());
            Books b = book(QStringLiteral("kept?"), QStringLiteral("A"));
            QVERIFY(t.store().insertBook(b)); // its own nested savepoint commits into the outer one
            // outer goes out of scope uncommitted
        }
        QVERIFY(t.allBooks().isEmpty());
        {
            BookStore::Transaction outer(t.store());
            Books b = book(QStringLiteral("kept"), QStringLiteral("A"));
            QVERIFY(t.store().insertBook(b));
            QVERIFY(outer.commit());
        }
        QCOMPARE(t.allBooks().size(), 1);
    }

    void refusesNewerOrBrokenFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("userVersion");
        QTest::addColumn<QString>("expected");
        QTest::newRow("not a database") << QByteArray("this is not SQLite, just text. ").repeated(200) << 0
                                        << "The store could not be read.";
        QTest::newRow("newer version") << QByteArray() << BookStore::kSchemaVersion + 1
                                       << "The store was made by a newer version of Tomewise.";
    }

    void refusesNewerOrBrokenFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, userVersion);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tomewise.sqlite"));
        if (userVersion) {
            BookStore s;
            QVERIFY(s.open(path));
            QSqlQuery q(s.database());
            QVERIFY(q.exec(QStringLiteral("PRAGMA user_version=%1").arg(userVersion)));
        } else {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(content);
        }
        BookStore store;
        QString userInfo;
        const auto r = store.open(path, &userInfo);
        QVERIFY(!r.ok);
        QCOMPARE(r.error, expected);
        QVERIFY(userInfo.contains(path));
    }
};

QTEST_GUILESS_MAIN(TestBookStore)
#include "tst_bookstore.moc"
