import QtQuick
import QtQuick.Controls
import QtMultimedia
import Tomewise

// A camera screen's preview filling the page, the red brackets over the code
// read, and a line of guidance; the page starts and stops its controller.
Item {
    id: camera
    required property CaptureSessionController controller
    property string hint: "Point the camera at the book's barcode"
    readonly property alias previewLayer: preview
    property bool loaded: false

    VideoOutput {
        id: preview
        objectName: "previewLayer"
        anchors.fill: parent
        fillMode: VideoOutput.PreserveAspectCrop
        onWidthChanged: camera.controller.previewSize = Qt.size(width, height)
        onHeightChanged: camera.controller.previewSize = Qt.size(width, height)
    }

    Brackets {
        objectName: "overlayView"
        visible: camera.controller.overlayVisible
        x: camera.controller.overlayView.x
        y: camera.controller.overlayView.y
        width: camera.controller.overlayView.width
        height: camera.controller.overlayView.height
        color: "red"
        length: 20
        lineWidth: 2
    }

    Label {
        objectName: "hint"
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 32
        width: parent.width - 2 * Theme.margin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: "white"
        style: Text.Outline
        styleColor: "black"
        text: camera.controller.handedOver ? "Looking up " + camera.controller.appDelegate.state.scannedISBN : camera.hint
    }

    function start() {
        controller.previewLayer = preview.videoSink
        controller.previewSize = Qt.size(preview.width, preview.height)
        controller.viewDidLoad()
        loaded = true
    }
}
