#include "barcodeframepipeline.h"

#include <QMutexLocker>
#include <QVideoFrameFormat>
#include <QVideoSink>

#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace tomewise {

namespace {

// Where the luma of a mapped frame lies, for the pixel formats cameras deliver;
// nothing for the others, which are converted first.
std::optional<PixelView> lumaOf(const QVideoFrame &f)
{
    PixelView v{f.bits(0), f.width(), f.height(), f.bytesPerLine(0), 1, PixelView::Layout::Luma};
    switch (f.pixelFormat()) {
    case QVideoFrameFormat::Format_Y8:
    case QVideoFrameFormat::Format_NV12:
    case QVideoFrameFormat::Format_NV21:
    case QVideoFrameFormat::Format_YUV420P:
    case QVideoFrameFormat::Format_YUV422P:
    case QVideoFrameFormat::Format_YV12:
    case QVideoFrameFormat::Format_IMC1:
    case QVideoFrameFormat::Format_IMC2:
    case QVideoFrameFormat::Format_IMC3:
    case QVideoFrameFormat::Format_IMC4:
        return v;
    case QVideoFrameFormat::Format_YUYV:
        v.pixelStride = 2;
        return v;
    case QVideoFrameFormat::Format_UYVY:
        v.data += 1;
        v.pixelStride = 2;
        return v;
    case QVideoFrameFormat::Format_XRGB8888:
    case QVideoFrameFormat::Format_ARGB8888:
    case QVideoFrameFormat::Format_ARGB8888_Premultiplied:
        v.layout = PixelView::Layout::XRGB;
        v.pixelStride = 4;
        return v;
    case QVideoFrameFormat::Format_BGRX8888:
    case QVideoFrameFormat::Format_BGRA8888:
    case QVideoFrameFormat::Format_BGRA8888_Premultiplied:
        v.layout = PixelView::Layout::BGRX;
        v.pixelStride = 4;
        return v;
    case QVideoFrameFormat::Format_RGBX8888:
    case QVideoFrameFormat::Format_RGBA8888:
        v.layout = PixelView::Layout::RGBX;
        v.pixelStride = 4;
        return v;
    case QVideoFrameFormat::Format_XBGR8888:
    case QVideoFrameFormat::Format_ABGR8888:
        v.layout = PixelView::Layout::XBGR;
        v.pixelStride = 4;
        return v;
    case QVideoFrameFormat::Format_Y16:
    case QVideoFrameFormat::Format_P010:
    case QVideoFrameFormat::Format_P016:
        // 16-bit little-endian samples: the high byte is the luma to 8 bits.
        v.data += 1;
        v.pixelStride = 2;
        return v;
    default:
        return std::nullopt;
    }
}

} // namespace

BarcodeFramePipeline::BarcodeFramePipeline(QList<Symbology> accepted, QObject *parent)
    : QObject(parent)
    , m_decoder(std::move(accepted))
{
    static const int registered = qRegisterMetaType<BarcodeRead>();
    Q_UNUSED(registered);
    m_thread.reset(QThread::create([this] { run(); }));
    m_thread->setObjectName(QStringLiteral("BarcodeDecoder"));
    m_thread->start();
}

BarcodeFramePipeline::~BarcodeFramePipeline()
{
    stop();
    m_quit = true;
    m_wake.release();
    m_thread->wait();
    // A frame offered from another thread while stopping.
    delete m_waiting.exchange(nullptr);
}

void BarcodeFramePipeline::setVideoSink(QVideoSink *sink)
{
    if (m_sink == sink)
        return;
    disconnect(m_sinkConnection);
    m_sink = sink;
    // Direct: the camera shows frames from its own thread, and offer() only swaps a frame.
    if (sink) {
        m_sinkConnection = connect(sink, &QVideoSink::videoFrameChanged, this,
                                   [this](const QVideoFrame &frame) { offer(frame); }, Qt::DirectConnection);
    }
}

void BarcodeFramePipeline::setArea(const QRectF &inPreview, const QSizeF &preview)
{
    QMutexLocker lock(&m_mutex);
    m_area = inPreview;
    m_preview = preview;
}

bool BarcodeFramePipeline::isBusy() const
{
    return m_busy || m_waiting.load();
}

void BarcodeFramePipeline::offer(const QVideoFrame &frame)
{
    if (m_stopped || !frame.isValid())
        return;
    // A shallow copy: the pixels stay where the camera put them.
    const std::unique_ptr<QVideoFrame> replaced{m_waiting.exchange(new QVideoFrame(frame))};
    if (replaced)
        ++m_replaced;
    else
        m_wake.release(); // one wake for each frame the decoder takes
}

void BarcodeFramePipeline::stop()
{
    m_stopped = true;
    disconnect(m_sinkConnection);
    delete m_waiting.exchange(nullptr);
}

void BarcodeFramePipeline::run()
{
    // Linux ignores Qt's thread priorities, so the kernel is told directly:
    // as a batch thread the decoder never preempts the thread that woke it
    // (the user interface's, when it offers a frame), and its nice value
    // gives it a smaller share of a busy CPU than the user interface.
    const sched_param batch{};
    pthread_setschedparam(pthread_self(), SCHED_BATCH, &batch);
    setpriority(PRIO_PROCESS, id_t(gettid()), 10);
    for (;;) {
        m_wake.acquire();
        if (m_quit)
            return;
        m_busy = true;
        if (const std::unique_ptr<QVideoFrame> frame{m_waiting.exchange(nullptr)}; frame && !m_stopped)
            decode(*frame);
        m_busy = false;
    }
}

void BarcodeFramePipeline::decode(const QVideoFrame &frame)
{
    const QSize size = frame.size();
    QRect area;
    {
        QMutexLocker lock(&m_mutex);
        if (!m_area.isEmpty())
            area = toFrame(m_area, size, m_preview).toAlignedRect();
    }

    // QVideoFrame::toImage() is not used: for some formats it renders through
    // the GPU, which belongs to the user-interface thread.
    std::optional<BarcodeRead> read;
    QVideoFrame mapped = frame;
    if (mapped.map(QVideoFrame::ReadOnly)) {
        if (const auto view = lumaOf(mapped)) {
            read = m_decoder.read(*view, area);
        } else if (mapped.pixelFormat() == QVideoFrameFormat::Format_Jpeg) {
            read = m_decoder.read(QImage::fromData(mapped.bits(0), mapped.mappedBytes(0)), area);
        }
        mapped.unmap();
    }
    ++m_decoded;
    if (m_stopped)
        return;
    if (read)
        Q_EMIT codeRead(*read, size);
    else
        Q_EMIT nothingRead(size);
}

QVideoFrame BarcodeFramePipeline::frameOf(const QImage &picture, bool planarYuv)
{
    const QSize size = picture.size();
    if (!planarYuv) {
        const QImage rgb = picture.convertToFormat(QImage::Format_RGB32);
        QVideoFrame frame(QVideoFrameFormat(size, QVideoFrameFormat::Format_BGRX8888));
        if (!frame.map(QVideoFrame::WriteOnly))
            return {};
        for (int y = 0; y < size.height(); ++y)
            std::memcpy(frame.bits(0) + qsizetype(y) * frame.bytesPerLine(0), rgb.constScanLine(y), size_t(size.width()) * 4);
        frame.unmap();
        return frame;
    }
    // NV12 as most cameras deliver it: a luma plane, then half-size interleaved chroma.
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    QVideoFrame frame(QVideoFrameFormat(size, QVideoFrameFormat::Format_NV12));
    if (!frame.map(QVideoFrame::WriteOnly))
        return {};
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(frame.bits(0) + qsizetype(y) * frame.bytesPerLine(0), grey.constScanLine(y), size_t(size.width()));
    for (int y = 0; y < (size.height() + 1) / 2; ++y)
        std::memset(frame.bits(1) + qsizetype(y) * frame.bytesPerLine(1), 0x80, size_t(frame.bytesPerLine(1)));
    frame.unmap();
    return frame;
}

QRectF BarcodeFramePipeline::toPreview(const QRectF &inFrame, const QSizeF &frame, const QSizeF &preview)
{
    if (frame.isEmpty() || preview.isEmpty())
        return {};
    const qreal scale = std::max(preview.width() / frame.width(), preview.height() / frame.height());
    const QPointF offset((preview.width() - frame.width() * scale) / 2, (preview.height() - frame.height() * scale) / 2);
    return QRectF(inFrame.topLeft() * scale + offset, inFrame.size() * scale);
}

QRectF BarcodeFramePipeline::toFrame(const QRectF &inPreview, const QSizeF &frame, const QSizeF &preview)
{
    if (frame.isEmpty() || preview.isEmpty())
        return {};
    const qreal scale = std::max(preview.width() / frame.width(), preview.height() / frame.height());
    const QPointF offset((preview.width() - frame.width() * scale) / 2, (preview.height() - frame.height() * scale) / 2);
    return QRectF((inPreview.topLeft() - offset) / scale, inPreview.size() / scale);
}

} // namespace tomewise
