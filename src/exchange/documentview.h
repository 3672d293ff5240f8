#pragma once

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QTextDocument>


namespace tomewise {

// Shows the part of a long text document that is in view. The document's
// pictures are read from the store as they are drawn, so it is drawn here, on
// the GUI thread, into a picture the scene graph shows: a text item would ask
// for every picture of the document at once, from the render thread.
class DocumentView : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QTextDocument *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(qreal contentY READ contentY WRITE setContentY NOTIFY contentYChanged)
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY contentHeightChanged)
    Q_PROPERTY(qreal padding READ padding WRITE setPadding NOTIFY paddingChanged)

public:
    explicit DocumentView(QQuickItem *parent = nullptr);

    QTextDocument *document() const { return m_document; }
    void setDocument(QTextDocument *document);
    qreal contentY() const { return m_contentY; }
    void setContentY(qreal y);
    // The laid-out document's height and the padding around it.
    qreal contentHeight() const { return m_contentHeight; }
    qreal padding() const { return m_padding; }
    void setPadding(qreal padding);

Q_SIGNALS:
    void documentChanged();
    void contentYChanged();
    void contentHeightChanged();
    void paddingChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    void layOut();

    QPointer<QTextDocument> m_document;
    qreal m_contentY = 0;
    qreal m_contentHeight = 0;
    qreal m_padding = 0;
    QImage m_image;
    bool m_imageChanged = false;
};

} // namespace tomewise
