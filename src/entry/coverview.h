#pragma once

#include <QImage>
#include <QQuickPaintedItem>

namespace tomewise {

// Shows a picture held by a controller (not yet stored) aspect-fit.
class CoverView : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)

public:
    explicit CoverView(QQuickItem *parent = nullptr);

    QImage image() const { return m_image; }
    bool hasImage() const { return !m_image.isNull(); }
    void setImage(const QImage &image);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void imageChanged();

private:
    QImage m_image;
};

} // namespace tomewise
