#pragma once

#include "entry/barcodedecoder.h"
#include "entry/scannercontroller.h"

#include <QImage>
#include <QUrl>

namespace tomewise {

class BarcodeFramePipeline;

// Scanning a photo: a picture of the barcode, chosen from a file or pasted,
// is read for every symbology the decoder knows; the value shows in
// DisplayLabel and goes to the form as the camera's would.
class CaptureViewControllerIOS16 : public ScannerController
{
    Q_OBJECT
    Q_PROPERTY(QString DisplayLabel READ displayLabel NOTIFY displayLabelChanged)
    Q_PROPERTY(QImage picture READ picture NOTIFY pictureChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY pictureChanged)
    Q_PROPERTY(bool scanning READ isScanning NOTIFY scanningChanged)

public:
    static constexpr auto kNothingRead = "No barcode found in this picture.";

    explicit CaptureViewControllerIOS16(AppDelegate *delegate = nullptr, QObject *parent = nullptr);
    ~CaptureViewControllerIOS16() override;

    QString displayLabel() const { return m_displayLabel; }
    QImage picture() const { return m_picture; }
    bool hasPicture() const { return !m_picture.isNull(); }
    bool isScanning() const { return m_scanning; }

    // Scans the clipboard's picture; with none, the live camera if there is
    // one; with neither, says that no scanner is available.
    Q_INVOKABLE void StartScanning();
    // Asks the page for a picture file.
    Q_INVOKABLE void choosePicture();
    // What the file chooser hands back; false when it is no picture.
    Q_INVOKABLE bool pictureChosen(const QUrl &url);
    // Reads one picture on the decoder's thread.
    void scanPicture(const QImage &image);

Q_SIGNALS:
    void displayLabelChanged();
    void pictureChanged();
    void scanningChanged();
    void documentPickerRequested();

private:
    void setDisplayLabel(const QString &text);
    void setScanning(bool scanning);

    BarcodeFramePipeline *m_pipeline = nullptr;
    QString m_displayLabel;
    QImage m_picture;
    bool m_scanning = false;
};

} // namespace tomewise
