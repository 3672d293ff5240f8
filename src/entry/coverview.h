#pragma once

#include <QImage>
#include <QQuickPaintedItem>

namespace tomewise {

// Shows a picture held by a controller (not yet stored) aspect-fit.
class CoverView : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)

public:
    explicit CoverView(QQuickItem *parent = nullptr);

    QImage image() const { return m_image; }
    void setImage(const QImage &image);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void imageChanged();

private:
    QImage m_image;
};

} // namespace tomewise
