// The rate-and-share page and the review card, clicked in the real QML. With
// TOMEWISE_SHOTS=DIR set it also saves screenshots there.
#include "app/qmltypes.h"
#include "support/testapp.h"

#include <QDir>
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

    void rowsShowTheirAlerts_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("title");
        QTest::newRow("share without messages") << 1 << QStringLiteral("Can't Send Text Message");
        QTest::newRow("mail without a mail program") << 4 << QStringLiteral("Can't Send Email");
    }

    void rowsShowTheirAlerts()
    {
        QFETCH(int, row);
        QFETCH(QString, title);
        m_t.platform().textAvailable = false;
        m_t.platform().mailAvailable = false;
        QQuickItem *page = openPage(QStringLiteral("RateShare"));
        QVERIFY(page);
        if (row == 1)
            shot(QStringLiteral("rate-share"));
        QQuickItem *rowItem = findItem(page, QStringLiteral("RateShareRow%1").arg(row));
        QVERIFY(rowItem);
        QTest::mouseClick(m_window, Qt::LeftButton, {}, sceneRect(rowItem).center().toPoint());
        auto *alert = page->findChild<QObject *>(QStringLiteral("alert"));
        QTRY_VERIFY(alert->property("opened").toBool());
        QCOMPARE(alert->property("title").toString(), title);
        shot(QStringLiteral("rate-share-alert-%1").arg(row));
        QMetaObject::invokeMethod(alert, "close");
        QMetaObject::invokeMethod(m_window, "back");
        QTest::qWait(400);
    }

    // The card takes no focus and keeps clear of the field being typed in.
    void reviewCardKeepsClearOfTyping_data()
    {
        QTest::addColumn<QString>("field");
        QTest::newRow("field at the top") << QStringLiteral("bookNameTextField");
        QTest::newRow("field at the bottom") << QStringLiteral("NotesTextView");
    }

    void reviewCardKeepsClearOfTyping()
    {
        QFETCH(QString, field);
        Books b = book(QStringLiteral("Good Omens"), QStringLiteral("Neil Gaiman"));
        b.dt = QStringLiteral("Nov 21, 2026");
        m_t.app().state().currentBook = m_t.insert(b);
        QQuickItem *page = openPage(QStringLiteral("Detail"));
        QVERIFY(page);
        QQuickItem *typing = findItem(page, field);
        QVERIFY(typing);
        if (field == QLatin1String("NotesTextView")) {
            // Bring the notes up to the bottom edge of the window, where the card would sit.
            QQuickItem *flick = findItem(page, QStringLiteral("formFlickable"));
            const qreal below = sceneRect(typing).bottom() - (m_window->height() - 20);
            flick->setProperty("contentY", flick->property("contentY").toReal() + below);
            QTest::qWait(50);
        }
        typing->forceActiveFocus();
        QVERIFY(sceneRect(typing).bottom() <= m_window->height());

        Q_EMIT m_t.platform().storeReviewRequested();
        auto *card = m_window->findChild<QObject *>(QStringLiteral("reviewCard"));
        QVERIFY(card);
        QTRY_VERIFY(card->property("opened").toBool());
        QTest::qWait(300);
        shot(QStringLiteral("review-card-") + field);
        auto *cardItem = card->property("contentItem").value<QQuickItem *>()->parentItem();
        QVERIFY(!sceneRect(cardItem).intersects(sceneRect(typing)));
        QVERIFY(typing->hasActiveFocus());

        QQuickItem *notNow = findItem(cardItem, QStringLiteral("reviewNotNowButton"));
        QTest::mouseClick(m_window, Qt::LeftButton, {}, sceneRect(notNow).center().toPoint());
        QTRY_VERIFY(!card->property("visible").toBool());
        QVERIFY(m_t.platform().openedUrls.isEmpty());
        QMetaObject::invokeMethod(m_window, "back");
        QTest::qWait(400);
    }

    void reviewCardRateOpensTheReviewPage()
    {
        Q_EMIT m_t.platform().storeReviewRequested();
        auto *card = m_window->findChild<QObject *>(QStringLiteral("reviewCard"));
        QTRY_VERIFY(card->property("opened").toBool());
        QTest::qWait(300);
        auto *cardItem = card->property("contentItem").value<QQuickItem *>()->parentItem();
        QQuickItem *rate = findItem(cardItem, QStringLiteral("reviewRateButton"));
        QTest::mouseClick(m_window, Qt::LeftButton, {}, sceneRect(rate).center().toPoint());
        QTRY_VERIFY(!card->property("visible").toBool());
        QCOMPARE(m_t.platform().openedUrls,
                 QList<QUrl>{QUrl(QStringLiteral("https://apps.example.com/app/tomewise/id0000000000?action=write-review"))});
    }
};

QTEST_MAIN(TestFeedbackPages)
#include "tst_feedbackpages.moc"
