// The Add Book form: opening date, pickers, digits-only fields, cover sources and the save.
#include "entry/newbookviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include <QSignalSpy>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

using Pairs = QList<std::pair<QString, QString>>;

class TestNewBook : public QObject
{
    Q_OBJECT

private:
    static void addEntries(TestApp &t, Entity entity, const QStringList &names)
    {
        for (const QString &name : names) {
            ReferenceEntry e;
            e.value = name;
            QVERIFY(t.store().insertEntry(entity, e));
        }
    }
    // The form as it opens, with a title and an author when given.
    static std::unique_ptr<NewBookViewController> openForm(TestApp &t, const QString &title = {},
                                                           const QString &author = {})
    {
        auto form = std::make_unique<NewBookViewController>(&t.app());
        form->viewDidLoad();
        form->setProperty("bookNameTextField", title);
        form->setProperty("bookAuthorTextField", author);
        return form;
    }

private Q_SLOTS:
    // The opening date as the settings give it; a default date text this
    // device no longer reads (written in another language) refuses the save.
    void openingDate_data()
    {
        QTest::addColumn<bool>("useDefault");
        QTest::addColumn<QString>("defaultDate");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QDate>("savedDay"); // invalid: refused
        QTest::newRow("default date") << true << "Jan 1, 2020" << "Jan 1, 2020" << QDate(2020, 1, 1);
        QTest::newRow("default off") << false << "Jan 1, 2020" << "Nov 21, 2026" << QDate(2026, 11, 21);
        QTest::newRow("default not understood") << true << "1 janv. 2020" << "1 janv. 2020" << QDate();
    }
    void openingDate()
    {
        QFETCH(bool, useDefault);
        QFETCH(QString, defaultDate);
        QFETCH(QString, shown);
        QFETCH(QDate, savedDay);
        TestApp t;
        t.app().userDefaults().setValue(SettingsKey::UseDefaultDate, useDefault);
        t.app().userDefaults().setValue(SettingsKey::DefaultDate, defaultDate);
        const auto form = openForm(t, QStringLiteral("Emma"), QStringLiteral("Jane Austen"));
        QCOMPARE(form->dateTextField(), shown);
        QCOMPARE(form->SaveNewBook(), savedDay.isValid());
        if (!savedDay.isValid()) {
            QCOMPARE(form->alertTitle(), QStringLiteral("Book Not Saved"));
            QCOMPARE(form->alertMessage(), NewBookViewController::kDateNotUnderstood);
            QVERIFY(t.allBooks().isEmpty());
            return;
        }
        const Books saved = t.allBooks().value(0);
        QCOMPARE(saved.dt, shown);
        QCOMPARE(saved.dateRead, t.app().dateText().startOfDay(savedDay.year(), savedDay.month(), savedDay.day()));
        QCOMPARE((QList<std::optional<qint16>>{saved.year, saved.month, saved.day}),
                 (QList<std::optional<qint16>>{savedDay.year(), savedDay.month(), savedDay.day()}));
    }

    void pickerDateIsLongStyle()
    {
        TestApp t;
        const auto form = openForm(t);
        form->dateChanged(2021, 3, 4);
        QCOMPARE(form->dateTextField(), QStringLiteral("March 4, 2021"));
        QSignalSpy ended(form.get(), &BookForm::editingEnded);
        form->doneClick();
        QCOMPARE(form->dateTextField(), QStringLiteral("March 4, 2021"));
        QCOMPARE(ended.size(), 1);
        form->todayClick();
        QCOMPARE(form->dateTextField(), QStringLiteral("November 21, 2026"));
        QCOMPARE(form->readDate(), t.app().dateText().startOfDay(2026, 11, 21).value());
    }

    void datePickerStyle_data()
    {
        QTest::addColumn<QStringList>("trueKeys");
        QTest::addColumn<int>("style");
        QTest::newRow("none") << QStringList{} << int(BookForm::Automatic);
        QTest::newRow("wheel") << QStringList{"UseDateWheel"} << int(BookForm::Wheels);
        QTest::newRow("compact") << QStringList{"UseDateCompact"} << int(BookForm::Compact);
        QTest::newRow("inline") << QStringList{"UseDateInline"} << int(BookForm::Inline);
        QTest::newRow("inline tested last") << QStringList{"UseDateWheel", "UseDateInline"} << int(BookForm::Inline);
    }
    void datePickerStyle()
    {
        QFETCH(QStringList, trueKeys);
        QFETCH(int, style);
        TestApp t;
        for (const auto &k : trueKeys)
            t.app().userDefaults().setValue(k.toLatin1().constData(), true);
        const auto form = openForm(t);
        QCOMPARE(form->datePickerStyle(), style);
    }

    void pickersFollowTheirTags()
    {
        TestApp t;
        addEntries(t, Entity::GenreList, {"Mystery", "Fantasy"});
        addEntries(t, Entity::RatingList, {"**", "*"});
        const auto form = openForm(t);
        QCOMPARE(form->pickerRows(BookForm::GenrePicker), (QStringList{"Fantasy", "Mystery"}));
        QCOMPARE(form->pickerRows(BookForm::RatingPicker), (QStringList{"*", "**"}));
        QCOMPARE(form->pickerRows(BookForm::BookFormatPicker),
                 (QStringList{"Hard Cover", "Paperback", "Leatherback", "Digital"}));
        QCOMPARE(form->numberOfRowsInComponent(BookForm::SeriesPicker), 0);
        QCOMPARE(form->numberOfRowsInComponent(7), 0);
        form->didSelectRow(BookForm::GenrePicker, 1);
        form->didSelectRow(BookForm::RatingPicker, 1);
        form->didSelectRow(BookForm::BookFormatPicker, 3);
        QCOMPARE((QStringList{form->property("bookCategoryTextField").toString(), form->property("RatingTextField").toString(),
                              form->property("BookFormatTextField").toString()}),
                 (QStringList{"Mystery", "**", "Digital"}));
    }

    void reappearingReloadsGenresAndSeriesButNotRatings()
    {
        TestApp t;
        const auto form = openForm(t);
        form->openViewControllerBasedOnIdentifier(QStringLiteral("GenreReferenceList"));
        addEntries(t, Entity::GenreList, {"Poetry"});
        addEntries(t, Entity::SeriesList, {"Dune"});
        addEntries(t, Entity::RatingList, {"***"});
        form->viewWillAppear();
        QCOMPARE(form->listOfGenre(), QStringList{"Poetry"});
        QCOMPARE(form->listOfSeries(), QStringList{"Dune"});
        QVERIFY(form->listOfRating().isEmpty());
    }

    void digitsOnly_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("typed digit") << "19" << "199" << true;
        QTest::newRow("typed letter") << "19" << "19a" << false;
        QTest::newRow("letter in the middle") << "1999" << "19x99" << false;
        QTest::newRow("deletion") << "1999" << "199" << true;
        QTest::newRow("pasted digits over all") << "12" << "345" << true;
        QTest::newRow("pasted with blank") << "" << "3 4" << false;
        QTest::newRow("minus sign") << "" << "-5" << false;
        QTest::newRow("cleared") << "123" << "" << true;
    }
    void digitsOnly()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(bool, accepted);
        QCOMPARE(BookForm::shouldChangeCharacters(before, after), accepted);
    }

    // Fields typed over a title "T" and an author "A", then saved: the
    // attributes as stored ("-" for absent), or none when the form refuses.
    void save_data()
    {
        QTest::addColumn<Pairs>("typed");
        QTest::addColumn<Pairs>("stored");
        QTest::newRow("no date") << Pairs{{"dateTextField", ""}} << Pairs{};
        QTest::newRow("no title") << Pairs{{"bookNameTextField", ""}} << Pairs{};
        QTest::newRow("no author") << Pairs{{"bookAuthorTextField", ""}} << Pairs{};
        QTest::newRow("blank title counts as filled") << Pairs{{"bookNameTextField", "   "}} << Pairs{{"author", "A"}};
        // Rating, format and notes are saved as they stand; 40000 pages is beyond 16 bits: left unset.
        QTest::newRow("trimming and numbers")
            << Pairs{{"bookNameTextField", "  The Hobbit \t"}, {"SubTitleTextField", " There and Back Again "},
                     {"bookAuthorTextField", " J. R. R. Tolkien "}, {"publishersNameTextField", " Allen & Unwin "},
                     {"ISBNTextField", " 9780261102217 "}, {"bookCategoryTextField", " Fantasy "},
                     {"SeriesTextField", " Middle-earth "}, {"SeriesNumberTextField", "3a"}, {"RatingTextField", " ***** "},
                     {"BookFormatTextField", " Paperback "}, {"NotesTextView", " Reread \n"},
                     {"datePublishedTextField", "1937"}, {"numberOfPagesTextField", "40000"}}
            << Pairs{{"name", "The Hobbit"}, {"subTitle", "There and Back Again"}, {"author", "J. R. R. Tolkien"},
                     {"bookPublisher", "Allen & Unwin"}, {"isbn", "9780261102217"}, {"category", "Fantasy"},
                     {"series", "Middle-earth"}, {"seriesNumber", "3"}, {"rating", " ***** "}, {"bookFormat", " Paperback "},
                     {"notes", " Reread \n"}, {"publishDate", "1937"}, {"numberPages", "-"}};
        const std::pair<const char *, const char *> seriesNumbers[] = {
            {"12", "12"}, {"Vol7", "7"}, {"b2c", "2"}, {"abc", "-"}, {"1a2", "-"}, {"32768", "-"}, {"32767", "32767"}};
        for (const auto &[text, number] : seriesNumbers)
            QTest::addRow("series number %s", text) << Pairs{{"SeriesNumberTextField", text}} << Pairs{{"seriesNumber", number}};
    }
    void save()
    {
        QFETCH(Pairs, typed);
        QFETCH(Pairs, stored);
        TestApp t;
        const auto form = openForm(t, QStringLiteral("T"), QStringLiteral("A"));
        for (const auto &[field, text] : typed)
            form->setProperty(field.toLatin1().constData(), text);
        QSignalSpy unwound(form.get(), &ScreenController::unwind);
        QSignalSpy notices(form.get(), &BookForm::notice);
        const bool saved = !stored.isEmpty();
        QCOMPARE(form->SaveNewBook(), saved);
        QCOMPARE(t.allBooks().size(), saved ? 1 : 0);
        QCOMPARE(unwound.size(), saved ? 1 : 0);
        QCOMPARE(notices.size(), saved ? 1 : 0);
        if (!saved) {
            QCOMPARE(form->alertTitle(), QStringLiteral("Book Not Saved"));
            QCOMPARE(form->alertMessage(), QStringLiteral("Required Fields Labeled in RED Not Entered"));
            QCOMPARE(form->alertButtons(), QStringList{"OK"});
            return;
        }
        const Books b = t.allBooks().value(0);
        QCOMPARE(unwound.value(0).value(0).toString(), QStringLiteral("unwindToMenu"));
        QCOMPARE(notices.value(0).value(0).toString(), QStringLiteral("Saved \u201C%1\u201D").arg(b.name.value_or("-")));
        QCOMPARE(form->alertTitle(), QString());
        for (const auto &[attribute, expected] : stored) {
            const QVariant value = attributeValue(b, *booksAttribute(attribute));
            QCOMPARE(value.isValid() ? value.toString() : QStringLiteral("-"), expected);
        }
    }

    void minimalSaveSetsOnlyThoseAttributes()
    {
        TestApp t;
        const auto form = openForm(t, QStringLiteral("Persuasion"), QStringLiteral("Jane Austen"));
        QVERIFY(form->SaveNewBook());
        const QList<Books> books = t.allBooks();
        QCOMPARE(books.size(), 1);
        Books expected;
        expected.pk = books[0].pk;
        expected.name = QStringLiteral("Persuasion");
        expected.author = QStringLiteral("Jane Austen");
        expected.dt = QStringLiteral("Nov 21, 2026");
        expected.dateRead = t.app().dateText().startOfDay(2026, 11, 21);
        expected.year = 2026;
        expected.month = 11;
        expected.day = 21;
        QCOMPARE(books[0], expected);
    }

    void coverOfAnyShapeIsStored125By180Jpeg_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("tall") << QSize(250, 360);
        QTest::newRow("wide") << QSize(800, 200);
        QTest::newRow("tiny") << QSize(3, 3);
    }
    void coverOfAnyShapeIsStored125By180Jpeg()
    {
        QFETCH(QSize, size);
        TestApp t;
        t.platform().clipboard = coverImage(size, 3);
        const auto form = openForm(t, QStringLiteral("T"), QStringLiteral("A"));
        form->PasteFromClipboard();
        QVERIFY(form->hasImage());
        QVERIFY(form->SaveNewBook());
        const QByteArray bytes = t.allBooks(true).value(0).pictureImage.value_or(QByteArray());
        QVERIFY(bytes.startsWith("\xFF\xD8\xFF"));
        const QImage stored = QImage::fromData(bytes, "JPEG");
        QCOMPARE(stored.size(), QSize(125, 180));
        // Quality 90 scales the first luminance quantiser (16) to 3; 75 would give 8.
        const qsizetype dqt = bytes.indexOf("\xFF\xDB");
        QVERIFY(dqt > 0);
        QCOMPARE(int(quint8(bytes.at(dqt + 5))), 3);
    }

    void coverSources()
    {
        TestApp t;
        const auto form = openForm(t);
        form->PasteFromClipboard();
        QCOMPARE(form->alertTitle(), QStringLiteral("Clipboard"));
        QCOMPARE(form->alertMessage(), QStringLiteral("There is no image in the Clipboard"));
        form->answerAlert(0);
        QVERIFY(!form->hasImage());

        QTemporaryDir dir;
        const QString png = dir.filePath(QStringLiteral("cover.png"));
        const QString text = dir.filePath(QStringLiteral("notes.txt"));
        QVERIFY(coverImage(QSize(40, 60)).save(png));
        QFile f(text);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("not a picture");
        f.close();
        QVERIFY(form->documentPicked(QUrl::fromLocalFile(png)));
        QCOMPARE(form->imageView().size(), QSize(40, 60));
        QVERIFY(!form->documentPicked(QUrl::fromLocalFile(text)));
        QCOMPARE(form->imageView().size(), QSize(40, 60)); // a non-image leaves the cover

        form->RemoveButtonTapped();
        QCOMPARE(form->alertTitle(), QStringLiteral("Remove Cover Image"));
        QCOMPARE(form->alertMessage(), QStringLiteral("Do You Want to Remove This Image?"));
        QCOMPARE(form->alertButtons(), (QStringList{"Yes", "No"}));
        form->answerAlert(1);
        QVERIFY(form->hasImage());
        form->RemoveButtonTapped();
        form->answerAlert(0);
        QVERIFY(!form->hasImage());
    }

    void camera_data()
    {
        QTest::addColumn<bool>("hasCamera");
        QTest::newRow("none") << false;
        QTest::newRow("one") << true;
    }
    void camera()
    {
        QFETCH(bool, hasCamera);
        TestApp t;
        t.platform().hasCamera = hasCamera;
        const auto form = openForm(t);
        QCOMPARE(form->cameraEnabled(), hasCamera);
        QSignalSpy requested(form.get(), &BookForm::cameraRequested);
        form->OpenCameraButtonTapped();
        QCOMPARE(requested.size(), hasCamera ? 1 : 0);
        const QStringList alert{form->alertTitle(), form->alertMessage()};
        const QStringList none(2, QString());
        QCOMPARE(alert, hasCamera ? none : QStringList({"Camera", "There is no camera available"}));
    }

    void failedSaveStillReturnsToMenu()
    {
        TestApp t;
        const auto form = openForm(t, QStringLiteral("T"), QStringLiteral("A"));
        QVERIFY(t.store().database().exec(QStringLiteral("DROP TABLE Books")).lastError().type()
                == QSqlError::NoError);
        LogCapture log;
        QSignalSpy unwound(form.get(), &ScreenController::unwind);
        QSignalSpy notices(form.get(), &BookForm::notice);
        form->SaveNewBook();
        QCOMPARE(unwound.size(), 1);
        QVERIFY(notices.isEmpty()); // nothing says "Saved" when nothing was
        QCOMPARE(log.lines("tomewise.store").size(), 1);
    }
};

QTEST_MAIN(TestNewBook)
#include "tst_newbookviewcontroller.moc"
