#include "capturesessioncontroller.h"

#include "app/log.h"
#include "entry/barcodeframepipeline.h"

#include <QCamera>
#include <QCameraDevice>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QVideoSink>

namespace tomewise {

CaptureSessionController::CaptureSessionController(AppDelegate *delegate, QObject *parent, QList<Symbology> accepted)
    : ScannerController(delegate, parent)
    , m_captureSession(new QMediaCaptureSession(this))
    , m_pipeline(new BarcodeFramePipeline(std::move(accepted), this))
{
    connect(m_pipeline, &BarcodeFramePipeline::codeRead, this, &CaptureSessionController::metadataOutputRead);
}

CaptureSessionController::~CaptureSessionController()
{
    // The camera first: it delivers frames from its own thread.
    viewWillDisappear();
    m_pipeline->stop();
}

void CaptureSessionController::setPreviewLayer(QVideoSink *sink)
{
    if (m_previewLayer == sink)
        return;
    m_previewLayer = sink;
    Q_EMIT previewLayerChanged();
}

void CaptureSessionController::setPreviewSize(const QSizeF &size)
{
    if (m_previewSize == size)
        return;
    m_previewSize = size;
    Q_EMIT previewSizeChanged();
    updateReadArea();
    viewDidLayoutSubviews();
}

bool CaptureSessionController::isRunning() const
{
    return m_camera && m_camera->isActive();
}

void CaptureSessionController::viewDidLoad()
{
    setUpCaptureSession();
}

void CaptureSessionController::setUpCaptureSession()
{
    if (m_camera)
        return;
    const QCameraDevice device = app().platform().cameraAvailable() ? QMediaDevices::defaultVideoInput() : QCameraDevice();
    if (device.isNull()) {
        qCInfo(lcEntry) << "No camera available";
        return;
    }
    m_camera = new QCamera(device, this);
    connect(m_camera, &QCamera::errorOccurred, this,
            [this](QCamera::Error, const QString &message) { cameraError(message); });
    connect(m_camera, &QCamera::activeChanged, this, [this](bool active) {
        m_cameraRan = m_cameraRan || active;
        Q_EMIT runningChanged();
    });
    if (m_camera->error() != QCamera::NoError)
        cameraError(m_camera->errorString());
    if (!m_camera->isAvailable()) {
        qCInfo(lcEntry) << "Could not add video input";
        return;
    }
    m_captureSession->setCamera(m_camera);
    // The metadata output is the decoder reading what the preview shows.
    if (!m_previewLayer) {
        qCInfo(lcEntry) << "Could not add metadata output";
        return;
    }
    m_captureSession->setVideoSink(m_previewLayer);
    m_pipeline->setVideoSink(m_previewLayer);
    updateReadArea();
    m_camera->start();
}

void CaptureSessionController::cameraError(const QString &message)
{
    if (m_cameraRan) {
        qCInfo(lcEntry).noquote() << "Camera error:" << message;
    } else if (!m_setUpErrorLogged) {
        m_setUpErrorLogged = true;
        qCInfo(lcEntry).noquote() << "Error setting up camera input:" << message;
    }
}

void CaptureSessionController::updateReadArea()
{
    m_pipeline->setArea(readArea(), m_previewSize);
}

void CaptureSessionController::metadataOutputRead(const BarcodeRead &read, QSize frameSize)
{
    if (handedOver())
        return;
    m_pipeline->stop();
    m_codeBounds = read.bounds();
    m_frameSize = frameSize;
    viewDidLayoutSubviews();
    handOver(read.text);
}

void CaptureSessionController::viewDidLayoutSubviews()
{
    if (m_codeBounds.isEmpty())
        return;
    const QRectF bounds = BarcodeFramePipeline::toPreview(m_codeBounds, m_frameSize, m_previewSize);
    qCInfo(lcEntry).noquote() << QStringLiteral("Transformed Bounds: (%1, %2, %3, %4)")
                                     .arg(bounds.x(), 0, 'f', 1)
                                     .arg(bounds.y(), 0, 'f', 1)
                                     .arg(bounds.width(), 0, 'f', 1)
                                     .arg(bounds.height(), 0, 'f', 1);
    m_overlayView = bounds;
    m_overlayVisible = true;
    Q_EMIT overlayChanged();
}

void CaptureSessionController::viewWillDisappear()
{
    if (m_camera)
        m_camera->stop();
}

void CaptureSessionController::viewWillAppear()
{
    if (m_camera && m_captureSession->videoSink() && !handedOver())
        m_camera->start();
}

} // namespace tomewise
