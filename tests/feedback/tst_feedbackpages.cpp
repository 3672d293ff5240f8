// The rate-and-share page and the review card, clicked in the real QML. With
// TOMEWISE_SHOTS=DIR set it also saves screenshots there.
#include "app/qmltypes.h"
#include "feedback/ratesharetableviewcontroller.h"
#include "support/testapp.h"

#include <QDir>
#include <QJSValue>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    if (root->objectName() == name)
        return root;
    for (QQuickItem *child : root->childItems()) {
        if (QQuickItem *found = findItem(child, name))
            return found;
    }
    return nullptr;
}

QRectF sceneRect(QQuickItem *item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

} // namespace

class TestFeedbackPages : public QObject
{
    Q_OBJECT

    TestApp m_t;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;

    QQuickItem *openPage(const QString &target)
    {
        QVariant page;
        QMetaObject::invokeMethod(m_window, "openPage", Q_RETURN_ARG(QVariant, page), Q_ARG(QVariant, target),
                                  Q_ARG(QVariant, QVariant()));
        auto *item = page.value<QQuickItem *>();
        QTest::qWait(400); // the page's push transition
        return item;
    }
    void shot(const QString &name)
    {
        const QString dir = qEnvironmentVariable("TOMEWISE_SHOTS");
        if (!dir.isEmpty() && QDir().mkpath(dir))
            m_window->grabWindow().save(QDir(dir).filePath(name + QStringLiteral(".png")));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        registerQmlTypes();
        installImageProviders(m_engine, m_t.app());
        m_engine.setInitialProperties({{QStringLiteral("appDelegate"), QVariant::fromValue(&m_t.app())}});
        m_engine.load(QUrl(QStringLiteral("qrc:/qml/Main.qml")));
        QVERIFY(!m_engine.rootObjects().isEmpty());
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().first());
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
    }

    void rowsShowTheirAlerts()
    {
        m_t.platform().textAvailable = false;
        m_t.platform().mailAvailable = false;
        QQuickItem *page = openPage(QStringLiteral("RateShare"));
        QVERIFY(page);
        shot(QStringLiteral("rate-share"));
        auto *alert = page->findChild<QObject *>(QStringLiteral("alert"));
        for (const auto &[row, title] : {std::pair(1, "Can't Send Text Message"), std::pair(4, "Can't Send Email")}) {
            QQuickItem *rowItem = findItem(page, QStringLiteral("RateShareRow%1").arg(row));
            QTest::mouseClick(m_window, Qt::LeftButton, {}, sceneRect(rowItem).center().toPoint());
            QTRY_VERIFY(alert->property("opened").toBool());
            QCOMPARE(alert->property("title").toString(), QLatin1String(title));
            shot(QStringLiteral("rate-share-alert-%1").arg(row));
            QMetaObject::invokeMethod(alert, "close");
            QTRY_VERIFY(!alert->property("visible").toBool());
        }
        // The web site row shares two items: the invitation and the address.
        m_t.platform().textAvailable = true;
        m_t.app().userDefaults().setValue("Feedback.website", QStringLiteral("https://www.example.org/tomewise.html"));
        QMetaObject::invokeMethod(m_window, "back");
        QTest::qWait(400);
        page = openPage(QStringLiteral("RateShare"));
        QQuickItem *siteRow = findItem(page, QStringLiteral("RateShareRow2"));
        QTest::mouseClick(m_window, Qt::LeftButton, {}, sceneRect(siteRow).center().toPoint());
        auto *sheet = page->findChild<QObject *>(QStringLiteral("shareSheet"));
        QTRY_VERIFY(sheet->property("opened").toBool());
        QVariant links = sheet->property("links");
        if (links.metaType() == QMetaType::fromType<QJSValue>())
            links = links.value<QJSValue>().toVariant();
        QCOMPARE(links.toStringList(), QStringList{"https://www.example.org/tomewise.html"});
        QCOMPARE(sheet->property("text").toString(), QLatin1String(RateShareTableViewController::kInstructions));
        QTest::qWait(300);
        shot(QStringLiteral("rate-share-sheet"));
        QMetaObject::invokeMethod(sheet, "close");
        QTRY_VERIFY(!sheet->property("visible").toBool());
        QMetaObject::invokeMethod(m_window, "back");
        QTest::qWait(400);
    }

    // The card takes no focus, keeps clear of the field being typed in, and
    // its Rate opens the store's review page.
    void reviewCard_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("button");
        QTest::newRow("typing at the top") << QStringLiteral("bookNameTextField") << QStringLiteral("reviewRateButton");
        QTest::newRow("typing at the bottom") << QStringLiteral("NotesTextView") << QStringLiteral("reviewNotNowButton");
    }

    void reviewCard()
    {
        QFETCH(QString, field);
        QFETCH(QString, button);
        Books b = book(QStringLiteral("Good Omens"), QStringLiteral("Neil Gaiman"));
        b.dt = QStringLiteral("Nov 21, 2026");
        m_t.app().state().currentBook = m_t.insert(b);
        QQuickItem *page = openPage(QStringLiteral("Detail"));
        QVERIFY(page);
        QQuickItem *typing = findItem(page, field);
        QVERIFY(typing);
        if (field == QLatin1String("NotesTextView")) {
            // Bring the notes down to the window's bottom edge, where the card would sit.
            QQuickItem *flick = findItem(page, QStringLiteral("formFlickable"));
            const qreal below = sceneRect(typing).bottom() - (m_window->height() - 20);
            flick->setProperty("contentY", flick->property("contentY").toReal() + below);
        }
        typing->forceActiveFocus();
        QVERIFY(sceneRect(typing).bottom() <= m_window->height());

        m_t.platform().openedUrls.clear();
        Q_EMIT m_t.platform().storeReviewRequested();
        auto *card = m_window->findChild<QObject *>(QStringLiteral("reviewCard"));
        QTRY_VERIFY(card->property("opened").toBool());
        QTest::qWait(300);
        shot(QStringLiteral("review-card-") + field);
        auto *cardItem = card->property("contentItem").value<QQuickItem *>()->parentItem();
        QVERIFY(!sceneRect(cardItem).intersects(sceneRect(typing)));
        QVERIFY(typing->hasActiveFocus());

        QTest::mouseClick(m_window, Qt::LeftButton, {}, sceneRect(findItem(cardItem, button)).center().toPoint());
        QTRY_VERIFY(!card->property("visible").toBool());
        QCOMPARE(m_t.platform().openedUrls.size(), button == QLatin1String("reviewRateButton") ? 1 : 0);
        QMetaObject::invokeMethod(m_window, "back");
        QTest::qWait(400);
    }
};

QTEST_MAIN(TestFeedbackPages)
#include "tst_feedbackpages.moc"
