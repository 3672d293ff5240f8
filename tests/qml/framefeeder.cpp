// Feeds pictures to the camera screens in the page tests, as a camera would,
// and holds the books service's answers back so a screen can be seen before it
// leaves.
#include "entry/capturesessioncontroller.h"
#include "entry/barcodeframepipeline.h"

#include <QCameraDevice>
#include <QCoreApplication>
#include <QImage>
#include <QMediaDevices>
#include <QQmlEngine>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <QVideoSink>

namespace {

class FrameFeeder : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    Q_INVOKABLE QUrl picture(const QString &name) const
    {
        return QUrl::fromLocalFile(QStringLiteral(TOMEWISE_TEST_DATA "/barcode/") + name);
    }
    Q_INVOKABLE bool cameraPresent() const { return !QMediaDevices::videoInputs().isEmpty(); }

    // Shows a picture in the screen's preview; its decoder reads what the preview shows.
    Q_INVOKABLE bool show(QObject *screen, const QString &name)
    {
        auto *camera = qobject_cast<tomewise::CaptureSessionController *>(screen);
        if (!camera || !camera->previewLayer())
            return false;
        camera->metadataOutput().setVideoSink(camera->previewLayer());
        camera->previewLayer()->setVideoFrame(
            tomewise::BarcodeFramePipeline::frameOf(QImage(picture(name).toLocalFile())));
        return true;
    }

    // While on, book queries go to a server that never answers.
    Q_INVOKABLE void holdAnswers(bool hold)
    {
        if (hold) {
            m_saved = qgetenv("TOMEWISE_BOOKS_API");
            if (!m_silent.isListening()) {
                m_silent.listen(QHostAddress::LocalHost);
                connect(&m_silent, &QTcpServer::newConnection, this, [this] {
                    while (QTcpSocket *s = m_silent.nextPendingConnection())
                        s->setParent(&m_silent);
                });
            }
            qputenv("TOMEWISE_BOOKS_API", QByteArrayLiteral("http://127.0.0.1:") + QByteArray::number(m_silent.serverPort())
                                              + "/books/v1/volumes");
        } else {
            qputenv("TOMEWISE_BOOKS_API", m_saved);
        }
    }

private:
    QTcpServer m_silent;
    QByteArray m_saved;
};

void registerFeeder()
{
    qmlRegisterSingletonType<FrameFeeder>("TomewiseTest", 1, 0, "Frames",
                                          [](QQmlEngine *, QJSEngine *) -> QObject * { return new FrameFeeder; });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(registerFeeder)

#include "framefeeder.moc"
