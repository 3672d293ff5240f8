#pragma once

#include "entry/barcodedecoder.h"

#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSize>
#include <QSemaphore>
#include <QThread>
#include <QVideoFrame>
#include <QVideoSink>

#include <atomic>
#include <memory>

namespace tomewise {

// Carries frames from a video sink to the barcode decoder on a worker thread
// and reports what was read on the thread that owns it. The user-interface
// thread never decodes; while one frame is decoded the newest frame waits, and
// a newer one replaces it, so nothing queues up behind a slow decode.
class BarcodeFramePipeline : public QObject
{
    Q_OBJECT

public:
    explicit BarcodeFramePipeline(QList<Symbology> accepted, QObject *parent = nullptr);
    ~BarcodeFramePipeline() override;

    // Every frame the sink shows is offered; null detaches.
    void setVideoSink(QVideoSink *sink);
    QVideoSink *videoSink() const { return m_sink; }
    // The part of each frame that is read, given as a rectangle of the
    // preview that shows the frames; empty: all of it.
    void setArea(const QRectF &inPreview, const QSizeF &preview);
    // Offers one frame; safe from any thread (the camera delivers on its own).
    void offer(const QVideoFrame &frame);
    // No more frames are taken, and nothing more is reported.
    void stop();
    bool isStopped() const { return m_stopped; }

    // Frames decoded, and frames that a newer one replaced before their turn.
    int decodedCount() const { return m_decoded; }
    int replacedCount() const { return m_replaced; }
    bool isBusy() const;

    // A picture as a camera frame of the given pixel format (NV12 or XRGB8888).
    static QVideoFrame frameOf(const QImage &picture, bool planarYuv = true);
    // Maps a rectangle of a frame to a preview that fills its view by
    // cropping (the preview's aspect fill), and back.
    static QRectF toPreview(const QRectF &inFrame, const QSizeF &frame, const QSizeF &preview);
    static QRectF toFrame(const QRectF &inPreview, const QSizeF &frame, const QSizeF &preview);

Q_SIGNALS:
    // The code taken from one frame (see BarcodeDecoder::preferred), and the frame's size.
    void codeRead(const tomewise::BarcodeRead &read, QSize frameSize);
    // A frame was read and held no accepted code.
    void nothingRead(QSize frameSize);

private:
    void run(); // the decoder's thread
    void decode(const QVideoFrame &frame);

    BarcodeDecoder m_decoder;
    std::unique_ptr<QThread> m_thread;
    QSemaphore m_wake;
    std::atomic<bool> m_quit = false;
    QPointer<QVideoSink> m_sink;
    QMetaObject::Connection m_sinkConnection;

    // The newest frame not yet taken, swapped in and out without a lock, and
    // the decoder woken by a semaphore rather than a queued call (whose event
    // queue has a lock too): the thread that offers is often the user
    // interface's, and must never wait on a decoder the scheduler put aside.
    std::atomic<QVideoFrame *> m_waiting = nullptr;
    std::atomic<bool> m_busy = false;

    mutable QMutex m_mutex; // guards the two below, set only at layout
    QRectF m_area;
    QSizeF m_preview;

    std::atomic<bool> m_stopped = false;
    std::atomic<int> m_decoded = 0;
    std::atomic<int> m_replaced = 0;
};

} // namespace tomewise

Q_DECLARE_METATYPE(tomewise::BarcodeRead)
