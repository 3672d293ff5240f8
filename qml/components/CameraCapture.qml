import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtMultimedia

// The camera as an image picker: a preview and a shutter; the photo goes back as `captured`.
Popup {
    id: popup
    signal captured(var image)

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: parent.width
    height: parent.height
    modal: true
    padding: 0

    CaptureSession {
        camera: Camera { active: popup.visible }
        imageCapture: ImageCapture {
            id: capture
            onImageCaptured: (requestId, preview) => {
                popup.captured(preview)
                popup.close()
            }
        }
        videoOutput: preview
    }
    ColumnLayout {
        anchors.fill: parent
        VideoOutput { id: preview; Layout.fillWidth: true; Layout.fillHeight: true }
        RowLayout {
            Layout.fillWidth: true
            Button { text: "Cancel"; onClicked: popup.close() }
            Item { Layout.fillWidth: true }
            Button { text: "Take Photo"; enabled: capture.readyForCapture; onClicked: capture.capture() }
        }
    }
}
