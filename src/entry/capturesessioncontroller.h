#pragma once

#include "entry/barcodedecoder.h"
#include "entry/scannercontroller.h"

#include <QRectF>
#include <QSizeF>
#include <QVideoSink> // a property type: moc needs it whole

class QCamera;
class QMediaCaptureSession;

namespace tomewise {

class BarcodeFramePipeline;

// A live camera screen: the default camera's preview fills the view, every
// frame is offered to the decoder, and a code read is marked where it was seen
// and handed to the form.
class CaptureSessionController : public ScannerController
{
    Q_OBJECT
    // The preview's sink: frames shown there are the frames decoded.
    Q_PROPERTY(QVideoSink *previewLayer READ previewLayer WRITE setPreviewLayer NOTIFY previewLayerChanged)
    Q_PROPERTY(QSizeF previewSize READ previewSize WRITE setPreviewSize NOTIFY previewSizeChanged)
    Q_PROPERTY(QRectF overlayView READ overlayView NOTIFY overlayChanged)
    Q_PROPERTY(bool overlayVisible READ overlayVisible NOTIFY overlayChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    // The overlay's corner brackets.
    static constexpr qreal kBracketLength = 20;
    static constexpr qreal kBracketLineWidth = 2;

    explicit CaptureSessionController(AppDelegate *delegate = nullptr, QObject *parent = nullptr,
                                      QList<Symbology> accepted = BarcodeDecoder::captureSessionTypes());
    ~CaptureSessionController() override;

    QVideoSink *previewLayer() const { return m_previewLayer; }
    void setPreviewLayer(QVideoSink *sink);
    QSizeF previewSize() const { return m_previewSize; }
    void setPreviewSize(const QSizeF &size);
    QRectF overlayView() const { return m_overlayView; }
    bool overlayVisible() const { return m_overlayVisible; }
    bool isRunning() const;

    QMediaCaptureSession *captureSession() const { return m_captureSession; }
    BarcodeFramePipeline &metadataOutput() const { return *m_pipeline; }

    // Sets up the camera, the preview and the decoding, and starts the session.
    Q_INVOKABLE virtual void viewDidLoad();
    // Places the overlay over the code last read, in preview coordinates.
    Q_INVOKABLE void viewDidLayoutSubviews();
    // The camera stops when the screen goes, and starts again when it is back
    // (until a code has been read).
    Q_INVOKABLE void viewWillDisappear();
    Q_INVOKABLE void viewWillAppear();
    // A camera error: until the camera first runs it is a set-up failure,
    // logged once; afterwards each one has its own line.
    void cameraError(const QString &message);

Q_SIGNALS:
    void previewLayerChanged();
    void previewSizeChanged();
    void overlayChanged();
    void runningChanged();

protected:
    void setUpCaptureSession();
    // The part of the preview that is read; empty: all of it.
    virtual QRectF readArea() const { return {}; }
    void updateReadArea();

private:
    void metadataOutputRead(const BarcodeRead &read, QSize frameSize);

    QMediaCaptureSession *m_captureSession = nullptr;
    QCamera *m_camera = nullptr;
    BarcodeFramePipeline *m_pipeline = nullptr;
    QVideoSink *m_previewLayer = nullptr;
    QSizeF m_previewSize;
    QRectF m_codeBounds; // in frame pixels
    QSize m_frameSize;
    QRectF m_overlayView;
    bool m_overlayVisible = false;
    bool m_cameraRan = false;
    bool m_setUpErrorLogged = false;
};

} // namespace tomewise
